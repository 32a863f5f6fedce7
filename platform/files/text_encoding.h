// Bytes of a file to text in memory (UTF-8) and back, without losing which bytes they were.
#pragma once

#include "platform/files/declaration.h"
#include "platform/result.h"

#include <QByteArray>
#include <QString>

namespace files {

// A text and the bytes it was read from, where the same text is usually written in others.
struct Spelling
{
    QByteArray text;
    QByteArray bytes;

    bool operator==(const Spelling &) const = default;
};

// How a text stood in its file, so that it can be written back the same way.
struct TextEncoding
{
    QByteArray name = "UTF-8"; // IANA name, upper case where that is usual
    bool byteOrderMark = false;
    Declaration declared = {}; // what the text said of its encoding then; as long as it does, this counts
    char32_t block
        = 0; // see RawBytes: the characters that stand for bytes which are none; 0 for no such bytes
    Spelling spelling = {};

    bool operator==(const TextEncoding &) const = default;
};

struct DecodedText
{
    QByteArray utf8; // valid UTF-8 without a byte order mark; line ends as they were
    TextEncoding encoding;
    QString note; // empty, or one line: the declaration and the bytes disagree, and what was done
};

// Reads any bytes as text: byte order mark, XML declaration, HTML meta charset, else UTF-8, else
// Windows-1252. Where a declaration does not fit the bytes the bytes win and the note says so. Bytes that are
// no characters of an encoding that fits otherwise stand for themselves (RawBytes). Never fails; encodeText
// gives the bytes back.
DecodedText decodeText(QByteArray bytes);

// The same in an encoding that somebody knows better; a mark is still recognised. Nothing for an encoding
// that this system cannot read.
platform::Result<DecodedText> decodeTextAs(QByteArray bytes, const QByteArray &encoding);

// Reads bytes that are no document, whatever they seem to declare: by their byte order mark, else as UTF-8
// when valid, else as Windows-1252.
QByteArray decodePlainText(QByteArray bytes);

// The encoding that the text itself declares (XML declaration, else HTML meta charset), upper-case IANA
// name; empty when it declares none or one that this system cannot write.
QByteArray declaredEncoding(const QByteArray &utf8);

// What a text is written in: as it came while it says of its encoding what it said then, else as it declares
// now, else as UTF-8.
struct Outlook
{
    QByteArray name;
    bool byteOrderMark = false;
    bool asCame = false; // in every respect
    QString note; // one line, where the encoding becomes another one without being declared
};

// Fails for a text that declares, now, an encoding which is not known here: nobody could read it.
platform::Result<Outlook> outlookOf(const QByteArray &utf8, const TextEncoding &cameWith);

// The bytes to write for a text. A character which its encoding lacks becomes a character reference where
// markup allows one (text and attribute values) and is otherwise a failure that names the character, its line
// and the encoding. What was not edited has the bytes it came in.
platform::Result<QByteArray> encodeText(const QByteArray &utf8, const TextEncoding &cameWith);

} // namespace files
