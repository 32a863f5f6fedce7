// Macros: the bytes they are kept in, and playing and recording them in an editor.
#include "platform/control/code_editor.h"
#include "platform/control/macro_recorder.h"

#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QtTest>

using namespace control;
using S = QsciScintillaBase;

namespace {

const Macro sample = {{0, "<a\xC3\xA4>\t\n"}, {183, {}}, {167, {}, 1'000'000}, {0, "x", 300}, {223, {}}};

// What a macro's bytes are up to the checksum, with the right checksum behind.
QByteArray signedBytes(QByteArray bytes)
{
    quint32 sum = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    for (int byte = 0; byte < 4; ++byte)
        bytes += char(~sum >> (8 * byte));
    return bytes;
}

void type(CodeEditor &editor, const char *text) { QTest::keyClicks(&editor, QString::fromUtf8(text)); }

void commit(CodeEditor &editor, const char *preedit, const char *committed)
{
    QInputMethodEvent event(QString::fromUtf8(preedit), {});
    event.setCommitString(QString::fromUtf8(committed));
    QCoreApplication::sendEvent(&editor, &event);
}

// Records whatever is done to an editor while it lives.
class Recording
{
public:
    explicit Recording(CodeEditor &editor) : recorder_(editor)
    {
        recorder_.start();
        connection_ = QObject::connect(&editor, &CodeEditor::stepped, &editor,
                                       [this](const Step &step) { lost_ = lost_ || !recorder_.take(step); });
    }
    ~Recording() { QObject::disconnect(connection_); }
    Macro finish() { return recorder_.finish(); }
    bool lost() const { return lost_; }

private:
    MacroRecorder recorder_;
    QMetaObject::Connection connection_;
    bool lost_ = false;
};

} // namespace

