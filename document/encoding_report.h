// The fault of a document's encoding among those of its markup.
#pragma once

#include "platform/dom/verdict.h"
#include "platform/files/text_encoding.h"

#include <optional>

namespace document {

// What is to be reported of a text: the fault of its markup, or one of its encoding that comes before it.
std::optional<dom::ParseError> firstFault(const QByteArray &utf8, const files::TextEncoding &encoding,
                                          std::optional<dom::ParseError> ofMarkup);

} // namespace document
