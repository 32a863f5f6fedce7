// What the Node Properties dialog makes of a document, and what it keeps from it.
#include "plain_clipboard.h"
#include "plain_face.h"
#include "propfrm_desk.h"
#include "tree/node_commands.h"

#include <QComboBox>
#include <QStatusBar>
#include <QTest>

using namespace tree_test;

namespace {

#define CO "<!DOCTYPE r [<!ENTITY co 'Company'>]>"

// A node's path, the text before and after, the node's label then, and the acts on the dialog.
const std::tuple<const char *, QByteArray, QByteArray, const char *, const char *> rows[] = {
    {"0", "<r><a x = '&#65;'\n y=\"&lt;\" /></r>", "<r><a x = '&#65;'\n y=\"&lt;\" /></r>",
     "a x = '&#65;' y=\"&lt;\"", ""},
    {"", "<r>one <b/>two<!--c--></r>", "<n>one <b/>two<!--c--></n>", "n", "elname n"},
    {"", "<r a='1' b='&#66;' c='3'/>", "<r c='3' a='1' b='&#66;'/>", "r c='3' a='1' b='&#66;'",
     "select 2 | cmdatup | cmdatup"},
    {"", "<r a='1' b='2'/>", "<r b='2' a='1'/>", "r b='2' a='1'", "cmdatdown"},
    {"", "<r a='1' b='2'><c/>t</r>", "<r><c/>t</r>", "r", "cmdconvert"},
    {"", "<r a='1' b='2' c='3'/>", "<r a='1' c='3'/>", "r a='1' c='3'", "select 1 | cmdremove"},
    {"", "<r a = '&#65;' b='2'/>", "<r a = 'it&apos;s' b='2'/>", "r a = 'it&apos;s' b='2'",
     "cmdmodify a it's"},
    {"", "<r a='x&#10;y'/>", "<r a='x&#10;y'/>", "r a='x&#10;y'", "cmdmodify | cmdOK"},
    {"", "<r a='1'/>", "<r a='1' n=\"&lt;&quot;&amp;\"/>", "r a='1' n=\"&lt;&quot;&amp;\"", "cmdadd n <\"&"},
    {"", "<r a='1' b='2'/>", "<r a='2'/>", "r a='2'", "select 1 | cmdmodify a 2"},
    {"", "<r/>", "<p:r xmlns:p=\"urn:x\"/>", "p:r xmlns:p=\"urn:x\"", "elname p:r | cmdadd xmlns:p urn:x"},
    // references and what they stand in keep their looks
    {"", CO "<r a='&co; Ltd' b='&amp;co;'/>", CO "<r a='&co; Ltd!' b='&amp;co;'/>",
     "r a='&co; Ltd!' b='&amp;co;'", "cmdmodify a &co; Ltd!"},
    {"", CO "<r a='1'/>", CO "<r a='&co;&amp;co;&amp;'/>", "r a='&co;&amp;co;&amp;'",
     "cmdmodify a &co;&amp;co;&"},
    {"", CO "<r xmlns:p='&co;' p:a='&#49;'/>", CO "<r xmlns:p='&co;' p:a='&#49;2'/>",
     "r xmlns:p='&co;' p:a='&#49;2'", "select 1 | cmdmodify p:a 12"},
    {"0", CO "<r>5&#160;km</r>", CO "<r>5&#160;km&co;&amp;co;</r>", "5\xC2\xA0km",
     "textbx 5\xC2\xA0km&co;&amp;co;"},
    // declared by the document type alone
    {"0", "<!DOCTYPE r [<!ATTLIST r xmlns:p CDATA #FIXED 'u'>]><r><p:a/></r>",
     "<!DOCTYPE r [<!ATTLIST r xmlns:p CDATA #FIXED 'u'>]><r><p:a/></r>", "p:a", ""},
    {"0", "<r><!--c--></r>", "<r><!-- \xC3\xA4 --></r>", " \xC3\xA4 ", "comentbox  \xC3\xA4 "},
    {"0", "<r><![CDATA[c]]></r>", "<r><![CDATA[a<b&&c]]></r>", "a<b&&c", "cdatbox a<b&&c"},
    {"0", "<r>\r\n a&#65;</r>", "<r>&lt;x\r\ny</r>", "<x\ny", "textbx <x\ny"}, // its line ends
    {"0", "<r>a&#65;&#13;\nb</r>", "<r>a&#65;&#13;\nb</r>", "aA\r\nb", ""},
    {"0", "<r>a<b/></r>", "<r><b/></r>", "", "textbx"},
    {"0", "<r><?p  x?></r>", "<r><?T D e?></r>", "T D e", "txtprocall T | txtdata D e"},
};

const QByteArray odd
    = "<!DOCTYPE r [<!ENTITY f '<q:y/>'>]><r xmlns:p='urn:p' xmlns:q='urn:q'><!--c--><![CDATA[d]]>"
      "t<?p i?><e><p:x/>&f;</e></r>";

// Each field that must refuse what the acts put there.
const std::tuple<const char *, const char *, const char *> refusals[] = {
    {"", "elname", "elname 1a"},
    {"", "elname", "elname"},
    {"", "elname", "elname z:r"}, // undeclared
    {"", "ListView1", "cmdadd z:r 1"},
    {"", "ListView1", "select 1 | cmdremove"}, // used by an entity
    {"", "ListView1", "elname n | cmdconvert"}, // the declaration is used below
    {"0", "comentbox", "comentbox a--b"},
    {"1", "cdatbox", "cdatbox a]]>b"},
    {"2", "textbx", "textbx a\x01"},
    {"3", "txtprocall", "txtprocall a b"},
    {"3", "txtdata", "txtdata ?>"},
};

} // namespace

class PropfrmTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ok()
    {
        for (const auto &[path, before, after, label, acts] : rows) {
            Desk desk(before, path);
            QVERIFY2(desk.opened, before);
            const dom::Node *node = desk.model.GetNodepar(desk.node);
            desk.act(acts);
            desk.press("OKButton");
            QVERIFY2(!desk.form->isVisible(), before);
            QCOMPARE(desk.document.xml(), after);
            QCOMPARE(desk.label(), q(label));
            QCOMPARE(desk.model.GetNodepar(desk.node), node);
            QVERIFY(desk.dialogs.messages().isEmpty());
        }
    }

    // Opened and answered with OK, whatever there is to be written in many ways.
    void okAloneChangesNothing()
    {
        static constexpr const char *leaves[] = {"a&#160;&#x3E;&gt;&quot;]]",
                                                 "\r\n\tb\r\n",
                                                 "&amp;co;&#38;&#13;\n",
                                                 "\xEF\xBB\xBF&#65;",
                                                 "<![CDATA[ &co; \r]]>",
                                                 "<!-- c\r-->",
                                                 "<?p \t d ?>",
                                                 "<?p?>",
                                                 "&co;"};
        static constexpr const char *values[]
            = {"&co; &lt;&#60;", "a\r\n\tb&#10;&#9;", "&amp;co;&gone;&amp;gone;", "", "\xEF\xBB\xBF"};
        QByteArray text = "<!DOCTYPE r SYSTEM 'gone.dtd' [<!ENTITY co 'Company'>]>\r\n<r>";
        for (const char *leaf : leaves) {
            for (const char *value : values)
                text += QByteArray("<e  a = '") + value + "'\r\n b=\"" + value + "\" >" + leaf + "<f/></e >";
        }
        text += "</r>";
        dom::Document document;
        QVERIFY(!document.load(text));
        TreeModel model(document);
        model.nametree(document.documentElement());
        dialogs::ScriptedDialogs none;
        PropertyServices services{none, {}, {}};
        QModelIndexList open{model.index(0, 0)};
        int answered = 0;
        while (!open.isEmpty()) {
            const QModelIndex node = open.takeLast();
            for (int row = 0; row < model.rowCount(node); ++row)
                open.append(model.index(row, 0, node));
            if (!Propfrm::edits(node))
                continue;
            Propfrm form(services, document, model, node);
            const quint64 revision = document.revision();
            form.accept();
            QCOMPARE(form.result(), int(QDialog::Accepted));
            QCOMPARE(document.revision(), revision);
            ++answered;
        }
        QCOMPARE(document.xml(), text);
        QVERIFY(answered > 100);
    }

    void enterIsALineFeedAlone()
    {
        Desk desk("<r>\n\t\tabc&#160;\n\t<b/></r>", "0");
        control::CodeEditor *box = desk.box("textbx");
        box->placeCaret(1, 5);
        QTest::keyClick(box, Qt::Key_Return);
        QTest::keyClicks(box, q("<a></"));
        desk.press("OKButton");
        QCOMPARE(desk.document.xml(), "<r>\n\t\tabc\n&lt;a>&lt;/&#160;\n\t<b/></r>");
    }

    void refused()
    {
        for (const auto &[path, field, acts] : refusals) {
            Desk desk(odd, path);
            const QString label = desk.label();
            const quint64 revision = desk.document.revision();
            desk.act(acts);
            desk.press("OKButton");
            QVERIFY2(desk.form->isVisible(), field);
            QCOMPARE(desk.document.xml(), odd);
            QCOMPARE(desk.document.revision(), revision);
            QCOMPARE(desk.label(), label);
            const QString reason = desk.find<QStatusBar>("StatusBar1")->currentMessage();
            QVERIFY(!reason.isEmpty());
            QCOMPARE(desk.find<QWidget>(field)->accessibleDescription(), reason);
            QCOMPARE(QApplication::focusWidget(), desk.find<QWidget>(field));
        }
    }

    void cancelChangesNothing()
    {
        const QByteArray text = "<r a='1'><b/></r>";
        Desk desk(text);
        desk.line("elname")->setText(q("n"));
        desk.press("cmdconvert");
        QTest::keyClick(desk.list(), Qt::Key_Escape);
        QVERIFY(!desk.form->isVisible());
        QCOMPARE(desk.document.xml(), text);
    }

    void oneCommand()
    {
        const QByteArray text = "<r><p:a xmlns:p='urn:p' x='1'/></r>";
        Desk desk(text, "0");
        tree_test::PlainFace face(desk.model);
        PlainClipboard clipboard;
        NodeCommands commands(desk.model, desk.document, face, desk.dialogs, clipboard);
        desk.services.run = [&](const QString &name, const PropertyServices::Edit &edit) {
            return commands.edit(name, edit);
        };
        QCOMPARE(desk.label(), q("p:a x='1'"));
        desk.line("elname")->setText(q("p:n"));
        desk.attributeBy("cmdadd", "y", "2");
        desk.press("OKButton");
        QCOMPARE(desk.label(), q("p:n xmlns:p='urn:p' x='1' y=\"2\""));
        QCOMPARE(commands.undoName(), q("Edit Node"));
        commands.undo();
        QCOMPARE(desk.document.xml(), text);
        QCOMPARE(desk.label(), q("p:a x='1'"));
        QVERIFY(commands.undoName().isEmpty());
    }

    void keyboardAlone()
    {
        Desk desk("<r a='1' b='2'/>");
        const auto type = [](const char *text) { QTest::keyClicks(QApplication::focusWidget(), q(text)); };
        const auto key = [](Qt::Key code, Qt::KeyboardModifiers held = Qt::NoModifier) {
            QTest::keyClick(QApplication::focusWidget(), code, held);
        };
        type("n"); // in place of the selected name
        key(Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), desk.list());
        key(Qt::Key_Insert);
        Desk::turnTo(desk.attribute());
        type("z");
        key(Qt::Key_Tab);
        type("9");
        key(Qt::Key_Return);
        Desk::turnTo(desk.form.get());
        QCOMPARE(QApplication::focusWidget(), desk.list());
        key(Qt::Key_Up, Qt::ControlModifier);
        key(Qt::Key_Up);
        key(Qt::Key_Delete);
        key(Qt::Key_F2);
        Desk::turnTo(desk.attribute());
        QCOMPARE(desk.line("txtname")->text(), q("z"));
        type("8");
        key(Qt::Key_Return);
        Desk::turnTo(desk.form.get());
        key(Qt::Key_Down, Qt::ControlModifier);
        key(Qt::Key_Return); // after a change of an attribute too: OK
        QVERIFY(!desk.form->isVisible());
        QCOMPARE(desk.document.xml(), "<n b='2' z=\"8\"/>");
    }

    // A text as it was inserted is there to be replaced, and no other.
    void typingReplacesThePlaceholder()
    {
        for (const auto &[before, after] :
             {std::pair("<r>Text</r>", "<r>B</r>"), std::pair("<r>Texts</r>", "<r>BTexts</r>")}) {
            Desk desk(before, "0");
            QTest::keyClicks(QApplication::focusWidget(), q("B"));
            desk.press("OKButton");
            QCOMPARE(desk.document.xml(), after);
        }
    }

    // Not what OK does.
    void enterPressesTheButtonWithTheFocus()
    {
        Desk desk("<r a='1' b='2'/>");
        const auto enter = [&desk](const char *button) {
            desk.find<QPushButton>(button)->setFocus();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        };
        enter("cmdremove");
        QCOMPARE(desk.list()->count(), 1);
        enter("cmdadd");
        Desk::turnTo(desk.attribute());
        desk.line("txtname")->setText(q("n"));
        enter("cmdcancel");
        QVERIFY(!desk.attribute()->isVisible());
        QCOMPARE(desk.list()->count(), 1);
        Desk::turnTo(desk.form.get());
        enter("CancelButton");
        QVERIFY(!desk.form->isVisible());
        QCOMPARE(desk.document.xml(), "<r a='1' b='2'/>");
    }

    void keysOfCodeBoxes()
    {
        Desk desk("<r><!--c--></r>", "0");
        QWidget *box = desk.box("comentbox");
        QCOMPARE(QApplication::focusWidget(), box);
        QTest::keyClicks(box, q("a"));
        QTest::keyClick(box, Qt::Key_Return);
        QVERIFY(desk.form->isVisible());
        QTest::keyClick(box, Qt::Key_Tab, Qt::ControlModifier);
        QVERIFY(QApplication::focusWidget() != box);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Enter, Qt::ControlModifier);
        QVERIFY(!desk.form->isVisible());
        QCOMPARE(desk.document.xml(), "<r><!--a\nc--></r>");
        desk.form->show();
        QTest::keyClick(box, Qt::Key_Escape);
        QVERIFY(!desk.form->isVisible());
    }

    void symbols()
    {
        static constexpr const char *boxes[] = {"txtdata", "comentbox", "cdatbox", "textbx"};
        for (int number = 0; number < 5; ++number) {
            const bool isElement
                = number == 4; // no box, but a name: the code stays that of whoever asked last
            const int target = isElement ? 7 : number + 1;
            Desk desk("<r><?p abc?><!--abc--><![CDATA[abc]]>abc</r>",
                      isElement ? QByteArray() : QByteArray::number(number));
            desk.services.symbolTarget = 7;
            desk.form->findChild<QPushButton *>(q("cmdsynbols"), Qt::FindDirectChildrenOnly)->click();
            QCOMPARE(desk.askedFor.first, target);
            for (const char *name : boxes) {
                desk.box(name)->loadText("abc");
                desk.box(name)->execute(137); // select all
            }
            desk.line("elname")->end(false);
            desk.form->insertSymbols(target, q("\xC2\xA9"));
            for (int i = 0; i < 4; ++i)
                QCOMPARE(desk.box(boxes[i])->text(), i == number ? "\xC2\xA9" : "abc");
            if (isElement)
                QCOMPARE(desk.line("elname")->text(), q("r\xC2\xA9"));
        }
    }

    // Each language colours its own words, whatever was chosen before.
    void languages()
    {
        using S = QsciScintillaBase;
        const std::tuple<const char *, const char *, bool> steps[] = {
            {"C/C++", "namespace", true},
            {"<none>", "if", false},
            {"Java", "typename", false},
            {"XML", "<b>", true},
        };
        Desk desk("<r><![CDATA[x]]></r>", "0");
        auto *combo = desk.find<QComboBox>("Combo1");
        control::CodeEditor &box = *desk.box("cdatbox");
        const auto ink
            = [&box] { return box.send(S::SCI_STYLEGETFORE, ulong(box.send(S::SCI_GETSTYLEAT, 1))); };
        for (const auto &[language, text, coloured] : steps) {
            combo->setCurrentText(q(language));
            box.replaceText(text);
            box.send(S::SCI_COLOURISE, 0, -1);
            QCOMPARE(ink() != box.send(S::SCI_STYLEGETFORE, S::STYLE_DEFAULT), coloured);
        }
    }

    void fillsOnce()
    {
        Desk desk("<r a='1'/>");
        desk.line("elname")->setText(q("n"));
        desk.press("cmdconvert");
        QWidget other;
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        desk.form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(desk.form.get()));
        QCOMPARE(desk.line("elname")->text(), q("n"));
        QCOMPARE(desk.list()->count(), 0);
    }

    void nothingForOtherNodes()
    {
        Desk desk("<!DOCTYPE r [<!ENTITY e 'x'>]><r>&e;<b/></r>");
        QVERIFY(!Propfrm::edits({}));
        QVERIFY(!Propfrm::edits(desk.model.index(0, 0, desk.node)));
        QVERIFY(Propfrm::edits(desk.model.index(1, 0, desk.node)));
    }
};

QTEST_MAIN(PropfrmTest)
#include "propfrm_test.moc"
