// Encodings whose markup is ASCII bytes (everything but UTF-8, UTF-16 and UTF-32) to UTF-8 and back.
#pragma once

#include "platform/files/encoding_table.h"

#include <memory>
#include <optional>

namespace files {

// Writes a text piece by piece, stopping at what the encoding lacks.
class NarrowEncoder
{
public:
    virtual ~NarrowEncoder() = default;

    // Appends the bytes of as much of the text as can be written; returns how many bytes of it were taken.
    virtual qsizetype encode(QByteArrayView utf8, QByteArray &out) = 0;

    // Appends what ends the whole text, where the encoding has such a thing.
    virtual void finish(QByteArray &) { }
};

// Null when this system cannot convert the encoding.
std::unique_ptr<NarrowEncoder> narrowEncoder(const EncodingEntry &entry);

// Nothing when the bytes are not of this encoding, or when this system cannot convert it.
std::optional<QByteArray> decodeNarrow(QByteArrayView bytes, const EncodingEntry &entry);

// Every byte has a character: what Windows-1252 leaves undefined stands for the control of the same number.
QByteArray decodeWindows1252(QByteArrayView bytes);

// Reads bytes piece by piece, stopping at what is no character of the encoding.
class NarrowDecoder
{
public:
    virtual ~NarrowDecoder() = default;

    // Appends the text of as many of the bytes as can be read; returns how many were taken.
    virtual qsizetype decode(QByteArrayView bytes, QByteArray &out) = 0;
};

// The system library's side of the above; null when it does not know the encoding.
std::unique_ptr<NarrowEncoder> systemEncoder(const char *systemName);
std::unique_ptr<NarrowDecoder> systemDecoder(const char *systemName);
std::optional<QByteArray> decodeBySystem(QByteArrayView bytes, const char *systemName);

} // namespace files
