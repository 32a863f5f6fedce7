// What the bytes of an XML text are, read whole or in pieces, and what of it folds.
#include "platform/control/code_colours.h"
#include "platform/control/code_editor.h"
#include "platform/control/markup_map.h"

#include <QSignalSpy>
#include <QTest>
#include <map>
#include <random>

using namespace control;

namespace {

using S = QsciScintillaBase;

struct Reading
{
    QByteArray styles;
    MarkupState state;
};

MarkupState startOf(bool html)
{
    MarkupState state;
    state.html = html;
    return state;
}

Reading readWhole(const QByteArray &text, bool html = false)
{
    QByteArray styles(text.size(), '?');
    MarkupStyler styler(text, startOf(html), styles.data());
    styler.runTo(text.size(), true);
    return {styles, styler.state()};
}

// In stretches that end where the generator says, each begun with nothing but the state.
Reading readInPieces(const QByteArray &text, bool html, std::mt19937 &random)
{
    QByteArray styles(text.size(), '?');
    MarkupState state = startOf(html);
    qsizetype at = 0;
    qsizetype end = 0;
    while (at < text.size()) {
        end = std::min(text.size(), end + 1 + qsizetype(random() % 7));
        MarkupStyler styler(QByteArrayView(text).sliced(at), state, styles.data() + at);
        at += styler.runTo(end - at, end == text.size());
        state = styler.state();
    }
    return {styles, state};
}

// One letter for a style, so that a table can be read.
QByteArray letters(const QByteArray &styles)
{
    const std::map<char, char> names = {{TextMarkup, '.'},
                                        {NameMarkup, 'n'},
                                        {AttributeMarkup, 'a'},
                                        {DoubleQuotedMarkup, 's'},
                                        {SingleQuotedMarkup, 's'},
                                        {TagMarkup, '<'},
                                        {CommentMarkup, 'c'},
                                        {ReferenceMarkup, '&'},
                                        {InstructionMarkup, '?'},
                                        {SectionMarkup, 'x'},
                                        {BareValueMarkup, 'b'},
                                        {DeclarationMarkup, 'd'},
                                        {DeclarationStringMarkup, 'q'},
                                        {EqualsMarkup, '='},
                                        {ScriptBlank, '.'},
                                        {ScriptComment, 'c'},
                                        {ScriptLineComment, 'l'},
                                        {ScriptNumber, '1'},
                                        {ScriptWord, 'w'},
                                        {ScriptKeyword, 'k'},
                                        {ScriptDoubleQuoted, 's'},
                                        {ScriptSingleQuoted, 's'},
                                        {ScriptOperator, 'o'},
                                        {ScriptTemplate, 't'},
                                        {ScriptPattern, 'r'},
                                        {SheetText, '.'},
                                        {SheetComment, 'c'},
                                        {SheetSelector, 'e'},
                                        {SheetProperty, 'p'},
                                        {SheetNumber, '1'},
                                        {SheetString, 's'},
                                        {SheetOperator, 'o'},
                                        {SheetKeyword, 'k'}};
    QByteArray result = styles;
    for (char &c : result)
        c = names.at(c);
    return result;
}

// Markup and torn markup, one piece after the other.
QByteArray randomText(std::mt19937 &random, int pieces, bool html = false)
{
    // clang-format off
    static const QByteArray all[] = {
        "<a>", "</a>", "<b c=\"d\">", "</b>", "<e/>", "\n", "text ", "&amp;", "<!-- x -->", "<!--",
        "-->", "--", "<![CDATA[", "]]>", "]", "<?p i?>", "<?", "?>",
        "<!DOCTYPE r [\n<!ENTITY e '<'>\n]>", "<!", "[", "<", ">", "/", "\"", "'", "=", "&", "%p;",
        "x='1 &lt; 2'", "\r\n", "<f g=h", ";",
    };
    static const QByteArray ofPages[] = {
        "<script>", "</script>", "</SCRIPT >", "<style>", "</style>", "</sty", "<textarea>", "</textarea>", "<br>",
        "</scripts>", "<scripts>", "<3", "{", "}", "}", "`", "${", "\\", "\\\r\n", "//", "/*", "*/", "*", "/[/]/g",
        "return ", "instanceof", "insta", "12.5e", "$x", "'s'", "++", "a:b;", "@media ", "@font-face", "@m", "#a",
        "url(a;b)", "!important", ".c", "-1px",
    };
    // clang-format on
    QByteArray text;
    for (int i = 0; i < pieces; ++i)
        text += html && random() % 3 != 0 ? ofPages[random() % std::size(ofPages)]
                                          : all[random() % std::size(all)];
    return text;
}

MarkupSource sourceOf(const QByteArray &text)
{
    return {[&text](long start, long end) { return QByteArrayView(text).sliced(start, end - start); },
            long(text.size())};
}

} // namespace

