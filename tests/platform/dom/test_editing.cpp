// What each edit writes, byte for byte, and what it refuses.
#include "platform/dom/document.h"

#include <QTest>

#include <functional>

using namespace dom;

namespace {

using Edit = std::function<platform::Result<void>(Document &)>;

QString q(const char *text) { return QString::fromUtf8(text); }

// The node at a path of child positions from the document element: "1/0"; "" is the document element itself.
Node *at(const Document &document, const char *path)
{
    Node *node = document.documentElement();
    for (const QString &step : q(path).split(u'/', Qt::SkipEmptyParts))
        node = node ? node->child(step.toInt()) : nullptr;
    return node;
}

Edit append(const char *path, const char *name)
{
    return [=](Document &d) { return d.appendChild(at(d, path), *d.createElement(q(name))); };
}

Edit appendText(const char *path, const char *data)
{
    return [=](Document &d) { return d.appendChild(at(d, path), *d.createTextNode(q(data))); };
}

Edit insertBefore(const char *parent, const char *reference, const char *name)
{
    return [=](Document &d) {
        return d.insertBefore(at(d, parent), *d.createElement(q(name)), at(d, reference));
    };
}

Edit move(const char *node, const char *parent, const char *reference = nullptr)
{
    return [=](Document &d) {
        return d.insertBefore(at(d, parent), at(d, node), reference ? at(d, reference) : nullptr);
    };
}

Edit removal(const char *path)
{
    return [=](Document &d) { return d.removeChild(at(d, path)->parent(), at(d, path)); };
}

Edit setAttribute(const char *path, const char *name, const char *value)
{
    return [=](Document &d) { return d.setAttribute(at(d, path), q(name), q(value)); };
}

Edit removeAttribute(const char *path, const char *name)
{
    return [=](Document &d) { return d.removeAttribute(at(d, path), q(name)); };
}

Edit setData(const char *path, const char *data)
{
    return [=](Document &d) { return d.setData(at(d, path), q(data)); };
}

Edit renamed(const char *path, const char *name)
{
    return [=](Document &d) { return d.renameElement(at(d, path), q(name)); };
}

// "name=value" for each; a "name=value" that begins with "old>" was the attribute old until now.
Edit setAttributes(const char *path, const QStringList &wanted)
{
    return [=](Document &d) {
        QList<AttributeEdit> rows;
        for (const QString &row : wanted) {
            const QString now = row.section(u'>', -1);
            const QString original = row.contains(u'>') ? row.section(u'>', 0, 0) : QString();
            rows.append({now.section(u'=', 0, 0), now.section(u'=', 1), original});
        }
        return d.setAttributes(at(d, path), rows);
    };
}

Edit setInstruction(const char *path, const char *target, const char *data)
{
    return [=](Document &d) { return d.setInstruction(at(d, path), q(target), q(data)); };
}

Edit appendCopy(const char *node, const char *parent)
{
    return [=](Document &d) { return d.appendChild(at(d, parent), *d.cloneNode(at(d, node), true)); };
}

Edit replaceByCopy(const char *replaced, const char *node)
{
    return [=](Document &d) {
        return d.replaceChild(at(d, replaced)->parent(), *d.cloneNode(at(d, node), true), at(d, replaced));
    };
}

Edit both(const Edit &first, const Edit &second)
{
    return [=](Document &d) {
        const auto done = first(d);
        return done ? second(d) : done;
    };
}

// At document level.
Edit onTop(const std::function<platform::Result<void>(Document &, Node *top)> &operation)
{
    return [=](Document &d) { return operation(d, d.documentNode()); };
}

} // namespace

class TestEditing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void accepted_data();
    void accepted();
    void refused_data();
    void refused();
    void creationIsRefused_data();
    void creationIsRefused();
    void decodedValues();
    void failedCommandRollsBack();
    void formerNodesStayReadable();
};

