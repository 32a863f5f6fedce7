// Bytes of a file to text in memory (UTF-8) and back, without losing which bytes they were.
#pragma once

#include "platform/result.h"

#include <QByteArray>
#include <QString>

namespace files {

// How a text stood in its file, so that it can be written back the same way.
struct TextEncoding
{
    QByteArray name = "UTF-8"; // IANA name, upper case where that is usual
    bool byteOrderMark = false;

    bool operator==(const TextEncoding &) const = default;
};

struct DecodedText
{
    QByteArray utf8; // valid UTF-8 without a byte order mark; line ends as they were
    TextEncoding encoding;
    QString note; // empty, or one line: the declaration and the bytes disagree, and what was done
};

// Reads any bytes as text: byte order mark, XML declaration, HTML meta charset, else UTF-8 when valid,
// else Windows-1252. Where a declaration does not fit the bytes the bytes win and the note says so.
// Never fails; a file that is no text is shown as Windows-1252.
DecodedText decodeText(QByteArray bytes);

// Reads bytes that are no document, whatever they seem to declare: by their byte order mark, else as UTF-8
// when valid, else as Windows-1252.
QByteArray decodePlainText(QByteArray bytes);

// The encoding that the text itself declares (XML declaration, else HTML meta charset), upper-case IANA
// name; empty when it declares none or one that this system cannot write.
QByteArray declaredEncoding(const QByteArray &utf8);

// The bytes to write for a text: in the encoding it declares, else in the one it came with. A character
// which that encoding lacks becomes a character reference where markup allows one (text and attribute
// values) and is otherwise a failure that names the character, its line and the encoding.
platform::Result<QByteArray> encodeText(const QByteArray &utf8, const TextEncoding &cameWith);

} // namespace files
