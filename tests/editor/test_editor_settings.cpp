// What the user chose about the editor, written by one store and read by another.
#include "editor/editor_settings.h"
#include "platform/control/code_editor.h"
#include "platform/control/editor_commands.h"
#include "platform/system/settings_store.h"

#include <QFile>
#include <QFontInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace control;
using editor::Section;
using settings::SettingsStore;

namespace {

// A key for every command, all of them different, one in three with two strokes.
QKeySequence keysFor(int number)
{
    static const char *const names[]
        = {",", ";", "=", "%", "\\", "\"", "/",  "+",   "-",    ".",      "[",      "'",   "#",   "@",
           "L", "Z", "0", "9", " ",  "F1", "F3", "F12", "PgUp", "Return", "Escape", "Tab", "Home"};
    constexpr int count = int(std::size(names));
    const int index = number - firstCommand;
    const int modifiers[] = {CtrlModifier, CtrlModifier | AltModifier,  AltModifier,
                             MetaModifier, CtrlModifier | MetaModifier, AltModifier | MetaModifier};
    const auto name = [](int at) {
        const QString text = QString::fromLatin1(names[at % count]);
        return text == QLatin1String(" ") ? QStringLiteral("Space") : text;
    };
    Shortcut shortcut{modifiers[index / count], name(index), 0, {}};
    if (index % 3 == 0) {
        shortcut.Modifiers2 = index % 2 == 0 ? 0 : int(AltModifier);
        shortcut.VirtKey2 = name(index + 1);
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
          &EditorProperties::whiteSpace, &EditorProperties::closeOnSlash, &EditorProperties::closeOnBracket,
          &EditorProperties::renameBoth, &EditorProperties::autoIndent, &EditorProperties::offerNames,
          &EditorProperties::dragText})
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

    void nothingKeptGivesTheFirstLook()
    {
        CodeEditor editor;
        editor.setProperties(unusualProperties());
        QSignalSpy told(&editor, &CodeEditor::propertiesChanged);
        editor::LoadEditorSettings(editor, SettingsStore(file_));
        EditorProperties first;
        first.font.name = editor.properties().font.name;
        for (int slot = 0; slot < styleSlots; ++slot)
            QCOMPARE(editor.properties().styles[size_t(slot)],
                     slot == 0 || slot == 6 ? 1
                         : slot == 5        ? 2
                                            : 0);
        QVERIFY(editor.properties() == first);
        QVERIFY(QFontInfo(QFont(first.font.name)).fixedPitch());
        QCOMPARE(editor.shortcuts().shortcuts(137), QList<QKeySequence>{QKeySequence(Qt::CTRL | Qt::Key_L)});
        QCOMPARE(told.size(), 0);
        QVERIFY(!QFile::exists(file_));
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
        EditorProperties expected = saved.properties();
        expected.styles[KeywordStyle] = Bold;
        expected.styles[CommentStyle] = Italic;
        expected.styles[TagNameStyle] = Bold;
        QCOMPARE(loaded.properties().colours, expected.colours);
        QCOMPARE(loaded.properties().styles, expected.styles);
        QVERIFY(loaded.properties() == expected);
        for (int number = firstCommand; number <= lastCommand; ++number)
            QCOMPARE(loaded.shortcuts().shortcuts(number), QList<QKeySequence>{keysFor(number)});
    }

    void storedTexts_data()
    {
        QTest::addColumn<Section>("section");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("kept"); // of what was written, after loading and saving
        const auto row = [](Section section, const char *name, const char *text, const char *kept) {
            QTest::addRow("%s=%s", name, text) << section << QString::fromLatin1(name)
                                               << QString::fromLatin1(text) << QString::fromLatin1(kept);
        };
        row(Section::Colours, "text", "", "0");
        row(Section::Colours, "keyword", "", "16711680");
        row(Section::Colours, "window", "255", "255");
        row(Section::Colours, "window", "-5", "-5");
        row(Section::Colours, "keyword", "red", "255"); // skipped: the editor's own stays
        row(Section::Colours, "keyword", "99999999999", "255");
        row(Section::FontStyle, "3_", "3", "3_");
        row(Section::FontStyle, "3_", "_3_", "3_");
        row(Section::FontStyle, "3_", "7_", "7_");
        row(Section::FontStyle, "3_", "_", "0_");
        row(Section::FontStyle, "5_", "1_", "2_");
        row(Section::Font, "size", "10.125", "10.125");
        row(Section::Font, "size", "huge", "11.25");
        row(Section::Font, "size", "inf", "11.25");
        row(Section::Font, "bold", "tRUE", "True");
        row(Section::Font, "bold", "-1", "True");
        row(Section::Font, "italic", "0", "False");
        row(Section::Options, "selbounds", "False", "False");
        row(Section::Options, "selbounds", "maybe", "True");
        row(Section::Options, "leftmargin", "0", "False");
        row(Section::Data, "lttips", "False", "True");
        row(Section::Data, "numbering", "false", "False");
        row(Section::Data, "numberingstart", " -7 ", "-7");
        row(Section::Data, "numberingstyle", "2.6", "3");
        row(Section::Options, "closeOnBracket", "True", "True");
        row(Section::Keys1, "VirtKey1114", "Ctrl+Q", "D"); // nonsense leaves the command its keys
        row(Section::Keys1, "VirtKey1114", "Q", "D");
        row(Section::Modifiers1, "Modifiers1114", "4", "1");
        row(Section::Keys1, "VirtKey1114", "F7", "F7");
        row(Section::Modifiers1, "Modifiers1137", "", "1");
    }
    void storedTexts()
    {
        QFETCH(Section, section);
        QFETCH(QString, name);
        QFETCH(QString, text);
        SettingsStore store(file_);
        CodeEditor editor;
        EditorProperties own;
        own.colours[KeywordInk] = 255;
        editor.setProperties(own);
        editor::RegWriteString(store, section, name, text);
        editor::LoadEditorSettings(editor, store);
        QVERIFY(editor::SaveEditorSettings(editor, store).ok());
        QTEST(editor::RegReadString(store, section, name, QString()), "kept");
    }

