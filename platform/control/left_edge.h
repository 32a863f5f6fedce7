// How far an editor's view is shifted sideways.
#pragma once

namespace control {

class CodeEditor;

// Shows the lines from their beginning again, when the selection can be seen there too. A view that stays
// shifted by one far match shows the short lines behind it as empty.
void showLeftEdge(CodeEditor &editor);

} // namespace control
