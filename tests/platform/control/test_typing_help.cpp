// What is typed along: closing tags, the other tag's name, indentation, and the names offered.
#include "platform/control/code_editor.h"
#include "tests/platform/control/marked_text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QtTest>

using namespace control;
using S = QsciScintillaBase;

namespace {

constexpr Language X = Language::Xml;
constexpr Language H = Language::Html;
constexpr Language P = Language::Plain;

// Letters are typed; "~" is Backspace, "#" Delete, "@" Return, "^" a paste, "%" overtyping turned on or off.
Step stepOf(char key)
{
    const std::pair<char, int> commands[] = {{'~', 105}, {'#', 195}, {'@', 121}, {'^', 104}, {'%', 159}};
    for (const auto &[sign, command] : commands)
        if (key == sign)
            return {command, {}};
    return {0, QByteArray(1, key)};
}

void type(CodeEditor &editor, const QByteArray &keys)
{
    for (const char key : keys)
        editor.perform(stepOf(key));
}

} // namespace

class TestTypingHelp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysTypeAlong()
    {
        struct Row
        {
            Language language;
            QByteArray before, keys, after;
        };
        const Row rows[] = {
            // The closing tag on "</".
            {X, "<a><b>x|", "</", "<a><b>x</b>|"},
            {X, "<a><b/><c></c>|", "</", "<a><b/><c></c></a>|"},
            // A tag typed to its end all the same, or other text that begins like it.
            {X, "<ab>x|", "</ab>", "<ab>x</ab>|"},
            {X, "<a><b>x|", "</b></a>", "<a><b>x</b></a>|"},
            {X, "<a><b>x|", "</by</", "<a><b>x</b>by</a>|"},
            {X, "<ab>x|", "</ab~>", "<ab>x</ab>a>|"},
            {X, "<a></a>|", "</", "<a></a></|"},
            {X, "<b>|</b>", "</", "<b></b>|</b>"},
            {X, "<a><|b>", "/", "<a></|b>"},
            {X, "<a><!-- <b> |", "</", "<a><!-- <b> </|"},
            {X, "<a><!-- <b> -->|", "</", "<a><!-- <b> --></a>|"},
            {X, "<a><![CDATA[|]]></a>", "</", "<a><![CDATA[</|]]></a>"},
            {X, "<a><?p |?></a>", "</", "<a><?p </|?></a>"},
            {X, "<a b=\"|\"></a>", "</", "<a b=\"</|\"></a>"},
            {X, "<a>\n  <b>\n    x\n    |", "</", "<a>\n  <b>\n    x\n  </b>|"},
            {X, "<a>\n  <b>\n    x|", "</", "<a>\n  <b>\n    x</b>|"},
            {X, "<P><br>|", "</", "<P><br></br>|"},
            {H, "<P><br>|", "</", "<P><br></P>|"},
            {H, "<script>if (a|", "</", "<script>if (a</|"},
            {H, "<script>\n<b>\n|", "</", "<script>\n<b>\n</script>|"},
            {H, "<script>\nif (a<b)\n  |", "</", "<script>\nif (a<b)\n</script>|"},
            {H, "<p><script>if (a<b && c < 3) d()</script>|", "</",
             "<p><script>if (a<b && c < 3) d()</script></p>|"},
            {H, "<p>a<b |", "</", "<p>a<b </p>|"},
            {X, "<p>a<b|", "</", "<p>a<b</p>|"},
            {P, "<a>|", "</", "<a></|"},
            // The closing tag on ">".
            {X, "<a|", ">", "<a>|</a>"},
            {X, "<a b='>'|", ">", "<a b='>'>|</a>"},
            {X, "<a b='|'", ">", "<a b='>|'"},
            {X, "<a/|", ">", "<a/>|"},
            {X, "</a|", ">", "</a>|"},
            {X, "<a|</a>", ">", "<a>|</a>"},
            {X, "<a|x</a>", ">", "<a>|x</a>"},
            {X, "<a><a|</a>", ">", "<a><a>|</a></a>"},
            {X, "<!-- <a|", ">", "<!-- <a>|"},
            {X, "<a|>", ">", "<a>|>"},
            {X, "<!DOCTYPE a|", ">", "<!DOCTYPE a>|"},
            {X, "<?a|", ">", "<?a>|"},
            {X, "a |", ">", "a >|"},
            {H, "<br|", ">", "<br>|"},
            {H, "<script>if (a<b|", ">", "<script>if (a<b>|"},
            {P, "<a|", ">", "<a>|"},
            // Both names.
            {X, "<a|>x</a>", "bc", "<abc|>x</abc>"},
            {X, "<a>x</a|>", "bc", "<abc>x</abc|>"},
            {X, "<ab|><ab/>\n</ab>", "~~c", "<c|><ab/>\n</c>"},
            {X, "<|ab>x</ab>", "##c", "<c|>x</c>"},
            {X, "<{ab} c='1'>x</ab>", "^", "<pasted| c='1'>x</pasted>"},
            {X, "<|ab>x</ab>", "%c%", "<c|b>x</cb>"},
            {X, "<a|b>x</ab>", " ", "<a |b>x</a>"},
            {X, "<a|>x</a>", " b", "<a b|>x</a>"},
            {X, "<a|>x</b>", "c", "<ac|>x</b>"},
            {X, "<a><a|></a>", "b", "<a><ab|></a>"},
            {X, "<a><a|></a></a>", "b", "<a><ab|></ab></a>"},
            {X, "<a>|</a>", "<ab", "<a><ab|</a>"},
            {X, "<!-- <a|></a> -->", "b", "<!-- <ab|></a> -->"},
            {X, "<a|/><b></a>", "b", "<ab|/><b></a>"},
            {X, "<a |></a>", "b", "<a b|></a>"},
            {H, "<DIV|>x</div>", "s", "<DIVs|>x</DIVs>"},
            {P, "<a|>x</a>", "b", "<ab|>x</a>"},
            // New lines.
            {X, "  <a>|</a>", "@", "  <a>\n    |\n  </a>"},
            {X, "\t<a>|</a>", "@", "\t<a>\n\t\t|\n\t</a>"},
            {X, "  <a>|", "@", "  <a>\n    |"},
            {X, "  <a\n     b='1'>|", "@", "  <a\n     b='1'>\n    |"},
            {X, "  <a>x|</a>", "@", "  <a>x\n  |</a>"},
            {X, "  <a/>|", "@", "  <a/>\n  |"},
            {X, "  <a></a>|", "@", "  <a></a>\n  |"},
            {X, "  <!-- <a>|", "@", "  <!-- <a>\n  |"},
            {X, "  <a></b>|", "@", "  <a></b>\n    |"},
            {H, "  <br>|", "@", "  <br>\n  |"},
            {P, "  <a>|</a>", "@", "  <a>\n  |</a>"},
        };
        QGuiApplication::clipboard()->setText(QStringLiteral("pasted"));
        for (const auto &[language, before, keys, after] : rows) {
            CodeEditor editor;
            EditorProperties all;
            all.closeOnBracket = true;
            editor.setProperties(all);
            editor.setLanguage(language);
            putMarked(editor, before);
            const QByteArray plain = editor.text();
            type(editor, keys);
            QVERIFY2(marked(editor) == after, before + ' ' + keys + ' ' + marked(editor));
            for (qsizetype i = 0; i < keys.size() && editor.canUndo(); ++i)
                editor.undo();
            QCOMPARE(editor.text(), plain);
            while (editor.canRedo())
                editor.redo();
            QCOMPARE(editor.text(), QByteArray(after).replace("|", ""));
        }
    }

    void optionsSwitchItOff()
    {
        struct Row
        {
            int toggle;
            QByteArray before, keys, on, off;
        };
        const Row rows[] = {
            {228, "<a>|", "</", "<a></a>|", "<a></|"},
            {230, "<a|>x</a>", "b", "<ab|>x</ab>", "<ab|>x</a>"},
            {231, "  <a>|</a>", "@", "  <a>\n    |\n  </a>", "  <a>\n|</a>"},
            {231, "<a>\n\t|", "</", "<a>\n</a>|", "<a>\n\t</a>|"},
            {229, "<a|", ">", "<a>|", "<a>|</a>"}, // off before anybody chose
        };
        for (const auto &[toggle, before, keys, on, off] : rows) {
            CodeEditor editor;
            editor.setLanguage(X);
            QSignalSpy chosen(&editor, &CodeEditor::propertiesChanged);
            for (const QByteArray &expected : {on, off, on}) {
                putMarked(editor, before);
                type(editor, keys);
                QCOMPARE(marked(editor), expected);
                QVERIFY(editor.execute(toggle));
            }
            QCOMPARE(chosen.size(), 3);
        }
    }

    void oneUndoTakesItBack()
    {
        struct Row
        {
            QByteArray before, keys, undone;
        };
        const Row rows[] = {{"<a>x<|", "/", "<a>x<"},
                            {"<a>|</a>", "@", "<a></a>"},
                            {"<a|>x</a>", "bcd", "<a>x</a>"},
                            {"<abc>x</abc|>", "~~~", "<abc>x</abc>"},
                            {"<abc|>x</abc>", "~~de", "<a>x</a>"},
                            {"<{abc}>x</abc>", "^", "<abc>x</abc>"}};
        QGuiApplication::clipboard()->setText(QStringLiteral("z"));
        for (const auto &[before, keys, undone] : rows) {
            CodeEditor editor;
            editor.setLanguage(X);
            putMarked(editor, before);
            type(editor, keys);
            const QByteArray done = editor.text();
            editor.execute(100);
            QCOMPARE(editor.text(), undone);
            editor.execute(101);
            QCOMPARE(editor.text(), done);
        }
    }

    // Between the tags lies more than is looked at while typing.
    void farPartners()
    {
        CodeEditor editor;
        editor.setLanguage(X);
        const QByteArray much = QByteArray("<i/>\n").repeated(400'000);
        editor.loadText("<a>" + much + "</a>");
        editor.placeCaret(0, 2);
        type(editor, "b");
        QVERIFY(editor.text().startsWith("<ab>") && editor.text().endsWith("</a>"));
        // What is open is found, however far above it begins.
        editor.loadText("<a>" + much);
        editor.execute(192);
        type(editor, "</");
        QVERIFY(editor.text().endsWith("\n</a>"));
        QVERIFY(editor.execute(142));
        QCOMPARE(editor.send(S::SCI_GETCURRENTPOS), 1);
    }

    // The partner is out of sight: neither renaming it nor taking that back leads there.
    void renamingKeepsTheView()
    {
        for (const bool atStart : {true, false}) {
            CodeEditor editor;
            editor.resize(400, 300);
            editor.setLanguage(X);
            editor.loadText("\n\n<abc>" + QByteArray("<i/>\n").repeated(3000) + "</abc>\n\n");
            editor.placeCaret(atStart ? 2 : 3002, atStart ? 2 : 4);
            editor.execute(138);
            const long first = editor.send(S::SCI_GETFIRSTVISIBLELINE);
            const int line = editor.caretLine();
            const auto inPlace = [&] {
                return editor.send(S::SCI_GETFIRSTVISIBLELINE) == first && editor.caretLine() == line;
            };
            for (const char *letter : {"w", "x", "y", "z"}) {
                type(editor, letter);
                QVERIFY2(inPlace(), letter);
            }
            for (const auto &[command, count] : {std::pair(100, 2), std::pair(101, 2)})
                for (int i = 0; i < count; ++i) {
                    editor.execute(command);
                    QVERIFY(inPlace());
                }
            QVERIFY(editor.text().contains("<wxyz>") && editor.text().contains("</wxyz>"));
            // From elsewhere it leads back.
            editor.execute(atStart ? 192 : 190);
            editor.execute(100);
            QCOMPARE(editor.caretLine(), line);
        }
    }

    void namesAreOffered()
    {
        const std::pair<QByteArray, QByteArrayList> rows[] = {
            {"<r><item/><item/><it/><x/><i|</r>", {"item", "it"}},
            {"<r><item/><it/><it|</r>", {"it", "item"}},
            {"<r><b></b><bc></|", {"bc"}},
            {"<a id='1' x='2'/><b idle='3' i='4'/><b i=''/><b i|>", {"i", "idle", "id"}},
            {"<b id='' idle=''/><b id='1' i|>", {"idle"}},
            {"<b id='' idle=''/><b i| id='1'>", {"idle"}},
            {"<b k='one'/><b k='only'/><b l='off'/><b k='o|'>", {"one", "only"}},
            {"<!DOCTYPE r [<!ENTITY ann 'x'><!ENTITY % par ''>]><r>&a|", {"amp", "apos", "ann"}},
            {"<r a='&l|'/>", {"lt"}},
            {"<r>&|</r>", {"lt", "gt", "amp", "quot", "apos"}},
            {"<r><!-- <r| --></r>", {}},
            {"<r><![CDATA[<r|]]></r>", {}},
            {"<r> r|</r>", {}},
            {"<r a=|>", {}},
        };
        for (const auto &[before, words] : rows) {
            CodeEditor editor;
            editor.setLanguage(X);
            putMarked(editor, before);
            QCOMPARE(QByteArrayList(editor.typingHelp().namesFitting().words), words);
        }
    }

    // Keys: as above, "!" Tab, "*" Escape, "+" Down, "$" Ctrl+Space, "=" start of the line.
    void listTakesKeys()
    {
        struct Row
        {
            QByteArray before, keys, after;
        };
        const Row rows[] = {
            {"<item/><it/><it/>|", "<i@", "<item/><it/><it/><it|"},
            {"<item/><it/><it/>|", "<i+@", "<item/><it/><it/><item|"},
            {"<item/><it/><it/>|", "<i+!", "<item/><it/><it/><item|"},
            {"<item/><it/>|", "<it@", "<item/><it/><it\n|"},
            {"<item/><it/>|", "<x@", "<item/><it/><x\n|"},
            {"<item/>|", "<ix~@", "<item/><item|"}, // back after a typo
            {"<item/>|", "<ixy~@", "<item/><ix\n|"},
            {"<item/>|", "<itxy~~~@", "<item/><item|"},
            {"<item/><it/>|", "<i*@", "<item/><it/><i\n|"},
            {"<item/><it/>|", "<i~$@", "<item/><it/><it|"},
            {"<item/>|", "<i=@", "\n|<item/><i"},
            {"<item/>|", "<item>@", "<item/><item>\n\t|"},
            {"<a>x|</a>", "&a@", "<a>x&amp;|</a>"},
            {"<ab>x|", "</a@", "<ab>x</ab>|"},
            {"<r><ab x='1'/><ab>x</ab></r>|", "<a!", "<r><ab x='1'/><ab>x</ab></r><ab|"},
        };
        for (const auto &[before, keys, after] : rows) {
            CodeEditor editor;
            editor.setLanguage(X);
            EditorProperties noSlash;
            noSlash.closeOnSlash = false;
            editor.setProperties(noSlash);
            editor.show();
            putMarked(editor, before);
            Macro recorded;
            connect(&editor, &CodeEditor::stepped, &editor,
                    [&recorded](const Step &step) { recorded += step; });
            for (const char key : keys) {
                const QByteArray list("!*+$=");
                const int commands[] = {128, 140, 167, 212, 181};
                if (const qsizetype at = list.indexOf(key); at >= 0)
                    editor.execute(commands[at]);
                else
                    editor.perform(stepOf(key));
            }
            QCOMPARE(marked(editor), after);
            // What was recorded gives the same without any list.
            CodeEditor other;
            other.setLanguage(X);
            other.setProperties(noSlash);
            putMarked(other, before);
            for (const Step &step : recorded)
                other.perform(step);
            QCOMPARE(marked(other), after);
        }
    }

    void offeringCanBeSwitchedOff()
    {
        CodeEditor editor;
        editor.setLanguage(X);
        editor.show();
        editor.execute(188);
        putMarked(editor, "<item/>|");
        type(editor, "<i");
        QVERIFY(!editor.send(S::SCI_AUTOCACTIVE));
        QVERIFY(editor.execute(212));
        QVERIFY(editor.send(S::SCI_AUTOCACTIVE));
    }

    void closeElement()
    {
        CodeEditor editor;
        editor.setLanguage(X);
        putMarked(editor, "<a>\n  <b>|");
        QVERIFY(editor.execute(225));
        type(editor, "@");
        QVERIFY(editor.execute(225));
        QVERIFY(!editor.execute(225));
        QCOMPARE(marked(editor), QByteArray("<a>\n  <b></b>\n</a>|"));
    }
};

QTEST_MAIN(TestTypingHelp)
#include "test_typing_help.moc"
