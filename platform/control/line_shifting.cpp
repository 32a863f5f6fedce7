#include "platform/control/line_shifting.h"

#include "platform/control/busy_pointer.h"
#include "platform/control/code_editor.h"
#include "platform/control/editor_look.h"
#include "platform/control/text_window.h"

#include <algorithm>

namespace control {

namespace {

using S = QsciScintillaBase;

constexpr long manyLines = 1000;

bool endsLine(char c) { return c == '\n' || c == '\r'; }

void appendShifted(QByteArray &all, QByteArrayView line, const LineShift &shift)
{
    long indent = 0;
    qsizetype at = 0;
    for (; at < line.size() && (line[at] == ' ' || line[at] == '\t'); ++at)
        indent = line[at] == ' ' ? indent + 1 : (indent / shift.tabWidth + 1) * shift.tabWidth;
    const bool blank = at == line.size() || endsLine(line[at]);
    const long wanted = std::max(0L, indent + shift.columns);
    if (wanted == indent || (blank && (at == 0 || !shift.blanksToo))) {
        all.append(line);
        return;
    }
    const long tabs = shift.tabs ? wanted / shift.tabWidth : 0;
    all.append(tabs, '\t').append(wanted - tabs * shift.tabWidth, ' ').append(line.sliced(at));
}

// Where a place of a selection goes: with the text behind the indentation, or to the start of its line.
struct Place
{
    Place(const CodeEditor &editor, long position)
        : line(editor.send(S::SCI_LINEFROMPOSITION, ulong(position))),
          behind(position - editor.send(S::SCI_GETLINEINDENTPOSITION, ulong(line)))
    { }
    long in(const CodeEditor &editor) const
    {
        return behind <= 0 ? editor.send(S::SCI_POSITIONFROMLINE, ulong(line))
                           : editor.send(S::SCI_GETLINEINDENTPOSITION, ulong(line)) + behind;
    }

    long line;
    long behind;
};

} // namespace

QByteArray shiftedLines(QByteArrayView text, const LineShift &shift)
{
    QByteArray all;
    all.reserve(text.size() + text.size() / 8);
    for (qsizetype start = 0; start < text.size();) {
        const auto *const found = std::find_if(text.begin() + start, text.end(), endsLine);
        qsizetype end = std::min(text.size(), qsizetype(found - text.begin()) + 1);
        if (text[end - 1] == '\r' && end < text.size() && text[end] == '\n')
            ++end;
        appendShifted(all, text.sliced(start, end - start), shift);
        start = end;
    }
    return all;
}

bool shiftManyLines(CodeEditor &editor, long first, long last, const LineShift &shift)
{
    const long bookmark = editor.send(S::SCI_MARKERNEXT, ulong(first), 1L << bookmarkMarker);
    if (last - first < manyLines || (bookmark >= 0 && bookmark <= last)
        || editor.send(S::SCI_GETALLLINESVISIBLE) == 0)
        return false;
    const Place anchor(editor, editor.send(S::SCI_GETANCHOR));
    const Place caret(editor, editor.send(S::SCI_GETCURRENTPOS));
    const long top = editor.send(S::SCI_GETFIRSTVISIBLELINE);
    const ByteRange range{editor.send(S::SCI_POSITIONFROMLINE, ulong(first)),
                          editor.send(S::SCI_GETLINEENDPOSITION, ulong(last))};
    const BusyPointer busy(range.length());
    editor.replaceRange(range, shiftedLines(textWindow(editor, range.start, range.end).bytes, shift));
    editor.send(S::SCI_SETANCHOR, ulong(anchor.in(editor)));
    editor.send(S::SCI_SETCURRENTPOS, ulong(caret.in(editor)));
    editor.send(S::SCI_SETFIRSTVISIBLELINE, ulong(top));
    return true;
}

} // namespace control
