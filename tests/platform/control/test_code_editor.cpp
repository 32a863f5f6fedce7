// The editor's text, caret, undo, clipboard and signals.
#include "platform/control/code_editor.h"
#include "platform/control/editor_look.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QFontInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QSignalSpy>
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
};

QTEST_MAIN(TestCodeEditor)
#include "test_code_editor.moc"
