// A text's own word for its encoding, changed to another one.
#pragma once

#include "platform/files/text_encoding.h"

namespace files {

// How a user may ask for an encoding: by its name, with a byte order mark or without.
struct EncodingWish
{
    QByteArray name; // as in the table
    bool byteOrderMark = false;
};

struct Redeclared
{
    QByteArray utf8;
    TextEncoding encoding; // what it is to be written with
};

// The text as it has to be for other programs to read it in that encoding: the name in its XML declaration or
// meta element changed, or a declaration added where one is needed. Fails where there is no place for one.
platform::Result<Redeclared> redeclare(const QByteArray &utf8, const EncodingWish &wish);

} // namespace files
