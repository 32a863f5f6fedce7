// What the user chose about the editor, written by one store and read by another.
#include "editor/editor_settings.h"
#include "platform/control/code_editor.h"
#include "platform/control/editor_commands.h"
#include "platform/system/settings_store.h"

#include <QtTest>
#include <QtWidgets>

using namespace control;
using namespace Qt::StringLiterals;
using editor::Section;
using settings::SettingsStore;

namespace {

// A key for every command, all of them different, one in three with two strokes.
QKeySequence keysFor(int number)
{
    static const QStringList names
        = u", ; = % \\ \" / + - . [ ' # @ L Z 0 9 Space F1 F3 F12 PgUp Return Escape Tab Home"_s.split(u' ');
    const int index = number - firstCommand;
    const int modifiers[] = {CtrlModifier, CtrlModifier | AltModifier,  AltModifier,
                             MetaModifier, CtrlModifier | MetaModifier, AltModifier | MetaModifier};
    Shortcut shortcut{modifiers[index / names.size()], names[index % names.size()], 0, {}};
    if (index % 3 == 0) {
        shortcut.Modifiers2 = index % 2 == 0 ? 0 : int(AltModifier);
        shortcut.VirtKey2 = names[(index + 1) % names.size()];
    }
    return keysOf(shortcut).value_or(QKeySequence());
}

EditorProperties unusualProperties()
{
    EditorProperties properties;
    for (int slot = 0; slot < colourSlots; ++slot)
        properties.colours[size_t(slot)] = slot % 5 == 0 ? noColour : 0x010203 * (slot + 1) % 0x1000000;
    for (int slot = 0; slot < styleSlots; ++slot)
        properties.styles[size_t(slot)] = (slot + 1) % 4;
    properties.font = {QString(), 9.5, true, true, true, true};
    properties.numberingStyle = int(NumberingStyle::FromCaret);
    properties.numberingStart = -2147483647 - 1;
    for (bool EditorProperties::*flag :
         {&EditorProperties::selectionBounds, &EditorProperties::leftMargin, &EditorProperties::lineNumbering,
          &EditorProperties::lineToolTips, &EditorProperties::whiteSpace, &EditorProperties::closeOnSlash,
          &EditorProperties::closeOnBracket, &EditorProperties::renameBoth, &EditorProperties::autoIndent,
          &EditorProperties::offerNames, &EditorProperties::dragText})
        properties.*flag = !(properties.*flag);
    return properties;
}

} // namespace

class TestEditorSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        file_ = folder_->filePath(QStringLiteral("settings.ini"));
    }

    void everythingComesBack()
    {
        CodeEditor saved;
        saved.setProperties(unusualProperties());
        for (int number = firstCommand; number <= lastCommand; ++number) {
            QVERIFY(!keysFor(number).isEmpty());
            saved.shortcuts().setShortcuts(number, {keysFor(number), QKeySequence(Qt::META | Qt::Key_F35)});
        }
        {
            SettingsStore store(file_);
            QVERIFY(editor::SaveEditorSettings(saved, store).ok());
        }
        CodeEditor loaded;
        editor::LoadEditorSettings(loaded, SettingsStore(file_));
        const EditorProperties expected = saved.properties();
        QCOMPARE(loaded.properties().colours, expected.colours);
        QCOMPARE(loaded.properties().styles, expected.styles);
        QVERIFY(loaded.properties() == expected);
        for (int number = firstCommand; number <= lastCommand; ++number)
            QCOMPARE(loaded.shortcuts().shortcuts(number), QList<QKeySequence>{keysFor(number)});
    }

    // What is kept of a text after loading and saving.
    void storedTexts()
    {
        const std::tuple<Section, const char *, const char *, const char *> rows[] = {
            {Section::Colours, "text", "", "0"},
            {Section::Colours, "keyword", "", "16711680"},
            {Section::Colours, "window", "-5", "-5"},
            {Section::Colours, "keyword", "red", "255"}, // skipped: the editor's own stays
            {Section::FontStyle, "3_", "3", "3_"},
            {Section::FontStyle, "3_", "_", "0_"},
            {Section::FontStyle, "5_", "1_", "2_"},
            {Section::Font, "size", "10.125", "10.125"},
            {Section::Font, "size", "huge", "11.25"},
            {Section::Font, "bold", "tRUE", "True"},
            {Section::Options, "selbounds", "maybe", "True"},
            {Section::Options, "leftmargin", "0", "False"},
            {Section::Data, "lttips", "False", "True"},
            {Section::Data, "numberingstart", " -7 ", "-7"},
            {Section::Data, "numberingstyle", "2.6", "3"},
            {Section::Keys1, "VirtKey1114", "Ctrl+Q", "D"}, // nonsense leaves the command its keys
            {Section::Modifiers1, "Modifiers1114", "4", "1"},
            {Section::Keys1, "VirtKey1114", "F7", "F7"},
            {Section::Font, "name", "False", ""},
            {Section::Font, "name", "Courier Neu", ""}, // not installed
            {Section::Font, "name", "DejaVu Sans", ""}, // not of fixed pitch
            {Section::Font, "name", "\1[,]\xFF", ""},
        };
        for (const auto &[section, key, text, kept] : rows) {
            init();
            SettingsStore store(file_);
            CodeEditor editor;
            EditorProperties own = editor.properties();
            own.colours[KeywordInk] = 255;
            editor.setProperties(own);
            const QString name = QString::fromLatin1(key);
            editor::RegWriteString(store, section, name, QString::fromLatin1(text));
            editor::LoadEditorSettings(editor, store);
            QVERIFY(editor::SaveEditorSettings(editor, store).ok());
            const QString expected = *kept != 0 ? QString::fromLatin1(kept) : own.font.name;
            QVERIFY2(editor::RegReadString(store, section, name, {}) == expected, text);
        }
    }

    void brokenFiles()
    {
        const QByteArray contents[] = {
            QByteArray::fromHex("00ff1b5b00000a5d3dfe").repeated(500),
            "[cEdit",
            "<?xml version='1.0'?>\n<a b='[c]'/>\n",
            "[cEdit]\nfont\\size=1, 2\ncolors\\window=, ,\nfontstyle\\0_=a,b\n",
            "[cEdit]\nfont\\name=" + QByteArray(100000, 'x'),
            // of other kinds
            "[cEdit]\nfont\\size=@Size(3 4)\nfont\\name=@Variant(\\0\\0\\0\\b\\xff\\xff\\xff\\xff)\n"
            "colors\\text=@Invalid()\nm1\\Modifiers1100=@Rect(1 1 1 1)\nv1\\VirtKey1100=@ByteArray(Q)\n",
            // absurd
            "[cEdit]\nfont\\size=1e300\nfontstyle\\2_=-2147483648_\ncolors\\window=2147483647\n"
            "data\\numberingstart=2147483647\ndata\\numberingstyle=-9\nm1\\Modifiers1100=2147483647\n"
            "v1\\VirtKey1100=Q\nv2\\VirtKey2105=L\nm1\\Modifiers1121=0\nv1\\VirtKey1121=Space\n",
        };
        for (const QByteArray &content : contents) {
            init();
            QFile file(file_);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
            file.close();
            CodeEditor editor;
            const ShortcutTable first = editor.shortcuts();
            editor.loadText("a\nb\n");
            editor::LoadEditorSettings(editor, SettingsStore(file_));
            editor.grab();
            const auto shown
                = [&editor](unsigned what) { return editor.send(what, QsciScintillaBase::STYLE_DEFAULT); };
            const long size = shown(QsciScintillaBase::SCI_STYLEGETSIZEFRACTIONAL);
            QVERIFY2(size >= 400 && size <= 9600, content.left(100));
            QVERIFY2(shown(QsciScintillaBase::SCI_STYLEGETBOLD) == 0, content.left(100));
            for (const int command : {100, 121})
                QCOMPARE(editor.shortcuts().shortcuts(command), first.shortcuts(command));
        }
    }

    // A command without keys does not get its built-in ones again; one that no store names keeps them.
    void clearedKeysStayCleared()
    {
        for (const int command : {114, 137}) {
            init();
            SettingsStore store(file_);
            CodeEditor saved;
            editor::LoadEditorSettings(saved, store);
            QVERIFY(!saved.shortcuts().shortcuts(command).isEmpty());
            saved.shortcuts().setShortcuts(command, {});
            QVERIFY(editor::SaveEditorSettings(saved, store).ok());
            for (int start = 0; start < 2; ++start) {
                CodeEditor loaded;
                editor::LoadEditorSettings(loaded, store);
                QVERIFY(loaded.shortcuts().shortcuts(command).isEmpty());
                QVERIFY(editor::SaveEditorSettings(loaded, store).ok());
            }
        }
    }

    void viewComesBack()
    {
        using S = QsciScintillaBase;
        for (const auto &[kept, zoom] : {std::pair(u"3"_s, 3), {u"-4"_s, -4}, {u"9999"_s, 20}, {u"x"_s, 0}}) {
            init();
            SettingsStore store(file_);
            CodeEditor saved;
            saved.execute(164);
            QVERIFY(editor::SaveEditorView(saved, store).ok());
            editor::RegWriteString(store, Section::Chosen, u"zoom"_s, kept);
            CodeEditor loaded;
            editor::LoadEditorSettings(loaded, store);
            QCOMPARE(loaded.send(S::SCI_GETWRAPMODE), long(S::SC_WRAP_WORD));
            QCOMPARE(int(loaded.send(S::SCI_GETZOOM)), zoom);
        }
    }

    void keysTakenFromAnotherCommandStayTaken()
    {
        SettingsStore store(file_);
        CodeEditor saved;
        const QKeySequence taken = saved.shortcuts().shortcuts(114).first();
        saved.shortcuts().setShortcuts(200, {taken});
        QVERIFY(editor::SaveEditorSettings(saved, store).ok());
        CodeEditor loaded;
        editor::LoadEditorSettings(loaded, store);
        QCOMPARE(loaded.shortcuts().command(taken), 200);
        QVERIFY(loaded.shortcuts().shortcuts(114).isEmpty());
    }

private:
    std::unique_ptr<QTemporaryDir> folder_;
    QString file_;
};

QTEST_MAIN(TestEditorSettings)
#include "test_editor_settings.moc"
