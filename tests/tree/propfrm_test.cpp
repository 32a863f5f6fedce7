// What the Node Properties dialog makes of a document, and what it keeps from it.
#include "plain_face.h"
#include "propfrm_desk.h"
#include "tree/node_commands.h"

#include <QComboBox>
#include <QStatusBar>
#include <QTest>
#include <functional>

using namespace tree_test;

namespace {

using Edits = std::function<void(Desk &)>;

} // namespace

class PropfrmTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ok_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<Edits>("edits");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QString>("label");
        const auto row = [](const char *name, const char *before, const char *path, const Edits &edits,
                            const char *after, const char *label) {
            QTest::newRow(name) << QByteArray(before) << QByteArray(path) << edits << QByteArray(after)
                                << q(label);
        };
        const auto write = [](const char *box, const char *text) {
            return [=](Desk &desk) { desk.box(box)->replaceText(text); };
        };
        row(
            "element as it is", "<r><a x = '&#65;'\n y=\"&lt;\" /></r>", "0", [](Desk &) {},
            "<r><a x = '&#65;'\n y=\"&lt;\" /></r>", "a x = '&#65;' y=\"&lt;\"");
        row(
            "rename, mixed content", "<r>one <b/>two<!--c--></r>", "",
            [](Desk &desk) { desk.line("elname")->setText(q("n")); }, "<n>one <b/>two<!--c--></n>", "n");
        row(
            "c, a, b", "<r a='1' b='&#66;' c='3'/>", "",
            [](Desk &desk) {
                desk.select(2);
                desk.press("cmdatup");
                desk.press("cmdatup");
            },
            "<r c='3' a='1' b='&#66;'/>", "r c='3' a='1' b='&#66;'");
        row(
            "down", "<r a='1' b='2'/>", "", [](Desk &desk) { desk.press("cmdatdown"); }, "<r b='2' a='1'/>",
            "r b='2' a='1'");
        row(
            "Remove All", "<r a='1' b='2'><c/>t</r>", "", [](Desk &desk) { desk.press("cmdconvert"); },
            "<r><c/>t</r>", "r");
        row(
            "Remove", "<r a='1' b='2' c='3'/>", "",
            [](Desk &desk) {
                desk.select(1);
                desk.press("cmdremove");
            },
            "<r a='1' c='3'/>", "r a='1' c='3'");
        row(
            "Modify", "<r a = '&#65;' b='2'/>", "",
            [](Desk &desk) { desk.attributeBy("cmdmodify", "a", "it's"); }, "<r a = 'it&apos;s' b='2'/>",
            "r a = 'it&apos;s' b='2'");
        row(
            "Modify with nothing modified", "<r a='x&#10;y'/>", "",
            [](Desk &desk) {
                desk.press("cmdmodify");
                desk.press("cmdOK");
            },
            "<r a='x&#10;y'/>", "r a='x&#10;y'");
        row(
            "Add", "<r a='1'/>", "", [](Desk &desk) { desk.attributeBy("cmdadd", "n", "<\"&"); },
            "<r a='1' n=\"&lt;&quot;&amp;\"/>", "r a='1' n=\"&lt;&quot;&amp;\"");
        row(
            "renamed onto another", "<r a='1' b='2'/>", "",
            [](Desk &desk) {
                desk.select(1);
                desk.attributeBy("cmdmodify", "a", "2");
            },
            "<r a='2'/>", "r a='2'");
        row(
            "prefix and its declaration at once", "<r/>", "",
            [](Desk &desk) {
                desk.line("elname")->setText(q("p:r"));
                desk.attributeBy("cmdadd", "xmlns:p", "urn:x");
            },
            "<p:r xmlns:p=\"urn:x\"/>", "p:r xmlns:p=\"urn:x\"");
        row("comment", "<r><!--c--></r>", "0", write("comentbox", " \xC3\xA4 "), "<r><!-- \xC3\xA4 --></r>",
            " \xC3\xA4 ");
        row("CDATA", "<r><![CDATA[c]]></r>", "0", write("cdatbox", "a<b&&c"), "<r><![CDATA[a<b&&c]]></r>",
            "a<b&&c");
        row("text in the document's line ends", "<r>\r\n a&#65;</r>", "0", write("textbx", "<x\ny"),
            "<r>&lt;x\r\ny</r>", "<x\ny");
        row(
            "text as it is", "<r>a&#65;&#13;\nb</r>", "0", [](Desk &) {}, "<r>a&#65;&#13;\nb</r>", "aA\r\nb");
        row("empty text", "<r>a<b/></r>", "0", write("textbx", ""), "<r><b/></r>", "");
        row(
            "instruction", "<r><?p  x?></r>", "0",
            [](Desk &desk) {
                desk.line("txtprocall")->setText(q("T"));
                desk.box("txtdata")->replaceText("D e");
            },
            "<r><?T D e?></r>", "T D e");
    }

    void ok()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, path);
        QFETCH(Edits, edits);
        Desk desk(before, path);
        QVERIFY(desk.opened);
        const dom::Node *node = desk.model.GetNodepar(desk.node);
        edits(desk);
        desk.press("OKButton");
        QVERIFY2(!desk.form->isVisible(), qPrintable(desk.find<QStatusBar>("StatusBar1")->currentMessage()));
        QTEST(desk.document.xml(), "after");
        QTEST(desk.label(), "label");
        QCOMPARE(desk.model.GetNodepar(desk.node), node);
        QVERIFY(desk.dialogs.messages().isEmpty());
    }

    void refused_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<Edits>("edits");
        QTest::addColumn<QByteArray>("field");
        const auto row = [](const char *name, const char *path, const char *field, const Edits &edits) {
            QTest::newRow(name) << QByteArray(path) << edits << QByteArray(field);
        };
        const auto rename
            = [](const char *name) { return [=](Desk &desk) { desk.line("elname")->setText(q(name)); }; };
        const auto write = [](const char *box, const char *text) {
            return [=](Desk &desk) { desk.box(box)->replaceText(text); };
        };
        row("digit first", "", "elname", rename("1a"));
        row("no name", "", "elname", rename(""));
        row("undeclared prefix of the name", "", "elname", rename("q:r"));
        row("undeclared prefix of an attribute", "", "ListView1",
            [](Desk &desk) { desk.attributeBy("cmdadd", "q:r", "1"); });
        row("declaration that is used below", "", "ListView1", [](Desk &desk) {
            desk.line("elname")->setText(q("n"));
            desk.press("cmdconvert");
        });
        row("comment with two hyphens", "0", "comentbox", write("comentbox", "a--b"));
        row("CDATA ends early", "1", "cdatbox", write("cdatbox", "a]]>b"));
        row("control character", "2", "textbx", write("textbx", "a\x01"));
        row("illegal target", "3", "txtprocall",
            [](Desk &desk) { desk.line("txtprocall")->setText(q("a b")); });
        row("instruction ends early", "3", "txtdata", write("txtdata", "?>"));
    }

    void refused()
    {
        QFETCH(QByteArray, path);
        QFETCH(Edits, edits);
        QFETCH(QByteArray, field);
        const QByteArray text = "<r xmlns:p='urn:p'><!--c--><![CDATA[d]]>t<?p i?><e><p:x/></e></r>";
        Desk desk(text, path);
        const QString label = desk.label();
        const quint64 revision = desk.document.revision();
        edits(desk);
        desk.press("OKButton");
        QVERIFY(desk.form->isVisible());
        QCOMPARE(desk.document.xml(), text);
        QCOMPARE(desk.document.revision(), revision);
        QCOMPARE(desk.label(), label);
        const QString reason = desk.find<QStatusBar>("StatusBar1")->currentMessage();
        QVERIFY(!reason.isEmpty());
        QCOMPARE(desk.find<QWidget>(field)->accessibleDescription(), reason);
        QCOMPARE(QApplication::focusWidget(), desk.find<QWidget>(field));
        QVERIFY(desk.dialogs.messages().isEmpty());
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
        NodeCommands commands(desk.model, desk.document, face, desk.dialogs);
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
        key(Qt::Key_Return);
        Desk::turnTo(desk.attribute());
        QCOMPARE(desk.line("txtname")->text(), q("z"));
        type("8");
        key(Qt::Key_Return);
        Desk::turnTo(desk.form.get());
        key(Qt::Key_Down, Qt::ControlModifier);
        key(Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(!desk.form->isVisible());
        QCOMPARE(desk.document.xml(), "<n b='2' z=\"8\"/>");
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
            const bool isElement = number == 4; // which has no box: the code stays that of whoever asked last
            const int target = isElement ? 7 : number + 1;
            Desk desk("<r><?p abc?><!--abc--><![CDATA[abc]]>abc</r>",
                      isElement ? QByteArray() : QByteArray::number(number));
            desk.services.symbolTarget = 7;
            auto *button = desk.form->findChild<QPushButton *>(q("cmdsynbols"), Qt::FindDirectChildrenOnly);
            QTest::mouseClick(button, Qt::LeftButton);
            QCOMPARE(desk.askedFor.first, target);
            QCOMPARE(desk.services.symbolTarget, target);
            QCOMPARE(Propfrm::around(desk.askedFor.second), desk.form.get());
            for (const char *name : boxes) {
                desk.box(name)->loadText("abc");
                desk.box(name)->execute(137); // select all
            }
            desk.form->insertSymbols(target, q("\xC2\xA9"));
            for (int i = 0; i < 4; ++i)
                QCOMPARE(desk.box(boxes[i])->text(), i == number ? "\xC2\xA9" : "abc");
        }
    }

    // Each language colours its own words, whatever was chosen before.
    void languages()
    {
        using S = QsciScintillaBase;
        static constexpr struct
        {
            const char *language;
            const char *text;
            bool coloured;
        } rows[] = {
            {"Java", "implements", true}, {"C/C++", "namespace", true}, {"<none>", "if", false},
            {"Basic", "Dim", true},       {"Java", "typename", false},  {"Pascal", "BEGIN", true},
            {"SQL", "Select", true},      {"HTML", "<b>", true},        {"XML", "<b>", true},
        };
        Desk desk("<r><![CDATA[x]]></r>", "0");
        auto *combo = desk.find<QComboBox>("Combo1");
        QCOMPARE(combo->currentText(), q("Java"));
        control::CodeEditor &box = *desk.box("cdatbox");
        const auto ink
            = [&box] { return box.send(S::SCI_STYLEGETFORE, ulong(box.send(S::SCI_GETSTYLEAT, 1))); };
        for (const auto &row : rows) {
            combo->setCurrentText(q(row.language));
            box.replaceText(row.text);
            box.send(S::SCI_COLOURISE, 0, -1);
            QCOMPARE(ink() != box.send(S::SCI_STYLEGETFORE, S::STYLE_DEFAULT), row.coloured);
        }
        QPalette dark;
        dark.setColor(QPalette::Base, Qt::black);
        dark.setColor(QPalette::Text, Qt::white);
        box.setPalette(dark);
        QCoreApplication::processEvents();
        QCOMPARE(box.send(S::SCI_STYLEGETBACK, ulong(box.send(S::SCI_GETSTYLEAT, 1))), 0);
        QVERIFY(ink() != 0xFFFFFF);
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