    void faceNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("none") << QString();
        QTest::newRow("False") << QStringLiteral("False");
        QTest::newRow("not installed") << QStringLiteral("Courier Neu");
        QTest::newRow("proportional") << QStringLiteral("DejaVu Sans");
        QTest::newRow("endless") << QString(100000, QLatin1Char('x'));
        QTest::newRow("binary") << QStringLiteral("\u0001[,]\uFFFF");
        QTest::newRow("0") << QStringLiteral("0");
    }
    void faceNames()
    {
        QFETCH(QString, name);
        SettingsStore store(file_);
        editor::RegWriteString(store, Section::Font, QStringLiteral("name"), name);
        CodeEditor editor;
        const QString before = editor.properties().font.name;
        editor::LoadEditorSettings(editor, store);
        QCOMPARE(editor.properties().font.name, before);
        QVERIFY(QFontInfo(QFont(before)).fixedPitch());
    }

    void brokenFiles_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("binary") << QByteArray::fromHex("00ff1b5b00000a5d3dfe").repeated(500);
        QTest::newRow("no end") << QByteArray("[cEdit");
        QTest::newRow("foreign") << QByteArray("<?xml version='1.0'?>\n<a b='[c]'/>\n");
        QTest::newRow("lists") << QByteArray(
            "[cEdit]\nfont\\size=1, 2\ncolors\\window=, ,\nfontstyle\\0_=a,b\n");
        QTest::newRow("other kinds") << QByteArray(
            "[cEdit]\nfont\\size=@Size(3 4)\nfont\\name=@Variant(\\0\\0\\0\\b\\xff\\xff\\xff\\xff)\n"
            "colors\\text=@Invalid()\nm1\\Modifiers1100=@Rect(1 1 1 1)\nv1\\VirtKey1100=@ByteArray(Q)\n");
        QTest::newRow("absurd") << QByteArray(
            "[cEdit]\nfont\\size=1e300\nfontstyle\\2_=-2147483648_\ncolors\\window=2147483647\n"
            "data\\numberingstart=2147483647\ndata\\numberingstyle=-9\nm1\\Modifiers1100=2147483647\n"
            "v1\\VirtKey1100=Q\nv2\\VirtKey2105=L\nm1\\Modifiers1121=0\nv1\\VirtKey1121=Space\n");
    }
    void brokenFiles()
    {
        QFETCH(QByteArray, content);
        QFile file(file_);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        SettingsStore store(file_);
        CodeEditor editor;
        const QList<QKeySequence> undo = editor.shortcuts().shortcuts(100);
        const QList<QKeySequence> newLine = editor.shortcuts().shortcuts(121);
        editor.loadText("a\nb\n");
        editor::LoadEditorSettings(editor, store);
        editor.grab();
        const long size
            = editor.send(QsciScintillaBase::SCI_STYLEGETSIZEFRACTIONAL, QsciScintillaBase::STYLE_DEFAULT);
        QVERIFY(size >= 400 && size <= 9600);
        QCOMPARE(editor.send(QsciScintillaBase::SCI_STYLEGETBOLD, QsciScintillaBase::STYLE_DEFAULT), 0L);
        QCOMPARE(editor.shortcuts().shortcuts(100), undo);
        QCOMPARE(editor.shortcuts().shortcuts(121), newLine);
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

    void whatCannotBeKeptIsTold()
    {
        SettingsStore store(folder_->path()); // a folder is no settings file
        const CodeEditor editor;
        QVERIFY(!editor::SaveEditorSettings(editor, store).reason().isEmpty());
    }

private:
    std::unique_ptr<QTemporaryDir> folder_;
    QString file_;
};

QTEST_MAIN(TestEditorSettings)
#include "test_editor_settings.moc"
