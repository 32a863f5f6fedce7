// The code editor's settings between runs: colours, options, face, styles and keys, all of them texts.
#pragma once

#include "platform/result.h"

#include <QString>

namespace control {
class CodeEditor;
class ShortcutTable;
} // namespace control

namespace settings {
class SettingsStore;
}

namespace editor {

// The part of the store that holds one kind of setting.
enum class Section
{
    Colours,
    Options,
    Data,
    Font,
    FontStyle,
    Modifiers1,
    Modifiers2,
    Keys1,
    Keys2,
    Chosen // what has no place in the others, such as keys taken away
};

void RegWriteString(settings::SettingsStore &store, Section section, const QString &valueName,
                    const QString &text);

// The default when the value is missing or empty.
QString RegReadString(const settings::SettingsStore &store, Section section, const QString &valueName,
                      const QString &defaultText);

// Everything, onto this editor; what does not convert is skipped. The editor tells nobody of it.
void LoadEditorSettings(control::CodeEditor &editor, const settings::SettingsStore &store);

// Everything, from this editor; the failure says why nothing could be kept.
platform::Result<void> SaveEditorSettings(const control::CodeEditor &editor, settings::SettingsStore &store);

// How the text is shown between runs, wrapped and zoomed; LoadEditorSettings reads it. It is no property: it
// changes with every turn of the wheel, and is kept when its window is left.
platform::Result<void> SaveEditorView(const control::CodeEditor &editor, settings::SettingsStore &store);

// The keys alone, which all editors of a library share. A command whose stored keys are none keeps its own,
// unless the user took them away.
void LoadEditorHotKeys(control::ShortcutTable &shortcuts, const settings::SettingsStore &store);
void SaveEditorHotKeys(const control::ShortcutTable &shortcuts, settings::SettingsStore &store);

} // namespace editor
