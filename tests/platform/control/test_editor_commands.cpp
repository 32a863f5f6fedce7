// The numbered commands: what each does to a text, that none is idle, and the keys that run them.
#include "platform/control/code_editor.h"
#include "platform/control/editor_commands.h"
#include "platform/control/editor_look.h"
#include "tests/platform/control/marked_text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSet>
#include <QSignalSpy>
#include <QtTest>

using namespace control;
using S = QsciScintillaBase;

namespace {

// Everything that a command can change, in one string.
QByteArray observed(const CodeEditor &editor)
{
    QByteArrayList all{marked(editor), QGuiApplication::clipboard()->text().toUtf8()};
    for (const unsigned ask :
         {S::SCI_GETANCHOR, S::SCI_GETCURRENTPOS, S::SCI_GETZOOM, S::SCI_GETFIRSTVISIBLELINE,
          S::SCI_GETOVERTYPE, S::SCI_GETVIEWWS, S::SCI_GETVIEWEOL, S::SCI_GETWRAPMODE,
          S::SCI_GETINDENTATIONGUIDES, S::SCI_GETALLLINESVISIBLE, S::SCI_SELECTIONISRECTANGLE,
          S::SCI_GETSELECTIONS, S::SCI_AUTOCACTIVE})
        all += QByteArray::number(qlonglong(editor.send(ask)));
    for (int line = 0; line < editor.lineCount(); ++line)
        all += QByteArray::number(qlonglong(editor.send(S::SCI_MARKERGET, ulong(line))));
    all += QByteArray::number(qlonglong(editor.send(S::SCI_GETMARGINWIDTHN, numberMargin)));
    const EditorProperties &chosen = editor.properties();
    for (const bool option : {chosen.closeOnSlash, chosen.closeOnBracket, chosen.renameBoth,
                              chosen.autoIndent, chosen.offerNames, chosen.dragText})
        all += option ? "on" : "off";
    return all.join('\n');
}

QByteArray tallText()
{
    QByteArray text = "<root>\n";
    for (int i = 0; i < 200; ++i)
        text += "\t<item   ID=\"" + QByteArray::number(i % 5)
            + "\">\n\t\tsomeWord and (more) in a line wider than the window   \n\t</item>\n\n";
    return text + "</root>\r\n";
}

using Setup = void (*)(CodeEditor &);

// States in which, between them, every command has something to do.
const Setup setups[] = {
    [](CodeEditor &editor) { editor.placeCaret(402, 10); },
    [](CodeEditor &editor) {
        editor.placeCaret(401, 2);
        editor.execute(202);
        editor.execute(202);
        editor.execute(171);
    },
    [](CodeEditor &editor) {
        editor.placeCaret(10, 0);
        editor.execute(204);
        editor.placeCaret(300, 0);
        editor.send(S::SCI_SETZOOM, 3);
        editor.replaceSelection("inserted");
        editor.undo();
        editor.replaceSelection("again");
        QGuiApplication::clipboard()->setText(QStringLiteral("pasted"));
    },
    [](CodeEditor &editor) {
        editor.replaceSelection("undone");
        editor.undo();
        editor.send(S::SCI_SETSEL, 30, 10);
    },
    [](CodeEditor &editor) {
        editor.execute(157);
        editor.placeCaret(2, 19);
    },
    [](CodeEditor &editor) {
        editor.placeCaret(0, 2);
        editor.execute(226);
    },
    [](CodeEditor &editor) { editor.placeCaret(1, 4); },
};

} // namespace

class TestEditorCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesAndKeysAreUnique()
    {
        QSet<QString> names;
        QSet<QString> keys;
        int number = firstCommand;
        for (const EditorCommand &command : editorCommands()) {
            QCOMPARE(command.number, number++);
            const auto name = QString::fromLatin1(command.name);
            QVERIFY2(!name.isEmpty() && !names.contains(name), command.name);
            names.insert(name);
            const auto own = QString::fromLatin1(command.keys);
            if (own.isEmpty())
                continue;
            for (const QKeySequence &key : QKeySequence::listFromString(own, QKeySequence::PortableText)) {
                QVERIFY2(!key.isEmpty() && key[0].key() != Qt::Key_unknown, command.keys);
                QVERIFY2(!keys.contains(key.toString()), command.keys);
                keys.insert(key.toString());
            }
        }
        QCOMPARE(number, lastCommand + 1);
    }

    void unknownNumbersAreRefused()
    {
        CodeEditor editor;
        for (const int number : {-1, 0, 99, 242, 1000})
            QVERIFY(!editor.execute(number));
    }

    void commandChangesText()
    {
        struct Row
        {
            int command;
            QByteArray before, after;
        };
        const Row rows[] = {
            {125,
             "a{b\xC3\xA4"
             "c}d",
             "a{B\xC3\x84"
             "C}d"},
            {147,
             "a{B\xC3\x84"
             "C}d",
             "a{b\xC3\xA4"
             "c}d"},
            {125, "a|b", "a|b"},
            {126, "{a\tb\r\n\tc}", "{a   b\r\n    c}"},
            {126, "ab{\tc}", "ab{  c}"},
            {130, "{    a   b c}", "{\ta\tb c}"},
            {127, "\t\ta|", "\ta|"},
            {127, "{\ta\n\n  b\n}c", "{a\n\nb\n}c"},
            {163, "a|", "\ta|"},
            {163, "\t{a\n\nb\n}\tc", "{\t\ta\n\n\tb\n}\tc"},
            {163, "<a>\n  <b/>\n|c", "<a>\n  <b/>\n  |c"},
            {137, "a|b\r\nc", "{ab\r\nc}"},
            {195, "a|\xE6\xBC\xA2z", "a|z"},
            {195, "a|\r\nb", "a|b"},
            {195, "a{bc}d", "a|d"},
            {195, "a|", "a|"},
            {201, "a|\xF0\x9F\x98\x80z", "a\xF0\x9F\x98\x80|z"},
            {105, "a\r\n|b", "a|b"},
            {106, "ab cd|e", "ab |e"},
            {110, "ab|cd\r\ne", "ab|\r\ne"},
            {111, "a\nb|b\nc", "a\n|c"},
            {114, "a{b}c", "a{b}bc"},
            {115, "a\nb|\nc", "b\n|a\nc"},
            {116, "a\xC3\xA4|b\n", "ab\xC3\xA4|\n"},
            {116, "ab|\n", "ba|\n"},
            {116, "a\n|b", "a\n|b"},
            {117, "a\nb|\nc", "b|\na\nc"},
            {117, "a\n|bb\n", "|bb\na\n"},
            {117, "a|\nb", "a|\nb"},
            {117, "a\r\n{<b>\r\n</b>}", "{<b>\r\n</b>}\r\na"},
            {117, "a\nb{b\n}c", "b{b\n}a\nc"},
            {118, "a|\r\nb", "b\r\na|"},
            {118, "a\n{b}\nc\n", "a\nc\n{b}\n"},
            {118, "a\nb|", "a\nb|"},
            {114, "<a>\r\n  <b/>|\r\n</a>", "<a>\r\n  <b/>|\r\n  <b/>\r\n</a>"},
            {119, "a|  \r\n\t b\r\nc", "a| b\r\nc"},
            {119, "{a\nb\nc}\nd", "{a b c}\nd"},
            {121, "\t a|b", "\t a\n\t |b"},
            {121, "x\r\n  a|", "x\r\n  a\r\n  |"},
            {121, "|  a", "\n|  a"},
            {122, "a\n\tb|c", "a\n\t|\n\tbc"},
            {123, "\ta|b\rc", "\tab\r\t|\rc"},
            {124, "\t<a/>|\n", "\t<!-- <a/>| -->\n"},
            {124, "\t|<a>b</a>\n", "\t|<!-- <a>b</a> -->\n"},
            {124, "\t<!-- <a>|b</a> -->\n", "\t<a>|b</a>\n"},
            {124, "{<!-- a -->}", "{a}"},
            {124, "<!-- a\nb|c\nd -->e", "a\nb|c\nde"},
            {124, "<!-- a --> <!-- b\n{c} -->", "<!-- a --> b\n{c}"},
            {124, "{a--b}", "{a--b}"},
            {124, "{<a>\n<!-- b -->\n</a>}", "{<!-- <a>\n&lt;!&ndash; b &ndash;&gt;\n</a> -->}"},
            {124, "{<!-- <a>\n&lt;!&ndash; b &ndash;&gt;\n</a> -->}", "{<a>\n<!-- b -->\n</a>}"},
            {124, "{<!-- a -->\n<!-- b -->}", "{a\nb}"},
            {124, "{a -->}", "{a -->}"},
            {131, "c\nb|\na", "a\nb|\nc"},
            {132, "{a\r\nb\r\n}c", "{b\r\na\r\n}c"},
            {133, "{1\n2\n3}", "{3\n2\n1}"},
            {134, "{a\nb\na\n}", "{a\nb\n}"},
            {135, "{a\n \t\n\nb}", "{a\nb}"},
            {136, "|a \t\r\n b ", "|a\r\n b"},
            {138, "one tw|o", "one {two}"},
            {139, "a\nb|b\nc", "a\n{bb\n}c"},
            {140, "a{b}", "ab|"},
            {141, "x<a|><b/></a>y", "x{<a><b/></a>}y"},
            {142, "<a><a|><b/></a></a>", "<a><a><b/></|a></a>"},
            {142, "<a><b/></a|>", "<|a><b/></a>"},
            {143, "|<a b='>'/>", "<a b='>'/>|"},
            {144, "x(y)|", "x{(y)}"},
            {145, "{hELLO there. you?}", "{Hello there. You?}"},
            {146, "{hELLO there's}", "{Hello There's}"},
            {148, "{aB\xC3\xA4}", "{Ab\xC3\x84}"},
            {149, "a\r\nb\nc|\rd", "a\r\nb\r\nc|\r\nd"},
        };
        for (const auto &[command, before, after] : rows) {
            CodeEditor editor;
            editor.setLanguage(Language::Xml);
            putMarked(editor, before);
            const QByteArray plain = editor.text();
            editor.execute(command);
            QVERIFY2(marked(editor) == after,
                     QByteArray::number(command) + ' ' + before + ' ' + marked(editor));
            // One command is one step of undo.
            editor.undo();
            QCOMPARE(editor.text(), plain);
        }
    }

    // In a page, scripts and style sheets have comments of their own.
    void commentsAreOfTheirLanguage()
    {
        struct Row
        {
            QByteArray before, after;
        };
        const Row rows[] = {
            {"<p>a|</p>", "<!-- <p>a|</p> -->"},
            {"<script>\n  a(|1);\n</script>", "<script>\n  // a(|1);\n</script>"},
            {"<script>\n  // a(|1);\n</script>", "<script>\n  a(|1);\n</script>"},
            {"<script>\na\n{ b\n\n//c}\n</script>", "<script>\na\n{//  b\n\n// //c}\n</script>"},
            {"<script>\n{  // a\n  //b\n}</script>", "<script>\n{  a\n  b\n}</script>"},
            {"<p onclick='a'><script>a(|1)</script>", "<p onclick='a'><script>/* a(|1) */</script>"},
            {"<script>/* a\nb| */c</script>", "<script>a\nb|c</script>"},
            {"<script>\n{a\n</script>}", "<script>\n{a\n</script>}"},
            {"<style>\na, b|\n</style>", "<style>\n/* a, b| */\n</style>"},
            {"<style>\n/* a, b| */\n</style>", "<style>\na, b|\n</style>"},
            {"<style>\na/* b */ |c\n</style>", "<style>\na/* b */ |c\n</style>"},
            {"<style>\n/* a\nb|\nc */\n</style>", "<style>\na\nb|\nc\n</style>"},
            {"<script>a</script>\n<p>b|</p>", "<script>a</script>\n<!-- <p>b|</p> -->"},
        };
        for (const auto &[before, after] : rows) {
            CodeEditor editor;
            editor.setLanguage(Language::Html);
            putMarked(editor, before);
            const QByteArray plain = editor.text();
            editor.execute(124);
            QVERIFY2(marked(editor) == after,
                     before.toPercentEncoding() + " gives " + marked(editor).toPercentEncoding());
            editor.undo();
            QCOMPARE(editor.text(), plain);
        }
    }

    // Many lines are shifted as one edit, and a bookmark among them has them shifted one by one.
    void manyLinesShiftAsFewDo()
    {
        const QByteArray lines = "a\n\tb\r\n  c\r \t d\n\n   \n\xC3\xA4\t\n      <e>\n";
        for (const int command : {163, 127, 128, 129}) {
            QByteArrayList results;
            for (const bool bookmark : {false, true}) {
                CodeEditor editor;
                editor.loadText(lines.repeated(200) + "last");
                editor.placeCaret(700, 0);
                if (bookmark)
                    editor.execute(204);
                editor.send(S::SCI_SETSEL, 1, editor.send(S::SCI_GETLENGTH) - 2);
                editor.execute(command);
                results += editor.text();
                if (command == 163 || command == 127)
                    results.last() += marked(editor);
                editor.undo();
                QCOMPARE(editor.text(), lines.repeated(200) + "last");
            }
            QCOMPARE(results.at(0), results.at(1));
        }
    }

    void noCommandIsIdle_data()
    {
        QTest::addColumn<int>("command");
        for (const EditorCommand &command : editorCommands())
            if (!command.isService())
                QTest::addRow("%d %s", command.number, command.name) << command.number;
    }
    void noCommandIsIdle()
    {
        QFETCH(int, command);
        bool acted = false;
        for (const Setup setup : setups) {
            CodeEditor editor;
            editor.resize(300, 300);
            editor.setLanguage(Language::Xml);
            editor.loadText(tallText());
            editor.show();
            QGuiApplication::clipboard()->clear();
            setup(editor);
            const QByteArray before = observed(editor);
            const bool done = editor.execute(command);
            acted = acted || (done && observed(editor) != before);
        }
        QVERIFY(acted);
    }

    void insertedTextIsFoundAgain()
    {
        CodeEditor editor;
        QVERIFY(!editor.execute(203));
        putMarked(editor, "<a>{abc}</a>");
        editor.replaceSelection("<![CDATA[]]>");
        QCOMPARE(marked(editor), QByteArray("<a><![CDATA[]]>|</a>"));
        QVERIFY(editor.execute(203));
        for (int i = 0; i < 9; ++i)
            QVERIFY(editor.execute(201));
        QCOMPARE(marked(editor), QByteArray("<a><![CDATA[|]]></a>"));
    }

    void insertedTextMovesWithItsSurroundings()
    {
        CodeEditor editor;
        editor.loadText("one two");
        editor.placeCaret(0, 7);
        editor.replaceSelection(" three");
        editor.send(S::SCI_DELETERANGE, 0, 4);
        QVERIFY(editor.execute(203));
        QCOMPARE(marked(editor), QByteArray("two| three"));
    }

    void bookmarksGoRound()
    {
        CodeEditor editor;
        editor.loadText("0\n1\n2\n3\n4");
        QVERIFY(!editor.execute(206));
        for (const int line : {1, 3}) {
            editor.placeCaret(line, 0);
            QVERIFY(editor.execute(204));
        }
        for (const int expected : {1, 3, 1}) {
            QVERIFY(editor.execute(206));
            QCOMPARE(editor.caretLine(), expected);
        }
        editor.placeCaret(0, 0);
        for (const int expected : {3, 1, 3}) {
            QVERIFY(editor.execute(205));
            QCOMPARE(editor.caretLine(), expected);
        }
        // Repeated they end where the text does, or a macro would do its work twice.
        for (const auto &[command, from, to] : {std::tuple(206, 0, 3), std::tuple(205, 4, 1)}) {
            editor.placeCaret(from, 0);
            editor.setRepeatCount(9);
            editor.execute(command);
            QCOMPARE(editor.caretLine(), to);
        }
        editor.placeCaret(3, 0);
        QVERIFY(editor.execute(204));
        QVERIFY(editor.execute(206) && editor.execute(206));
        QCOMPARE(editor.caretLine(), 1);
        QVERIFY(editor.execute(207));
        QVERIFY(!editor.execute(206) && !editor.execute(205) && !editor.execute(207));
    }

    void foldAllKeepsTheRootOpen()
    {
        CodeEditor editor;
        editor.setLanguage(Language::Xml);
        editor.loadText("<r>\n<a>\n1\n</a>\n<b>\n2\n</b>\n</r>\n");
        editor.placeCaret(5, 1);
        QVERIFY(editor.execute(157));
        const auto visible
            = [&editor](int line) { return editor.send(S::SCI_GETLINEVISIBLE, ulong(line)) != 0; };
        QVERIFY(visible(1) && !visible(2) && visible(4) && !visible(5) && visible(7));
        QCOMPARE(editor.caretLine(), 4);
        QVERIFY(editor.execute(156));
        QVERIFY(visible(5) && !visible(2));
        QVERIFY(editor.execute(158));
        QVERIFY(visible(2));
    }

    void levelsFold()
    {
        CodeEditor editor;
        editor.setLanguage(Language::Xml);
        editor.loadText("<r>\n<a>\n<c>\n1\n</c>\n</a>\n<b>\n2\n</b>\n</r>\n");
        editor.placeCaret(7, 1);
        QVERIFY(editor.execute(226) && !editor.execute(226));
        const auto visible
            = [&editor](int line) { return editor.send(S::SCI_GETLINEVISIBLE, ulong(line)) != 0; };
        QVERIFY(visible(1) && !visible(2) && visible(6) && !visible(7));
        QCOMPARE(editor.caretLine(), 6);
        QVERIFY(editor.execute(227) && !editor.execute(227));
        QVERIFY(visible(3) && visible(7));
    }

    void servicesAreAsked()
    {
        CodeEditor editor;
        QSignalSpy requested(&editor, &CodeEditor::serviceRequested);
        for (const int number : {168, 169, 174, 176, 178, 187, 213, 214, 223, 224}) {
            QVERIFY(!editor.execute(number));
            QCOMPARE(requested.takeLast().first().toInt(), number);
        }
        bool can = true;
        editor.setServiceHandler(178, [&can] { return can; });
        QVERIFY(editor.execute(178));
        can = false;
        QVERIFY(!editor.execute(178));
    }

    void keysRunCommands()
    {
        CodeEditor editor;
        editor.loadText("\tone\r\n");
        editor.placeCaret(0, 4);
        QTest::keyClick(&editor, Qt::Key_Return);
        QTest::keyClicks(&editor, QStringLiteral("two!"));
        QCOMPARE(editor.text(), QByteArray("\tone\r\n\ttwo!\r\n"));
        QTest::keyClick(&editor, Qt::Key_Backtab, Qt::ShiftModifier);
        QTest::keyClick(&editor, Qt::Key_Backspace);
        QTest::keyClick(&editor, Qt::Key_Up, Qt::KeypadModifier);
        QCOMPARE(editor.caretLine(), 0);
        QTest::keyClick(&editor, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(editor.selection().length(), editor.text().size());
        QTest::keyClick(&editor, Qt::Key_X, Qt::AltModifier);
        QVERIFY(editor.text().startsWith("\tone"));
        QTest::sendKeyEvent(QTest::Click, &editor, Qt::Key_unknown, QStringLiteral("\n"), Qt::NoModifier);
        QCOMPARE(editor.text(), QByteArray("\r\n"));
    }

    // Tags without a partner, and tags whose partner is far.
    void elementsAreSelectedWhole()
    {
        const QByteArray far = "<a>" + QByteArray("<i/>\n").repeated(300'000) + "</a>";
        const std::tuple<QByteArray, int, long> rows[] = {{far, 2, far.size()},
                                                          {"<a><b></b>", 2, 0},
                                                          {"<a><b></b></a>", 4, 7},
                                                          {"<a></b></a>", 5, 0},
                                                          {"<a><b x='1'/></a>", 4, 10}};
        for (const auto &[text, caret, length] : rows) {
            CodeEditor editor;
            QSignalSpy noted(&editor, &CodeEditor::noted);
            editor.setLanguage(Language::Xml);
            editor.loadText(text);
            editor.send(S::SCI_GOTOPOS, ulong(caret));
            QCOMPARE(editor.execute(141), length > 0);
            QCOMPARE(editor.selection().length(), length);
            QCOMPARE(noted.count(), length > 0 ? 0 : 1);
        }
    }

    // The usual keys of a command that has been given another one.
    void usualKeysStay()
    {
        const std::pair<int, const char *> rows[]
            = {{100, "Alt+Backspace"}, {101, "Ctrl+Shift+Z"},    {102, "Shift+Del"}, {103, "Ctrl+Ins"},
               {104, "Shift+Ins"},     {105, "Shift+Backspace"}, {150, "Ctrl+="}};
        for (const auto &[command, keys] : rows) {
            CodeEditor editor;
            editor.loadText("abc");
            editor.execute(137);
            editor.execute(103);
            // Something to undo, to redo, to cut, to copy and to paste.
            editor.perform({0, "d"});
            for (const int step : {105, 100, 137})
                editor.execute(step);
            editor.shortcuts().setShortcuts(command, {QKeySequence(QStringLiteral("Ctrl+F11"))});
            QSignalSpy stepped(&editor, &CodeEditor::stepped);
            const QKeyCombination stroke = QKeySequence(QString::fromLatin1(keys))[0];
            QTest::keyClick(&editor, stroke.key(), stroke.keyboardModifiers());
            QCOMPARE(stepped.count(), 1);
            QCOMPARE(stepped.value(0).value(0).value<Step>().command, command);
            // Not when it is another command's.
            editor.shortcuts().setShortcuts(138, {QKeySequence(stroke)});
            stepped.clear();
            editor.loadText("abc");
            QTest::keyClick(&editor, stroke.key(), stroke.keyboardModifiers());
            QCOMPARE(stepped.value(0).value(0).value<Step>().command, 138);
        }
    }

    void chordsAndReboundKeys()
    {
        CodeEditor editor;
        editor.loadText("abc");
        editor.shortcuts().setShortcuts(138, {QKeySequence(QStringLiteral("Ctrl+K, A"))});
        QTest::keyClick(&editor, Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!editor.canCopy());
        QTest::keyClick(&editor, Qt::Key_K, Qt::ControlModifier);
        QTest::keyClick(&editor, Qt::Key_B);
        QCOMPARE(editor.text(), QByteArray("abc"));
        QTest::keyClick(&editor, Qt::Key_K, Qt::ControlModifier);
        QTest::keyClick(&editor, Qt::Key_A);
        QVERIFY(editor.canCopy());
        // Keys belong to one command at a time.
        editor.shortcuts().setShortcuts(195, {QKeySequence(QStringLiteral("Ctrl+K, A"))});
        QVERIFY(editor.shortcuts().shortcuts(138).isEmpty());
    }

    void windowKeepsItsShortcuts_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<bool>("claimed");
        for (const char *keys : {"Ctrl+N", "Ctrl+O", "Ctrl+S", "Ctrl+Shift+S", "Ctrl+Q", "F1", "F5", "F6",
                                 "F7", "F8", "Ctrl+F", "Ctrl+Tab"})
            QTest::newRow(keys) << QString::fromLatin1(keys) << false;
        for (const char *keys : {"Ctrl+A", "Ctrl+Z", "Del", "F2", "Ctrl++"})
            QTest::newRow(keys) << QString::fromLatin1(keys) << true;
    }
    void windowKeepsItsShortcuts()
    {
        QFETCH(QString, keys);
        CodeEditor editor;
        const QKeyCombination stroke = QKeySequence(keys)[0];
        QKeyEvent event(QEvent::ShortcutOverride, stroke.key(), stroke.keyboardModifiers());
        event.ignore();
        QCoreApplication::sendEvent(&editor, &event);
        QTEST(event.isAccepted(), "claimed");
    }
};

QTEST_MAIN(TestEditorCommands)
#include "test_editor_commands.moc"
