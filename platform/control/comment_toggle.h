// Commenting the selection or the caret's line out and in again, in the language that stands there.
#pragma once

namespace control {

class CodeEditor;

// One step of undo. What stands within a longer comment has that comment taken away, since comments do not
// nest. False, and noted why, where nothing can be done.
bool toggleComment(CodeEditor &editor);

} // namespace control
