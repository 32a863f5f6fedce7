#include "platform/control/view_actions.h"

#include "platform/control/code_editor.h"

namespace control {

namespace {

using S = QsciScintillaBase;

bool isFoldHeader(const CodeEditor &editor, long line)
{
    return (editor.send(S::SCI_GETFOLDLEVEL, ulong(line)) & S::SC_FOLDLEVELHEADERFLAG) != 0;
}

// Which lines can be folded is known only for text that has been coloured.
void knowFolds(CodeEditor &editor)
{
    if (editor.send(S::SCI_GETENDSTYLED) < editor.send(S::SCI_GETLENGTH))
        editor.send(S::SCI_COLOURISE, ulong(editor.send(S::SCI_GETENDSTYLED)), -1);
}

// Folds every foldable stretch that lies directly within the given lines.
void foldWithin(CodeEditor &editor, long first, long last)
{
    for (long line = first; line <= last; ++line) {
        if (!isFoldHeader(editor, line))
            continue;
        editor.send(S::SCI_FOLDLINE, ulong(line), S::SC_FOLDACTION_CONTRACT);
        line = editor.send(S::SCI_GETLASTCHILD, ulong(line), -1);
    }
}

void toggle(CodeEditor &editor, unsigned ask, unsigned set, int whenOn)
{
    editor.send(set, editor.send(ask) == 0 ? ulong(whenOn) : 0);
}

// The line that the block around a line begins in; -1 when there is none.
long blockStart(const CodeEditor &editor, long line)
{
    return isFoldHeader(editor, line) ? line : editor.send(S::SCI_GETFOLDPARENT, ulong(line));
}

// Folds or unfolds every block as deep as the caret's.
bool setLevel(CodeEditor &editor, int action)
{
    knowFolds(editor);
    const long start = blockStart(editor, editor.caretLine());
    if (start < 0)
        return false;
    const auto levelOf = [&editor](long line) {
        return editor.send(S::SCI_GETFOLDLEVEL, ulong(line))
            & (S::SC_FOLDLEVELNUMBERMASK | S::SC_FOLDLEVELHEADERFLAG);
    };
    const long level = levelOf(start);
    bool any = false;
    for (long line = 0; line < editor.lineCount(); ++line) {
        if (levelOf(line) != level
            || (editor.send(S::SCI_GETFOLDEXPANDED, ulong(line)) != 0) == (action == S::SC_FOLDACTION_EXPAND))
            continue;
        editor.send(S::SCI_FOLDLINE, ulong(line), action);
        any = true;
    }
    return any;
}

// A caret in a folded stretch goes to the line that stands for it.
void keepCaretVisible(CodeEditor &editor)
{
    long line = editor.caretLine();
    while (line >= 0 && editor.send(S::SCI_GETLINEVISIBLE, ulong(line)) == 0)
        line = editor.send(S::SCI_GETFOLDPARENT, ulong(line));
    if (line >= 0 && line != editor.caretLine())
        editor.send(S::SCI_SETEMPTYSELECTION, ulong(editor.send(S::SCI_GETLINEENDPOSITION, ulong(line))));
}

} // namespace

bool resetZoom(CodeEditor &editor)
{
    editor.send(S::SCI_SETZOOM, 0);
    return true;
}

bool toggleFold(CodeEditor &editor)
{
    knowFolds(editor);
    const long line = blockStart(editor, editor.caretLine());
    if (line < 0)
        return false;
    editor.send(S::SCI_TOGGLEFOLD, ulong(line));
    keepCaretVisible(editor);
    return true;
}

bool foldAll(CodeEditor &editor)
{
    knowFolds(editor);
    bool any = false;
    for (long line = 0; line < editor.lineCount(); ++line) {
        if (!isFoldHeader(editor, line))
            continue;
        any = true;
        const long last = editor.send(S::SCI_GETLASTCHILD, ulong(line), -1);
        foldWithin(editor, line + 1, last);
        line = last;
    }
    keepCaretVisible(editor);
    return any;
}

bool unfoldAll(CodeEditor &editor)
{
    const bool folded = editor.send(S::SCI_GETALLLINESVISIBLE) == 0;
    editor.send(S::SCI_FOLDALL, S::SC_FOLDACTION_EXPAND);
    return folded;
}

bool foldLevel(CodeEditor &editor)
{
    const bool any = setLevel(editor, S::SC_FOLDACTION_CONTRACT);
    keepCaretVisible(editor);
    return any;
}

bool unfoldLevel(CodeEditor &editor) { return setLevel(editor, S::SC_FOLDACTION_EXPAND); }

bool toggleLineNumbers(CodeEditor &editor)
{
    editor.setLineNumbersShown(!editor.lineNumbersShown());
    return true;
}

bool toggleWhiteSpace(CodeEditor &editor)
{
    editor.setWhiteSpaceShown(!editor.whiteSpaceShown());
    return true;
}

bool toggleLineEnds(CodeEditor &editor)
{
    toggle(editor, S::SCI_GETVIEWEOL, S::SCI_SETVIEWEOL, 1);
    return true;
}

bool toggleWrap(CodeEditor &editor)
{
    toggle(editor, S::SCI_GETWRAPMODE, S::SCI_SETWRAPMODE, S::SC_WRAP_WORD);
    return true;
}

bool toggleIndentGuides(CodeEditor &editor)
{
    toggle(editor, S::SCI_GETINDENTATIONGUIDES, S::SCI_SETINDENTATIONGUIDES, S::SC_IV_LOOKBOTH);
    return true;
}

} // namespace control
