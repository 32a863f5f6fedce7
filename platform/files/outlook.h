// What a text will be written in, for those who write it.
#pragma once

#include "platform/files/text_encoding.h"

namespace files {

// The encoding that a declaration stands for, if it is one that can be written here; else null.
const EncodingEntry *writableDeclaration(const Declaration &declaration);

// Whether this text has no characters beyond ASCII, which most encodings write alike.
bool isAsciiOnly(QByteArrayView utf8);

} // namespace files
