// The editor's text, caret, undo, clipboard and signals.
#include "platform/control/code_editor.h"
#include "platform/control/editor_look.h"
#include "platform/control/line_numbers.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QFontInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QSignalSpy>
#include <QtTest>
#include <random>

using namespace control;
using S = QsciScintillaBase;

namespace {

// Bytes with the tag mark, as text spans.
QByteArrayList markedNames(const CodeEditor &editor)
{
    QByteArrayList names;
    const QByteArray text = editor.text();
    for (long at = 0; at < text.size(); ++at) {
        if (editor.send(S::SCI_INDICATORVALUEAT, tagIndicator, at) == 0)
            continue;
        const long end = editor.send(S::SCI_INDICATOREND, tagIndicator, at);
        names += text.mid(at, end - at);
        at = end;
    }
    return names;
}

QPalette paletteOf(const QColor &ground, const QColor &ink)
{
    QPalette palette;
    palette.setColor(QPalette::Base, ground);
    palette.setColor(QPalette::Text, ink);
    return palette;
}

QByteArray besideLine(const CodeEditor &editor, int line)
{
    QByteArray text(64, '\0');
    text.truncate(editor.SendScintilla(S::SCI_MARGINGETTEXT, uintptr_t(line), text.data()));
    return text;
}

// The one line with the mark; -1 for none, -2 for several.
long markedLine(const CodeEditor &editor, int marker)
{
    const long line = editor.send(S::SCI_MARKERNEXT, 0, 1L << marker);
    return line >= 0 && editor.send(S::SCI_MARKERNEXT, ulong(line + 1), 1L << marker) >= 0 ? -2 : line;
}

QPoint pointOf(const CodeEditor &editor, long position)
{
    return {int(editor.send(S::SCI_POINTXFROMPOSITION, 0, position)) + 1,
            int(editor.send(S::SCI_POINTYFROMPOSITION, 0, position)) + 4};
}

} // namespace

