#include "platform/control/column_count.h"

#include "platform/control/code_editor.h"

namespace control {

using S = QsciScintillaBase;

void ColumnCount::changing(const CodeEditor &editor, long position)
{
    if (position < lineStart_)
        forget();
    else if (position < position_)
        moveTo(editor, position);
}

long ColumnCount::columnOf(const CodeEditor &editor, long position)
{
    const long line = editor.send(S::SCI_LINEFROMPOSITION, ulong(position));
    const long start = editor.send(S::SCI_POSITIONFROMLINE, ulong(line));
    // From the nearer of the two.
    if (start != lineStart_ || position - start < position_ - position) {
        lineStart_ = position_ = start;
        column_ = 0;
    }
    moveTo(editor, position);
    return column_;
}

void ColumnCount::moveTo(const CodeEditor &editor, long position)
{
    if (position < position_)
        column_ -= editor.send(S::SCI_COUNTCHARACTERS, ulong(position), position_);
    else
        column_ += editor.send(S::SCI_COUNTCHARACTERS, ulong(position_), position);
    position_ = position;
}

} // namespace control
