// What is wrong with a document's encoding, so that no other program would read it as it is shown here.
#pragma once

#include "platform/files/text_encoding.h"

#include <optional>

namespace files {

struct EncodingFault
{
    qsizetype offset = 0; // in the text, UTF-8
    QString reason; // a sentence

    // Nothing of the text stands for bytes that are no characters: it can be written in another encoding.
    bool readable = true;
};

// The first fault of a text that is to be written as it came: a byte that is no character, a declaration that
// says something else or that nobody knows, no declaration where one is needed.
std::optional<EncodingFault> encodingFault(const QByteArray &utf8, const TextEncoding &cameWith);

} // namespace files
