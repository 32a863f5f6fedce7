// The commands on nodes: document, tree and selection after each, and back and forth through undo.
#include "command_desk.h"

using namespace tree_test;

namespace {

#define ENTITIES "<!DOCTYPE r [<!ENTITY e \"<p:x/>\"><!ENTITY f \"&e;\">]>"

// In the steps a path selects, a word runs a command.
const std::tuple<const char *, QByteArray, const char *, QByteArray, const char *> cases[] = {
    {"element into an element", "<a><b/></a>", ". element", "<a><b/><Element/></a>",
     "a[1_]*+{b[2_] Element[3_]}"},
    {"into an empty one, which opens", "<a><b/></a>", "0 text", "<a><b>Text</b></a>",
     "a[1_]+{b[2_]*+{Text[3_]}}"},
    {"lines as the siblings have them", "<a>\r\n  <b/>\r\n</a>", "0 comment",
     "<a>\r\n  <b>\r\n    <!--Comment-->\r\n  </b>\r\n</a>", "a[1_]+{b[2_]*+{Comment[3_]}}"},
    {"beside a text in the middle", "<a>x<b/>y</a>", "0 cdata", "<a>x<![CDATA[Data]]><b/>y</a>",
     "a[1_]+{x[2_]* Data[5_] b[3_] y[4_]}"},
    {"up", "<a>\n <b/>\n\n  <c/></a>", "1 up", "<a>\n <c/>\n\n  <b/></a>", "a[1_]+{c[3_]* b[2_]}"},
    {"up with a subtree", "<a><b/><c><d><e/></d></c></a>", "1 up", "<a><c><d><e/></d></c><b/></a>",
     "a[1_]+{c[3_]*{d[4__]{e[5__]}} b[2_]}"},
    {"down past a text", "<a><b/>x<c/></a>", "0 down", "<a>x<b/><c/></a>", "a[1_]+{x[3_] b[2_]* c[4_]}"},
    {"up past a text; blanks keep their places", "<a>x<b/> <c/></a>", "1 up", "<a><b/>x <c/></a>",
     "a[1_]+{b[3_]* x[2_] c[4_]}"},
    {"left of a last grandchild", "<a><b><c/><d/></b></a>", "0/1 left", "<a><b><c/></b><d/></a>",
     "a[1_]+{b[2_]+{c[3_]} d[4_]*}"},
    {"left of the only grandchild", "<a><b><c/></b><d/></a>", "0/0 left", "<a><b></b><c/><d/></a>",
     "a[1_]+{b[2_] c[3_]* d[4_]}"},
    {"right into an element with children", "<a><b><c/></b><d><e/></d></a>", "1 right",
     "<a><b><c/><d><e/></d></b></a>", "a[1_]+{b[2_]+{c[3_] d[4_]*{e[5__]}}}"},
    {"right after a comment", "<a><!--b--><c/></a>", "1 right", "<a><!--b--><c/></a>",
     "a[1_]+{b[2_] c[3_]*}"},
    {"a prefix goes along", "<a><b xmlns:p=\"u\"><p:c/><d/></b></a>", "0/0 left",
     "<a><b xmlns:p=\"u\"><d/></b><p:c xmlns:p=\"u\"/></a>", "a[1_]+{b xmlns:p=\"u\"[2_]+{d[4_]} p:c[3_]*}"},
    {"also of what entities use", ENTITIES "<r><a xmlns:p=\"u\">&e;<b>&f;</b></a></r>", "0/1 left",
     ENTITIES "<r><a xmlns:p=\"u\">&e;</a><b xmlns:p=\"u\">&f;</b></r>",
     "r[1_]+{a xmlns:p=\"u\"[2_]+{[3_]} b xmlns:p=\"u\"[4_]*{[5__]}}"},
    {"a default namespace goes along", "<r><b xmlns=\"u\"><p:c xmlns:p=\"v\"><d/></p:c></b></r>", "0/0 left",
     "<r><b xmlns=\"u\"></b><p:c xmlns:p=\"v\" xmlns=\"u\"><d/></p:c></r>",
     "r[1_]+{b[2_] p:c xmlns=\"u\"[3_]*{d[4__]}}"},
    {"where it is used", "<r><b xmlns=\"u\"><p:c xmlns:p=\"v\"><d xmlns=\"w\"/></p:c></b></r>", "0/0 left",
     "<r><b xmlns=\"u\"></b><p:c xmlns:p=\"v\"><d xmlns=\"w\"/></p:c></r>", "r[1_]+{b[2_] p:c[3_]*{d[4__]}}"},
    {"none stays none", "<r><c/><b xmlns=\"u\"/></r>", "0 copy 1 paste",
     "<r><c/><b xmlns=\"u\"><c xmlns=\"\"/></b></r>", "r[1_]+{c[2_] b[3_]*+{c xmlns=\"\"[4_]}}"},
    {"cut is one step", "<a><b>x</b><c/></a>", "0 cut", "<a><c/></a>", "a[1_]*+{c[4_]}"},
    {"cut and paste elsewhere", "<a xmlns:p=\"u\"><p:b>x</p:b><c/></a>", "0 cut 0 paste",
     "<a xmlns:p=\"u\"><c><p:b>x</p:b></c></a>", "a xmlns:p=\"u\"[1_]+{c[4_]*+{p:b[5_]{x[6_]}}}"},
    {"deleting the root is a step", "<!--c--><a><b/></a>", "0 delete delete text",
     "<?xml version=\"1.0\"?>\r\n<Element>Text</Element>", "Element[1_]*+{Text[3_]}"},
    {"paste twice, levels deep", "<a><b><c>x</c></b><d/></a>", "0 copy 1 paste paste",
     "<a><b><c>x</c></b><d><b><c>x</c></b><b><c>x</c></b></d></a>",
     "a[1_]+{b[2_]{c[3_]{x[4_]}} d[5_]*+{b[6_]{c[7_]{x[8_]}} b[9_]{c[10_]{x[11_]}}}}"},
    {"delete a first child", "<a><b><c/></b><d/></a>", "0 delete", "<a><d/></a>", "a[1_]*+{d[4_]}"},
    {"delete a later child", "<a>\n  <b/>\n  <c/>\n</a>", "1 delete", "<a>\n  <b/>\n</a>", "a[1_]+{b[2_]*}"},
    {"to an attribute", "<a><b>x &amp; <![CDATA[]]></b></a>", "0/1 delete 0 attribute",
     "<a b=\"x &amp; \"><b>x &amp; </b></a>", "a b=\"x &amp; \"[1_]+{b[2_]*+{x & [3_]}}"},
    {"to an attribute that is there", "<a b=\"y\"><b>x</b></a>", "0 attribute attribute",
     "<a b=\"x\"><b>x</b></a>", "a b=\"x\"[1_]+{b[2_]*{x[3_]}}"},
    {"of a comment: empty", "<a><b><!--x--></b></a>", "0 attribute", "<a b=\"\"><b><!--x--></b></a>",
     "a b=\"\"[1_]+{b[2_]*{x[3_]}}"},
    {"the parent's label shows it all", "<a><b xmlns=\"u\"><c>x</c></b></a>", "0/0 attribute",
     "<a><b xmlns=\"u\" c=\"x\"><c>x</c></b></a>", "a[1_]+{b xmlns=\"u\" c=\"x\"[2_]+{c[3_]*{x[4_]}}}"},
    {"the root cannot", "<a>x</a>", ". attribute", "<a>x</a>", "a[1_]*+{x[2_]}"},
};

QString q(const char *text) { return QString::fromLatin1(text); }

void runSteps(CommandDesk &desk, const QString &steps)
{
    for (const QString &step : steps.split(u' ')) {
        if (!desk.run(step))
            desk.select(step == q(".") ? QString() : step);
    }
}

QString bare(QString shape) { return shape.remove(u'*').remove(u'+'); }

} // namespace

class NodeCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commands()
    {
        for (const auto &[name, before, steps, after, shape] : cases) {
            CommandDesk desk(before);
            runSteps(desk, q(steps));
            QCOMPARE(desk.document.xml(), after);
            QCOMPARE(desk.shape(), q(shape));
            QVERIFY2(desk.notes.size() == q(steps).contains(q("delete delete"))
                         && desk.dialogs.messages().isEmpty() && !desk.face.isBusy(),
                     name);
            while (!desk.commands.undoName().isEmpty())
                desk.run(q("undo"));
            QCOMPARE(desk.document.xml(), before);
            QCOMPARE(bare(desk.shape(false)), bare(CommandDesk(before).shape(false)));
            while (!desk.commands.redoName().isEmpty())
                desk.run(q("redo"));
            QCOMPARE(desk.document.xml(), after);
            QCOMPARE(desk.shape(), q(shape));
        }
    }

    // Selection, keys and what is open come back with each step.
    void undoBringsTheViewBack()
    {
        CommandDesk desk("<a><b><c><d/></c><e>x</e></b><f/></a>");
        desk.face.openAll();
        QStringList seen;
        const QString steps = q("0/0 right down 0/1 left copy 0 paste delete 0 attribute text up");
        desk.select(q("0/0"));
        runSteps(desk, steps);
        while (!desk.commands.undoName().isEmpty()) {
            seen.prepend(desk.shape().remove(u'*'));
            desk.run(q("undo"));
        }
        QVERIFY(seen.size() > 4);
        QCOMPARE(desk.shape(), q("a[1_]+{b[2_]+{c[3_]*+{d[4_]} e[5_]+{x[6_]}} f[7_]}"));
        for (const QString &shape : seen) {
            desk.run(q("redo"));
            QCOMPARE(desk.shape().remove(u'*'), shape); // selected is what was right after the step
        }
    }

    // A message, or without one a note for the status bar; either way all stays as it was.
    void refusals()
    {
        const QString one = q("Please select an 'Element' tag which has only one 'Child' tag");
        const QString topic = q("You can only paste into a Topic");
        const std::tuple<QByteArray, const char *, QString> rows[] = {
            {"<a><b>x<c/></b></a>", "0 attribute", one},
            {"<a><b/></a>", "0 attribute", one},
            {"<a>x</a>", "0 attribute", one},
            {"<a><b><c>x</c></b></a>", "0 attribute", one + q(", which itself has no 'Child' tags")},
            {"<a><!--x--></a>", "0 copy paste", topic},
            {"<a><p:b xmlns:p=\"u\">x</p:b></a>", "0 attribute", {}},
            {ENTITIES "<r><a xmlns:p=\"u\">&e;</a></r>", "0/0 left", {}},
            {"<r xmlns:p=\"u\" xmlns:q=\"u\"><a q:b=\"y\"><p:b>x</p:b></a></r>", "0/0 attribute", {}},
        };
        for (const auto &[text, steps, message] : rows) {
            CommandDesk desk(text);
            const QString before = desk.shape();
            desk.dialogs.answer(dialogs::Answer::Ok);
            runSteps(desk, q(steps));
            QCOMPARE(desk.dialogs.messages().size(), message.isEmpty() ? 0 : 1);
            QCOMPARE(desk.notes.size(), message.isEmpty() ? 1 : 0);
            for (const auto &shown : desk.dialogs.messages())
                QCOMPARE(shown.text, message);
            QCOMPARE(desk.document.xml(), text);
            QCOMPARE(bare(desk.shape()), bare(before));
            QVERIFY(desk.commands.undoName().isEmpty());
        }
    }

    void nothingChangedIsNoStep()
    {
        CommandDesk desk("<a><b>x</b><c/></a>");
        runSteps(desk, q("0 attribute attribute up 1 down"));
        desk.run(q("undo"));
        QCOMPARE(desk.document.xml(), QByteArray("<a><b>x</b><c/></a>"));
        QVERIFY(desk.commands.undoName().isEmpty());
        desk.run(q("element"));
        QVERIFY(desk.commands.redoName().isEmpty());
    }

    // What another window, another program, or the text put on the clipboard.
    void pastesWhatWasCopiedLast()
    {
        using Form = tree::Clip::Form;
        const auto text = Form::Text;
        const auto source = Form::Source;
        const QByteArray r = "<r/>";
        const std::tuple<QByteArray, Form, const char *, QByteArray> rows[] = {
            {r, text, "plain", "<r>plain</r>"},
            {r, text, "a < b && c > d &amp; e", "<r>a &lt; b &amp;&amp; c > d &amp;amp; e</r>"},
            {r, text, "for (i=0;i<n && i>m;i++)", "<r>for (i=0;i&lt;n &amp;&amp; i>m;i++)</r>"},
            {r, text, "<3 you", "<r>&lt;3 you</r>"},
            {"<r>\r\n</r>\r\n", text, "one\ntwo\r\n", "<r>one\r\ntwo\r\n</r>\r\n"},
            {r, text, "<b n='1'>x</b>", "<r><b n='1'>x</b></r>"},
            {r, text, "\n  <b/>\n\t<!--c--><?go on?>\n", "<r><b/><!--c--><?go on?></r>"},
            {r, text, "<![CDATA[a<b]]>", "<r><![CDATA[a<b]]></r>"},
            {r, text, "so <b>bold</b> <i>x</i> ", "<r>so <b>bold</b> <i>x</i> </r>"},
            {"<r>\n  <a/>\n</r>", text, "<b/> <c>\nd</c>", "<r>\n  <a/>\n  <b/>\n  <c>\nd</c>\n</r>"},
            {"<r xml:space=\"preserve\"> </r>", text, "<b/> <c/>",
             "<r xml:space=\"preserve\"> <b/> <c/></r>"},
            {"<r>\r\n<a/>\r\n</r>", text, "<b>\n</b>", "<r>\r\n<a/>\r\n<b>\r\n</b>\r\n</r>"},
            {"<r xmlns=\"d\" xmlns:p=\"u\"/>", text, "<p:b><c/></p:b>",
             "<r xmlns=\"d\" xmlns:p=\"u\"><p:b><c/></p:b></r>"},
            {r, text, "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<!DOCTYPE b>\n<b/>\n", "<r><b/></r>"},
            {r, text, "\xEF\xBB\xBF<?go?><!DOCTYPE b [<!ELEMENT b ANY>]><b>x</b><!--end-->",
             "<r><b>x</b></r>"},
            {"<r xmlns=\"d\"/>", text, "<?xml version=\"1.0\"?><b/>", "<r xmlns=\"d\"><b xmlns=\"\"/></r>"},
            {r, source, "5 &gt; 3 &#169;", "<r>5 &gt; 3 &#169;</r>"},
            {r, source, " ", "<r> </r>"},
            {"<!DOCTYPE r [<!ENTITY e 'x'>]><r/>", source, "&e;", "<!DOCTYPE r [<!ENTITY e 'x'>]><r>&e;</r>"},
        };
        for (const auto &[before, form, clip, after] : rows) {
            CommandDesk desk(before);
            desk.clipboard.set(form, QString::fromUtf8(clip));
            desk.run(q("paste"));
            QCOMPARE(desk.document.xml(), after);
            QVERIFY2(dom::checkWellFormed(after) == std::nullopt, clip);
            QCOMPARE(desk.notes.size(), QByteArray(clip).contains("end-->") ? 1 : 0);
            const QString shape = desk.shape();
            desk.run(q("undo"));
            QCOMPARE(desk.document.xml(), before);
            QVERIFY(desk.commands.undoName().isEmpty());
            desk.run(q("redo"));
            QCOMPARE(desk.document.xml(), after);
            QCOMPARE(desk.shape(), shape);
        }
    }

    // With the reason in a note; nothing changes.
    void refusesToPaste()
    {
        using Form = tree::Clip::Form;
        const QByteArray r = "<r/>";
        const QByteArray bomb = "<!DOCTYPE r [<!ENTITY e \"" + QByteArray(1000, 'x') + "\">]><r>"
            + QByteArray("&e;").repeated(9900) + "</r>";
        const std::tuple<QByteArray, Form, QByteArray> rows[] = {
            {r, Form::Text, ""},
            {r, Form::Text, "<b><c></b>"},
            {r, Form::Text, "</r><r>"},
            {r, Form::Text, "a <b>"},
            {r, Form::Text, "<b>\n&e;</b>"},
            {r, Form::Text, "<p:b/>"},
            {"<r xmlns:p=\"u\" xmlns:q=\"u\"/>", Form::Text, "<b p:n='' q:n=''/>"},
            {r, Form::Text, "<?xml version=\"1.0\"?><b>"},
            {r, Form::Text, "<!DOCTYPE b [<!ENTITY e 'x'>]><b>&e;</b>"},
            {r, Form::Text, "a\x0C"},
            {r, Form::Text, "<b>\x01</b>"},
            {r, Form::Text, "<b><?xml version='1.0'?></b>"},
            {r, Form::Source, "a & b"},
            {r, Form::Node, "<!DOCTYPE node [<!ENTITY e 'x'>]><node>&e;</node>"},
            {r, Form::Node, "<node/>"},
            {r, Form::Text,
             "<!DOCTYPE l [<!ENTITY a 'xxxxxxxxxx'><!ENTITY b '" + QByteArray("&a;").repeated(999)
                 + "'><!ENTITY c '" + QByteArray("&b;").repeated(999) + "'>]><l>"
                 + QByteArray("&c;").repeated(9) + "</l>"},
            {bomb, Form::Text, "<b>" + QByteArray("&e;").repeated(9900) + "</b>"},
        };
        for (const auto &[before, form, clip] : rows) {
            CommandDesk desk(before);
            QCOMPARE(desk.document.xml(), before);
            const QString shape = desk.shape();
            desk.clipboard.set(form, QString::fromUtf8(clip));
            desk.run(q("paste"));
            QVERIFY2(desk.notes.size() == 1 && desk.notes[0].size() > 4, clip.left(80));
            QCOMPARE(desk.document.xml(), before);
            QCOMPARE(desk.shape(), shape);
            QVERIFY(desk.commands.undoName().isEmpty());
        }
    }

    // A copied node is the same node in another window, and as text in another program.
    void copiesTravel()
    {
        using Form = tree::Clip::Form;
        const char *const scoped = "<a xmlns=\"d\" xmlns:p=\"u\"><p:b n='1'><c/></p:b><!--x-->1 &lt; 2</a>";
        const std::tuple<const char *, const char *, Form, const char *, QByteArray> rows[] = {
            {scoped, "0", Form::Node, "<a xmlns=\"d\" xmlns:p=\"u\"/>", "<p:b n='1'><c/></p:b>"},
            {scoped, "0", Form::Node, "<r/>", "<p:b n='1' xmlns=\"d\" xmlns:p=\"u\"><c/></p:b>"},
            {scoped, "0", Form::Text, "<r/>", "<p:b xmlns=\"d\" xmlns:p=\"u\" n='1'><c/></p:b>"},
            {scoped, "1", Form::Node, "<r/>", "<!--x-->"},
            {scoped, "2", Form::Node, "<r/>", "1 &lt; 2"},
            {scoped, "2", Form::Source, "<r/>", "1 &lt; 2"},
            {"<a><c/></a>", "0", Form::Node, "<r xmlns=\"d\"/>", "<c xmlns=\"\"/>"},
            {"<a><c/></a>", "0", Form::Text, "<r xmlns=\"d\"/>", "<c/>"},
            {"<a>x<b/> </a>", "0", Form::Node, "<r/>", "x"},
        };
        for (const auto &[from, path, form, into, pasted] : rows) {
            CommandDesk one(from);
            one.select(q(path));
            one.run(q("copy"));
            one.clipboard.passOn(form);
            CommandDesk other(into);
            other.clipboard = one.clipboard;
            other.run(q("paste"));
            QVERIFY2(other.document.xml().contains('>' + pasted + "</"), other.document.xml());
            QVERIFY(other.notes.isEmpty());
        }
    }

    void clipboardOutlivesTheDocument()
    {
        CommandDesk desk("<!DOCTYPE a [<!ENTITY e \"50&#37; &#38;#38; &#34;\">]><a xmlns:p=\"u\"><p:b "
                         "n='1'>x&e;</p:b></a>");
        desk.select(q("0"));
        desk.run(q("copy"));
        desk.load("<r/>");
        desk.run(q("paste"));
        QCOMPARE(desk.notes.size(), 1); // the entity is unknown here
        QCOMPARE(desk.shape(), q("r[1_]*"));
        desk.load("<!DOCTYPE r [<!ENTITY e \"y\">]>\n<r/>");
        desk.run(q("paste"));
        desk.run(q("paste"));
        const QByteArray copy("<p:b n='1' xmlns:p=\"u\">x&e;</p:b>");
        QCOMPARE(desk.document.xml().count(copy), 2);
    }

    // What is seen after a drop is what the document has, and what the next command goes by.
    void drops()
    {
        const std::tuple<const char *, const char *, const char *, QByteArray, QString> rows[] = {
            {"1", "0", "", "<a><t><d/><x/><y/></t></a>", q("a+{t+{d* x y}}")},
            {"1", "0", "0/2 up", "<a><t><d/><y/><x/></t></a>", q("a+{t+{d y* x}}")},
            {"1", "0", "0/0 down", "<a><t><x/><d/><y/></t></a>", q("a+{t+{x d* y}}")},
            {"1", "0", "0/1 right", "<a><t><d><x/></d><y/></t></a>", q("a+{t+{d+{x*} y}}")},
            {"1", "0", "0/0 delete", "<a><t><x/><y/></t></a>", q("a+{t*+{x y}}")},
            {"0/1", "0", "", "<a><t><y/><x/></t><d/></a>", q("a+{t+{y* x} d}")},
            {"0/1", ".", "", "<a><y/><t><x/></t><d/></a>", q("a+{y* t+{x} d}")},
            {"0", "1", "", "<a><d><t><x/><y/></t></d></a>", q("a+{d+{t*+{x y}}}")},
        };
        for (const auto &[dragged, target, steps, text, shape] : rows) {
            CommandDesk desk("<a><t><x/><y/></t><d/></a>");
            const QModelIndex onto = desk.at(q(target).remove(u'.'));
            desk.face.openAll();
            desk.select(q(dragged));
            QVERIFY(desk.commands.drop(desk.at(q(dragged)), onto).ok());
            const QString dropped = desk.shape();
            if (*steps)
                runSteps(desk, q(steps));
            QCOMPARE(desk.document.xml(), text);
            QCOMPARE(desk.shape(false), shape);
            if (*steps)
                desk.run(q("undo"));
            QCOMPARE(bare(desk.shape()), bare(dropped));
            desk.run(q("undo"));
            QCOMPARE(desk.document.xml(), QByteArray("<a><t><x/><y/></t><d/></a>"));
            QCOMPARE(bare(desk.shape(false)), q("a{t{x y} d}"));
            QCOMPARE(desk.face.selected(), desk.at(q(dragged))); // it stays selected there and back
        }
    }

    void aDropThatMovesNothingIsNoStep()
    {
        CommandDesk desk("<a><t><x/><y/></t><d/></a>");
        QVERIFY(desk.commands.drop(desk.at(q("0/0")), desk.at(q("0"))).ok());
        QVERIFY(desk.commands.undoName().isEmpty());
        QCOMPARE(desk.shape(false), q("a*+{t{x y} d}"));
    }
};

QTEST_GUILESS_MAIN(NodeCommandsTest)
#include "node_commands_test.moc"
