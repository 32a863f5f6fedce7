// The commands on nodes: document, tree and selection after each, and back and forth through undo.
#include "command_desk.h"

using namespace tree_test;

namespace {

struct Case
{
    const char *name;
    const char *before;
    const char *steps; // a path selects, a word runs a command
    const char *after;
    const char *shape;
};

constexpr Case cases[] = {
    {"element into an element", "<a><b/></a>", ". element", "<a><b/><Element/></a>",
     "a[1_]*+{b[2_] Element[3_]}"},
    {"into an empty one, which opens", "<a><b/></a>", "0 text", "<a><b>Text</b></a>",
     "a[1_]+{b[2_]*+{Text[3_]}}"},
    {"lines as the siblings have them", "<a>\r\n  <b/>\r\n</a>", "0 comment",
     "<a>\r\n  <b>\r\n    <!--Comment-->\r\n  </b>\r\n</a>", "a[1_]+{b[2_]*+{Comment[3_]}}"},
    {"beside a text in the middle", "<a>x<b/>y</a>", "0 cdata", "<a>x<![CDATA[Data]]><b/>y</a>",
     "a[1_]+{x[2_]* Data[5_] b[3_] y[4_]}"},
    {"beside the last child", "<a><b/><!--c--></a>", "1 pi", "<a><b/><!--c--><?Instruction?></a>",
     "a[1_]+{b[2_] c[3_]* Instruction[4_]}"},
    {"up", "<a>\n <b/>\n\n  <c/></a>", "1 up", "<a>\n <c/>\n\n  <b/></a>", "a[1_]+{c[3_]* b[2_]}"},
    {"up with a subtree", "<a><b/><c><d><e/></d></c></a>", "1 up", "<a><c><d><e/></d></c><b/></a>",
     "a[1_]+{c[3_]*{d[4__]{e[5__]}} b[2_]}"},
    {"down past a text", "<a><b/>x<c/></a>", "0 down", "<a>x<b/><c/></a>", "a[1_]+{x[3_] b[2_]* c[4_]}"},
    {"up past a text, whose blanks are its own", "<a>x<b/> <c/></a>", "1 up", "<a><b/>x<c/></a>",
     "a[1_]+{b[3_]* x[2_] c[4_]}"},
    {"up at the top", "<a><b/><c/></a>", "0 up", "<a><b/><c/></a>", "a[1_]+{b[2_]* c[3_]}"},
    {"down at the bottom", "<a><b/><c/></a>", "1 down", "<a><b/><c/></a>", "a[1_]+{b[2_] c[3_]*}"},
    {"left of a last grandchild", "<a><b><c/><d/></b></a>", "0/1 left", "<a><b><c/></b><d/></a>",
     "a[1_]+{b[2_]+{c[3_]} d[4_]*}"},
    {"left of the only grandchild", "<a><b><c/></b><d/></a>", "0/0 left", "<a><b></b><c/><d/></a>",
     "a[1_]+{b[2_] c[3_]* d[4_]}"},
    {"left below the root", "<a><b/></a>", "0 left", "<a><b/></a>", "a[1_]+{b[2_]*}"},
    {"right into an element with children", "<a><b><c/></b><d><e/></d></a>", "1 right",
     "<a><b><c/><d><e/></d></b></a>", "a[1_]+{b[2_]+{c[3_] d[4_]*{e[5__]}}}"},
    {"right after a comment", "<a><!--b--><c/></a>", "1 right", "<a><!--b--><c/></a>",
     "a[1_]+{b[2_] c[3_]*}"},
    {"a prefix goes along", "<a><b xmlns:p=\"u\"><p:c/><d/></b></a>", "0/0 left",
     "<a><b xmlns:p=\"u\"><d/></b><p:c xmlns:p=\"u\"/></a>", "a[1_]+{b xmlns:p=\"u\"[2_]+{d[4_]} p:c[3_]*}"},
    {"paste a text", "<a><b>x</b></a>", "0/0 copy . paste", "<a><b>x</b>x</a>",
     "a[1_]*+{b[2_]+{x[3_]} x[4_]}"},
    {"paste twice, levels deep", "<a><b><c>x</c></b><d/></a>", "0 copy 1 paste paste",
     "<a><b><c>x</c></b><d><b><c>x</c></b><b><c>x</c></b></d></a>",
     "a[1_]+{b[2_]{c[3_]{x[4_]}} d[5_]*{b[6_]{c[7_]{x[8_]}} b[9_]{c[10_]{x[11_]}}}}"},
    {"paste beneath itself", "<a><b/></a>", "0 copy paste", "<a><b><b/></b></a>", "a[1_]+{b[2_]*{b[3_]}}"},
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

void runSteps(CommandDesk &desk, const QString &steps)
{
    for (const QString &step : steps.split(u' ')) {
        if (!desk.run(step))
            desk.select(step == QStringLiteral(".") ? QString() : step);
    }
}

QString bare(QString shape) { return shape.remove(u'*').remove(u'+'); }

} // namespace

class NodeCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void command_data()
    {
        QTest::addColumn<int>("number");
        for (int i = 0; i < int(std::size(cases)); ++i)
            QTest::newRow(cases[i].name) << i;
    }

