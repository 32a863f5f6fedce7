#include "platform/control/text_difference.h"

#include <algorithm>
#include <iterator>

namespace control {

namespace {

bool continuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

// Whether a cut before this byte would split a character or a CR LF.
bool splitsAt(QByteArrayView text, qsizetype at)
{
    if (at <= 0 || at >= text.size())
        return false;
    return continuesCharacter(text[at]) || (text[at - 1] == '\r' && text[at] == '\n');
}

} // namespace

TextDifference differenceOf(QByteArrayView before, QByteArrayView after)
{
    TextDifference same;
    const auto head = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    same.prefix = head.first - before.begin();
    while (splitsAt(before, same.prefix) || splitsAt(after, same.prefix))
        --same.prefix;

    const QByteArrayView restBefore = before.sliced(same.prefix);
    const QByteArrayView restAfter = after.sliced(same.prefix);
    const auto tail = std::mismatch(
        std::make_reverse_iterator(restBefore.end()), std::make_reverse_iterator(restBefore.begin()),
        std::make_reverse_iterator(restAfter.end()), std::make_reverse_iterator(restAfter.begin()));
    same.suffix = restBefore.end() - tail.first.base();
    while (same.suffix > 0
           && (splitsAt(before, before.size() - same.suffix) || splitsAt(after, after.size() - same.suffix)))
        --same.suffix;
    return same;
}

} // namespace control
