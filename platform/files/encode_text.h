// The bytes of a whole text with its line end, in pieces, so that a large text need not be copied.
#pragma once

#include "platform/files/text_encoding.h"

#include <array>

namespace files {

struct EncodedPieces
{
    QByteArray mark; // byte order mark, or empty
    QByteArray body; // shares the text's own bytes where that is what they are
    QByteArray lineEnd;
    TextEncoding encoding; // how the text stands in them
    QString note; // one line: what became of the text that nobody asked for; or empty

    std::array<QByteArrayView, 3> all() const { return {mark, body, lineEnd}; }
};

// As encodeText, with an ASCII line end (may be empty) behind the text.
platform::Result<EncodedPieces> encodePieces(const QByteArray &utf8, const TextEncoding &cameWith,
                                             QByteArrayView lineEnd);

} // namespace files
