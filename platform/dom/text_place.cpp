#include "platform/dom/text_place.h"

#include <algorithm>

namespace dom {

namespace {

// A source line longer than this is shown cut around the place, so that a report stays on the screen.
constexpr qsizetype longestSourceText = 160;

bool isLineEnd(char c) { return c == '\n' || c == '\r'; }

qsizetype countLineEnds(QByteArrayView text)
{
    qsizetype count = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' || (text[i] == '\r' && !(i + 1 < text.size() && text[i + 1] == '\n')))
            ++count;
    }
    return count;
}

qsizetype characterCount(QByteArrayView utf8)
{
    return std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0xC0) != 0x80; });
}

// offset moved back to the beginning of the character it lies in.
qsizetype characterStart(QByteArrayView text, qsizetype offset)
{
    while (offset > 0 && offset < text.size() && (text[offset] & 0xC0) == 0x80)
        --offset;
    return offset;
}

qsizetype lineBegin(QByteArrayView text, qsizetype offset)
{
    while (offset > 0 && !isLineEnd(text[offset - 1]))
        --offset;
    return offset;
}

QString sourceLine(QByteArrayView text, qsizetype begin, qsizetype end, qsizetype place)
{
    const QString cut = QStringLiteral("…");
    const qsizetype half = longestSourceText / 2;
    const qsizetype from
        = end - begin > longestSourceText ? characterStart(text, qMax(begin, place - half)) : begin;
    const qsizetype to = qMin(end, characterStart(text, qMin(end, from + longestSourceText)));
    return (from > begin ? cut : QString()) + QString::fromUtf8(text.sliced(from, to - from))
        + (to < end ? cut : QString());
}

} // namespace

qint64 lineOf(QByteArrayView utf8, qsizetype offset)
{
    return countLineEnds(utf8.first(lineBegin(utf8, offset))) + 1;
}

TextPlace placeOf(QByteArrayView utf8, qsizetype offset)
{
    const qsizetype begin = lineBegin(utf8, offset);
    const qsizetype end = std::find_if(utf8.begin() + offset, utf8.end(), isLineEnd) - utf8.begin();
    TextPlace place;
    place.line = countLineEnds(utf8.first(begin)) + 1;
    place.position = characterCount(utf8.sliced(begin, offset - begin)) + 1;
    place.sourceText = sourceLine(utf8, begin, end, offset);
    return place;
}

} // namespace dom
