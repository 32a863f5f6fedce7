#include "platform/control/edit_actions.h"

#include "platform/control/busy_pointer.h"
#include "platform/control/code_editor.h"
#include "platform/control/line_shifting.h"
#include "platform/control/text_transforms.h"
#include "platform/control/undo_step.h"

#include <algorithm>

namespace control {

namespace {

using S = QsciScintillaBase;

constexpr long tabWidth = 4;

struct LineRange
{
    long first = 0;
    long last = 0;
};

// A selection that ends at the start of a line does not touch that line.
LineRange touchedLines(const CodeEditor &editor)
{
    const ByteRange selected = editor.selection();
    LineRange lines{editor.send(S::SCI_LINEFROMPOSITION, ulong(selected.start)),
                    editor.send(S::SCI_LINEFROMPOSITION, ulong(selected.end))};
    if (lines.last > lines.first && editor.send(S::SCI_POSITIONFROMLINE, ulong(lines.last)) == selected.end)
        --lines.last;
    return lines;
}

ByteRange wholeLines(const CodeEditor &editor, const LineRange &lines)
{
    const long start = editor.send(S::SCI_POSITIONFROMLINE, ulong(lines.first));
    return {start,
            lines.last + 1 < editor.lineCount() ? editor.send(S::SCI_POSITIONFROMLINE, ulong(lines.last + 1))
                                                : editor.send(S::SCI_GETLENGTH)};
}

// Replaces a range and selects what took its place.
bool replaceAndSelect(CodeEditor &editor, const ByteRange &range, const QByteArray &utf8)
{
    if (!editor.replaceRange(range, utf8))
        return false;
    editor.send(S::SCI_SETSEL, ulong(range.start), range.start + long(utf8.size()));
    return true;
}

bool transformSelection(CodeEditor &editor, QByteArray (*transform)(QByteArrayView))
{
    const ByteRange selected = editor.selection();
    const BusyPointer busy(selected.length());
    return selected.length() > 0 && replaceAndSelect(editor, selected, transform(editor.bytes(selected)));
}

// The whole text makes way for what became of it; the caret stays in its line and column.
bool replaceWhole(CodeEditor &editor, const QByteArray &utf8)
{
    const int line = editor.caretLine();
    const int column = editor.caretColumn();
    if (!editor.replaceRange({0, editor.send(S::SCI_GETLENGTH)}, utf8))
        return false;
    editor.placeCaret(line, column);
    return true;
}

bool transformLines(CodeEditor &editor, QByteArray (*transform)(QByteArrayView))
{
    const BusyPointer busy(editor.send(S::SCI_GETLENGTH));
    if (editor.selection().length() == 0)
        return replaceWhole(editor, transform(editor.text()));
    const ByteRange lines = wholeLines(editor, touchedLines(editor));
    return replaceAndSelect(editor, lines, transform(editor.bytes(lines)));
}

bool transformBlanks(CodeEditor &editor, QByteArray (*transform)(QByteArrayView, int, int))
{
    const ByteRange selected = editor.selection();
    const int column = int(editor.send(S::SCI_GETCOLUMN, ulong(selected.start)));
    return selected.length() > 0
        && replaceAndSelect(editor, selected, transform(editor.bytes(selected), tabWidth, column));
}

bool lineIsBlank(const CodeEditor &editor, long line)
{
    return editor.send(S::SCI_GETLINEINDENTPOSITION, ulong(line))
        == editor.send(S::SCI_GETLINEENDPOSITION, ulong(line));
}

bool shiftIndent(CodeEditor &editor, long columns)
{
    const LineRange lines = touchedLines(editor);
    const bool caretOnly = editor.selection().length() == 0;
    const long behindIndent
        = editor.selection().start - editor.send(S::SCI_GETLINEINDENTPOSITION, ulong(lines.first));
    const quint64 before = editor.revision();
    if (shiftManyLines(editor, lines.first, lines.last,
                       {columns, tabWidth, editor.send(S::SCI_GETUSETABS) != 0, false}))
        return editor.revision() != before;
    const BusyPointer busy(editor.selection().length());
    bool shifted = false;
    UndoStep step(editor);
    for (long line = lines.first; line <= lines.last; ++line) {
        const long indent = editor.send(S::SCI_GETLINEINDENTATION, ulong(line));
        const long wanted = std::max(0L, indent + columns);
        if (wanted == indent || (lines.first != lines.last && lineIsBlank(editor, line)))
            continue;
        editor.send(S::SCI_SETLINEINDENTATION, ulong(line), wanted);
        shifted = true;
    }
    step.end();
    if (shifted && caretOnly)
        editor.send(S::SCI_SETEMPTYSELECTION,
                    ulong(editor.send(S::SCI_GETLINEINDENTPOSITION, ulong(lines.first))
                          + std::max(0L, behindIndent)));
    return shifted;
}

// The engine's own way, but for so many lines that it were slow.
bool tab(CodeEditor &editor, long direction, unsigned message)
{
    const LineRange lines = touchedLines(editor);
    const BusyPointer busy(editor.selection().length());
    if (!shiftManyLines(
            editor, lines.first, lines.last,
            {direction * editor.send(S::SCI_GETINDENT), tabWidth, editor.send(S::SCI_GETUSETABS) != 0, true}))
        editor.send(message);
    return true;
}

} // namespace

bool undoLast(CodeEditor &editor)
{
    const BusyPointer busy(editor.send(S::SCI_GETLENGTH));
    const bool can = editor.canUndo();
    editor.undo();
    return can;
}

bool redoNext(CodeEditor &editor)
{
    const BusyPointer busy(editor.send(S::SCI_GETLENGTH));
    const bool can = editor.canRedo();
    editor.redo();
    return can;
}

bool cutSelection(CodeEditor &editor)
{
    const bool can = editor.canCut();
    editor.cut();
    return can;
}

bool copySelection(CodeEditor &editor)
{
    const bool can = editor.canCopy();
    editor.copy();
    return can;
}

bool pasteClipboard(CodeEditor &editor)
{
    const bool can = editor.canPaste();
    editor.paste();
    return can;
}

bool deleteSelectionOrCharacter(CodeEditor &editor)
{
    const quint64 before = editor.revision();
    editor.send(S::SCI_CLEAR);
    return editor.revision() != before;
}

bool tabForward(CodeEditor &editor) { return tab(editor, 1, S::SCI_TAB); }

bool tabBackward(CodeEditor &editor) { return tab(editor, -1, S::SCI_BACKTAB); }

bool increaseIndent(CodeEditor &editor) { return shiftIndent(editor, editor.send(S::SCI_GETINDENT)); }

bool decreaseIndent(CodeEditor &editor) { return shiftIndent(editor, -editor.send(S::SCI_GETINDENT)); }

bool selectionToSpaces(CodeEditor &editor) { return transformBlanks(editor, tabsToSpaces); }

bool selectionToTabs(CodeEditor &editor) { return transformBlanks(editor, spacesToTabs); }

bool upperCaseSelection(CodeEditor &editor) { return transformSelection(editor, upperCase); }

bool lowerCaseSelection(CodeEditor &editor) { return transformSelection(editor, lowerCase); }

bool sentenceCaseSelection(CodeEditor &editor) { return transformSelection(editor, sentenceCase); }

bool capitaliseSelection(CodeEditor &editor) { return transformSelection(editor, capitalised); }

bool invertCaseSelection(CodeEditor &editor) { return transformSelection(editor, caseInverted); }

bool sortLines(CodeEditor &editor) { return transformLines(editor, sortedLines); }

bool sortLinesDescending(CodeEditor &editor) { return transformLines(editor, sortedLinesDescending); }

bool reverseLines(CodeEditor &editor) { return transformLines(editor, reversedLines); }

bool removeRepeatedLines(CodeEditor &editor) { return transformLines(editor, withoutRepeatedLines); }

bool removeBlankLines(CodeEditor &editor) { return transformLines(editor, withoutBlankLines); }

bool trimTrailingBlanks(CodeEditor &editor) { return transformLines(editor, withoutTrailingBlanks); }

bool joinLines(CodeEditor &editor)
{
    LineRange lines = touchedLines(editor);
    if (lines.first == lines.last)
        ++lines.last;
    if (lines.last >= editor.lineCount())
        return false;
    const ByteRange range = wholeLines(editor, lines);
    return editor.replaceRange(range, joinedLines(editor.bytes(range)));
}

bool splitLines(CodeEditor &editor)
{
    const quint64 before = editor.revision();
    const LineRange lines = touchedLines(editor);
    editor.send(S::SCI_SETTARGETRANGE, ulong(wholeLines(editor, lines).start),
                editor.send(S::SCI_GETLINEENDPOSITION, ulong(lines.last)));
    editor.send(S::SCI_LINESSPLIT, 0);
    return editor.revision() != before;
}

bool transposeCharacters(CodeEditor &editor)
{
    long middle = editor.send(S::SCI_GETCURRENTPOS);
    const ulong line = ulong(editor.caretLine());
    const long lineStart = editor.send(S::SCI_POSITIONFROMLINE, line);
    if (middle == editor.send(S::SCI_GETLINEENDPOSITION, line) && middle > lineStart)
        middle = editor.send(S::SCI_POSITIONBEFORE, ulong(middle));
    if (middle == lineStart)
        return false;
    const long start = editor.send(S::SCI_POSITIONBEFORE, ulong(middle));
    const long end = editor.send(S::SCI_POSITIONAFTER, ulong(middle));
    if (!editor.replaceRange({start, end}, editor.bytes({middle, end}) + editor.bytes({start, middle})))
        return false;
    editor.send(S::SCI_SETEMPTYSELECTION, ulong(end));
    return true;
}

bool unifyLineEnds(CodeEditor &editor)
{
    return replaceWhole(editor, withLineEnds(editor.text(), editor.habits().lineEnd));
}

} // namespace control
