// Macro files, and recording, playing and repeating by keyboard in an editor.
#include "editor/macro_files.h"
#include "editor/macro_services.h"
#include "platform/control/code_editor.h"

#include <QtTest>
#include <QtWidgets>

using namespace editor;
using namespace Qt::StringLiterals;
using control::bytesOf;
using control::CodeEditor;
using control::Macro;
using control::MacroSlots;

namespace {

Macro typing(const char *text) { return {{0, text}}; }

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A program folder with its macros.
struct Folder
{
    QTemporaryDir program;
    MacroSlots macros;
    QStringList notes;
    MacroFiles files{program.path(), macros, [this](const QString &note) { notes += note; }};

    QString path(const char *name = "") const
    {
        return program.filePath(u"macros/%1"_s.arg(QString::fromUtf8(name)));
    }
    void add(const char *name, const QByteArray &bytes)
    {
        QDir().mkpath(path());
        write(path(name), bytes);
    }
    QList<int> filled() const
    {
        QList<int> filled;
        for (int slot = 0; slot < MacroSlots::count; ++slot)
            if (!macros.macro(slot).isEmpty())
                filled += slot;
        return filled;
    }
};

// Does it in the next window that waits for an answer.
template <typename Do>
void inNextWindow(const char *name, const Do &answer)
{
    auto *timer = new QTimer(qApp);
    timer->callOnTimeout([timer, name, answer] {
        QWidget *window = QApplication::activeModalWidget();
        if (window == nullptr || !window->isVisible())
            return;
        timer->deleteLater();
        timer->stop();
        QCOMPARE(window->objectName(), QString::fromUtf8(name));
        answer(window);
    });
    timer->start(5);
}

void press(QWidget *window, const QList<Qt::Key> &keys)
{
    for (const Qt::Key key : keys)
        QTest::keyClick(window->focusWidget() != nullptr ? window->focusWidget() : window, key);
}

// An editor with the services, used by keyboard.
struct Desk
{
    CodeEditor editor;
    QStringList notes;
    MacroServices services{editor, nullptr, [this](const QString &note) { notes += note; }};

    void type(const char *text) { QTest::keyClicks(&editor, QString::fromUtf8(text)); }
    void record() { QTest::keyClick(&editor, Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier); }
    void play(Qt::Key digit) { QTest::keyClick(&editor, digit, Qt::AltModifier); }
    void repeat(const char *count, Qt::Key end = Qt::Key_Return)
    {
        inNextWindow("frmRepeatCount", [=](QWidget *window) {
            QTest::keyClicks(window->focusWidget(), QString::fromUtf8(count));
            press(window, {end});
        });
        QTest::keyClick(&editor, Qt::Key_R, Qt::ControlModifier);
    }
    void put(int slot, const Macro &macro) { editor.library()->macros.setMacro(slot, bytesOf(macro)); }
    Macro macro(int slot) const
    {
        return control::macroOf(editor.library()->macros.macro(slot)).value_or(Macro());
    }
};

} // namespace