class TestMarkupStyler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void styles_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("expected");
        QTest::addColumn<int>("depth");
        const auto row = [](const char *name, const char *text, const char *expected, int depth = 0) {
            QTest::newRow(name) << QByteArray(text) << QByteArray(expected) << depth;
        };
        row("tag", "<a b='1'>x</a>", "<n<a=sss<.<<n<");
        row("empty", "<a/>&lt;", "<n<<&&&&");
        row("blanks", "<a b = \"c\" />", "<n<a<=<sss<<<");
        row("reference in a value", "<a b=\"1&lt;2\"/>", "<n<a=ss&&&&ss<<");
        row("not ended reference", "a & b &c d", "..&...&&..");
        row("comment", "<!-- a > b -->x", "cccccccccccccc.");
        row("short comment", "<!-->-->x", "cccccccc.");
        row("section", "<![CDATA[<a>]]]>x", "xxxxxxxxxxxxxxxx.");
        row("instruction", "<?a b > ?>x", "??????????.");
        row("document type", "<!DOCTYPE a 'b>'>x", "ddddddddddddqqqqd.");
        row("subset", "<!DOCTYPE a[<!ENTITY e '<'>%p;<!-->--><?]?>]><a/>",
            "dddddddddddddddddddddddqqqd&&&cccccccc?????dd<n<<");
        row("greater in a value", "<a b='>'>", "<n<a=sss<", 1);
        row("tag not closed", "<a <b>", "<n<<n<", 1);
        row("value not closed", "<a b='c\n<d/>", "<n<a=sss<n<<");
        row("value without quotes", "<a b=c d>", "<n<a=b<a<", 1);
        row("no tag", "a < b <3", "......<n", 1);
        row("end too much", "</a></", "<<n<<<", -2);
        row("subset not closed", "<!DOCTYPE a [\n<a>", "dddddddddddddd<n<", 1);
    }
    void styles()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, expected);
        const Reading whole = readWhole(text);
        expected.replace(' ', '.');
        QCOMPARE(letters(whole.styles), expected);
        QTEST(whole.state.depth, "depth");
    }

    void pagesAreStyled_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("expected");
        QTest::addColumn<int>("depth");
        const auto row = [](const char *name, const char *text, const char *expected, int depth = 0) {
            QTest::newRow(name) << QByteArray(text) << QByteArray(expected) << depth;
        };
        const auto script = [&row](const char *name, const QByteArray &code, const QByteArray &expected) {
            const QByteArray styles = "<nnnnnn<" + expected + "<<nnnnnn<.";
            row(name, "<script>" + code + "</script>x", styles);
        };
        const auto sheet = [&row](const char *name, const QByteArray &code, const QByteArray &expected) {
            const QByteArray styles = "<nnnnn<" + expected + "<<nnnnn<.";
            row(name, "<style>" + code + "</style>x", styles);
        };
        row("elements without content", "<p>a<br>b<IMG src=c></p>", "<n<.<nn<.<nnn<aaa=b<<<n<");
        row("no tag", "a<3 <b>", "....<n<", 1);
        row("tag in a value", "<a b='<c>'>", "<n<a=sssss<", 1);
        row("short instruction", "<?a>x", "????.");
        row("raw text", "<title><b></title><b>", "<nnnnn<...<<nnnnn<<n<", 1);
        row("raw text with references", "<title>a&lt;&</title>", "<nnnnn<.&&&&&<<nnnnn<");
        row("script being written", "<script>a<b", "<nnnnnn<wow", 1);
        row("longer name", "<scripts>a<b>", "<nnnnnnn<.<n<", 2);
        script("less than", "a < 3 && b<c", "w.o.1.oo.wow");
        script("keywords and numbers", "if (x1) return 0x1F;", "kk.owwo.kkkkkk.1111o");
        script("comments", "a//b\n/*c\n*/d", "wlll.ccccccw");
        script("strings", "'a\\'b' \"c\n d", "ssssss.ss..w");
        script("division", "a / b / (c) / 2", "w.o.w.o.owo.o.1");
        script("expressions", "x=/[/]\\//g; return /a/", "worrrrrrrro.kkkkkk.rrr");
        script("template", "`a${b+`${{}}`}c`d", "ttttwotttootttttw");
        script("end tag in a string", "'a", "ss");
        script("braces left open", "{{ f(){", "oo.wooo");
        script("braces too many", "}}", "oo");
        script("hidden script", "<!-- a\nb", "llllll.w");
        script("other end tag", "a</style>b", "worrrrrrrr");
        sheet("rule", "a.b:c{color:#fff;margin:-1.5px a1}", "eeeoeopppppo1111oppppppo111111...o");
        sheet("groups", "@media (a:1){b{c:d}}@page{e:f}", "kkkkkk.o.o1ooeopo.ookkkkkopo.o");
        sheet("comment and string", "/*a{*/b[c=\"}\"]{d:'e'}", "cccccceoeosssoopossso");
        sheet("address", "a{b:url(c;d)!important;e:f}", "eopo...o.o.okkkkkkkkkkopo.o");
    }
    void pagesAreStyled()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, expected);
        const Reading whole = readWhole(text, true);
        QCOMPARE(letters(whole.styles), expected);
        QTEST(whole.state.depth, "depth");
    }

    void piecesAreTheWhole()
    {
        std::mt19937 random(1);
        for (int round = 0; round < 6000; ++round) {
            const bool html = round % 2 != 0;
            const QByteArray text = randomText(random, 40, html);
            const Reading whole = readWhole(text, html);
            const Reading pieces = readInPieces(text, html, random);
            QCOMPARE(letters(pieces.styles), letters(whole.styles));
            QCOMPARE(pieces.state, whole.state);
        }
    }

    // After any edits, told one after the other, the map says of every line what reading from the top says.
    void editsAreKeptUpWith()
    {
        std::mt19937 random(2);
        for (int round = 0; round < 60; ++round) {
            const bool html = round % 2 != 0;
            QByteArray text = QByteArray("<r>" + randomText(random, 8, html) + "\n").repeated(9000);
            MarkupMap map;
            map.clear(html);
            map.advance(sourceOf(text), long(random() % 2) * text.size());
            for (int edit = 0; edit < 12; ++edit) {
                const long at = long(random() % ulong(text.size()));
                if (random() % 2 == 0) {
                    const QByteArray added = randomText(random, 2, html);
                    map.inserted(at, added.size());
                    text.insert(at, added);
                } else {
                    const long length = std::min(long(text.size()) - at, 1 + long(random() % 3) * 50'000 / 2);
                    map.deleted(at, length);
                    text.remove(at, length);
                }
                if (random() % 3 != 0)
                    map.advance(sourceOf(text), long(random() % 4) * 60'000);
            }
            const MarkupSource source = sourceOf(text);
            map.advance(source, source.length);
            while (!map.isComplete())
                map.advance(source, source.length);
            MarkupStyler styler(text, startOf(html));
            for (int probe = 0; probe < 40; ++probe) {
                const long start = long(text.indexOf('\n', text.size() * probe / 40)) + 1; // of a line
                const MarkupMap::Place place = map.placeAt(source, start);
                QCOMPARE(place.at, start);
                QCOMPARE(styler.runTo(start, false), start);
                QCOMPARE(styler.state(), place.state);
            }
        }
    }

    // Long runs are parted into pieces of looks of their own; the styles are otherwise the same.
    void longLinesArePartedAndStyled()
    {
        std::mt19937 random(5);
        QByteArray text = "<r>";
        while (text.size() < 1'500'000)
            text += "<a b='" + QByteArray(int(random() % 90), 'v') + "'>"
                + QByteArray("w\xC3\xA4rds ").repeated(20)
                + randomText(random, 3).replace("\n", "").replace("\r", "");
        CodeEditor editor;
        editor.setLanguage(Language::Xml);
        QSignalSpy noted(&editor, &CodeEditor::noted);
        editor.loadText(text);
        editor.show();
        for (int round = 0; round < 6; ++round) {
            editor.send(S::SCI_GOTOPOS,
                        ulong(editor.send(S::SCI_POSITIONAFTER, random() % ulong(text.size()))));
            editor.perform({0, round % 2 == 0 ? "<" : "\xC3\xA4"});
            editor.viewport()->repaint();
            const QByteArray now = editor.text();
            const QByteArray styles = readWhole(now).styles;
            int piece = 0;
            for (long at = 0; at < now.size(); ++at) {
                const long style = editor.send(S::SCI_GETSTYLEAT, ulong(at));
                QCOMPARE(style & 63, long(styles.at(at)));
                const bool begins = at == 0 || style != editor.send(S::SCI_GETSTYLEAT, ulong(at - 1));
                QVERIFY(!begins || (uchar(now.at(at)) & 0xC0) != 0x80);
                piece = begins ? 1 : piece + 1;
                QVERIFY(piece < 30);
            }
            editor.undo();
            QCOMPARE(editor.text(), text);
        }
        QTRY_COMPARE(noted.size(), 1);
    }

    // Where a lexer has coloured a line, or nobody has, it is parted all the same.
    void longLinesOfOtherLanguagesAreParted()
    {
        for (const char *language : {"Text", "HTML", "Java"}) {
            CodeEditor editor;
            CodeColours colours(editor);
            colours.setLanguage(QString::fromLatin1(language));
            editor.loadText("/* " + QByteArray("plain w\xC3\xA4rds ").repeated(5000) + "*/\nvar");
            editor.show();
            for (const char *typed : {"", "x", "<"}) {
                editor.perform({0, typed});
                editor.viewport()->repaint();
                int piece = 0;
                for (ulong at = 1; at < 60'000; ++at) {
                    const bool same
                        = editor.send(S::SCI_GETSTYLEAT, at) == editor.send(S::SCI_GETSTYLEAT, at - 1);
                    piece = same ? piece + 1 : 1;
                    QVERIFY2(piece < 30, language);
                }
            }
        }
    }

    // Nothing of the language before stays, whichever came before it.
    void anotherLanguageColoursAnew()
    {
        const QByteArray text = "<a b='c'/> // x \"y\"\n<script>if (a < 1) {}</script>\n";
        const char *const languages[] = {"<none>", "C/C++",  "XML", "SQL",  "HTML", "<none>", "HTML",
                                         "Java",   "<none>", "XML", "HTML", "XML",  "Basic",  "XML"};
        CodeEditor editor;
        CodeColours colours(editor);
        editor.loadText(text);
        editor.show();
        QVERIFY(QTest::qWaitForWindowExposed(&editor));
        const auto stylesNow = [&text](CodeEditor &shown) {
            shown.viewport()->repaint();
            QByteArray styles;
            for (ulong at = 0; at < ulong(text.size()); ++at)
                styles += char(shown.send(S::SCI_GETSTYLEAT, at));
            return styles;
        };
        for (const char *const language : languages) {
            colours.setLanguage(QString::fromLatin1(language));
            const QByteArray shown = stylesNow(editor);
            CodeEditor fresh;
            CodeColours own(fresh);
            own.setLanguage(QString::fromLatin1(language));
            fresh.loadText(text);
            fresh.show();
            QVERIFY(QTest::qWaitForWindowExposed(&fresh));
            QVERIFY2(shown == stylesNow(fresh), language);
            QVERIFY2(shown.count('\0') < text.size() || language[0] == '<', language);
        }
    }

    void guessesComeRight()
    {
        const QByteArray record = "<a b=\"c\">\n<!-- <d> -->\n<![CDATA[ </e> ]]>\n<f>&lt;</f>\n</a>\n";
        const QByteArray text
            = "<r>" + record.repeated(10000) + "<!--" + QByteArray("\n<a>").repeated(100) + "-->";
        MarkupMap map;
        map.advance(sourceOf(text), text.size());
        for (long at = 300'000; at < text.size(); at += 1013) {
            const MarkupMap::Place guess = MarkupMap::guessAt(sourceOf(text), at);
            if (const MarkupMap::Place place = map.placeAt(sourceOf(text), at); guess.at == place.at)
                QCOMPARE(guess.state.mode, place.state.mode);
        }
    }

    // Jumping, editing and folding leave in sight what reading from the top gives.
    void sightIsTrue()
    {
        CodeEditor editor;
        editor.setLanguage(Language::Xml);
        editor.resize(500, 400);
        const QByteArray record = "<a b='1'>\n  <c>\n    x\n  </c>\n</a>\n";
        editor.loadText("<r>\n" + record.repeated(2000) + "</r>\n");
        editor.show();
        QVERIFY(QTest::qWaitForWindowExposed(&editor));
        std::mt19937 random(3);
        const QByteArray added[] = {"<n>", "</n>", "<!--", "-->", "<n>\n", "\n</n>\n", "'", "<n", "&x;"};
        for (int round = 0; round < 60; ++round) {
            editor.placeCaret(int(random() % ulong(editor.lineCount())), 0);
            if (round % 5 == 0)
                editor.execute(157 + int(random() % 2)); // fold all, unfold all
            if (round % 7 == 0)
                editor.execute(156); // toggle
            editor.replaceSelection(added[random() % std::size(added)]);
            if (round % 3 == 0)
                editor.undo();
            editor.viewport()->repaint();
            const QByteArray text = editor.text();
            const QByteArray styles = readWhole(text).styles;
            MarkupStyler styler(text, {});
            const long top = editor.send(S::SCI_GETFIRSTVISIBLELINE);
            int base = -1;
            for (long shown = top; shown < top + editor.send(S::SCI_LINESONSCREEN); ++shown) {
                const long line = editor.send(S::SCI_DOCLINEFROMVISIBLE, ulong(shown));
                if (line >= editor.lineCount() - 1)
                    break;
                const long start = editor.send(S::SCI_POSITIONFROMLINE, ulong(line));
                const long end = editor.send(S::SCI_POSITIONFROMLINE, ulong(line) + 1);
                for (long at = start; at < end; ++at)
                    QCOMPARE(editor.send(S::SCI_GETSTYLEAT, ulong(at)), long(styles.at(at)));
                styler.runTo(start, start == text.size());
                const int before = styler.state().depth;
                styler.runTo(end, end == text.size());
                const long level = editor.send(S::SCI_GETFOLDLEVEL, ulong(line));
                QCOMPARE((level & S::SC_FOLDLEVELHEADERFLAG) != 0, styler.state().depth > before);
                const int number = int(level & S::SC_FOLDLEVELNUMBERMASK) - before;
                base = base < 0 ? number : base;
                QCOMPARE(number, base);
            }
            // Whatever is hidden has a folded line before it.
            for (long line = 1; line < editor.lineCount(); ++line)
                if (editor.send(S::SCI_GETLINEVISIBLE, ulong(line)) == 0
                    && editor.send(S::SCI_GETLINEVISIBLE, ulong(line) - 1) != 0)
                    QVERIFY(editor.send(S::SCI_GETFOLDEXPANDED, ulong(line) - 1) == 0);
        }
    }
};

QTEST_MAIN(TestMarkupStyler)
#include "test_markup_styler.moc"
