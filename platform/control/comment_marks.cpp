#include "platform/control/comment_marks.h"

#include <algorithm>
#include <utility>

namespace control {

namespace {

// A comment cannot stand in a comment; put away like this it can, and comes out again.
constexpr std::pair<const char *, const char *> putAway[]
    = {{"<!--", "&lt;!&ndash;"}, {"-->", "&ndash;&gt;"}};

bool isMarkup(const CommentMarks &marks) { return marks.begin == markupComment.begin; }

// Frees comments that nothing but blanks stands between; nothing when there is more.
std::optional<QByteArray> allUncommented(QByteArrayView text, const CommentMarks &marks)
{
    QByteArray freed;
    while (!text.isEmpty()) {
        const qsizetype open = text.indexOf(marks.begin);
        const qsizetype close = open < 0 ? -1 : text.indexOf(marks.end, open + marks.begin.size());
        if (close < 0 || !text.first(open).trimmed().isEmpty())
            break;
        const qsizetype end = close + marks.end.size();
        freed += text.first(open).toByteArray() + uncommented(text.sliced(open, end - open), marks);
        text = text.sliced(end);
    }
    return text.isEmpty() ? std::optional<QByteArray>(freed) : std::nullopt;
}

// What may stand in a comment for the text; nothing when that cannot be told apart from its end.
std::optional<QByteArray> holdable(QByteArrayView text, const CommentMarks &marks)
{
    QByteArray held = text.toByteArray();
    if (!isMarkup(marks))
        return held.contains(marks.begin) || held.contains(marks.end) ? std::nullopt
                                                                      : std::optional<QByteArray>(held);
    if (held.count(marks.begin) != held.count(marks.end))
        return std::nullopt;
    for (const auto &[markup, away] : putAway)
        held.replace(markup, away);
    return held.contains("--") || held.endsWith('-') ? std::nullopt : std::optional<QByteArray>(held);
}

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

// Calls with the start of each line that is not blank: of the line and of what it holds.
template <typename Visit>
void forEachLine(QByteArrayView lines, Visit visit)
{
    for (qsizetype start = 0; start < lines.size();) {
        const auto *const at = lines.begin() + start;
        const auto *const content = std::find_if_not(at, lines.end(), isBlank);
        if (content != lines.end() && !isLineEnd(*content))
            visit(start, qsizetype(content - lines.begin()));
        const auto *const end = std::find_if(content, lines.end(), isLineEnd);
        start = qsizetype(std::find_if_not(end, lines.end(), isLineEnd) - lines.begin());
    }
}

} // namespace

QByteArray uncommented(QByteArrayView comment, const CommentMarks &marks)
{
    const qsizetype length = comment.size() - marks.begin.size() - marks.end.size();
    QByteArray freed
        = comment.sliced(marks.begin.size(), std::max<qsizetype>(0, length)).trimmed().toByteArray();
    if (isMarkup(marks))
        for (const auto &[markup, away] : putAway)
            freed.replace(away, markup);
    return freed;
}

std::optional<QByteArray> commentToggled(QByteArrayView text, const CommentMarks &marks)
{
    const QByteArrayView inner = text.trimmed();
    if (inner.isEmpty())
        return std::nullopt;
    const qsizetype lead = inner.data() - text.data();
    const QByteArray before = text.first(lead).toByteArray();
    const QByteArray after = text.sliced(lead + inner.size()).toByteArray();
    if (const std::optional<QByteArray> freed = allUncommented(inner, marks))
        return before + *freed + after;
    const std::optional<QByteArray> held = holdable(inner, marks);
    if (!held)
        return std::nullopt;
    return before + marks.begin.toByteArray() + ' ' + *held + ' ' + marks.end.toByteArray() + after;
}

std::optional<QByteArray> lineCommentsToggled(QByteArrayView lines)
{
    constexpr QByteArrayView mark = "//";
    bool all = true;
    qsizetype indent = -1;
    forEachLine(lines, [&](qsizetype start, qsizetype content) {
        all = all && lines.sliced(content).startsWith(mark);
        indent = indent < 0 ? content - start : std::min(indent, content - start);
    });
    if (indent < 0)
        return std::nullopt;
    QByteArray toggled;
    qsizetype copied = 0;
    forEachLine(lines, [&](qsizetype start, qsizetype content) {
        const qsizetype to = all ? content : start + indent;
        toggled += lines.sliced(copied, to - copied).toByteArray();
        copied = to;
        if (!all)
            toggled += "// ";
        else
            copied += mark.size() + (lines.sliced(content + mark.size()).startsWith(' ') ? 1 : 0);
    });
    return toggled + lines.sliced(copied).toByteArray();
}

} // namespace control
