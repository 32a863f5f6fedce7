#include "platform/control/text_habits.h"

#include "platform/control/markup_scanner.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace control {

namespace {

constexpr qsizetype examined = qsizetype{64} * 1024;

void findLineEnd(QByteArrayView text, TextHabits &habits)
{
    const auto *end = std::find_if(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; });
    if (end == text.end())
        return;
    habits.hasLineEnd = true;
    if (*end == '\n')
        habits.lineEnd = LineEnd::Lf;
    else
        habits.lineEnd = end + 1 != text.end() && end[1] == '\n' ? LineEnd::CrLf : LineEnd::Cr;
}

bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool beginsTag(QByteArrayView line) { return line.size() > 1 && line[0] == '<' && isNameByte(line[1]); }

// The blanks before the first other sign of each line, and the line from there on.
template <typename Visit>
void forEachLine(QByteArrayView text, Visit visit)
{
    const auto *at = text.begin();
    while (at != text.end()) {
        const auto *const end = std::find_if(at, text.end(), isLineEnd);
        const auto *const content = std::find_if_not(at, end, isBlank);
        if (content != end)
            visit(QByteArrayView(at, content), QByteArrayView(content, end));
        at = end == text.end() ? end : end + 1;
    }
}

// How often a tag that begins a line stands so much deeper than the one before it: with one more tab or
// several, or with so many blanks. Attributes on lines of their own have a place of their own.
class IndentSteps
{
public:
    void add(QByteArrayView blanks)
    {
        const QByteArrayView before = std::exchange(before_, blanks);
        any_ = true;
        if (blanks.size() <= before.size() || !blanks.startsWith(before))
            return;
        const QByteArrayView more = blanks.sliced(before.size());
        if (more.count('\t') == more.size())
            ++counts_[0];
        else if (!more.contains('\t'))
            ++counts_[size_t(std::min(more.size(), widest))];
    }
    bool any() const { return any_; }
    // A number of blanks, or 0 for tabs; nothing when no tag stands deeper than another.
    std::optional<int> commonest() const
    {
        const auto *const most = std::max_element(counts_.begin(), counts_.end());
        return *most == 0 ? std::nullopt : std::optional(int(most - counts_.begin()));
    }

private:
    static constexpr qsizetype widest = 8;

    std::array<int, widest + 1> counts_{};
    QByteArrayView before_;
    bool any_ = false;
};

// Where no tags begin lines the first indented line tells, but not one that only continues a comment by one
// blank.
std::optional<int> firstIndent(QByteArrayView text)
{
    std::optional<int> found;
    forEachLine(text, [&found](QByteArrayView blanks, QByteArrayView) {
        if (!found && blanks.startsWith('\t'))
            found = 0;
        else if (!found && blanks.size() > 1)
            found = int(std::min<qsizetype>(blanks.size(), 8));
    });
    return found;
}

void findIndent(QByteArrayView text, TextHabits &habits)
{
    IndentSteps steps;
    forEachLine(text, [&steps](QByteArrayView blanks, QByteArrayView line) {
        if (beginsTag(line))
            steps.add(blanks);
    });
    const std::optional<int> step = steps.any() ? steps.commonest() : firstIndent(text);
    habits.tabs = step.value_or(0) == 0;
    if (!habits.tabs)
        habits.indent = *step;
}

} // namespace

TextHabits habitsOf(QByteArrayView text)
{
    TextHabits habits;
    const QByteArrayView head = text.first(std::min(text.size(), examined));
    findLineEnd(head, habits);
    findIndent(head, habits);
    return habits;
}

QByteArrayView lineEndBytes(LineEnd lineEnd)
{
    switch (lineEnd) {
    case LineEnd::CrLf:
        return "\r\n";
    case LineEnd::Cr:
        return "\r";
    case LineEnd::Lf:
        break;
    }
    return "\n";
}

QByteArray withLineEnds(QByteArrayView text, LineEnd lineEnd)
{
    const QByteArrayView ending = lineEndBytes(lineEnd);
    QByteArray result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isLineEnd(text[i])) {
            result += text[i];
            continue;
        }
        result.append(ending.data(), ending.size());
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            ++i;
    }
    return result;
}

} // namespace control