void TestEditing::accepted_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char *name, const char *before, const Edit &edit, const char *after) {
        QTest::newRow(name) << QByteArray(before) << edit << QByteArray(after);
    };
    // Layout
    row("into the template", "<?xml version=\"1.0\"?>\r\n<Element/>", append("", "n"),
        "<?xml version=\"1.0\"?>\r\n<Element>\r\n  <n/>\r\n</Element>");
    row("joins lines", "<a>\n\t<b/>\n</a>", append("", "n"), "<a>\n\t<b/>\n\t<n/>\n</a>");
    row("joins lines, blank line kept apart", "<a>\n  <b/>\n\n  <c/>\n</a>", insertBefore("", "1", "n"),
        "<a>\n  <b/>\n  <n/>\n\n  <c/>\n</a>");
    row("inline stays inline", "<a><b/><c/></a>", insertBefore("", "1", "n"), "<a><b/><n/><c/></a>");
    row("mixed content is left alone", "<p>\n  one <b/>\n  <i/>\n</p>", append("", "n"),
        "<p>\n  one <b/>\n  <i/><n/>\n</p>");
    row("empty element on its own line", "<a>\n    <b/>\n</a>", append("0", "n"),
        "<a>\n    <b>\n        <n/>\n    </b>\n</a>");
    row("empty element inline", "<a><b></b></a>", append("0", "n"), "<a><b><n/></b></a>");
    row("text on its line does not make mixed content", "<a>\n  <b/>\n</a>",
        both(appendText("", "t"), append("", "n")), "<a>\n  <b/>\n  t\n  <n/>\n</a>");
    row("text needs no line", "<a>\n  <b />\n</a>", appendText("0", "t"), "<a>\n  <b>t</b>\n</a>");
    row("end tag already on its line", "<a>\n  <b>\n  </b>\n</a>", append("0", "n"),
        "<a>\n  <b>\n    <n/>\n  </b>\n</a>");
    row("preserved space", "<a xml:space='preserve'>\n  <b/>\n</a>", append("", "n"),
        "<a xml:space='preserve'>\n  <b/>\n<n/></a>");
    row("removal takes the line along", "<a>\n  <b/>\n  <c/>\n</a>", removal("0"), "<a>\n  <c/>\n</a>");
    row("last child gone", "<a>\n  <b/>\n</a>", removal("0"), "<a></a>");
    row("move between lines", "<a>\n  <b>\n    <x/>\n  </b>\n  <c/>\n</a>", move("0/0", "", "1"),
        "<a>\n  <b></b>\n  <x/>\n  <c/>\n</a>");
    row("move into an empty one", "<a>\n  <b/>\n  <c/>\n</a>", move("1", "0"),
        "<a>\n  <b>\n    <c/>\n  </b>\n</a>");
    row("reorder", "<a><b/><c/></a>", move("1", "", "0"), "<a><c/><b/></a>");
    row("replace keeps the place's line", "<a>\n <b/>\n\n <c>x</c></a>", replaceByCopy("0", "1"),
        "<a>\n <c>x</c>\n\n <c>x</c></a>");
    row("copy of an edited subtree", "<a>\n  <b/>\n</a>", both(append("0", "n"), appendCopy("0", "")),
        "<a>\n  <b>\n    <n/>\n  </b>\n  <b>\n    <n/>\n  </b>\n</a>");
    // Attributes
    row("value in its own quotes", "<a x = '1'\n y=\"2\"/>", setAttribute("", "x", "it's <&\""),
        "<a x = 'it&apos;s &lt;&amp;\"'\n y=\"2\"/>");
    row("same value, other spelling", "<a x='&#65;&lt;'/>", setAttribute("", "x", "A<"),
        "<a x='&#65;&lt;'/>");
    row("new attribute", "<a x='1' />", setAttribute("", "y", "a\n\tb"), "<a x='1' y=\"a&#10;&#9;b\" />");
    row("new attribute on a line", "<a x='1'\n   y='2'/>", setAttribute("", "z", "3"),
        "<a x='1'\n   y='2'\n   z=\"3\"/>");
    row("first attribute", "<a></a>", setAttribute("", "x", ""), "<a x=\"\"></a>");
    row("attribute removed", "<a x='1'  y = '2' z='3'>t</a>", removeAttribute("", "y"),
        "<a x='1' z='3'>t</a>");
    row("xml prefix", "<a/>", setAttribute("", "xml:lang", "en"), "<a xml:lang=\"en\"/>");
    row("attributes exchanged", "<a x = '&#65;'  y=\"2\" >t</a>", setAttributes("", {q("y>y=2"), q("x>x=A")}),
        "<a y=\"2\"  x = '&#65;' >t</a>");
    row("exchanged on lines", "<a x='1'\n   y='2'\n   z='3'/>",
        setAttributes("", {q("z>z=3"), q("x>x=1"), q("y>y=2")}), "<a z='3'\n   x='1'\n   y='2'/>");
    row("one changed, one new, one gone", "<a x = '&lt;' y='2' z=\"&#65;\"/>",
        setAttributes("", {q("n=<"), q("z>z=A"), q("x>x=it's")}),
        "<a n=\"&lt;\" z=\"&#65;\" x = 'it&apos;s'/>");
    row("name changed alone", "<a x = '&#65;'/>", setAttributes("", {q("x>y=A")}), "<a y = '&#65;'/>");
    row("names exchanged", "<a x='1' y='2'/>", setAttributes("", {q("x>y=1"), q("y>x=2")}),
        "<a y='1' x='2'/>");
    row("all attributes gone", "<a x='1'\n y='2' ><b/></a>", setAttributes("", {}), "<a ><b/></a>");
    row("the later of two values", "<a x='1' y='2' z='3'/>",
        setAttributes("", {q("x>x=1"), q("y>y=2"), q("z>x=3")}), "<a x='3' y='2'/>");
    row("same attributes", "<a  x='&#65;'\ny = '2'/>", setAttributes("", {q("x>x=A"), q("y>y=2")}),
        "<a  x='&#65;'\ny = '2'/>");
    row("another prefix for one namespace", "<a xmlns:p='u' xmlns:q='u' p:x='1'/>",
        setAttributes("", {q("xmlns:p>xmlns:p=u"), q("xmlns:q>xmlns:q=u"), q("p:x>q:x=1")}),
        "<a xmlns:p='u' xmlns:q='u' q:x='1'/>");
    // Data
    row("text escaped", "<a>x</a>", setData("0", "a<b&c]]>\rd"), "<a>a&lt;b&amp;c]]&gt;&#13;d</a>");
    row("text keeps its spelling", "<a>&#65;</a>", setData("0", "A"), "<a>&#65;</a>");
    row("the document's line ends", "<a>\r\nx</a>", setData("0", "y\nz"), "<a>y\r\nz</a>");
    row("comment", "<a><!--x--></a>", setData("0", " y "), "<a><!-- y --></a>");
    row("CDATA", "<a><![CDATA[x]]></a>", setData("0", "<&"), "<a><![CDATA[<&]]></a>");
    row("instruction", "<a><?p  x?></a>", setData("0", "y z"), "<a><?p y z?></a>");
    row("instruction with another target", "<a><?p  x?></a>", setInstruction("0", "T", "D"),
        "<a><?T D?></a>");
    row("instruction as it is", "<a><?p  x?></a>", setInstruction("0", "p", "x"), "<a><?p  x?></a>");
    row("instruction without data", "<a><?p x?></a>", setInstruction("0", "T", ""), "<a><?T?></a>");
    row("empty text", "<a>x<b/></a>", setData("0", ""), "<a><b/></a>");
    // Names
    row("rename", "<a x='1' ><b/>t</a >", renamed("", "p:q"), "<p:q x='1' ><b/>t</p:q >");
    row("rename an empty one", "<a><b /></a>", renamed("0", "c"), "<a><c /></a>");
    // Document level
    row("comment after the document element", "<?xml version='1.0'?>\n<a/>\n",
        onTop([](Document &d, Node *top) { return d.appendChild(top, *d.createComment(q("c"))); }),
        "<?xml version='1.0'?>\n<a/>\n<!--c-->\n");
    row("another document element in its place", "<!--c-->\n<a/>", onTop([](Document &d, Node *top) {
            return d.replaceChild(top, *d.createElement(q("b")), d.documentElement());
        }),
        "<!--c-->\n<b/>");
}

