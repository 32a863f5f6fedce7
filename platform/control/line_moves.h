// Moving the lines that a selection touches, as one step of undo. What was selected is selected afterwards
// and no more, so that the next letter typed replaces nothing that the user did not select.
#pragma once

namespace control {

class CodeEditor;

// False when the lines are the first or the last ones already.
bool moveLinesUp(CodeEditor &editor);
bool moveLinesDown(CodeEditor &editor);

} // namespace control