    void command()
    {
        QFETCH(int, number);
        const Case &row = cases[number];
        CommandDesk desk(row.before);
        runSteps(desk, QString::fromLatin1(row.steps));
        QCOMPARE(desk.document.xml(), QByteArray(row.after));
        QCOMPARE(desk.shape(), QString::fromUtf8(row.shape));
        QVERIFY(desk.notes.isEmpty() && desk.dialogs.messages().isEmpty() && !desk.face.isBusy());
        while (!desk.commands.undoName().isEmpty())
            desk.run(QStringLiteral("undo"));
        QCOMPARE(desk.document.xml(), QByteArray(row.before));
        QCOMPARE(bare(desk.shape(false)), bare(CommandDesk(row.before).shape(false)));
        while (!desk.commands.redoName().isEmpty())
            desk.run(QStringLiteral("redo"));
        QCOMPARE(desk.document.xml(), QByteArray(row.after));
        QCOMPARE(desk.shape(), QString::fromUtf8(row.shape));
    }

    // Selection, keys and what is open come back with each step.
    void undoBringsTheViewBack()
    {
        CommandDesk desk("<a><b><c><d/></c><e>x</e></b><f/></a>");
        desk.face.openAll();
        QStringList seen;
        const QString steps
            = QStringLiteral("0/0 right down 0/1 left copy 0 paste delete 0 attribute text up");
        desk.select(QStringLiteral("0/0"));
        runSteps(desk, steps);
        while (!desk.commands.undoName().isEmpty()) {
            seen.prepend(desk.shape().remove(u'*'));
            desk.run(QStringLiteral("undo"));
        }
        QVERIFY(seen.size() > 4);
        QCOMPARE(desk.shape(), QStringLiteral("a[1_]+{b[2_]+{c[3_]*+{d[4_]} e[5_]+{x[6_]}} f[7_]}"));
        for (const QString &shape : seen) {
            desk.run(QStringLiteral("redo"));
            QCOMPARE(desk.shape().remove(u'*'), shape); // selected is what was right after the step
        }
    }