void TestEditing::accepted()
{
    QFETCH(QByteArray, before);
    QFETCH(Edit, edit);
    QFETCH(QByteArray, after);
    Document document;
    QVERIFY(!document.load(before));
    const quint64 revision = document.revision();
    document.beginCommand();
    const auto result = edit(document);
    QVERIFY2(result.ok(), qPrintable(result.reason()));
    ChangeSet changes = document.endCommand();
    QCOMPARE(document.xml(), after);
    QCOMPARE(document.revision() == revision, before == after);
    document.revert(changes);
    QCOMPARE(document.xml(), before);
    QCOMPARE(document.revision(), revision);
    document.reapply(changes);
    QCOMPARE(document.xml(), after);
}

void TestEditing::refused_data()
{
    QTest::addColumn<Edit>("edit");
    const auto row = [](const char *name, const Edit &edit) { QTest::newRow(name) << edit; };
    row("into its own subtree", move("", "0"));
    row("below a text", append("0/0", "n"));
    row("below a comment", append("1", "n"));
    row("reference elsewhere", insertBefore("0", "1", "n"));
    row("comment with two hyphens", setData("1", "a--b"));
    row("comment ending in a hyphen", setData("1", "a-"));
    row("CDATA ends early", setData("2", "a]]>b"));
    row("instruction ends early", setData("3", "a?>b"));
    row("control character", setData("0/0", "\x01"));
    row("attribute name", setAttribute("", "1a", ""));
    row("attribute with blanks", setAttribute("", "a b", ""));
    row("attribute value", setAttribute("", "a", "\x02"));
    row("unbound prefix declaration", setAttribute("", "xmlns:p", ""));
    row("xmlns prefix", setAttribute("", "xmlns:xmlns", "urn:x"));
    row("xml prefix bound elsewhere", setAttribute("", "xmlns:xml", "urn:x"));
    row("the same attribute by another prefix", setAttribute("4", "q:x", ""));
    row("prefix bound to the other's namespace", setAttribute("4", "xmlns:r", "urn:x"));
    row("moved to where its prefixes are one", removeAttribute("5/0", "xmlns:s"));
    row("binding removed between", removeAttribute("4/0", "xmlns:q"));
    row("element name", renamed("0", "a:b:c"));
    row("empty name", renamed("0", ""));
    row("the document element removed", removal(""));
    row("the document element moved",
        onTop([](Document &d, Node *) { return d.appendChild(at(d, "0"), at(d, "")); }));
    row("second document element",
        onTop([](Document &d, Node *top) { return d.appendChild(top, *d.createElement(q("n"))); }));
    row("text at document level",
        onTop([](Document &d, Node *top) { return d.appendChild(top, *d.createTextNode(q("n"))); }));
    row("before the declaration", onTop([](Document &d, Node *top) {
            return d.insertBefore(top, *d.createComment(q("n")), top->firstChild());
        }));
    row("document type removed",
        onTop([](Document &d, Node *top) { return d.removeChild(top, top->child(1)); }));
    row("comment for the document element", onTop([](Document &d, Node *top) {
            return d.replaceChild(top, *d.createComment(q("n")), d.documentElement());
        }));
    row("one attribute illegal", setAttributes("0", {q("x=1"), q("1a=2")}));
    row("one attribute twice by prefixes",
        setAttributes(
            "4", {q("xmlns:p>xmlns:p=urn:x"), q("xmlns:q>xmlns:q=urn:x"), q("p:x>p:x="), q("r:x>q:x=")}));
    row("one attribute twice below", setAttributes("5", {q("xmlns:p>xmlns:p=urn:s")}));
    row("target illegal", setInstruction("3", "a b", "x"));
    row("target of the declaration", setInstruction("3", "xml", ""));
    row("new instruction ends early", setInstruction("3", "p", "a?>b"));
    row("target of a comment", setInstruction("1", "p", ""));
    row("declaration's data", onTop([](Document &d, Node *top) { return d.setData(top->child(0), q("x")); }));
    row("nothing", onTop([](Document &d, Node *top) { return d.appendChild(top, nullptr); }));
}

