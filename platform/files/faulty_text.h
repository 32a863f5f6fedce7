// Bytes that are almost of an encoding, as a text that loses none of them.
#pragma once

#include "platform/files/encoding_table.h"
#include "platform/files/raw_bytes.h"

#include <optional>

namespace files {

struct FaultyText
{
    QByteArray utf8;
    char32_t block = 0; // see RawBytes
    qsizetype bad = 0; // bytes that stand for themselves
    qsizetype faults = 0; // places where such bytes stand together
    qsizetype good = 0; // characters beyond ASCII: what speaks for the encoding
};

// Reads bytes, without a byte order mark, whether or not all of them are of the encoding. Nothing where this
// system cannot convert it, or where no block is left for the bytes that are not.
std::optional<FaultyText> decodeFaulty(QByteArrayView bytes, const EncodingEntry &entry);

} // namespace files
