#include "platform/control/view_actions.h"

#include "platform/control/busy_pointer.h"
#include "platform/control/code_editor.h"

#include <optional>
#include <vector>

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
long blockStart(CodeEditor &editor, long line)
{
    if (editor.xmlStyling().isOn())
        return editor.xmlStyling().blockStart(line);
    knowFolds(editor);
    return isFoldHeader(editor, line) ? line : editor.send(S::SCI_GETFOLDPARENT, ulong(line));
}

long blockLevel(const CodeEditor &editor, long line)
{
    return editor.send(S::SCI_GETFOLDLEVEL, ulong(line))
        & (S::SC_FOLDLEVELNUMBERMASK | S::SC_FOLDLEVELHEADERFLAG);
}

bool isExpanded(const CodeEditor &editor, long line)
{
    return editor.send(S::SCI_GETFOLDEXPANDED, ulong(line)) != 0;
}

void foldLines(CodeEditor &editor, const std::vector<long> &lines, int action)
{
    for (const long line : lines)
        editor.send(S::SCI_FOLDLINE, ulong(line), action);
}

// The engine folds all blocks of a level at once when it takes them for the outermost.
bool foldXmlLevel(CodeEditor &editor, int depth)
{
    editor.xmlStyling().knowAll(depth);
    bool any = false;
    for (long line = 0; line < editor.lineCount() && !any; ++line)
        any = blockLevel(editor, line) == (S::SC_FOLDLEVELBASE | S::SC_FOLDLEVELHEADERFLAG)
            && isExpanded(editor, line);
    if (any)
        editor.send(S::SCI_FOLDALL, S::SC_FOLDACTION_CONTRACT);
    return any;
}

// Line by line is slow, so either those are unfolded or, after all, the others folded again.
bool unfoldXmlLevel(CodeEditor &editor, int depth)
{
    editor.xmlStyling().knowAll(depth);
    std::vector<long> wanted;
    std::vector<long> others;
    const auto next = [&editor](long line) { return editor.send(S::SCI_CONTRACTEDFOLDNEXT, ulong(line)); };
    for (long line = next(0); line >= 0; line = line + 1 < editor.lineCount() ? next(line + 1) : -1) {
        const bool of = blockLevel(editor, line) == (S::SC_FOLDLEVELBASE | S::SC_FOLDLEVELHEADERFLAG);
        (of ? wanted : others).push_back(line);
    }
    if (wanted.size() <= others.size()) {
        foldLines(editor, wanted, S::SC_FOLDACTION_EXPAND);
    } else {
        editor.send(S::SCI_FOLDALL, S::SC_FOLDACTION_EXPAND);
        foldLines(editor, others, S::SC_FOLDACTION_CONTRACT);
    }
    return !wanted.empty();
}

// Folds or unfolds every block as deep as the caret's.
bool setLevel(CodeEditor &editor, int action)
{
    const BusyPointer busy(editor.send(S::SCI_GETLENGTH));
    const long start = blockStart(editor, editor.caretLine());
    if (start < 0)
        return false;
    const bool expand = action == S::SC_FOLDACTION_EXPAND;
    if (editor.xmlStyling().isOn()) {
        const int depth = editor.xmlStyling().depthOf(start);
        return expand ? unfoldXmlLevel(editor, depth) : foldXmlLevel(editor, depth);
    }
    const long level = blockLevel(editor, start);
    bool any = false;
    for (long line = 0; line < editor.lineCount(); ++line) {
        if (blockLevel(editor, line) != level || isExpanded(editor, line) == expand)
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
    const long line = blockStart(editor, editor.caretLine());
    if (line < 0)
        return false;
    if (editor.xmlStyling().isOn())
        editor.xmlStyling().knowBlock(line);
    editor.send(S::SCI_TOGGLEFOLD, ulong(line));
    keepCaretVisible(editor);
    return true;
}

bool foldAll(CodeEditor &editor)
{
    const BusyPointer busy(editor.send(S::SCI_GETLENGTH));
    if (editor.xmlStyling().isOn()) {
        const std::optional<int> depth = editor.xmlStyling().innerDepth();
        const bool folded = depth && foldXmlLevel(editor, *depth);
        keepCaretVisible(editor);
        return folded;
    }
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
    const BusyPointer busy(editor.send(S::SCI_GETLENGTH));
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
    editor.send(S::SCI_SCROLLCARET);
    return true;
}

bool toggleIndentGuides(CodeEditor &editor)
{
    toggle(editor, S::SCI_GETINDENTATIONGUIDES, S::SCI_SETINDENTATIONGUIDES, S::SC_IV_LOOKBOTH);
    return true;
}

} // namespace control
