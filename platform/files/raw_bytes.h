// Bytes that are no characters of a text's encoding, as the text holds them: each stands for itself as one of
// 256 characters of a block that the text uses for nothing else. So the text can be shown and mended, and
// what is not mended is written as it was.
#pragma once

#include "platform/result.h"

#include <QByteArray>
#include <QByteArrayView>

#include <functional>

namespace files {

class RawBytes
{
public:
    static constexpr int size = 4; // bytes of UTF-8 that stand for one
    static constexpr char32_t count = 256;

    // The block's first character, a multiple of 256 from U+100000 on; 0 when the text has no such bytes.
    explicit RawBytes(char32_t block) : block_(block) { }

    // Where the next one stands; the text's size when there is none.
    qsizetype next(QByteArrayView utf8, qsizetype from) const;

    // The byte that stands at a place that next() found.
    static char byteAt(QByteArrayView utf8, qsizetype at);

    // Appends the bytes that stand from a place on, and returns the place after the last of them.
    qsizetype take(QByteArrayView utf8, qsizetype at, QByteArray &out) const;

    // Writes the character that stands for a byte.
    char *write(char *to, char byte) const;

private:
    char32_t block_;
};

// The first block, of those that a text may use for such bytes, in which none of its characters lies; 0 when
// there is none.
char32_t freeBlock(QByteArrayView utf8);

// A number as a block that freeBlock could have given, else 0.
char32_t validBlock(int number);

} // namespace files