    // A message, or without one a note for the status bar; either way all stays as it was.
    void refusals_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const char *text, const char *steps, const QString &message) {
            QTest::newRow(name) << QByteArray(text) << QString::fromLatin1(steps) << message;
        };
        const QString one = QStringLiteral("Please select an 'Element' tag which has only one 'Child' tag");
        const QString topic = QStringLiteral("You can only paste into a Topic");
        row("two children", "<a><b>x<c/></b></a>", "0 attribute", one);
        row("no child", "<a><b/></a>", "0 attribute", one);
        row("a text", "<a>x</a>", "0 attribute", one);
        row("a deep child", "<a><b><c>x</c></b></a>", "0 attribute",
            one + QStringLiteral(", which itself has no 'Child' tags"));
        row("into a comment", "<a><!--x--></a>", "0 copy paste", topic);
        row("a prefix the parent does not know", "<a><p:b xmlns:p=\"u\">x</p:b></a>", "0 attribute", {});
        row("the same attribute twice", "<r xmlns:p=\"u\" xmlns:q=\"u\"><a q:b=\"y\"><p:b>x</p:b></a></r>",
            "0/0 attribute", {});
    }

    void refusals()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, steps);
        QFETCH(QString, message);
        CommandDesk desk(text);
        const QString before = desk.shape();
        desk.dialogs.answer(dialogs::Answer::Ok);
        runSteps(desk, steps);
        QCOMPARE(desk.dialogs.messages().size(), message.isEmpty() ? 0 : 1);
        QCOMPARE(desk.notes.size(), message.isEmpty() ? 1 : 0);
        for (const auto &shown : desk.dialogs.messages()) {
            QCOMPARE(shown.text, message);
            QVERIFY(shown.icon == dialogs::Icon::Exclamation && shown.buttons == dialogs::Buttons::Ok);
        }
        QCOMPARE(desk.document.xml(), text);
        QCOMPARE(bare(desk.shape()), bare(before));
        QVERIFY(desk.commands.undoName().isEmpty());
    }

    void nothingChangedIsNoStep()
    {
        CommandDesk desk("<a><b>x</b><c/></a>");
        runSteps(desk, QStringLiteral("0 attribute attribute up 1 down"));
        desk.run(QStringLiteral("undo"));
        QCOMPARE(desk.document.xml(), QByteArray("<a><b>x</b><c/></a>"));
        QVERIFY(desk.commands.undoName().isEmpty());
        desk.run(QStringLiteral("element"));
        QVERIFY(desk.commands.redoName().isEmpty());
    }

    // Edits of others land whole or not at all, the rows that follow them included.
    void editsOfOthers()
    {
        CommandDesk desk("<a><b>x</b></a>");
        dom::Node *root = desk.document.documentElement();
        for (const bool fails : {true, false}) {
            const auto done = desk.commands.edit(QStringLiteral("X"), [&]() -> platform::Result<void> {
                (void)desk.document.renameElement(root, QStringLiteral("z"));
                (void)desk.document.removeChild(root->firstChild(), root->firstChild()->firstChild());
                (void)desk.document.appendChild(root, *desk.document.createElement(QStringLiteral("n")));
                return fails ? platform::Result<void>(platform::Failure{QStringLiteral("no")})
                             : platform::Result<void>();
            });
            QCOMPARE(done.reason(), fails ? QStringLiteral("no") : QString());
            QCOMPARE(desk.shape(false), fails ? QStringLiteral("a*+{b{x}}") : QStringLiteral("z*+{b n}"));
            QCOMPARE(desk.commands.undoName(), fails ? QString() : QStringLiteral("X"));
        }
        desk.run(QStringLiteral("undo"));
        QCOMPARE(desk.document.xml(), QByteArray("<a><b>x</b></a>"));
        QVERIFY(desk.document.setAttribute(root, QStringLiteral("n"), {}).ok()); // by no command
        QVERIFY(desk.commands.redoName().isEmpty());
    }

    void clipboardOutlivesTheDocument()
    {
        CommandDesk desk("<!DOCTYPE a [<!ENTITY e \"50&#37; &#38;#38; &#34;\">]><a xmlns:p=\"u\"><p:b "
                         "n='1'>x&e;</p:b></a>");
        desk.select(QStringLiteral("0"));
        desk.run(QStringLiteral("copy"));
        desk.load("<r/>");
        desk.run(QStringLiteral("paste"));
        QCOMPARE(desk.notes.size(), 1); // the entity is unknown here
        QCOMPARE(desk.shape(), QStringLiteral("r[1_]*"));
        desk.load("<!DOCTYPE r [<!ENTITY e \"y\">]>\n<r/>");
        desk.run(QStringLiteral("paste"));
        desk.run(QStringLiteral("paste"));
        const QByteArray copy("<p:b xmlns:p=\"u\" n='1'>x&e;</p:b>");
        QCOMPARE(desk.document.xml().count(copy), 2);
        for (const char *path : {"0", "1", "2", "3"}) {
            desk.load("<r>x<!--c--><![CDATA[d]]><?i j?></r>");
            desk.select(QString::fromLatin1(path));
            desk.run(QStringLiteral("copy"));
            const QByteArray markup = desk.model.GetNodepar(desk.face.selected())->xml();
            desk.load("<s/>");
            desk.run(QStringLiteral("paste"));
            QCOMPARE(desk.document.xml(), "<s>" + markup + "</s>");
        }
    }

    // After a drop rows and document differ in order: what is seen to happen happens.
    void movesAfterADrop_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("shape");
        QTest::newRow("dropped") << QString() << QByteArray("<a><t><d/><x/><y/></t></a>") << "a{t{x y d}}";
        QTest::newRow("up") << "0/2 up" << QByteArray("<a><t><x/><d/><y/></t></a>") << "a{t{x d y}}";
        QTest::newRow("up, of another")
            << "0/1 up" << QByteArray("<a><t><d/><y/><x/></t></a>") << "a{t{y x d}}";
        QTest::newRow("down, past it")
            << "0/1 down" << QByteArray("<a><t><d/><y/><x/></t></a>") << "a{t{x d y}}";
        QTest::newRow("right") << "0/2 right" << QByteArray("<a><t><x/><y><d/></y></t></a>")
                               << "a{t{x y{d}}}";
        QTest::newRow("delete") << "0/0 delete" << QByteArray("<a><t><d/><y/></t></a>") << "a{t{y d}}";
    }

    void movesAfterADrop()
    {
        QFETCH(QString, steps);
        CommandDesk desk("<a><t><x/><y/></t><d/></a>");
        QVERIFY(desk.commands.drop(desk.at(QStringLiteral("1")), desk.at(QStringLiteral("0"))).ok());
        const QString dropped = desk.shape();
        if (!steps.isEmpty())
            runSteps(desk, steps);
        QTEST(desk.document.xml(), "text");
        QTEST(bare(desk.shape(false)), "shape");
        if (!steps.isEmpty())
            desk.run(QStringLiteral("undo"));
        QCOMPARE(bare(desk.shape()), bare(dropped));
        desk.run(QStringLiteral("undo"));
        QCOMPARE(desk.document.xml(), QByteArray("<a><t><x/><y/></t><d/></a>"));
        QCOMPARE(bare(desk.shape(false)), QStringLiteral("a{t{x y} d}"));
    }
};

QTEST_GUILESS_MAIN(NodeCommandsTest)
#include "node_commands_test.moc"
