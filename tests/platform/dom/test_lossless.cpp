// Every byte belongs to something: documents come out as they went in, whether copied whole or piece by
// piece, and what the nodes say agrees with an independent parse.
#include "platform/dom/document.h"

#include <QDirIterator>
#include <QStringDecoder>
#include <QTest>
#include <QUrl>

#include <libxml/parser.h>
#include <libxml/tree.h>

using namespace dom;
using namespace Qt::StringLiterals;

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

// Sets everything of a node to what it is; then its data with one character more. False when the first
// changes anything, or the second more than that.
bool keepsItsSpelling(Document &document, Node *node)
{
    const quint64 revision = document.revision();
    const QByteArray before = node->startTag();
    QList<AttributeEdit> rows;
    for (const Attribute &attribute : node->shownAttributes())
        rows.append({attribute.name, attribute.value, attribute.name});
    const bool isText = node->kind() == NodeKind::Text;
    static_cast<void>((node->kind() == NodeKind::Element ? document.setAttributes(node, rows)
                           : isText                      ? document.setShownText(node, node->shownText())
                                                         : document.setData(node, node->data()))
                          .ok());
    for (const Attribute &attribute : node->attributes())
        static_cast<void>(document.setAttribute(node, attribute.name, attribute.value).ok());
    if (document.revision() != revision)
        return false;
    static_cast<void>(document.setData(node, node->data() + u'!').ok());
    return document.revision() == revision || node->startTag().contains(before + '!')
        || (!isText && node->startTag().size() == before.size() + 1);
}

// Edits something at every node and takes it back: from then on nothing is copied as a whole.
bool touchEverything(Document &document)
{
    bool kept = true;
    document.beginCommand();
    walk(document.documentElement(), [&](Node *node) {
        kept = kept && keepsItsSpelling(document, node);
        if (node->kind() == NodeKind::Element)
            document.setAttribute(node, u"touched-by-test"_s, u"x"_s).ok();
        else
            document.setData(node, u"touched"_s).ok();
    });
    ChangeSet changes = document.endCommand();
    document.revert(changes);
    return kept;
}

QString withoutBlanks(QString text) { return text.remove(u' ').remove(u'\n').remove(u'\t').remove(u'\r'); }

// A text may begin with U+FEFF, which is no mark there.
QString fromLibxml(const xmlChar *text)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return decoder(QByteArrayView(reinterpret_cast<const char *>(text), xmlStrlen(text)));
}

// libxml2 leaves the line ends within the entities of a value, unless it puts their text in their place.
QString asOneLine(QString value) { return value.replace(u'\n', u' ').replace(u'\t', u' '); }

// One line an element: its name and its decoded attributes.
QStringList elementsSeenByLibxml(const xmlNode *top)
{
    QStringList out;
    for (const xmlNode *node = top; node;) {
        if (node->type == XML_ELEMENT_NODE) {
            out += fromLibxml(node->name);
            for (const xmlAttr *attribute = node->properties; attribute; attribute = attribute->next) {
                xmlChar *value = xmlNodeListGetString(node->doc, attribute->children, 1);
                out.last() += u'|' + fromLibxml(attribute->name) + u'=' + asOneLine(fromLibxml(value));
                xmlFree(value);
            }
        }
        const xmlNode *next = node->type == XML_ELEMENT_NODE ? node->children : nullptr;
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
        out += node->name().section(u':', -1);
        for (const Attribute &attribute : node->attributes()) {
            if (attribute.name != u"xmlns" && !attribute.name.startsWith(u"xmlns:"))
                out.last() += u'|' + attribute.name.section(u':', -1) + u'=' + asOneLine(attribute.value);
        }
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
        return u"the untouched document differs"_s;
    qint64 count = 0;
    walk(document.documentElement(), [&count](const Node *node) {
        if (node->ordinal() != count++)
            count = -1'000'000'000;
    });
    if (count != document.documentElement()->subtreeCount())
        return u"the nodes are not numbered as a full walk numbers them"_s;
    // A file of entities has to be read by its own declaration; the text here is UTF-8 whatever it declares.
    const int encoding = text.contains("<!DOCTYPE") ? XML_PARSE_DTDLOAD : XML_PARSE_IGNORE_ENC;
    const QByteArray address = QUrl::fromLocalFile(folder + u'/').toEncoded();
    xmlDoc *other = xmlReadMemory(text.constData(), int(text.size()), address.constData(), nullptr,
                                  encoding | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING
                                      | XML_PARSE_NONET);
    const xmlNode *root = xmlDocGetRootElement(other);
    const QStringList theirs = elementsSeenByLibxml(root);
    const QStringList ours = elementsSeenHere(document.documentElement());
    xmlChar *content = xmlNodeGetContent(root);
    const QString theirText = withoutBlanks(fromLibxml(content));
    xmlFree(content);
    xmlFreeDoc(other);
    if (ours != theirs)
        return u"other elements or attributes than libxml2 sees"_s;
    if (document.entities().isEmpty() && withoutBlanks(document.documentElement()->text()) != theirText)
        return u"other text than libxml2 sees"_s;
    if (!touchEverything(document))
        return u"a value that nobody changed is written in another way"_s;
    if (document.xml() != text)
        return u"the pieces laid end to end differ"_s;
    return {};
}

} // namespace