void TestEditing::refused()
{
    QFETCH(Edit, edit);
    const QByteArray text
        = "<?xml version='1.0'?><!DOCTYPE a><a><b>t</b><!--c--><![CDATA[d]]><?p i?>"
          "<e xmlns:p='urn:x' xmlns:q='urn:x' xmlns:r='urn:y' p:x='' r:x=''><f xmlns:q='urn:z' "
          "p:y='' q:y=''/></e><g xmlns:p='urn:x' xmlns:s='urn:x'><h xmlns:s='urn:s' p:z='' s:z=''/>"
          "</g></a>";
    Document document;
    QVERIFY(!document.load(text));
    const quint64 revision = document.revision();
    const auto result = edit(document);
    QVERIFY(!result.ok());
    QVERIFY(!result.reason().isEmpty());
    QCOMPARE(document.xml(), text);
    QCOMPARE(document.revision(), revision);
}

void TestEditing::creationIsRefused_data()
{
    QTest::addColumn<Edit>("creation");
    const auto row = [](const char *name, const std::function<platform::Result<Node *>(Document &)> &create) {
        const Edit creation = [create](Document &d) -> platform::Result<void> {
            const auto made = create(d);
            return made ? platform::Result<void>() : platform::Failure{made.reason()};
        };
        QTest::newRow(name) << creation;
    };
    row("digit first", [](Document &d) { return d.createElement(q("1a")); });
    row("blank in name", [](Document &d) { return d.createElement(q("a b")); });
    row("markup in name", [](Document &d) { return d.createElement(q("a><b")); });
    row("xmlns as prefix", [](Document &d) { return d.createElement(q("xmlns:a")); });
    row("half a character", [](Document &d) { return d.createTextNode(QString(QChar(0xD800))); });
    row("hyphens", [](Document &d) { return d.createComment(q("--")); });
    row("target xml", [](Document &d) { return d.createProcessingInstruction(q("XML"), {}); });
    row("target with colon", [](Document &d) { return d.createProcessingInstruction(q("a:b"), {}); });
    row("instruction end", [](Document &d) { return d.createProcessingInstruction(q("a"), q("?>")); });
    row("CDATA end", [](Document &d) { return d.createCDATASection(q("]]>")); });
}

