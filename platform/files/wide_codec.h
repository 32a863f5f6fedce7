// UTF-16 and UTF-32 to UTF-8 and back, in either byte order.
#pragma once

#include "platform/files/encoding_table.h"
#include "platform/files/raw_bytes.h"

namespace files {

struct WideText
{
    QByteArray utf8;
    qsizetype replaced = 0; // units that are no characters
};

// Decodes bytes without their byte order mark; the codec names the byte order. The bytes of a unit that is no
// character stand for themselves, or for U+FFFD where there is no block for them.
WideText decodeWide(QByteArrayView bytes, Codec codec, char32_t block = 0);

// The bytes of a text, without a byte order mark.
QByteArray encodeWide(QByteArrayView utf8, Codec codec);

} // namespace files
