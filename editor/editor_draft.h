// What the user is choosing about an editor while nothing of it is in effect yet.
#pragma once

#include "platform/control/editor_control.h"
#include "platform/control/editor_properties.h"
#include "platform/control/shortcut_table.h"

namespace control {
class CodeEditor;
}

namespace editor {

struct EditorDraft
{
    control::EditorProperties properties;
    control::ShortcutTable shortcuts;
    control::Language language = control::Language::Plain;
};

// As the editor is now.
EditorDraft draftOf(const control::CodeEditor &editor);

// Whether the draft differs from what the editor has.
bool differs(const EditorDraft &draft, const control::CodeEditor &editor);

// Puts into effect what differs. Choices that are kept, properties and keys, are told once through the
// editor, however many there are; the language belongs to the text and is not told.
void apply(const EditorDraft &draft, control::CodeEditor &editor);

} // namespace editor