class TestMacros : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // What is asked about at the end: what no file holds.
    void knowsWhatIsUnsaved()
    {
        Folder folder;
        folder.add("3.dem", bytesOf(typing("kept")));
        folder.files.LoadMacros();
        QVERIFY(!folder.files.hasUnsaved());
        for (const char *text : {"new", "newer"}) {
            folder.macros.setMacro(3, bytesOf(typing(text)));
            QVERIFY(folder.files.hasUnsaved());
            folder.files.SaveMacros();
            QVERIFY(!folder.files.hasUnsaved());
        }
        // A file that cannot be written.
        QVERIFY(QDir().mkpath(folder.path("4.dem")));
        folder.macros.setMacro(4, bytesOf(typing("lost")));
        folder.files.SaveMacros();
        QVERIFY(folder.files.hasUnsaved());
    }

    void filesGoIntoTheirSlots()
    {
        const struct
        {
            const char *name;
            QList<int> filled;
            int notes = 0;
        } rows[] = {
            {"3.dem", {3}},  {"9.x.dem", {9}},  {" 4 .dem", {4}},   {"5.3dem", {5}},
            {"07.dem", {7}}, {"12.dem", {}, 1}, {"-1.dem", {}, 1},  {"99999999999.dem", {}, 1},
            {"1.DEM", {}},   {"2.dem~", {}},    {"notes.dem", {0}}, {"0x4.dem", {0}},
            {".dem", {0}},   {"7dem", {0}},
        };
        for (const auto &[name, filled, notes] : rows) {
            Folder folder;
            folder.add(name, bytesOf(typing("a")) + "rest of an older one");
            folder.files.LoadMacros();
            QVERIFY2(folder.filled() == filled && folder.notes.size() == notes, name);
        }
    }

    void whatIsNoMacroFileIsSkipped()
    {
        Folder folder;
        folder.add("3.dem", "ten bytes."); // a slot gets one byte more
        QCOMPARE(*macroFileBytes(folder.path("3.dem")), QByteArray("ten bytes.\0", 11));
        QVERIFY(QDir().mkpath(folder.path("5.dem")));
        folder.add("6.dem", bytesOf(typing("a")) + QByteArray(control::mostMacroBytes, 'x'));
        folder.add("7.dem", bytesOf(typing("a")).chopped(1));
        folder.add("8.dem", "");
        folder.files.LoadMacros();
        QVERIFY(folder.filled().isEmpty());
        QCOMPARE(folder.notes.size(), 5);
        // One that cannot be read leaves its slot alone, one without a macro does not.
        folder.macros.setMacro(7, bytesOf(typing("b")));
        folder.files.LoadMacroFile(folder.path("9.dem"), 7);
        QCOMPARE(folder.filled(), QList<int>{7});
        folder.files.LoadMacroFile(folder.path("7.dem"), 7);
        QVERIFY(folder.filled().isEmpty());
    }

    void savingWritesOverAndNeverShortens()
    {
        Folder folder;
        folder.files.SaveMacros();
        QVERIFY(QFileInfo(folder.path()).isDir() && QDir(folder.path()).isEmpty());
        const QByteArray bytes = bytesOf(typing("short"));
        const QByteArray older = bytesOf(typing("a good deal longer"));
        folder.add("9.dem", older);
        folder.add("2.dem", older);
        folder.macros.setMacro(9, bytes);
        folder.macros.setMacro(0, bytes);
        folder.files.SaveMacros();
        QCOMPARE(read(folder.path("9.dem")), bytes + older.mid(bytes.size()));
        QCOMPARE(read(folder.path("2.dem")), older);
        QCOMPARE(read(folder.path("0.dem")), bytes);
        folder.macros = {};
        folder.files.LoadMacros();
        QCOMPARE(folder.filled(), QList<int>({0, 2, 9}));
        QCOMPARE(folder.macros.macro(9), bytes);
        QVERIFY(!folder.files.SaveMacroFile(folder.path("no/folder"), 9));
        QCOMPARE(folder.notes.size(), 1);
    }

    void recordedByKeysAndPlayed()
    {
        Desk desk;
        QSignalSpy state(&desk.services, &MacroServices::stateChanged);
        desk.put(0, typing("x"));
        desk.record();
        desk.type("ab");
        QTest::keyClick(&desk.editor, Qt::Key_Left);
        QCOMPARE(state.last().first().toString(), u"Recording a macro: 3 steps (Ctrl+Shift+R stops)"_s);
        inNextWindow("frmMacroSlot", [](QWidget *window) {
            auto *list = window->findChild<QTreeWidget *>();
            QCOMPARE(list->topLevelItem(0)->text(1), u"1 step"_s);
            QCOMPARE(list->currentItem(), list->topLevelItem(1));
            QCOMPARE(list->currentItem()->text(1), u"empty"_s);
            press(window, {Qt::Key_Down, Qt::Key_Return});
        });
        desk.record();
        QCOMPARE(state.last().first().toString(), QString());
        QCOMPARE(desk.macro(2), Macro({{0, "ab"}, {199, {}}}));
        desk.editor.loadText({});
        desk.repeat("3");
        QCOMPARE(state.last().first().toString(), u"Repeat: 3"_s);
        desk.play(Qt::Key_3);
        QCOMPARE(desk.editor.text(), QByteArray("aaabbb"));
        QTest::keyClick(&desk.editor, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(desk.editor.text(), QByteArray());
    }

    void whatIsCancelledIsNone()
    {
        Desk desk;
        desk.record();
        desk.record();
        QCOMPARE(desk.notes.last(), u"Nothing was recorded."_s);
        desk.record();
        desk.type("a");
        inNextWindow("frmMacroSlot", [](QWidget *window) { press(window, {Qt::Key_Escape}); });
        desk.record();
        QVERIFY(!desk.services.recording());
        for (int slot = 0; slot < MacroSlots::count; ++slot)
            QVERIFY(desk.macro(slot).isEmpty());
        desk.repeat("7");
        QCOMPARE(desk.editor.repeatCount(), 7);
        desk.repeat("", Qt::Key_Escape);
        QCOMPARE(desk.editor.repeatCount(), 1);
    }

    void macroThatPlaysItselfIsRefused()
    {
        Desk desk;
        const Macro macros[] = {
            {{0, "a"}, {215, {}}}, {{0, "b"}, {216, {}}}, {{0, "c"}, {214, {}}}, {{0, "d"}, {217, {}, 1000}}};
        for (int slot = 0; slot < 4; ++slot)
            desk.put(slot, macros[slot]);
        desk.put(4, {{0, "e"}, {223, {}}});
        for (const int number : {1, 3, 4}) {
            desk.play(Qt::Key(Qt::Key_0 + number));
            QCOMPARE(desk.notes.last(), u"Macro %1 would play itself."_s.arg(number));
            QCOMPARE(desk.editor.text(), QByteArray());
        }
        desk.play(Qt::Key_5);
        QCOMPARE(desk.notes.last(), u"Macro 10 is empty."_s);
        QCOMPARE(desk.editor.text(), QByteArray("e"));
    }

    void longPlayIsStoppedByEscape()
    {
        Desk desk;
        desk.put(0, {{0, "<a/>"}, {121, {}}});
        inNextWindow("frmMacroProgress", [](QWidget *window) { press(window, {Qt::Key_Escape}); });
        desk.editor.setRepeatCount(control::mostRepeats);
        desk.play(Qt::Key_1);
        QVERIFY(!desk.notes.isEmpty() && desk.notes.last().startsWith(u"Stopped after "_s));
        QVERIFY(desk.editor.text().startsWith("<a/>\n<a/>\n"));
        desk.editor.undo();
        QCOMPARE(desk.editor.text(), QByteArray());
        QVERIFY(!desk.editor.canUndo());
    }
};

QTEST_MAIN(TestMacros)
#include "test_macros.moc"