class TestCodeEditor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Whatever crosses such a step is told of it, before the change itself is; and nothing else is.
    void anotherDocument()
    {
        CodeEditor editor;
        QStringList told;
        editor.tellCrossing([&](int number, bool undone) {
            told << QStringLiteral("%1%2%3")
                        .arg(QLatin1String(undone ? "-" : "+"))
                        .arg(number)
                        .arg(QString::fromUtf8(editor.text()));
        });
        connect(&editor, &CodeEditor::textEdited, this, [&] { told << QStringLiteral("edited"); });
        const auto toldOf = [&](const auto &act) {
            told.clear();
            act();
            return told.join(u' ');
        };
        editor.loadText("one");
        editor.replaceText("one!");
        QCOMPARE(toldOf([&] { editor.replaceDocument("two", 0); }), QStringLiteral("edited"));
        editor.replaceText("two!");
        editor.replaceDocument("two!", 1); // the same text, but not the same document
        QCOMPARE(toldOf([&] { editor.undo(); }), QStringLiteral("-1two!"));
        QCOMPARE(toldOf([&] { editor.undo(); }), QStringLiteral("edited"));
        QCOMPARE(toldOf([&] { editor.undo(); }), QStringLiteral("-0one! edited"));
        QCOMPARE(toldOf([&] { editor.undo(); }), QStringLiteral("edited"));
        QVERIFY(!editor.canUndo());
        editor.redo();
        QCOMPARE(toldOf([&] { editor.redo(); }), QStringLiteral("+0two edited"));
        QCOMPARE(editor.caretLine(), 0);
        QCOMPARE(toldOf([&] { editor.loadText("three"); }), QStringLiteral("edited"));
    }

    // Brackets keep their side on a desktop that writes from right to left.
    void codeIsLeftToRight()
    {
        QList<QImage> pictures;
        for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            QGuiApplication::setLayoutDirection(direction);
            CodeEditor editor;
            editor.setLanguage(Language::Xml);
            editor.loadText("<kinds>\n  a &lt; (b)\n</kinds>\n");
            editor.resize(300, 120);
            pictures += editor.grab().toImage();
        }
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        QCOMPARE(pictures.at(1), pictures.at(0));
    }

    void textComesBack()
    {
        CodeEditor editor;
        editor.setLanguage(Language::Xml);
        for (const QByteArray &text :
             {QByteArray(""), QByteArray("a\r\nb\nc\rd\r\n"), QByteArray("a\0b\0\0c", 6),
              QByteArray("\xC3\xA4\xE6\xBC\xA2\xF0\x9F\x98\x80 e\xCC\x81"), QByteArray("\xFF\xC3(\x80"),
              QByteArray("<a>\t0</a>\r\n").repeated(200000), QByteArray("x\xC3\xA4 y").repeated(20000)}) {
            const quint64 before = editor.revision();
            editor.loadText("something else\nentirely");
            editor.setHighlightedLine(1);
            editor.execute(204);
            editor.loadText(text);
            QCOMPARE(editor.text(), text);
            QVERIFY(editor.revision() > before + 1);
            QVERIFY(!editor.canUndo() && !editor.canRedo());
            QCOMPARE(QPoint(editor.caretLine(), editor.caretColumn()), QPoint(0, 0));
            QCOMPARE(editor.highlightedLine(), -1);
            QVERIFY(!editor.execute(206));
        }
    }

    void replacingTouchesOnlyTheDifference()
    {
        struct Row
        {
            QByteArray before, after;
            int deleted, inserted;
        };
        const Row rows[] = {{"abc", "abc", 0, 0},
                            {"<a>one</a>", "<a>two!</a>", 3, 4},
                            {"aaa", "aaaaa", 0, 2},
                            {"ababab", "abab", 2, 0},
                            {"ab", "", 2, 0},
                            {"x\xC3\xA4y", "x\xC3\xB6y", 2, 2},
                            {"x\xC3\xA4y", "x\xC4\xA4y", 2, 2},
                            {"a\r\nb", "a\rb", 2, 1},
                            {"a\nb", "a\r\nb", 1, 2}};
        for (const auto &[before, after, deletes, inserts] : rows) {
            CodeEditor editor;
            editor.loadText(before);
            editor.send(S::SCI_SETMODEVENTMASK, S::SC_MODEVENTMASKALL);
            int deleted = 0;
            int inserted = 0;
            connect(&editor, &S::SCN_MODIFIED, &editor, [&](int, int kind, const char *, int length) {
                deleted += (kind & S::SC_MOD_DELETETEXT) != 0 ? length : 0;
                inserted += (kind & S::SC_MOD_INSERTTEXT) != 0 ? length : 0;
            });
            const quint64 revision = editor.revision();
            editor.replaceText(after);
            QCOMPARE(editor.text(), after);
            QCOMPARE(QPoint(deleted, inserted), QPoint(deletes, inserts));
            QCOMPARE(editor.revision() != revision, before != after);
            QCOMPARE(editor.canUndo(), before != after);
            editor.undo();
            QCOMPARE(editor.text(), before);
            QVERIFY(!editor.canUndo());
            editor.redo();
            QCOMPARE(editor.text(), after);
        }
    }

    void caretCountsCharacters()
    {
        CodeEditor editor;
        editor.loadText("\ta\xC3\xA4\r\n\xF0\x9F\x98\x80\xE6\xBC\xA2z\r\n");
        // Placed at, and where that is.
        const std::pair<QPoint, QPoint> rows[] = {{{1, 2}, {1, 2}},    {{0, 2}, {0, 2}}, {{0, 50}, {0, 3}},
                                                  {{1, 5000}, {1, 3}}, {{9, 1}, {2, 0}}, {{-3, -1}, {0, 0}}};
        for (const auto &[wanted, found] : rows) {
            editor.placeCaret(wanted.x(), wanted.y());
            QCOMPARE(QPoint(editor.caretLine(), editor.caretColumn()), found);
        }
    }

    // Of a rectangle only what it holds is selected, and what replaces it stands at its first corner.
    void rectanglesAreReplaced()
    {
        for (const bool upwards : {false, true}) {
            CodeEditor editor;
            editor.loadText(QByteArray("a\xC3\xA4 b\r\n").repeated(3));
            editor.placeCaret(upwards ? 2 : 0, 1);
            for (const int command : {upwards ? 237 : 238, upwards ? 237 : 238, 236, 236})
                editor.execute(command);
            QCOMPARE(editor.selectedText(), QByteArray("\xC3\xA4 \r\n\xC3\xA4 \r\n\xC3\xA4 "));
            QCOMPARE(editor.selectedCharacters(), 6);
            editor.replaceSelection("<\n>");
            QCOMPARE(editor.text(), QByteArray("a<\r\n>b\r\nab\r\nab\r\n"));
            QCOMPARE(std::pair(editor.caretLine(), editor.caretColumn()), std::pair(1, 1));
            editor.undo();
            QVERIFY(!editor.canUndo());
        }
    }

    // Columns counted on from a place before stay true, whatever is changed around it.
    void columnsAreCountedOn()
    {
        CodeEditor editor;
        editor.loadText(QByteArray("x\xC3\xA4\xE6\xBC\xA2 y\n").repeated(3));
        std::mt19937 random(4);
        for (int round = 0; round < 400; ++round) {
            const int line = int(random() % ulong(editor.lineCount()));
            editor.placeCaret(line, int(random() % 9));
            const int keys[] = {195, 105, 121, 110, 100, 101, 201, 115};
            if (round % 3 == 0)
                editor.replaceSelection("\xC3\xA4-\xF0\x9F\x98\x80");
            else
                editor.execute(keys[random() % std::size(keys)]);
            const long start = editor.send(S::SCI_POSITIONFROMLINE, ulong(editor.caretLine()));
            const QByteArray before = editor.bytes({start, editor.send(S::SCI_GETCURRENTPOS)});
            QCOMPARE(editor.caretColumn(), int(QString::fromUtf8(before).toUcs4().size()));
        }
    }

    void placedCaretComesIntoSight()
    {
        CodeEditor editor;
        editor.resize(400, 300);
        editor.loadText(QByteArray("line\n").repeated(1000));
        editor.placeCaret(500, 2);
        const long first = editor.send(S::SCI_GETFIRSTVISIBLELINE);
        const long shown = editor.send(S::SCI_LINESONSCREEN);
        QVERIFY(first > 500 - shown && first < 500);
        editor.placeCaret(int(first) + 1, 0);
        QCOMPARE(editor.send(S::SCI_GETFIRSTVISIBLELINE), first);
    }

    void anyEditTakesTheHighlightAway()
    {
        CodeEditor editor;
        editor.loadText("a\nb\nc");
        for (const int line : {2, 0}) {
            editor.setHighlightedLine(line);
            QCOMPARE(editor.highlightedLine(), line);
        }
        editor.placeCaret(1, 0);
        QCOMPARE(editor.highlightedLine(), 0);
        editor.execute(195);
        QCOMPARE(editor.highlightedLine(), -1);
        editor.setHighlightedLine(1);
        editor.undo();
        QCOMPARE(editor.highlightedLine(), -1);
        editor.setHighlightedLine(99);
        QCOMPARE(editor.highlightedLine(), 2);
        editor.setHighlightedLine(-1);
        QCOMPARE(editor.highlightedLine(), -1);
    }

    void signalsTellOnceAndOnlyChanges()
    {
        CodeEditor editor;
        editor.loadText("<a>\n</a>\n");
        QCoreApplication::processEvents();
        QSignalSpy edited(&editor, &CodeEditor::textEdited);
        QSignalSpy moved(&editor, &CodeEditor::caretMoved);
        QSignalSpy state(&editor, &CodeEditor::commandStateChanged);
        const auto seen = [&] {
            const QList<qsizetype> counts{edited.size(), moved.size(), state.size()};
            edited.clear();
            moved.clear();
            state.clear();
            return counts;
        };
        editor.execute(201);
        QCOMPARE(seen(), QList<qsizetype>({0, 1, 0}));
        editor.execute(202);
        QCOMPARE(seen(), QList<qsizetype>({0, 1, 1}));
        editor.replaceSelection("xyz");
        QCOMPARE(seen(), QList<qsizetype>({1, 1, 1}));
        editor.replaceText(editor.text());
        editor.placeCaret(editor.caretLine(), editor.caretColumn());
        QCoreApplication::processEvents();
        QCOMPARE(seen(), QList<qsizetype>({0, 0, 0}));
        // A change made past the editor's own functions is told too, a little later.
        editor.send(S::SCI_CHARLEFT);
        editor.send(S::SCI_CLEAR);
        QTRY_COMPARE(edited.size(), 1);
    }

    void lineEndsFollowTheDocument()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("1\n2\r\n3"));
        for (const QByteArray end : {"\r\n", "\r", "\n", ""}) {
            const QByteArray used = end.isEmpty() ? "\n" : end;
            const QByteArray expected = "1" + used + "2" + used + "3a" + end;
            CodeEditor editor;
            editor.loadText("a" + end);
            editor.replaceSelection("1\n2\r\n3");
            QCOMPARE(editor.text(), expected);
            editor.loadText("a" + end);
            editor.paste();
            QCOMPARE(editor.text(), expected);
        }
    }

    void clipboardKeepsZeroBytes()
    {
        CodeEditor editor;
        editor.loadText(QByteArray("a\0b", 3));
        QVERIFY(!editor.canCut() && !editor.canCopy());
        QGuiApplication::clipboard()->clear();
        QVERIFY(!editor.canPaste());
        editor.execute(137);
        QVERIFY(editor.canCut() && editor.canCopy());
        editor.cut();
        QCOMPARE(QGuiApplication::clipboard()->text(), QString::fromUtf8(QByteArray("a\0b", 3)));
        QCOMPARE(editor.text(), QByteArray());
        editor.undo();
        QCOMPARE(editor.text(), QByteArray("a\0b", 3));
    }

    void tagsAtTheCaretAreMarked()
    {
        CodeEditor editor;
        editor.setLanguage(Language::Xml);
        editor.loadText("<a><bb x='1'></bb></a>");
        editor.placeCaret(0, 5);
        QCOMPARE(markedNames(editor), QByteArrayList({"bb", "bb"}));
        editor.placeCaret(0, 8);
        QCOMPARE(markedNames(editor), QByteArrayList());
        editor.placeCaret(0, 21);
        QCOMPARE(markedNames(editor), QByteArrayList({"a", "a"}));
        editor.setLanguage(Language::Plain);
        QCOMPARE(markedNames(editor), QByteArrayList());
    }

    void rightClickKeepsTheSelectionItHits()
    {
        CodeEditor editor;
        editor.resize(400, 300);
        editor.loadText("first\nsecond");
        editor.send(S::SCI_SETSEL, 0, 5);
        QTest::mouseClick(editor.viewport(), Qt::RightButton, {}, pointOf(editor, 2));
        QCOMPARE(editor.selection(), ByteRange({0, 5}));
        QTest::mouseClick(editor.viewport(), Qt::RightButton, {}, pointOf(editor, 8));
        QCOMPARE(editor.selection(), ByteRange({8, 8}));
        QSignalSpy asked(&editor, &CodeEditor::contextMenuRequested);
        QContextMenuEvent event(QContextMenuEvent::Mouse, pointOf(editor, 2), QPoint(70, 80));
        QCoreApplication::sendEvent(editor.viewport(), &event);
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked.first().first().toPoint(), QPoint(70, 80));
    }

    void droppedFilesAreLeftToTheWindow()
    {
        CodeEditor editor;
        const auto accepted = [&editor](const QMimeData &data) {
            QDragEnterEvent event(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
            event.ignore();
            QCoreApplication::sendEvent(editor.viewport(), &event);
            return event.isAccepted();
        };
        QMimeData file;
        file.setUrls({QUrl::fromLocalFile(QStringLiteral("/a.xml"))});
        file.setText(QStringLiteral("/a.xml"));
        QVERIFY(!accepted(file));
        QMimeData text;
        text.setText(QStringLiteral("words"));
        QVERIFY(accepted(text));
    }

    void coloursFollowThePalette()
    {
        CodeEditor editor;
        for (const int ground : {0x202020, 0xFFFFFF}) {
            editor.setPalette(paletteOf(QColor(ground), QColor(0xFFFFFF - ground)));
            QCOMPARE(editor.send(S::SCI_STYLEGETBACK, S::STYLE_DEFAULT), long(ground));
            QCOMPARE(editor.send(S::SCI_STYLEGETFORE, 1) == 0x000080L, ground == 0xFFFFFF);
        }
    }

    void firstColoursCanBeRead()
    {
        const std::pair<QColor, QColor> palettes[]
            = {{Qt::white, Qt::black}, {0xFDF6E3, 0x586E75},   {0x808080, Qt::black},
               {0x202020, 0xE0E0E0},   {Qt::black, Qt::white}, {0x002050, 0xC0D0E0}};
        for (const auto &[ground, ink] : palettes) {
            const Look look(EditorProperties(), paletteOf(ground, ink));
            for (int token = 0; token < tokenCount; ++token) {
                const TokenLook &shown = look.tokens[size_t(token)];
                QVERIFY2(contrast(shown.ink, shown.ground) >= 3, qPrintable(ground.name()));
                if (look.dark && token != int(Token::LineNumber))
                    QVERIFY2(contrast(shown.ink, look.highlight) >= 2.5, qPrintable(ground.name()));
            }
            QVERIFY(contrast(look.marginInk, look.margin) >= 3);
            QVERIFY(contrast(look.bookmarkGround, look.margin) >= 3);
        }
    }

    void chosenColoursAreShownAsTheyAre()
    {
        CodeEditor editor;
        editor.setLanguage(Language::Xml);
        EditorProperties chosen;
        chosen.colours[TagNameInk] = 0x101010;
        chosen.colours[TagNameGround] = 0x111111;
        chosen.colours[HighlightGround] = 0xFFFFFE;
        chosen.styles[TagNameStyle] = Italic;
        chosen.styles[CommentStyle] = 99;
        for (const QColor &ground : {QColor(Qt::black), QColor(Qt::white)}) {
            editor.setPalette(paletteOf(ground, Qt::gray));
            editor.setProperties(chosen);
            QCOMPARE(editor.send(S::SCI_STYLEGETFORE, 1), 0x101010L);
            QCOMPARE(editor.send(S::SCI_STYLEGETBACK, 1), 0x111111L);
            QCOMPARE(Look(chosen, editor.palette()).highlight, QColor(0xFE, 0xFF, 0xFF));
            QVERIFY(editor.properties().colours == chosen.colours);
            QCOMPARE(editor.send(S::SCI_STYLEGETBOLD, 1), 0L);
            QCOMPARE(editor.send(S::SCI_STYLEGETITALIC, 1), 1L);
            QCOMPARE(editor.send(S::SCI_STYLEGETITALIC, 9), 0L);
        }
    }

    void choosingChangesNothingElse()
    {
        CodeEditor editor;
        editor.resize(400, 300);
        editor.setLanguage(Language::Xml);
        editor.loadText("<a>\n" + QByteArray("<b>\n</b>\n").repeated(200) + "</a>\n");
        editor.replaceSelection("<!--x-->");
        editor.execute(157); // fold all
        editor.send(S::SCI_SETZOOM, 3);
        editor.send(S::SCI_SETSEL, 4, 60);
        editor.send(S::SCI_SETFIRSTVISIBLELINE, 20);
        const auto state = [&editor] {
            return QList<long>{editor.send(S::SCI_GETZOOM),
                               editor.send(S::SCI_GETFIRSTVISIBLELINE),
                               editor.selection().start,
                               editor.selection().end,
                               editor.canUndo(),
                               long(editor.revision()),
                               editor.send(S::SCI_GETALLLINESVISIBLE)};
        };
        const QList<long> before = state();
        QSignalSpy told(&editor, &CodeEditor::propertiesChanged);
        QSignalSpy dressed(&editor, &CodeEditor::dressed);
        EditorProperties chosen;
        chosen.font = {QStringLiteral("False"), 14.25, true, false, true, true};
        chosen.numberingStyle = int(NumberingStyle::FromCaret);
        chosen.colours[TextInk] = 0x123456;
        editor.setProperties(chosen);
        QCOMPARE(editor.send(S::SCI_STYLEGETSIZEFRACTIONAL, 1), 1425L);
        QVERIFY(QFontInfo(QFont(editor.properties().font.name)).fixedPitch());
        QCOMPARE(state(), before);
        QCOMPARE(dressed.size(), 1);
        editor.setProperties(chosen);
        editor.setWhiteSpaceShown(true);
        editor.setLineNumbersShown(false);
        QCOMPARE(dressed.size(), 1);
        QCOMPARE(told.size(), 0);
        editor.changeProperties(editor.properties());
        QCOMPARE(told.size(), 1);
        QCOMPARE(state(), before);
    }

    void struckTextStaysStruck()
    {
        CodeEditor editor;
        editor.loadText("one");
        EditorProperties chosen = editor.properties();
        chosen.font.strikethrough = true;
        editor.setProperties(chosen);
        editor.placeCaret(0, 3);
        editor.replaceSelection(" two");
        const auto struckEnd
            = [&editor] { return editor.send(S::SCI_INDICATOREND, ulong(strikeIndicator), 0); };
        QCOMPARE(struckEnd(), 7L);
        editor.loadText("three");
        QCOMPARE(struckEnd(), 5L);
        chosen.font.strikethrough = false;
        editor.setProperties(chosen);
        QCOMPARE(editor.send(S::SCI_INDICATORVALUEAT, ulong(strikeIndicator), 2), 0L);
    }

    // With the caret in line 4.
    void lineNumbers()
    {
        struct Row
        {
            int style, start, line;
            const char *beside;
        };
        const Row rows[] = {{1, -3, 2, "-1"}, {77, 5, 2, "7"},    {2, 250, 10, "104"},
                            {3, 1, 9, "10"},  {3, 1, 8, ""},      {3, 1, 4, "5"},
                            {4, 100, 1, "3"}, {4, 100, 4, "104"}, {1, 2147483647, 1, "2147483648"}};
        for (const Row &row : rows) {
            CodeEditor editor;
            editor.resize(400, 400);
            EditorProperties chosen;
            chosen.numberingStyle = row.style;
            chosen.numberingStart = row.start;
            editor.setProperties(chosen);
            editor.loadText(QByteArray("\n").repeated(5000));
            editor.placeCaret(4, 0);
            editor.grab();
            QCOMPARE(besideLine(editor, row.line), QByteArray(row.beside));
            QCOMPARE(besideLine(editor, 3000), QByteArray());
            editor.send(S::SCI_SETFIRSTVISIBLELINE, 2990);
            editor.grab();
            QCOMPARE(QString::fromLatin1(besideLine(editor, 2999)), numberBeside(chosen, 2999, 4));
            chosen.numberingStyle = chosen.numberingStart = 1;
            editor.setProperties(chosen);
            QCOMPARE(besideLine(editor, 2999), QByteArray());
        }
    }

    void selectionsOfSeveralLinesAreBounded()
    {
        CodeEditor editor;
        editor.loadText(QByteArray("abc\n").repeated(9));
        const auto bounds = [&editor](long start, long end) {
            editor.send(S::SCI_SETSEL, ulong(start), end);
            editor.grab();
            QCoreApplication::processEvents();
            return QList<long>{markedLine(editor, selectionFirstMarker),
                               markedLine(editor, selectionLastMarker)};
        };
        const QList<long> none{-1, -1};
        QCOMPARE(bounds(1, 3), none);
        QCOMPARE(bounds(1, 22), QList<long>({0, 5}));
        QCOMPARE(bounds(30, 5), QList<long>({1, 7}));
        editor.execute(163); // indents the selected lines
        const ByteRange kept = editor.selection();
        QCOMPARE(bounds(kept.start, kept.end), QList<long>({1, 7}));
        EditorProperties chosen = editor.properties();
        chosen.leftMargin = false;
        editor.setProperties(chosen);
        QCOMPARE(bounds(kept.start, kept.end), none);
    }

    void selectionIsDraggedOnlyWhenWanted()
    {
        CodeEditor editor;
        editor.resize(400, 300);
        editor.loadText("some words here");
        EditorProperties chosen;
        for (const bool drag : {true, false}) {
            chosen.dragText = drag;
            editor.setProperties(chosen);
            editor.send(S::SCI_SETSEL, 0, 10);
            const QPoint inside = pointOf(editor, 4);
            QTest::mousePress(editor.viewport(), Qt::LeftButton, {}, inside);
            QCOMPARE(editor.selection().length(), drag ? 10L : 0L);
            QTest::mouseRelease(editor.viewport(), Qt::LeftButton, {}, inside);
        }
    }
};

QTEST_MAIN(TestCodeEditor)
#include "test_code_editor.moc"
