// UTF-16 and UTF-32 to UTF-8 and back, in either byte order.
#pragma once

#include "platform/files/encoding_table.h"

namespace files {

struct WideText
{
    QByteArray utf8;
    qsizetype replaced = 0; // units that are no characters and became U+FFFD
};

// Decodes bytes without their byte order mark; the codec names the byte order.
WideText decodeWide(QByteArrayView bytes, Codec codec);

// The bytes of a text, without a byte order mark.
QByteArray encodeWide(QByteArrayView utf8, Codec codec);

} // namespace files
