#include "platform/control/text_habits.h"

#include <algorithm>

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

// A blank line says nothing about indentation; neither does a line that only continues a comment by one
// blank.
void findIndent(QByteArrayView text, TextHabits &habits)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (i > 0 && !isLineEnd(text[i - 1]))
            continue;
        if (text[i] == '\t') {
            habits.tabs = true;
            return;
        }
        qsizetype blanks = 0;
        while (i + blanks < text.size() && text[i + blanks] == ' ')
            ++blanks;
        if (blanks > 1 && i + blanks < text.size() && !isLineEnd(text[i + blanks])) {
            habits.tabs = false;
            habits.indent = int(std::min<qsizetype>(blanks, 8));
            return;
        }
    }
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
