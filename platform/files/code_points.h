// Single characters out of and into UTF-8.
#pragma once

#include <QByteArrayView>

namespace files {

inline constexpr char32_t replacementCharacter = 0xFFFD;

// The character at a byte of a UTF-8 text; size is its length in bytes. A byte that begins no character
// counts as a replacement character of length 1.
struct CodePoint
{
    char32_t value;
    int size;
};
CodePoint codePointAt(QByteArrayView utf8, qsizetype at);

// Writes a character (at most 4 bytes) and returns the place after it. What is no character (surrogates,
// beyond U+10FFFF) is written as U+FFFD.
inline char *writeCodePoint(char *to, char32_t c)
{
    if (c < 0x80) {
        *to++ = char(c);
        return to;
    }
    if (c < 0x800) {
        *to++ = char(0xC0 | (c >> 6));
        *to++ = char(0x80 | (c & 0x3F));
        return to;
    }
    if (c > 0x10FFFF || (c >= 0xD800 && c < 0xE000))
        c = replacementCharacter;
    if (c < 0x10000) {
        *to++ = char(0xE0 | (c >> 12));
    } else {
        *to++ = char(0xF0 | (c >> 18));
        *to++ = char(0x80 | ((c >> 12) & 0x3F));
    }
    *to++ = char(0x80 | ((c >> 6) & 0x3F));
    *to++ = char(0x80 | (c & 0x3F));
    return to;
}

} // namespace files
