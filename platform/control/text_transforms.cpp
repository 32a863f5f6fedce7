#include "platform/control/text_transforms.h"

#include <QList>
#include <QSet>
#include <QString>
#include <algorithm>

namespace control {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

bool beginsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }

// Lines and, apart from them, what ends each; the last may end with nothing.
struct Lines
{
    QList<QByteArrayView> contents;
    QList<QByteArrayView> ends;
};

Lines split(QByteArrayView text)
{
    Lines lines;
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype end = start;
        while (end < text.size() && !isLineEnd(text[end]))
            ++end;
        qsizetype next = std::min(end + 1, text.size());
        if (next < text.size() && text[end] == '\r' && text[next] == '\n')
            ++next;
        lines.contents.append(text.sliced(start, end - start));
        lines.ends.append(text.sliced(end, next - end));
        start = next;
    }
    return lines;
}

// Fewer contents than line ends: the last content takes the last end, so that the block still ends as it did.
QByteArray together(const QList<QByteArrayView> &contents, const QList<QByteArrayView> &ends)
{
    QByteArray text;
    for (qsizetype i = 0; i < contents.size(); ++i) {
        text.append(contents[i]);
        text.append(i + 1 == contents.size() ? ends.last() : ends[i]);
    }
    return text;
}

QByteArrayView trimmedEnd(QByteArrayView line)
{
    while (!line.isEmpty() && isBlank(line.back()))
        line.chop(1);
    return line;
}

QByteArrayView trimmedStart(QByteArrayView line)
{
    while (!line.isEmpty() && isBlank(line.front()))
        line = line.sliced(1);
    return line;
}

template <typename Arrange>
QByteArray rearranged(QByteArrayView text, Arrange arrange)
{
    Lines lines = split(text);
    arrange(lines.contents);
    return together(lines.contents, lines.ends);
}

// Bytes that are no UTF-8 would be lost on the way, so a text with such bytes stays as it is.
template <typename Change>
QByteArray changedAsText(QByteArrayView text, Change change)
{
    const QString before = QString::fromUtf8(text);
    return before.toUtf8() == text ? change(before).toUtf8() : text.toByteArray();
}

// Runs a letter at a time through a function that remembers what came before.
template <typename Recase>
QByteArray recased(QByteArrayView text, Recase recase)
{
    return changedAsText(text, [&recase](QString letters) {
        std::transform(letters.begin(), letters.end(), letters.begin(), recase);
        return letters;
    });
}

} // namespace

QByteArray tabsToSpaces(QByteArrayView text, int tabWidth, int column)
{
    QByteArray result;
    for (const char c : text) {
        if (c == '\t') {
            const int width = tabWidth - column % tabWidth;
            result.append(width, ' ');
            column += width;
            continue;
        }
        result += c;
        column = isLineEnd(c) ? 0 : column + (beginsCharacter(c) ? 1 : 0);
    }
    return result;
}

QByteArray spacesToTabs(QByteArrayView text, int tabWidth, int column)
{
    QByteArray result;
    int blanks = 0;
    for (const char c : text) {
        result += c;
        if (c == '\t')
            column += tabWidth - column % tabWidth;
        else
            column = isLineEnd(c) ? 0 : column + (beginsCharacter(c) ? 1 : 0);
        blanks = c == ' ' ? blanks + 1 : 0;
        if (column % tabWidth == 0 && blanks > 0) {
            if (blanks > 1) {
                result.chop(blanks);
                result += '\t';
            }
            blanks = 0;
        }
    }
    return result;
}

QByteArray upperCase(QByteArrayView text)
{
    return changedAsText(text, [](const QString &letters) { return letters.toUpper(); });
}

QByteArray lowerCase(QByteArrayView text)
{
    return changedAsText(text, [](const QString &letters) { return letters.toLower(); });
}

QByteArray sentenceCase(QByteArrayView text)
{
    bool first = true;
    return recased(text, [&first](QChar c) {
        if (!c.isLetterOrNumber()) {
            first = first || c == u'.' || c == u'!' || c == u'?';
            return c;
        }
        return std::exchange(first, false) ? c.toUpper() : c.toLower();
    });
}

QByteArray capitalised(QByteArrayView text)
{
    bool first = true;
    return recased(text, [&first](QChar c) {
        const bool starts = first;
        first = !c.isLetterOrNumber() && c != u'\'';
        return starts ? c.toUpper() : c.toLower();
    });
}

QByteArray caseInverted(QByteArrayView text)
{
    return recased(text, [](QChar c) { return c.isUpper() ? c.toLower() : c.toUpper(); });
}

QByteArray sortedLines(QByteArrayView lines)
{
    return rearranged(lines, [](auto &contents) { std::stable_sort(contents.begin(), contents.end()); });
}

QByteArray sortedLinesDescending(QByteArrayView lines)
{
    return rearranged(lines, [](auto &contents) {
        std::stable_sort(contents.begin(), contents.end(), [](auto a, auto b) { return b < a; });
    });
}

QByteArray reversedLines(QByteArrayView lines)
{
    return rearranged(lines, [](auto &contents) { std::reverse(contents.begin(), contents.end()); });
}

QByteArray withoutRepeatedLines(QByteArrayView lines)
{
    return rearranged(lines, [](auto &contents) {
        QSet<QByteArrayView> seen;
        contents.removeIf([&seen](QByteArrayView line) {
            const qsizetype before = seen.size();
            seen.insert(line);
            return seen.size() == before;
        });
    });
}

QByteArray withoutBlankLines(QByteArrayView lines)
{
    return rearranged(lines, [](auto &contents) {
        contents.removeIf([](QByteArrayView line) { return trimmedEnd(line).isEmpty(); });
    });
}

QByteArray withoutTrailingBlanks(QByteArrayView lines)
{
    return rearranged(lines, [](auto &contents) {
        std::transform(contents.begin(), contents.end(), contents.begin(), trimmedEnd);
    });
}

QByteArray joinedLines(QByteArrayView lines)
{
    const Lines parts = split(lines);
    QByteArray joined;
    for (qsizetype i = 0; i < parts.contents.size(); ++i) {
        const QByteArrayView line = i == 0 ? parts.contents[i] : trimmedStart(parts.contents[i]);
        if (i > 0 && !line.isEmpty()) {
            joined.truncate(trimmedEnd(joined).size());
            if (!joined.isEmpty())
                joined += ' ';
        }
        joined.append(line);
    }
    if (!parts.ends.isEmpty())
        joined.append(parts.ends.last());
    return joined;
}

} // namespace control