class TestMacro : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesComeBack()
    {
        const QByteArray bytes = bytesOf(sample);
        QCOMPARE(macroOf(bytes), sample);
        for (const QByteArray &rest : {QByteArray(4, '\0'), QByteArray("XEM1"), QByteArray(6, '\xFF')})
            QCOMPARE(macroOf(bytes + rest), sample);
        MacroSlots macros;
        QVERIFY(macros.setMacro(9, bytes + '\0'));
        QCOMPARE(macros.macro(9), bytes);
        QVERIFY(!macros.setMacro(10, bytes) && !macros.setMacro(-1, bytes));
        QVERIFY(macros.setMacro(9, bytes.chopped(1)));
        QVERIFY(macros.macro(9).isEmpty());
    }

    void damagedBytesAreNothing()
    {
        const QByteArray bytes = bytesOf(sample);
        for (qsizetype length = 0; length < bytes.size(); ++length)
            QVERIFY2(!macroOf(bytes.first(length)), qPrintable(QString::number(length)));
        for (qsizetype at = 0; at < bytes.size(); ++at) {
            for (const int flip : {0x01, 0x80, 0xFF}) {
                QByteArray damaged = bytes + "\0rest";
                damaged[at] = char(damaged[at] ^ flip);
                QVERIFY2(!macroOf(damaged), qPrintable(QString::number(at)));
            }
        }
    }

    void hostileBytesAreNothing()
    {
        const std::pair<QByteArray, bool> rows[] = {
            {"\x01\xCE\x02", true}, // Line Down
            {QByteArray("\0", 1), false}, // no step
            {"\x02\xCE\x02", false}, // more steps than there are
            {"\xFF\xFF\xFF\xFF\x07\xCE\x02", false}, // two thousand million steps
            {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01", false}, // a number without end
            {QByteArray("\x01\x00\xFF\xFF\xFF\x7Fzz", 8), false}, // text longer than the file
            {QByteArray("\x01\x00\x02zz", 5), true}, // text of two letters
            {QByteArray("\x01\x00\x00", 3), false}, // no text
            {QByteArray("\x01\x00\x01\xC3", 4), false}, // text that is no UTF-8
            {QByteArray("\x01\x00\x01\x00", 4), false}, // text with a zero
            {QByteArray("\x01\x00\x01\x1B", 4), false}, // text with Escape
            {QByteArray("\x01\xCF\x02\x00", 4), false}, // repeated no times
            {"\x01\xCF\x02\x80\x89\x7A", false}, // repeated two million times
        };
        for (const auto &[steps, good] : rows)
            QVERIFY2(macroOf(signedBytes("XEM1" + steps)).has_value() == good, steps.toHex());
        for (const int command : {99, 100, 101, 168, 169, 178, 187, 212, 213, 224, 242}) {
            const char step[] = {1, char((command * 2) | 0x80), char(command * 2 >> 7)};
            QVERIFY2(!macroOf(signedBytes("XEM1" + QByteArray(step, 3))),
                     qPrintable(QString::number(command)));
        }
    }

    void whatIsRecordedPlays_data()
    {
        QTest::addColumn<QByteArray>("end");
        QTest::newRow("LF") << QByteArray("\n");
        QTest::newRow("CR LF") << QByteArray("\r\n");
    }
    void whatIsRecordedPlays()
    {
        QFETCH(QByteArray, end);
        const QByteArray recorded = "one" + end + "two" + end;
        const QByteArray played = "< \xC3\xA4\xF0\x9F\x98\x80>" + end + "- " + recorded;
        CodeEditor editor;
        editor.loadText(recorded);
        Recording recording(editor);
        type(editor, "< ");
        commit(editor, "a", "");
        commit(editor, "", "\xC3\xA4");
        commit(editor, "", "\xF0\x9F\x98\x80>\n");
        type(editor, "x");
        QTest::keyClick(&editor, Qt::Key_Backspace);
        type(editor, "-");
        QTest::keyClick(&editor, Qt::Key_Tab);
        QTest::keyClick(&editor, Qt::Key_Backspace);
        type(editor, " ");
        QTest::keyClick(&editor, Qt::Key_Home, Qt::ControlModifier);
        const Macro macro = recording.finish();
        QCOMPARE(editor.text(), played);
        QCOMPARE(macroOf(bytesOf(macro)), macro);

        editor.loadText(recorded);
        QSignalSpy edited(&editor, &CodeEditor::textEdited);
        QVERIFY(editor.player().play(macro));
        QCOMPARE(editor.text(), played);
        QCOMPARE(edited.size(), 1);
        editor.undo();
        QCOMPARE(editor.text(), recorded);
        QVERIFY(!editor.canUndo());
        editor.redo();
        QCOMPARE(editor.text(), played);
        QVERIFY(editor.updatesEnabled());
    }

    // What was undone while recording is not in the macro; what was typed before it stays out as well.
    void undoneIsNotRecorded()
    {
        CodeEditor editor;
        type(editor, "before");
        Recording recording(editor);
        type(editor, "ab");
        editor.execute(199);
        type(editor, "wrong");
        editor.execute(183);
        editor.execute(100);
        QCOMPARE(editor.text(), QByteArray("beforeab"));
        type(editor, "X");
        editor.execute(100);
        editor.execute(101);
        type(editor, "Y");
        QVERIFY(!recording.lost());
        const Macro expected = {{0, "ab"}, {199, {}}, {0, "XY"}};
        QCOMPARE(recording.finish(), expected);
        QCOMPARE(editor.text(), QByteArray("beforeaXYb"));
    }

    void undoBeyondTheRecordingIsSaid()
    {
        CodeEditor editor;
        type(editor, "before");
        Recording recording(editor);
        editor.execute(100);
        QVERIFY(recording.lost());
        QCOMPARE(editor.text(), QByteArray());
        QVERIFY(recording.finish().isEmpty());
    }

    void repeatCountIsOneStep()
    {
        const QByteArray text = "one\ntwo\nthree";
        struct Row
        {
            int command, count;
            QByteArray after;
            long caret;
        };
        const Row rows[] = {{0, 3, "a/a/a/" + text, 6},
                            {167, 2, text, 8},
                            {201, 1'000'000, text, 13}, // goes to the end
                            {195, 1'000'000, "", 0}, // deletes to the end
                            {119, 50, "one two three", 0}, // joins while there are lines
                            {206, 50, text, 0}}; // nothing to go to
        for (const auto &[command, count, after, caret] : rows) {
            CodeEditor editor;
            editor.loadText(text);
            QSignalSpy stepped(&editor, &CodeEditor::stepped);
            editor.setRepeatCount(count);
            QCOMPARE(editor.perform({command, command == 0 ? "a/" : ""}), command != 206);
            QCOMPARE(editor.text(), after);
            QCOMPARE(editor.send(S::SCI_GETCURRENTPOS), caret);
            QCOMPARE(editor.repeatCount(), 1);
            QCOMPARE(stepped.size(), command == 206 ? 0 : 1);
            editor.undo();
            QCOMPARE(editor.text(), text);
            QVERIFY(!editor.canUndo());
        }
    }

    void repeatedUndoGoesBackStepByStep()
    {
        CodeEditor editor;
        for (const char *piece : {"a", "b", "c", "d"})
            editor.replaceSelection(piece);
        editor.setRepeatCount(3);
        editor.execute(100);
        QCOMPARE(editor.text(), QByteArray("a"));
        editor.setRepeatCount(2);
        editor.execute(101);
        QCOMPARE(editor.text(), QByteArray("abc"));
    }

    void escapeTakesTheCountBack()
    {
        CodeEditor editor;
        editor.loadText("one");
        editor.setRepeatCount(5);
        editor.send(S::SCI_SETSEL, 0, 2);
        QTest::keyClick(&editor, Qt::Key_Escape);
        QCOMPARE(editor.selection(), ByteRange({0, 2}));
        type(editor, "x");
        QCOMPARE(editor.text(), QByteArray("xe"));
    }

    void playEndsWhereAStepFails()
    {
        CodeEditor editor;
        editor.loadText("one\ntwo\nthree");
        PlayReport report;
        editor.player().watch({}, [&report](const PlayReport &ended) { report = ended; });
        QVERIFY(!editor.player().play({{0, "x"}, {206, {}}, {0, "y"}}));
        QCOMPARE(editor.text(), QByteArray("xone\ntwo\nthree"));
        QCOMPARE(report.end, PlayEnd::StepFailed);
        QCOMPARE(report.failed.command, 206);
        // A repetition that has come to its end within a macro is no failure.
        QVERIFY(editor.player().play({{206, {}, 5}, {0, "y"}}) == false);
        QVERIFY(editor.player().play({{167, {}, 99}, {0, "y"}}));
        QCOMPARE(editor.text(), QByteArray("xone\ntwo\nthreey"));
        QCOMPARE(report.end, PlayEnd::Done);
        editor.undo();
        QCOMPARE(editor.text(), QByteArray("xone\ntwo\nthree"));
        // In the last line there is no line to go on to, though the key goes to its end.
        editor.placeCaret(0, 0);
        editor.setServiceHandler(214, [&editor] {
            return editor.player().play({{181, {}}, {0, "-"}, {167, {}}});
        });
        editor.setRepeatCount(99);
        editor.execute(214);
        QCOMPARE(editor.text(), QByteArray("-xone\n-two\n-three"));
        QCOMPARE(report.end, PlayEnd::StepFailed);
        QCOMPARE(report.failed.command, 167);
    }

    // What is played types into names as a user does, however often and from wherever it is called.
    void playRenamesBothTags()
    {
        const QByteArray text = "<a><b></b><c></c></a>";
        CodeEditor editor;
        editor.setLanguage(Language::Xml);
        editor.loadText(text);
        editor.setServiceHandler(214, [&editor] { return editor.player().play({{0, "x"}}); });
        editor.placeCaret(0, 5);
        type(editor, "x");
        QCOMPARE(editor.text(), QByteArray("<a><bx></bx><c></c></a>"));
        editor.placeCaret(0, 14);
        QVERIFY(editor.execute(214));
        QCOMPARE(editor.text(), QByteArray("<a><bx></bx><cx></cx></a>"));
        editor.setRepeatCount(2);
        QVERIFY(editor.execute(214));
        QCOMPARE(editor.text(), QByteArray("<a><bx></bx><cxxx></cxxx></a>"));
        editor.execute(100);
        editor.execute(100);
        QCOMPARE(editor.text(), QByteArray("<a><bx></bx><c></c></a>"));
        editor.execute(100);
        QCOMPARE(editor.text(), text);
    }

    void playCanBeStopped()
    {
        CodeEditor editor;
        PlayReport report;
        int asked = 0;
        editor.player().watch([&asked](const PlayReport &) { return ++asked < 3; },
                              [&report](const PlayReport &ended) { report = ended; });
        editor.setRepeatCount(mostRepeats);
        QVERIFY(editor.perform({0, "ab"}));
        QCOMPARE(report.end, PlayEnd::Cancelled);
        QVERIFY(report.rounds > 0 && report.rounds < mostRepeats);
        QVERIFY(editor.text().startsWith(QByteArray("ab").repeated(report.rounds)));
        editor.undo();
        QCOMPARE(editor.text(), QByteArray());
        QVERIFY(!editor.canUndo());
    }

    void playCannotFillTheMemory()
    {
        CodeEditor editor;
        editor.loadText(QByteArray("some line\n").repeated(100000));
        PlayReport report;
        editor.player().watch({}, [&report](const PlayReport &ended) { report = ended; });
        QVERIFY(editor.player().play({{137, {}}, {114, {}, 1000}}) == false);
        QCOMPARE(report.end, PlayEnd::TextTooLarge);
        QVERIFY(editor.text().size() <= 2 * MacroPlayer::mostText);
    }

    void redoSurvivesAPlayThatChangesNothing()
    {
        CodeEditor editor;
        type(editor, "word");
        editor.undo();
        editor.player().play({{190, {}}, {192, {}}});
        QVERIFY(!editor.canUndo() && editor.canRedo());
    }
};

QTEST_MAIN(TestMacro)
#include "test_macro.moc"
