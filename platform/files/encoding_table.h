// The encodings that files may be written in: their usual names, the names they are declared by, and who
// converts them.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <span>

namespace files {

enum class Codec
{
    Utf8,
    Utf16, // byte order open: said by the mark
    Utf16LE,
    Utf16BE,
    Utf32,
    Utf32LE,
    Utf32BE,
    Ascii,
    Latin1,
    Windows1252,
    System // converted by the system's own library
};

struct EncodingEntry
{
    const char *name; // as it is usually written
    Codec codec;
    const char *systemName; // the system library's name, for Codec::System
    const char *aliases; // further names, upper case without punctuation, separated by blanks
};

std::span<const EncodingEntry> encodingTable();

// The encoding that a name stands for, whatever its case and punctuation; null for an unknown one.
const EncodingEntry *findEncoding(QByteArrayView name);

// The entry that stands for a codec other than Codec::System.
const EncodingEntry &entryOf(Codec codec);

// Whether a text that names one encoding may be in the other: where it leaves the byte order open, in either.
bool standsFor(const EncodingEntry &named, const EncodingEntry &actual);

bool isUtf16(Codec codec);
bool isUtf32(Codec codec);
inline bool isWide(Codec codec) { return isUtf16(codec) || isUtf32(codec); }

} // namespace files
