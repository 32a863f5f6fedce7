#include "platform/control/comment_toggle.h"

#include "platform/control/code_editor.h"
#include "platform/control/comment_marks.h"
#include "platform/control/text_window.h"

#include <algorithm>

namespace control {

namespace {

using S = QsciScintillaBase;

enum class Code
{
    Markup,
    Script,
    Sheet
};

Code codeOf(char style)
{
    return isScriptStyle(style) ? Code::Script : isSheetStyle(style) ? Code::Sheet : Code::Markup;
}

// What is to be toggled, and what it is.
struct Piece
{
    ByteRange range;
    QByteArray styles;
    Code code = Code::Markup;
};

ByteRange contentOf(const CodeEditor &editor, long first, long last)
{
    return {editor.send(S::SCI_POSITIONFROMLINE, ulong(first)),
            editor.send(S::SCI_GETLINEENDPOSITION, ulong(last))};
}

// Of a line that begins or ends outside of its script, the part within.
void clipToCode(Piece &piece, long caret)
{
    const auto same = [&](long at) { return codeOf(piece.styles.at(at - piece.range.start)) == piece.code; };
    ByteRange part{caret, caret};
    while (part.start > piece.range.start && same(part.start - 1))
        --part.start;
    while (part.end < piece.range.end && same(part.end))
        ++part.end;
    piece.styles = piece.styles.mid(part.start - piece.range.start, part.length());
    piece.range = part;
}

Piece pieceAt(CodeEditor &editor)
{
    Piece piece;
    const bool selected = editor.selection().length() > 0;
    const long caret = editor.send(S::SCI_GETCURRENTPOS);
    piece.range = selected ? editor.selection() : contentOf(editor, editor.caretLine(), editor.caretLine());
    piece.styles = editor.xmlStyling().stylesOf(piece.range.start, piece.range.end);
    if (piece.styles.isEmpty())
        return piece;
    const long told = selected ? piece.range.start : std::min(caret, piece.range.end - 1);
    piece.code = codeOf(piece.styles.at(told - piece.range.start));
    if (piece.code != Code::Markup && !selected)
        clipToCode(piece, told);
    return piece;
}

bool isMixed(const Piece &piece)
{
    return piece.code != Code::Markup
        && std::any_of(piece.styles.begin(), piece.styles.end(),
                       [&](char style) { return codeOf(style) != piece.code; });
}

// The comment that holds a stretch which is comment from end to end.
std::optional<ByteRange> commentHolding(CodeEditor &editor, const ByteRange &own, const CommentMarks &marks)
{
    const QByteArrayView all = textWindow(editor, 0, editor.send(S::SCI_GETLENGTH)).bytes;
    const qsizetype before = all.first(own.start).lastIndexOf(marks.end);
    qsizetype start = all.indexOf(marks.begin, before < 0 ? 0 : before + marks.end.size());
    while (start >= 0 && start < own.start
           && !isBlockCommentStyle(editor.xmlStyling().stylesOf(long(start), long(start) + 1).at(0)))
        start = all.indexOf(marks.begin, start + 1);
    const qsizetype end = start < 0 ? -1 : all.indexOf(marks.end, start + marks.begin.size());
    const ByteRange found{long(start), long(end + marks.end.size())};
    const bool holds = end >= 0 && found.start <= own.start && found.end >= own.end;
    return holds ? std::optional(found) : std::nullopt;
}

// The comment that a piece, blanks at its ends aside, is within but not the whole of; or that the caret
// stands in when it reaches beyond the caret's line.
std::optional<ByteRange> commentAround(CodeEditor &editor, const Piece &piece, const CommentMarks &marks)
{
    const QByteArray text = editor.bytes(piece.range);
    const QByteArrayView inner = QByteArrayView(text).trimmed();
    if (inner.isEmpty())
        return std::nullopt;
    const auto lead = qsizetype(inner.data() - text.constData());
    const QByteArrayView styles = QByteArrayView(piece.styles).sliced(lead, inner.size());
    const long start = piece.range.start + long(lead);
    const ByteRange own{start, start + long(inner.size())};
    if (std::all_of(styles.begin(), styles.end(), isBlockCommentStyle)) {
        const std::optional<ByteRange> found = commentHolding(editor, own, marks);
        return found != own ? found : std::nullopt;
    }
    const long caret = editor.send(S::SCI_GETCURRENTPOS);
    const bool inComment = editor.selection().length() == 0 && caret < piece.range.end
        && isBlockCommentStyle(piece.styles.at(caret - piece.range.start));
    const std::optional<ByteRange> found
        = inComment ? commentHolding(editor, {caret, caret + 1}, marks) : std::nullopt;
    const bool beyond = found && (found->start < piece.range.start || found->end > piece.range.end);
    return beyond ? found : std::nullopt;
}

// Where a place in a text is when the text has become another, one mark longer or shorter at its start.
long moved(long place, const ByteRange &range, const QByteArray &before, const QByteArray &after, long mark)
{
    const auto lead = qsizetype(
        std::find_if_not(before.begin(), before.end(), [](char c) { return c == ' ' || c == '\t'; })
        - before.begin());
    if (place <= range.start + lead)
        return place;
    if (place > range.end)
        return place + long(after.size() - before.size());
    const long shifted = place + (after.size() > before.size() ? mark : -mark);
    return std::clamp(shifted, range.start + long(lead), range.start + long(after.size()));
}

// What was selected whole is selected again; else caret and selection stay with their text.
bool put(CodeEditor &editor, const ByteRange &range, const QByteArray &after, long mark)
{
    const QByteArray before = editor.bytes(range);
    const bool whole = editor.selection() == range && range.length() > 0;
    const long anchor = editor.send(S::SCI_GETANCHOR);
    const long caret = editor.send(S::SCI_GETCURRENTPOS);
    if (!editor.replaceRange(range, after))
        return false;
    const long end = range.start + long(after.size());
    if (whole)
        editor.send(S::SCI_SETSEL, ulong(anchor < caret ? range.start : end),
                    anchor < caret ? end : range.start);
    else
        editor.send(S::SCI_SETSEL, ulong(moved(anchor, range, before, after, mark)),
                    moved(caret, range, before, after, mark));
    return true;
}

// What is put before a line leaves its places as far from its end as they were.
bool putLines(CodeEditor &editor, const ByteRange &lines, const QByteArray &after)
{
    struct Place
    {
        Place(const CodeEditor &in, long position)
            : line(ulong(in.send(S::SCI_LINEFROMPOSITION, ulong(position)))),
              column(position - in.send(S::SCI_POSITIONFROMLINE, line)),
              toEnd(in.send(S::SCI_GETLINEENDPOSITION, line) - position),
              indented(position > in.send(S::SCI_GETLINEINDENTPOSITION, line))
        { }
        long in(const CodeEditor &now) const
        {
            const long start = now.send(S::SCI_POSITIONFROMLINE, line);
            return indented ? std::max(start, now.send(S::SCI_GETLINEENDPOSITION, line) - toEnd)
                            : start + column;
        }
        ulong line;
        long column;
        long toEnd;
        bool indented;
    };
    const Place anchor(editor, editor.send(S::SCI_GETANCHOR));
    const Place caret(editor, editor.send(S::SCI_GETCURRENTPOS));
    if (!editor.replaceRange(lines, after))
        return false;
    editor.send(S::SCI_SETSEL, ulong(anchor.in(editor)), caret.in(editor));
    return true;
}

ByteRange linesOf(const CodeEditor &editor, const ByteRange &range)
{
    const long first = editor.send(S::SCI_LINEFROMPOSITION, ulong(range.start));
    long last = editor.send(S::SCI_LINEFROMPOSITION, ulong(range.end));
    if (last > first && editor.send(S::SCI_POSITIONFROMLINE, ulong(last)) == range.end)
        --last;
    return contentOf(editor, first, last);
}

bool refuse(CodeEditor &editor, const QString &why)
{
    Q_EMIT editor.noted(why);
    return false;
}

} // namespace

bool toggleComment(CodeEditor &editor)
{
    if (editor.language() == Language::Plain)
        return false;
    Piece piece = pieceAt(editor);
    const CommentMarks &marks = piece.code == Code::Markup ? markupComment : codeComment;
    if (const std::optional<ByteRange> around = commentAround(editor, piece, marks))
        return put(editor, *around, uncommented(editor.bytes(*around), marks), long(marks.begin.size()) + 1);
    if (isMixed(piece))
        return refuse(editor, CodeEditor::tr("The selection reaches beyond its script or style sheet."));
    if (piece.code == Code::Script) {
        const ByteRange lines = linesOf(editor, piece.range);
        Piece all{lines, editor.xmlStyling().stylesOf(lines.start, lines.end), piece.code};
        if (!isMixed(all)) {
            const std::optional<QByteArray> toggled = lineCommentsToggled(editor.bytes(lines));
            return toggled && putLines(editor, lines, *toggled);
        }
    }
    const std::optional<QByteArray> toggled = commentToggled(editor.bytes(piece.range), marks);
    if (!toggled && !editor.bytes(piece.range).trimmed().isEmpty())
        return refuse(editor, CodeEditor::tr("No comment can hold this text."));
    return toggled && put(editor, piece.range, *toggled, long(marks.begin.size()) + 1);
}

} // namespace control
