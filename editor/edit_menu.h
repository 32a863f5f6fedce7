// The context menu of an editor that stands in a dialog, away from the main window's menus.
#pragma once

namespace control {
class CodeEditor;
}

namespace editor {

// Shown whenever the editor is asked for one; belongs to it.
void giveEditMenu(control::CodeEditor &editor);

} // namespace editor