void TestEditing::creationIsRefused()
{
    QFETCH(Edit, creation);
    Document document;
    QVERIFY(!document.load("<a/>"));
    QVERIFY(!creation(document).ok());
}

void TestEditing::decodedValues()
{
    Document document;
    QVERIFY(
        !document.load("<!DOCTYPE a [<!ENTITY e 'E&#38;lt;'><!ENTITY f '&e;&e;'>]>\r\n"
                       "<a x='&lt;&f;\r\n\t.&#10;' xmlns:p='urn:p'>t&amp;\r\nu&e;<p:b/><q/><?i  d ?></a>"));
    const Node *root = document.documentElement();
    QCOMPARE(*root->attribute(q("x")), q("<E<E<  .\n"));
    QVERIFY(!root->attribute(q("y")));
    QCOMPARE(root->child(0)->data(), q("t&\nu"));
    QCOMPARE(root->child(1)->kind(), NodeKind::EntityReference);
    QCOMPARE(root->child(1)->name(), q("e"));
    QCOMPARE(root->child(2)->namespaceUri(), q("urn:p"));
    QCOMPARE(root->child(3)->namespaceUri(), QString());
    QCOMPARE(root->child(4)->name(), q("i"));
    QCOMPARE(root->child(4)->data(), q("d "));
    QCOMPARE(root->text(), q("t&\nuE<"));
    QCOMPARE(document.documentNode()->child(0)->name(), q("a"));

    // U+FEFF may begin a name, a value and a text.
    Document marked;
    QVERIFY(!marked.load("<\uFEFFa \uFEFFb='\uFEFFv'>\uFEFFt</\uFEFFa>"));
    Node *element = marked.documentElement();
    QCOMPARE(element->name(), QStringLiteral("\uFEFFa"));
    QCOMPARE(element->attributes().first().name.size(), 2);
    QCOMPARE(element->attributes().first().value.size(), 2);
    QCOMPARE(element->child(0)->data().size(), 2);
}

void TestEditing::failedCommandRollsBack()
{
    Document document;
    QVERIFY(!document.load("<a><b/></a>"));
    const quint64 revision = document.revision();
    document.beginCommand();
    QVERIFY(append("0", "n")(document).ok());
    QVERIFY(!renamed("", "1")(document).ok());
    document.rollBack();
    QCOMPARE(document.xml(), QByteArray("<a><b/></a>"));
    QCOMPARE(document.revision(), revision);
}

// A tree may still show the content before a load that failed.
void TestEditing::formerNodesStayReadable()
{
    Document document;
    QVERIFY(!document.load("<a><b x='1'/></a>"));
    const Node *shown = document.documentElement();
    QVERIFY(document.load("<a>"));
    QVERIFY(document.isEmpty());
    QVERIFY(document.load("<b>"));
    QCOMPARE(shown->child(0)->xml(), QByteArray("<b x='1'/>"));
    QVERIFY(!document.load("<c/>"));
    document.releaseFormer();
    QCOMPARE(document.documentElement()->name(), q("c"));
}

QTEST_APPLESS_MAIN(TestEditing)
#include "test_editing.moc"
