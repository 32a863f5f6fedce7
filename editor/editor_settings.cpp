#include "editor/editor_settings.h"

#include "platform/control/code_editor.h"
#include "platform/control/editor_commands.h"
#include "platform/system/settings_store.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace editor {

namespace {

using control::EditorFont;
using control::EditorProperties;
using control::Shortcut;
using control::ShortcutTable;
using settings::SettingsStore;

// By section.
constexpr const char *sectionPaths[] = {
    "\\cEdit\\colors\\", "\\cEdit\\options\\", "\\cEdit\\data\\", "\\cEdit\\font\\", "\\cEdit\\fontstyle\\",
    "\\cEdit\\m1\\",     "\\cEdit\\m2\\",      "\\cEdit\\v1\\",   "\\cEdit\\v2\\",   "\\cEdit\\chosen\\",
};

// The colours in the order in which they are read and written.
constexpr control::ColourSlot colourOrder[] = {
    control::CommentInk,       control::BookmarkInk,        control::BookmarkGround,   control::CommentGround,
    control::DividerInk,       control::HighlightGround,    control::KeywordInk,       control::KeywordGround,
    control::LeftMarginGround, control::LineNumberInk,      control::LineNumberGround, control::NumberInk,
    control::NumberGround,     control::OperatorInk,        control::OperatorGround,   control::ScopeInk,
    control::ScopeGround,      control::StringInk,          control::StringGround,     control::AttributeInk,
    control::AttributeGround,  control::TagNameInk,         control::TagNameGround,    control::EntityInk,
    control::EntityGround,     control::TagTextInk,         control::TagTextGround,    control::TextInk,
    control::TextGround,       control::VerticalDividerInk, control::WindowGround,
};

struct FlagRow
{
    const char *name;
    Section readFrom;
    Section writtenTo;
    bool EditorProperties::*flag;
    const char *first;
};

// Line tool tips are written where they are never read; the choice is kept beside them.
constexpr FlagRow lineFlags[] = {
    {"selbounds", Section::Options, Section::Options, &EditorProperties::selectionBounds, "True"},
    {"numbering", Section::Data, Section::Data, &EditorProperties::lineNumbering, "True"},
    {"lttips", Section::Options, Section::Data, &EditorProperties::lineToolTips, "True"},
};
constexpr FlagRow marginFlag
    = {"leftmargin", Section::Options, Section::Options, &EditorProperties::leftMargin, "True"};
constexpr FlagRow habitFlags[] = {
    {"whiteSpace", Section::Options, Section::Options, &EditorProperties::whiteSpace, "False"},
    {"closeOnSlash", Section::Options, Section::Options, &EditorProperties::closeOnSlash, "True"},
    {"closeOnBracket", Section::Options, Section::Options, &EditorProperties::closeOnBracket, "False"},
    {"renameBoth", Section::Options, Section::Options, &EditorProperties::renameBoth, "True"},
    {"autoIndent", Section::Options, Section::Options, &EditorProperties::autoIndent, "True"},
    {"offerNames", Section::Options, Section::Options, &EditorProperties::offerNames, "True"},
    {"dragText", Section::Options, Section::Options, &EditorProperties::dragText, "True"},
    {"lttips", Section::Chosen, Section::Chosen, &EditorProperties::lineToolTips, ""}, // empty: none made
};

struct NumberRow
{
    const char *name;
    qint32 EditorProperties::*number;
};
constexpr NumberRow numbers[] = {
    {"numberingstyle", &EditorProperties::numberingStyle},
    {"numberingstart", &EditorProperties::numberingStart},
};

struct FontFlagRow
{
    const char *name;
    bool EditorFont::*flag;
};
constexpr FontFlagRow faceFlags[] = {{"bold", &EditorFont::bold}, {"italic", &EditorFont::italic}};
constexpr FontFlagRow lineFontFlags[]
    = {{"strike", &EditorFont::strikethrough}, {"under", &EditorFont::underline}};

// What these slots hold whatever was kept with the others, until the user chose for them.
struct FixedStyle
{
    control::StyleSlot slot;
    int style;
};
constexpr FixedStyle fixedStyles[] = {
    {control::CommentStyle, control::Italic},
    {control::TagNameStyle, control::Bold},
    {control::KeywordStyle, control::Bold},
};

constexpr int selectAllCommand = 137;

// As far as the engine goes by itself, in points.
constexpr qint32 leastZoom = -10;
constexpr qint32 mostZoom = 20;

QString styleName(int slot) { return QStringLiteral("style%1").arg(slot); }

QString clearedName(int command) { return QStringLiteral("cleared%1").arg(command); }

std::optional<double> numberOf(const QString &text)
{
    bool converted = false;
    const double number = text.trimmed().toDouble(&converted);
    if (!converted || !std::isfinite(number))
        return {};
    return number;
}

std::optional<qint32> integerOf(const QString &text)
{
    const std::optional<double> number = numberOf(text);
    if (!number)
        return {};
    const double whole = std::nearbyint(*number);
    using Limits = std::numeric_limits<qint32>;
    if (whole < Limits::min() || whole > Limits::max())
        return {};
    return qint32(whole);
}

std::optional<bool> truthOf(const QString &text)
{
    const QString word = text.trimmed();
    if (word.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return true;
    if (word.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return false;
    const std::optional<double> number = numberOf(word);
    return number ? std::optional<bool>(*number != 0) : std::nullopt;
}

QString textOf(bool truth) { return truth ? QStringLiteral("True") : QStringLiteral("False"); }

// A decimal with a point and at most four places.
QString textOf(double size)
{
    constexpr int places = 4;
    QString text = QString::number(size, 'f', places);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

template <typename Target, typename Value>
void assign(Target &target, const std::optional<Value> &value)
{
    if (value)
        target = *value;
}

class Reader
{
public:
    Reader(const SettingsStore &store, EditorProperties &properties) : store_(store), properties_(properties)
    { }

    void colours()
    {
        for (const control::ColourSlot slot : colourOrder) {
            const control::ColourSlotRow &row = control::colourSlotTable()[slot];
            assign(properties_.colours[slot],
                   integerOf(text(Section::Colours, row.name, QString::number(row.first))));
        }
    }

    void flag(const FlagRow &row)
    {
        assign(properties_.*row.flag, truthOf(text(row.readFrom, row.name, QLatin1String(row.first))));
    }

    void lineNumbering()
    {
        for (const NumberRow &row : numbers)
            assign(properties_.*row.number, integerOf(text(Section::Data, row.name, QStringLiteral("1"))));
    }

    void font()
    {
        EditorFont &font = properties_.font;
        for (const FontFlagRow &row : faceFlags)
            fontFlag(row);
        assign(font.size, numberOf(text(Section::Font, "size", QStringLiteral("11.25"))));
        for (const FontFlagRow &row : lineFontFlags)
            fontFlag(row);
        const QString name = text(Section::Font, "name", QStringLiteral("False"));
        if (name != QLatin1String("0"))
            font.name = name;
    }

    void styles()
    {
        for (int slot = 0; slot < control::styleSlots; ++slot) {
            QString kept = RegReadString(store_, Section::FontStyle, QStringLiteral("%1_").arg(slot),
                                         QStringLiteral("0"));
            assign(properties_.styles[size_t(slot)], integerOf(kept.remove(QLatin1Char('_'))));
        }
        for (const FixedStyle &fixed : fixedStyles)
            properties_.styles[fixed.slot]
                = integerOf(RegReadString(store_, Section::Chosen, styleName(fixed.slot), {}))
                      .value_or(fixed.style);
    }

private:
    QString text(Section section, const char *name, const QString &first) const
    {
        return RegReadString(store_, section, QLatin1String(name), first);
    }
    void fontFlag(const FontFlagRow &row)
    {
        assign(properties_.font.*row.flag, truthOf(text(Section::Font, row.name, QStringLiteral("0"))));
    }

    const SettingsStore &store_;
    EditorProperties &properties_;
};

class Writer
{
public:
    Writer(SettingsStore &store, const EditorProperties &properties) : store_(store), properties_(properties)
    { }

    void colours()
    {
        for (const control::ColourSlot slot : colourOrder)
            write(Section::Colours, control::colourSlotTable()[slot].name,
                  QString::number(properties_.colours[slot]));
    }

    void flag(const FlagRow &row) { write(row.writtenTo, row.name, textOf(properties_.*row.flag)); }

    void lineNumbering()
    {
        for (const NumberRow &row : numbers)
            write(Section::Data, row.name, QString::number(properties_.*row.number));
    }

    void font()
    {
        const EditorFont &font = properties_.font;
        for (const FontFlagRow &row : faceFlags)
            write(Section::Font, row.name, textOf(font.*row.flag));
        write(Section::Font, "size", textOf(font.size));
        for (const FontFlagRow &row : lineFontFlags)
            write(Section::Font, row.name, textOf(font.*row.flag));
        write(Section::Font, "name", font.name);
    }

    void styles()
    {
        for (int slot = 0; slot < control::styleSlots; ++slot)
            RegWriteString(store_, Section::FontStyle, QStringLiteral("%1_").arg(slot),
                           QStringLiteral("%1_").arg(properties_.styles[size_t(slot)]));
        for (const FixedStyle &fixed : fixedStyles)
            RegWriteString(store_, Section::Chosen, styleName(fixed.slot),
                           QString::number(properties_.styles[fixed.slot]));
    }

private:
    void write(Section section, const char *name, const QString &text)
    {
        RegWriteString(store_, section, QLatin1String(name), text);
    }

    SettingsStore &store_;
    const EditorProperties &properties_;
};

// The four parts under which a command's shortcut is kept.
struct KeptShortcut
{
    QString modifiers1, key1, modifiers2, key2;

    bool isEmpty() const
    {
        return modifiers1.isEmpty() && key1.isEmpty() && modifiers2.isEmpty() && key2.isEmpty();
    }
};

// One interpreter for reading and writing: part by part, where it is kept.
template <typename Kept, typename Visit>
void forEachPart(Kept &kept, int command, const Visit &visit)
{
    visit(Section::Modifiers1, QStringLiteral("Modifiers1%1").arg(command), kept.modifiers1);
    visit(Section::Modifiers2, QStringLiteral("Modifiers2%1").arg(command), kept.modifiers2);
    visit(Section::Keys1, QStringLiteral("VirtKey1%1").arg(command), kept.key1);
    visit(Section::Keys2, QStringLiteral("VirtKey2%1").arg(command), kept.key2);
}

KeptShortcut readShortcut(const SettingsStore &store, int command)
{
    KeptShortcut kept;
    forEachPart(kept, command, [&store](Section section, const QString &name, QString &part) {
        part = RegReadString(store, section, name, {});
    });
    return kept;
}

Shortcut shortcutOf(const KeptShortcut &kept)
{
    return {integerOf(kept.modifiers1).value_or(0), kept.key1, integerOf(kept.modifiers2).value_or(0),
            kept.key2};
}

// Four empty texts are what a command has that never had a key, too.
bool isCleared(const SettingsStore &store, int command)
{
    return truthOf(RegReadString(store, Section::Chosen, clearedName(command), {})).value_or(false);
}

void takeKeys(ShortcutTable &shortcuts, int command)
{
    for (int index = shortcuts.shortcutCount(command) - 1; index >= 0; --index)
        shortcuts.unregisterShortcut(command, index);
}

// The texts of what is no property.
constexpr QLatin1StringView wrapName("wrap");
constexpr QLatin1StringView zoomName("zoom");

void loadView(control::CodeEditor &editor, const SettingsStore &store)
{
    using S = QsciScintillaBase;
    if (const auto wrapped = truthOf(RegReadString(store, Section::Chosen, wrapName, {})))
        editor.send(S::SCI_SETWRAPMODE, *wrapped ? S::SC_WRAP_WORD : S::SC_WRAP_NONE);
    if (const auto zoom = integerOf(RegReadString(store, Section::Chosen, zoomName, {})))
        editor.send(S::SCI_SETZOOM, ulong(std::clamp(*zoom, leastZoom, mostZoom)));
}

KeptShortcut keptShortcut(const ShortcutTable &shortcuts, int command)
{
    if (shortcuts.shortcutCount(command) == 0)
        return {};
    const Shortcut first = shortcuts.shortcut(command, 0);
    return {QString::number(first.Modifiers1), first.VirtKey1, QString::number(first.Modifiers2),
            first.VirtKey2};
}

} // namespace

void RegWriteString(SettingsStore &store, Section section, const QString &valueName, const QString &text)
{
    store.setText(QLatin1String(sectionPaths[size_t(section)]) + valueName, text);
}

QString RegReadString(const SettingsStore &store, Section section, const QString &valueName,
                      const QString &defaultText)
{
    return store.text(QLatin1String(sectionPaths[size_t(section)]) + valueName, defaultText);
}

void LoadEditorSettings(control::CodeEditor &editor, const SettingsStore &store)
{
    EditorProperties properties = editor.properties();
    Reader reader(store, properties);
    reader.colours();
    for (const FlagRow &row : lineFlags)
        reader.flag(row);
    reader.flag(marginFlag);
    reader.lineNumbering();
    reader.font();
    reader.styles();
    for (const FlagRow &row : habitFlags)
        reader.flag(row);
    editor.setProperties(properties);
    loadView(editor, store);
    LoadEditorHotKeys(editor.shortcuts(), store);
}

platform::Result<void> SaveEditorSettings(const control::CodeEditor &editor, SettingsStore &store)
{
    Writer writer(store, editor.properties());
    writer.colours();
    for (const FlagRow &row : lineFlags)
        writer.flag(row);
    writer.lineNumbering();
    writer.flag(marginFlag);
    writer.font();
    writer.styles();
    SaveEditorHotKeys(editor.library()->shortcuts, store);
    for (const FlagRow &row : habitFlags)
        writer.flag(row);
    return store.flush();
}

platform::Result<void> SaveEditorView(const control::CodeEditor &editor, SettingsStore &store)
{
    using S = QsciScintillaBase;
    const bool wraps = editor.send(S::SCI_GETWRAPMODE) != S::SC_WRAP_NONE;
    const auto zoom = editor.send(S::SCI_GETZOOM);
    // What nobody ever chose is not kept: a later version may begin with something better.
    const auto keep = [&store](QLatin1StringView name, const QString &value, bool isUsual) {
        if (!isUsual || !RegReadString(store, Section::Chosen, name, {}).isEmpty())
            RegWriteString(store, Section::Chosen, name, value);
    };
    keep(wrapName, textOf(wraps), !wraps);
    keep(zoomName, QString::number(zoom), zoom == 0);
    return store.flush();
}

void LoadEditorHotKeys(ShortcutTable &shortcuts, const SettingsStore &store)
{
    for (int command = control::firstCommand; command <= control::lastCommand; ++command) {
        const KeptShortcut kept = readShortcut(store, command);
        if (kept.isEmpty() && isCleared(store, command))
            takeKeys(shortcuts, command);
        if (kept.isEmpty())
            continue;
        const Shortcut shortcut = shortcutOf(kept);
        // Damaged keys must not cost the command the ones it has.
        if (!control::keysOf(shortcut))
            continue;
        takeKeys(shortcuts, command);
        shortcuts.registerShortcut(command, shortcut);
    }
    // Not over a choice of the user's, who would lose it at every start.
    const QKeySequence free(Qt::CTRL | Qt::Key_L);
    if (shortcuts.shortcutCount(selectAllCommand) == 0 && shortcuts.command(free) == 0
        && !isCleared(store, selectAllCommand))
        shortcuts.registerShortcut(selectAllCommand, {control::CtrlModifier, QStringLiteral("L"), 0, {}});
}

void SaveEditorHotKeys(const ShortcutTable &shortcuts, SettingsStore &store)
{
    const ShortcutTable builtIn;
    for (int command = control::firstCommand; command <= control::lastCommand; ++command) {
        const KeptShortcut kept = keptShortcut(shortcuts, command);
        forEachPart(kept, command, [&store](Section section, const QString &name, const QString &part) {
            RegWriteString(store, section, name, part);
        });
        // Others may come to have a key of their own one day.
        const bool hadKeys = builtIn.shortcutCount(command) > 0 || command == selectAllCommand;
        RegWriteString(store, Section::Chosen, clearedName(command), textOf(hadKeys && kept.isEmpty()));
    }
}

} // namespace editor
