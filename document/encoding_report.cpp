#include "document/encoding_report.h"

#include "platform/dom/text_place.h"
#include "platform/files/encoding_fault.h"

namespace document {

namespace {

constexpr int faultyEncoding = 81; // as the parser counts what it has against an encoding

} // namespace

std::optional<dom::ParseError> firstFault(const QByteArray &utf8, const files::TextEncoding &encoding,
                                          std::optional<dom::ParseError> ofMarkup)
{
    const auto fault = files::encodingFault(utf8, encoding);
    if (!fault || (ofMarkup && ofMarkup->offset < fault->offset))
        return ofMarkup;
    const dom::TextPlace place = dom::placeOf(utf8, fault->offset);
    dom::ParseError error;
    error.code = faultyEncoding;
    error.reason = fault->reason + QLatin1Char('\n');
    error.line = place.line;
    error.position = place.position;
    error.sourceText = place.sourceText;
    error.offset = fault->offset;
    return error;
}

} // namespace document
