// Every byte belongs to something: documents come out as they went in, whether copied whole or piece by
// piece, and what the nodes say agrees with an independent parse.
#include "platform/dom/document.h"

#include <QDirIterator>
#include <QTest>

#include <libxml/parser.h>
#include <libxml/tree.h>

using namespace dom;

namespace {

// Calls visit for every node below node, depth first, without recursion.
template <typename Visit>
void walk(Node *top, Visit visit)
{
    for (Node *node = top; node;) {
        visit(node);
        Node *next = node->firstChild();
        while (!next && node != top) {
            next = node->nextSibling();
            node = next ? node : node->parent();
        }
        node = next;
    }
}

// Edits something at every node and takes it back: from then on nothing is copied as a whole.
void touchEverything(Document &document)
{
    document.beginCommand();
    walk(document.documentElement(), [&document](Node *node) {
        if (node->kind() == NodeKind::Element)
            document.setAttribute(node, QStringLiteral("touched-by-test"), QStringLiteral("x")).ok();
        else
            document.setData(node, QStringLiteral("touched")).ok();
    });
    ChangeSet changes = document.endCommand();
    document.revert(changes);
}

QString withoutBlanks(QString text) { return text.remove(u' ').remove(u'\n').remove(u'\t').remove(u'\r'); }

QString fromLibxml(const xmlChar *text) { return QString::fromUtf8(reinterpret_cast<const char *>(text)); }

// One line an element: its name and its decoded attributes.
QStringList elementsSeenByLibxml(xmlNode *top)
{
    QStringList out;
    for (xmlNode *node = top; node;) {
        if (node->type == XML_ELEMENT_NODE) {
            QString line;
            for (const xmlAttr *attribute = node->properties; attribute; attribute = attribute->next) {
                xmlChar *value = xmlNodeListGetString(node->doc, attribute->children, 1);
                line += u'|' + fromLibxml(attribute->name) + u'=' + fromLibxml(value);
                xmlFree(value);
            }
            out += fromLibxml(node->name) + line;
        }
        xmlNode *next = node->type == XML_ELEMENT_NODE ? node->children : nullptr;
        while (!next && node != top) {
            next = node->next;
            node = next ? node : node->parent;
        }
        node = next;
    }
    return out;
}

QStringList elementsSeenHere(Node *top)
{
    QStringList out;
    walk(top, [&out](const Node *node) {
        if (node->kind() != NodeKind::Element)
            return;
        QString line = node->name().section(u':', -1);
        for (const Attribute &attribute : node->attributes()) {
            if (attribute.name != QStringLiteral("xmlns")
                && !attribute.name.startsWith(QStringLiteral("xmlns:")))
                line += u'|' + attribute.name.section(u':', -1) + u'=' + attribute.value;
        }
        out += line;
    });
    return out;
}

// Empty when all is well, else what was wrong.
QString faultOf(const QByteArray &text, const QString &folder)
{
    Document document;
    if (document.load(text, folder))
        return {}; // not well-formed: not ours to judge
    if (document.xml() != text)
        return QStringLiteral("the untouched document differs");
    qint64 count = 0;
    walk(document.documentElement(), [&count](const Node *node) {
        if (node->ordinal() != count++)
            count = -1'000'000'000;
    });
    if (count != document.documentElement()->subtreeCount())
        return QStringLiteral("the nodes are not numbered as a full walk numbers them");
    xmlDoc *other = xmlReadMemory(text.constData(), int(text.size()), nullptr, nullptr,
                                  XML_PARSE_HUGE | XML_PARSE_IGNORE_ENC | XML_PARSE_NOERROR
                                      | XML_PARSE_NOWARNING | XML_PARSE_NONET);
    const xmlNode *root = xmlDocGetRootElement(other);
    const QStringList theirs = elementsSeenByLibxml(const_cast<xmlNode *>(root));
    const QStringList ours = elementsSeenHere(document.documentElement());
    xmlChar *content = xmlNodeGetContent(root);
    const QString theirText = withoutBlanks(fromLibxml(content));
    xmlFree(content);
    xmlFreeDoc(other);
    if (ours != theirs)
        return QStringLiteral("other elements or attributes than libxml2 sees");
    if (document.entities().isEmpty() && withoutBlanks(document.documentElement()->text()) != theirText)
        return QStringLiteral("other text than libxml2 sees");
    touchEverything(document);
    if (document.xml() != text)
        return QStringLiteral("the pieces laid end to end differ");
    return {};
}

} // namespace

class TestLossless : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oddTexts_data();
    void oddTexts();
    void installedDocuments();
    void bigDocumentsListLazily();
    void deepDocumentsCostWhatTheyShow();
};

