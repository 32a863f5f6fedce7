#include "platform/files/code_points.h"

namespace files {

namespace {

// Smallest character that a sequence of so many bytes may stand for.
constexpr char32_t smallestOf[] = {0, 0, 0x80, 0x800, 0x10000};

int sequenceLength(uchar lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

} // namespace

CodePoint codePointAt(QByteArrayView utf8, qsizetype at)
{
    constexpr CodePoint broken{replacementCharacter, 1};
    const auto *from = reinterpret_cast<const uchar *>(utf8.data()) + at;
    const int length = sequenceLength(*from);
    if (length == 1)
        return {*from, 1};
    if (length == 0 || length > utf8.size() - at)
        return broken;
    char32_t c = *from & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        if ((from[i] & 0xC0) != 0x80)
            return broken;
        c = (c << 6) | (from[i] & 0x3F);
    }
    const bool wrong = c < smallestOf[length] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000);
    return wrong ? broken : CodePoint{c, length};
}

} // namespace files
