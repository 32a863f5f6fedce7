#include "platform/control/left_edge.h"

#include "platform/control/code_editor.h"

#include <algorithm>

namespace control {

namespace {

using S = QsciScintillaBase;

// Pixels that the engine keeps between the caret and the border.
constexpr long room = 50;

} // namespace

void showLeftEdge(CodeEditor &editor)
{
    const long shift = editor.send(S::SCI_GETXOFFSET);
    if (shift <= 0)
        return;
    const auto placeOf
        = [&](unsigned end) { return editor.send(S::SCI_POINTXFROMPOSITION, 0, editor.send(end)) + shift; };
    const long farthest = std::max(placeOf(S::SCI_GETANCHOR), placeOf(S::SCI_GETCURRENTPOS));
    if (farthest + room <= editor.viewport()->width())
        editor.send(S::SCI_SETXOFFSET, 0);
}

} // namespace control
