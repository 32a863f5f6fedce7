// Binds Find, Find Next, Find Previous, Replace and Go to Line of an editor to its find bar.
#pragma once

namespace control {
class CodeEditor;
}

namespace editor {

class FindBar;

// The commands 168, 169, 174, 176 and 178. Find Next and Find Previous need no window when something was
// searched for before, and fail when there is no match, so that they can stand in a macro. The bar is that of
// the editor, and lives as long.
void bindFindServices(control::CodeEditor &editor, FindBar &bar);

} // namespace editor
