#include "platform/control/long_runs.h"

#include <algorithm>

namespace control {

namespace {

constexpr qsizetype longestPiece = 29; // that the engine remembers
constexpr qsizetype leastPiece = 16;

bool beginsCharacter(char c) { return (uchar(c) & 0xC0U) != 0x80U; }

// Ends behind a blank or at any other place that only the text around it decides upon.
qsizetype pieceLength(QByteArrayView run)
{
    qsizetype length = std::min(longestPiece, run.size());
    if (length == run.size())
        return length;
    for (qsizetype at = leastPiece; at < length; ++at)
        if (run[at - 1] == ' ')
            return at;
    for (qsizetype at = leastPiece; at < length; ++at)
        if (beginsCharacter(run[at]) && uchar(run[at]) % 8 == 0)
            return at;
    while (length > leastPiece && !beginsCharacter(run[length]))
        --length;
    return length;
}

void partRun(QByteArrayView run, char *styles)
{
    size_t before = sameLooks.size();
    for (qsizetype at = 0; at < run.size();) {
        const QByteArrayView piece = run.sliced(at, pieceLength(run.sliced(at)));
        size_t look = (uchar(piece.front()) + size_t(piece.size())) % sameLooks.size();
        if (look == before)
            look = (look + 1) % sameLooks.size();
        std::fill_n(styles + at, piece.size(), char(styles[at] + sameLooks[look]));
        before = look;
        at += piece.size();
    }
}

} // namespace

void partLongRuns(QByteArrayView text, char *styles)
{
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = start + 1;
        while (end < text.size() && styles[end] == styles[start])
            ++end;
        if (end - start > longestPiece)
            partRun(text.sliced(start, end - start), styles + start);
        start = end;
    }
}

} // namespace control
