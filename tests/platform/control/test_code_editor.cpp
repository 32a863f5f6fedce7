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
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>
#include <QtTest>

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

} // namespace

class TestCodeEditor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textComesBack_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("mixed line ends") << QByteArray("a\r\nb\nc\rd\r\n");
        QTest::newRow("zero bytes") << QByteArray("a\0b\0\0c", 6);
        QTest::newRow("UTF-8") << QByteArray("\xC3\xA4\xE6\xBC\xA2\xF0\x9F\x98\x80 e\xCC\x81");
        QTest::newRow("not UTF-8") << QByteArray("\xFF\xC3(\x80");
        QTest::newRow("two megabytes") << QByteArray("<a>\t0</a>\r\n").repeated(200000);
    }
    void textComesBack()
    {
        QFETCH(QByteArray, text);
        CodeEditor editor;
        editor.setLanguage(Language::Xml);
        const quint64 before = editor.revision();
        editor.loadText("something else\nentirely");
        editor.setHighlightedLine(1);
        editor.execute(204);
        editor.loadText(text);
        QCOMPARE(editor.text(), text);
        QVERIFY(editor.revision() > before + 1);
        QVERIFY(!editor.canUndo() && !editor.canRedo());
        QCOMPARE(editor.caretLine(), 0);
        QCOMPARE(editor.caretColumn(), 0);
        QCOMPARE(editor.highlightedLine(), -1);
        QVERIFY(!editor.execute(206));
    }

    void replacingTouchesOnlyTheDifference_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<int>("deleted");
        QTest::addColumn<int>("inserted");
        QTest::newRow("equal") << QByteArray("abc") << QByteArray("abc") << 0 << 0;
        QTest::newRow("middle") << QByteArray("<a>one</a>") << QByteArray("<a>two!</a>") << 3 << 4;
        QTest::newRow("overlap") << QByteArray("aaa") << QByteArray("aaaaa") << 0 << 2;
        QTest::newRow("shrink") << QByteArray("ababab") << QByteArray("abab") << 2 << 0;
        QTest::newRow("to empty") << QByteArray("ab") << QByteArray("") << 2 << 0;
        QTest::newRow("lead byte shared") << QByteArray("x\xC3\xA4y") << QByteArray("x\xC3\xB6y") << 2 << 2;
        QTest::newRow("last byte shared") << QByteArray("x\xC3\xA4y") << QByteArray("x\xC4\xA4y") << 2 << 2;
        QTest::newRow("CR shared") << QByteArray("a\r\nb") << QByteArray("a\rb") << 2 << 1;
        QTest::newRow("LF shared") << QByteArray("a\nb") << QByteArray("a\r\nb") << 1 << 2;
    }
    void replacingTouchesOnlyTheDifference()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        CodeEditor editor;
        editor.loadText(before);
        editor.send(S::SCI_SETMODEVENTMASK,
                    S::SC_MOD_BEFOREINSERT | S::SC_MOD_BEFOREDELETE | S::SC_MOD_INSERTTEXT
                        | S::SC_MOD_DELETETEXT);
        int deleted = 0;
        int inserted = 0;
        connect(&editor, &S::SCN_MODIFIED, &editor, [&](int, int kind, const char *, int length) {
            deleted += (kind & S::SC_MOD_DELETETEXT) != 0 ? length : 0;
            inserted += (kind & S::SC_MOD_INSERTTEXT) != 0 ? length : 0;
        });
        const quint64 revision = editor.revision();
        editor.replaceText(after);
        QCOMPARE(editor.text(), after);
        QTEST(deleted, "deleted");
        QTEST(inserted, "inserted");
        QCOMPARE(editor.revision() != revision, before != after);
        QCOMPARE(editor.canUndo(), before != after);
        const quint64 changed = editor.revision();
        editor.undo();
        QCOMPARE(editor.text(), before);
        QVERIFY(!editor.canUndo());
        QVERIFY(before == after || editor.revision() > changed);
        editor.redo();
        QCOMPARE(editor.text(), after);
    }

    void caretCountsCharacters_data()
    {
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("expectedLine");
        QTest::addColumn<int>("expectedColumn");
        QTest::newRow("behind astral") << 1 << 2 << 1 << 2;
        QTest::newRow("behind tab") << 0 << 2 << 0 << 2;
        QTest::newRow("past line end") << 0 << 50 << 0 << 3;
        QTest::newRow("past the text's end") << 1 << 5000 << 1 << 3;
        QTest::newRow("past last line") << 9 << 1 << 2 << 0;
        QTest::newRow("negative") << -3 << -1 << 0 << 0;
    }
    void caretCountsCharacters()
    {
        QFETCH(int, line);
        QFETCH(int, column);
        CodeEditor editor;
        editor.loadText("\ta\xC3\xA4\r\n\xF0\x9F\x98\x80\xE6\xBC\xA2z\r\n");
        editor.placeCaret(line, column);
        QTEST(editor.caretLine(), "expectedLine");
        QTEST(editor.caretColumn(), "expectedColumn");
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

    void lineEndsFollowTheDocument_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("CR LF") << QByteArray("a\r\n") << QByteArray("1\r\n2\r\n3a\r\n");
        QTest::newRow("CR") << QByteArray("a\r") << QByteArray("1\r2\r3a\r");
        QTest::newRow("LF") << QByteArray("a\n") << QByteArray("1\n2\n3a\n");
        QTest::newRow("none") << QByteArray("a") << QByteArray("1\n2\n3a");
    }
    void lineEndsFollowTheDocument()
    {
        QFETCH(QByteArray, text);
        CodeEditor editor;
        editor.loadText(text);
        editor.replaceSelection("1\n2\r\n3");
        QTEST(editor.text(), "expected");
        editor.loadText(text);
        QGuiApplication::clipboard()->setText(QStringLiteral("1\n2\r\n3"));
        QVERIFY(editor.canPaste());
        editor.paste();
        QTEST(editor.text(), "expected");
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
        const auto pointOf = [&editor](long position) {
            return QPoint(int(editor.send(S::SCI_POINTXFROMPOSITION, 0, position)) + 1,
                          int(editor.send(S::SCI_POINTYFROMPOSITION, 0, position)) + 4);
        };
        QTest::mouseClick(editor.viewport(), Qt::RightButton, {}, pointOf(2));
        QCOMPARE(editor.selection(), ByteRange({0, 5}));
        QTest::mouseClick(editor.viewport(), Qt::RightButton, {}, pointOf(8));
        QCOMPARE(editor.selection(), ByteRange({8, 8}));
        QSignalSpy asked(&editor, &CodeEditor::contextMenuRequested);
        QContextMenuEvent event(QContextMenuEvent::Mouse, pointOf(2), QPoint(70, 80));
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
        QPalette dark;
        dark.setColor(QPalette::Base, QColor(0x20, 0x20, 0x20));
        dark.setColor(QPalette::Text, QColor(0xE0, 0xE0, 0xE0));
        editor.setPalette(dark);
        QCOMPARE(editor.send(S::SCI_STYLEGETBACK, S::STYLE_DEFAULT), 0x202020L);
        const long darkTag = editor.send(S::SCI_STYLEGETFORE, 1);
        editor.setPalette(
            QPalette(Qt::black, Qt::white, Qt::white, Qt::black, Qt::gray, Qt::black, Qt::white));
        QCOMPARE(editor.send(S::SCI_STYLEGETBACK, S::STYLE_DEFAULT), 0xFFFFFFL);
        QCOMPARE(editor.send(S::SCI_STYLEGETFORE, 1), 0x000080L);
        QVERIFY(darkTag != 0x000080L);
        QVERIFY(QFontInfo(editorFont()).fixedPitch());
    }

    void numberMarginGrowsWithTheText()
    {
        CodeEditor editor;
        editor.loadText("a");
        const long narrow = editor.send(S::SCI_GETMARGINWIDTHN, numberMargin);
        editor.loadText(QByteArray("\n").repeated(100000));
        QVERIFY(editor.send(S::SCI_GETMARGINWIDTHN, numberMargin) > narrow);
        editor.setLineNumbersShown(false);
        QCOMPARE(editor.send(S::SCI_GETMARGINWIDTHN, numberMargin), 0L);
    }

    void firstColoursCanBeRead_data()
    {
        QTest::addColumn<QColor>("ground");
        QTest::addColumn<QColor>("ink");
        QTest::newRow("white") << QColor(Qt::white) << QColor(Qt::black);
        QTest::newRow("paper") << QColor(0xFD, 0xF6, 0xE3) << QColor(0x58, 0x6E, 0x75);
        QTest::newRow("grey") << QColor(0x80, 0x80, 0x80) << QColor(Qt::black);
        QTest::newRow("dark") << QColor(0x20, 0x20, 0x20) << QColor(0xE0, 0xE0, 0xE0);
        QTest::newRow("black") << QColor(Qt::black) << QColor(Qt::white);
        QTest::newRow("blue") << QColor(0x00, 0x20, 0x50) << QColor(0xC0, 0xD0, 0xE0);
    }
    void firstColoursCanBeRead()
    {
        QFETCH(QColor, ground);
        QFETCH(QColor, ink);
        const Look look(EditorProperties(), paletteOf(ground, ink));
        for (int token = 0; token < tokenCount; ++token) {
            const TokenLook &shown = look.tokens[size_t(token)];
            QVERIFY2(contrast(shown.ink, shown.ground) >= 3, qPrintable(QString::number(token)));
            if (look.dark && token != int(Token::LineNumber))
                QVERIFY2(contrast(shown.ink, look.highlight) >= 2.5, qPrintable(QString::number(token)));
        }
        QVERIFY(contrast(look.marginInk, look.margin) >= 3);
        QVERIFY(contrast(look.bookmarkGround, look.margin) >= 3);
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

    void lineNumbers_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("beside"); // with the caret in line 4
        QTest::newRow("decimal") << 1 << -3 << 2 << QStringLiteral("-1");
        QTest::newRow("unknown") << 77 << 5 << 2 << QStringLiteral("7");
        QTest::newRow("hexadecimal") << 2 << 250 << 10 << QStringLiteral("104");
        QTest::newRow("a tenth") << 3 << 1 << 9 << QStringLiteral("10");
        QTest::newRow("no tenth") << 3 << 1 << 8 << QString();
        QTest::newRow("the caret's") << 3 << 1 << 4 << QStringLiteral("5");
        QTest::newRow("above the caret") << 4 << 100 << 1 << QStringLiteral("3");
        QTest::newRow("at the caret") << 4 << 100 << 4 << QStringLiteral("104");
        QTest::newRow("largest") << 1 << 2147483647 << 1 << QStringLiteral("2147483648");
    }
    void lineNumbers()
    {
        QFETCH(int, style);
        QFETCH(int, start);
        QFETCH(int, line);
        CodeEditor editor;
        editor.resize(400, 400);
        EditorProperties chosen;
        chosen.numberingStyle = style;
        chosen.numberingStart = start;
        editor.setProperties(chosen);
        editor.loadText(QByteArray("\n").repeated(5000));
        editor.placeCaret(4, 0);
        editor.grab();
        QTEST(QString::fromLatin1(besideLine(editor, line)), "beside");
        QCOMPARE(besideLine(editor, 3000), QByteArray());
        editor.send(S::SCI_SETFIRSTVISIBLELINE, 2990);
        editor.grab();
        QCOMPARE(QString::fromLatin1(besideLine(editor, 2999)), numberBeside(chosen, 2999, 4));
        chosen.numberingStyle = chosen.numberingStart = 1;
        editor.setProperties(chosen);
        QCOMPARE(editor.send(S::SCI_GETMARGINTYPEN, numberMargin), long(S::SC_MARGIN_NUMBER));
        QCOMPARE(besideLine(editor, 2999), QByteArray());
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

    void draggingTheScrollBarTellsTheLine()
    {
        CodeEditor editor;
        editor.resize(300, 200);
        EditorProperties chosen;
        chosen.numberingStart = 11;
        editor.setProperties(chosen);
        editor.loadText(QByteArray("\n").repeated(500));
        editor.show();
        QScrollBar *bar = editor.verticalScrollBar();
        bar->setSliderDown(true);
        bar->setSliderPosition(99);
        QCOMPARE(QToolTip::text(), QStringLiteral("Line 110"));
        bar->setSliderDown(false);
        QTRY_VERIFY(!QToolTip::isVisible());
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
            const QPoint inside(int(editor.send(S::SCI_POINTXFROMPOSITION, 0, 4)) + 1,
                                int(editor.send(S::SCI_POINTYFROMPOSITION, 0, 4)) + 4);
            QTest::mousePress(editor.viewport(), Qt::LeftButton, {}, inside);
            QCOMPARE(editor.selection().length(), drag ? 10L : 0L);
            QTest::mouseRelease(editor.viewport(), Qt::LeftButton, {}, inside);
        }
    }
};

QTEST_MAIN(TestCodeEditor)
#include "test_code_editor.moc"
