#include "platform/control/line_moves.h"

#include "platform/control/code_editor.h"

namespace control {

namespace {

using S = QsciScintillaBase;

// A place of the selection, which goes along with its line.
struct Place
{
    Place(const CodeEditor &editor, long position)
        : line(editor.send(S::SCI_LINEFROMPOSITION, ulong(position))),
          column(position - editor.send(S::SCI_POSITIONFROMLINE, ulong(line)))
    { }
    long in(const CodeEditor &editor, long shift) const
    {
        const ulong now = ulong(line + shift);
        return now >= ulong(editor.lineCount()) ? editor.send(S::SCI_GETLENGTH)
                                                : editor.send(S::SCI_POSITIONFROMLINE, now) + column;
    }

    long line;
    long column; // in bytes
};

// The engine moves the lines and leaves all of them selected.
bool moveLines(CodeEditor &editor, unsigned message, long shift)
{
    const quint64 before = editor.revision();
    const Place anchor(editor, editor.send(S::SCI_GETANCHOR));
    const Place caret(editor, editor.send(S::SCI_GETCURRENTPOS));
    const bool selected = editor.selection().length() > 0;
    editor.send(message);
    if (editor.revision() == before) {
        if (!selected)
            editor.send(S::SCI_SETEMPTYSELECTION, ulong(caret.in(editor, 0)));
        return false;
    }
    editor.send(S::SCI_SETSEL, ulong(anchor.in(editor, shift)), caret.in(editor, shift));
    editor.send(S::SCI_CHOOSECARETX);
    return true;
}

} // namespace

bool moveLinesUp(CodeEditor &editor) { return moveLines(editor, S::SCI_MOVESELECTEDLINESUP, -1); }

bool moveLinesDown(CodeEditor &editor) { return moveLines(editor, S::SCI_MOVESELECTEDLINESDOWN, 1); }

} // namespace control