void TestLossless::oddTexts_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("declaration and CR LF") << QByteArray("<?xml version=\"1.0\"?>\r\n<Element/>");
    QTest::newRow("no final line break, blanks in tags") << QByteArray("<a  x = '1'\n\ty=\"2\" ><b /></a >");
    QTest::newRow("both empty forms") << QByteArray("<r><a></a><a/><a /></r>");
    QTest::newRow("closing bracket in a value") << QByteArray("<a x='>' y=\"'/>\"><b z='\">'/>t</a>");
    QTest::newRow("internal subset") << QByteArray(
        "<!DOCTYPE a [<!-- it's ]> --><?p ]> '?><!ENTITY e \"]>'\"><!ATTLIST a x CDATA '>'>]  >\n<a>&e;</a>");
    QTest::newRow("references") << QByteArray("<a x='&#60;&lt;&#xe9;'>&amp;&#13;&#10; &lt;b&gt;</a>");
    QTest::newRow("entity references")
        << QByteArray("<!DOCTYPE a [<!ENTITY e 'v'>]><a>x&e; &e;&e;<b/>&e;&amp;y</a>");
    QTest::newRow("CDATA with markup") << QByteArray("<a><![CDATA[<b>]]]]><![CDATA[>&]]></a>");
    QTest::newRow("comments and instructions around")
        << QByteArray("<!--a--><?b c?>\n<r><!-- > --><?p a>b?></r>\n<!--z-->\n");
    QTest::newRow("space preserved") << QByteArray(
        "<a> <b xml:space='preserve'> <c> </c>\n</b> <d xml:space = \"preserve\"> "
        "<e xml:space='default'> <f/> </e></d></a>");
    QTest::newRow("lone carriage returns") << QByteArray("<a>\r<b>\r</b>x\ry</a>\r");
    QTest::newRow("beyond the basic plane") << QByteArray("<a é='😀'>😀<ü/></a>");
    QTest::newRow("many siblings") << "<r>" + QByteArray("<a>x</a>t<!--c-->\n").repeated(500) + "</r>";
    QTest::newRow("deep") << QByteArray("<a>t<b/>").repeated(5000) + QByteArray("</a>\n").repeated(5000);
}

void TestLossless::oddTexts()
{
    QFETCH(QByteArray, text);
    QVERIFY(!checkWellFormed(text));
    QCOMPARE(faultOf(text, {}), QString());
}

void TestLossless::installedDocuments()
{
    const QStringList endings{QStringLiteral("*.xml"), QStringLiteral("*.svg"), QStringLiteral("*.ui"),
                              QStringLiteral("*.ts"),  QStringLiteral("*.qrc"), QStringLiteral("*.xsl"),
                              QStringLiteral("*.xsd"), QStringLiteral("*.rng"), QStringLiteral("*.conf")};
    QDirIterator files(QStringLiteral("/usr/share"), endings, QDir::Files | QDir::NoSymLinks,
                       QDirIterator::Subdirectories);
    int read = 0;
    while (files.hasNext()) {
        QFile file(files.next());
        // Most of the thousands of icons are alike; every tenth speaks for the others.
        if (file.fileName().endsWith(QStringLiteral(".svg")) && qHash(file.fileName(), 0) % 10 != 0)
            continue;
        if (!file.open(QIODevice::ReadOnly) || file.size() > 20'000'000)
            continue;
        const QByteArray text = file.readAll();
        const QString fault = faultOf(text, QFileInfo(file).path());
        QVERIFY2(fault.isEmpty(), qPrintable(file.fileName() + QStringLiteral(": ") + fault));
        ++read;
    }
    if (read == 0)
        QSKIP("no XML is installed on this system");
    qInfo("%d documents read", read);
}

// Nodes of a list that nobody looked at are not made; those of one block are made together.
void TestLossless::bigDocumentsListLazily()
{
    const QByteArray text = "<r>" + QByteArray("<a><b/>x</a>\n<c/>").repeated(100'000) + "</r>";
    Document document;
    QVERIFY(!document.load(text));
    Node *root = document.documentElement();
    QCOMPARE(root->childCount(), 200'000);
    QCOMPARE(root->subtreeCount(), 400'001);
    QVERIFY(root->childHasChildren(100'000));
    QVERIFY(!root->childHasChildren(100'001));
    Node *middle = root->child(100'000);
    QCOMPARE(middle->ordinal(), 200'001);
    QCOMPARE(middle->indexInParent(), 100'000);
    QCOMPARE(middle->nextSibling()->name(), QStringLiteral("c"));
    QCOMPARE(root->child(64)->previousSibling(), root->child(63));
    QCOMPARE(root->child(63)->nextSibling(), root->child(64));
    QCOMPARE(root->child(199'999)->nextSibling(), nullptr);
    QCOMPARE(root->child(200'000), nullptr);
    QCOMPARE(middle->xml(), QByteArray("<a><b/>x</a>"));
}

// Walking down a deep document must not read all the rest at every level: with 100,000 levels that would
// never end.
void TestLossless::deepDocumentsCostWhatTheyShow()
{
    const int levels = 100'000;
    const QByteArray text
        = QByteArray("<level><x/>").repeated(levels) + QByteArray("</level>").repeated(levels);
    Document document;
    QVERIFY(!document.load(text));
    const Node *node = document.documentElement();
    for (int level = 1; level < levels; ++level)
        node = node->child(1);
    QCOMPARE(node->ordinal(), 2 * (levels - 1));
    QCOMPARE(node->childCount(), 1);
}

QTEST_APPLESS_MAIN(TestLossless)
#include "test_lossless.moc"