class TestLossless : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oddTexts()
    {
        const QByteArray texts[] = {
            "<?xml version='1.0'?>\r\n<Element/>",
            "<a  x = '1'\n\ty=\"2\" ><b /></a >",
            "<r><a></a><a/><a /></r>",
            "<a x='>' y=\"'/>\"><b z='\">'/>t</a>",
            "<!DOCTYPE a [<!-- it's ]> --><?p ]> '?><!ENTITY e \"]>'\"><!ATTLIST a x CDATA '>'>]  "
            ">\n<a>&e;</a>",
            "<a x='&#60;&lt;&#xe9;'>&amp;&#13;&#10; &lt;b&gt;</a>",
            "<!DOCTYPE a [<!ENTITY e 'v'>]><a>x&e; &e;&e;<b/>&e;&amp;y</a>",
            "<a><![CDATA[<b>]]]]><![CDATA[>&]]></a>",
            "<!--a--><?b c?>\n<r><!-- > --><?p a>b?></r>\n<!--z-->\n",
            "<a> <b xml:space='preserve'> <c> </c>\n</b> <d xml:space = \"preserve\"> "
            "<e xml:space='default'> <f/> </e></d></a>",
            "<a>\r<b>\r</b>x\ry</a>\r",
            "<a é='😀'>😀<ü/></a>",
            "<r>" + QByteArray("<a>x</a>t<!--c-->\n").repeated(500) + "</r>",
            QByteArray("<a>t<b/>").repeated(5000) + QByteArray("</a>\n").repeated(5000),
        };
        for (const QByteArray &text : texts) {
            QVERIFY2(!checkWellFormed(text), text.left(100));
            QVERIFY2(faultOf(text, {}).isEmpty(), text.left(100) + qPrintable(faultOf(text, {})));
        }
    }

    void installedDocuments()
    {
        const QStringList endings = u"*.xml *.svg *.ui *.ts *.qrc *.xsl *.xsd *.rng *.conf"_s.split(u' ');
        QDirIterator files(u"/usr/share"_s, endings, QDir::Files | QDir::NoSymLinks,
                           QDirIterator::Subdirectories);
        int read = 0;
        while (files.hasNext()) {
            QFile file(files.next());
            // Most of the thousands of icons are alike; every tenth speaks for the others.
            if (file.fileName().endsWith(u".svg"_s) && qHash(file.fileName(), 0) % 10 != 0)
                continue;
            if (!file.open(QIODevice::ReadOnly) || file.size() > 20'000'000)
                continue;
            const QByteArray text = file.readAll();
            const QString fault = faultOf(text, QFileInfo(file).path());
            QVERIFY2(fault.isEmpty(), qPrintable(file.fileName() + u": "_s + fault));
            ++read;
        }
        if (read == 0)
            QSKIP("no XML is installed on this system");
        qInfo("%d documents read", read);
    }

    // Walking down a deep document must not read all the rest at every level: with 100,000 levels that would
    // never end.
    void deepDocumentsCostWhatTheyShow()
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
};

QTEST_APPLESS_MAIN(TestLossless)
#include "test_lossless.moc"
