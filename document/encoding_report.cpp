#include "document/encoding_report.h"

#include "platform/dom/text_place.h"
#include "platform/files/encoding_fault.h"

namespace document {

namespace {

constexpr int faultyEncoding = 81; // as the parser counts what it has against an encoding

// Bytes that are no characters have no picture outside the editor.
QString withoutBytes(const QString &line, char32_t block)
{
    QList<uint> characters;
    for (const uint c : line.toUcs4())
        characters.append(block != 0 && (c & ~0xFFU) == block ? uint(QChar::ReplacementCharacter) : c);
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(characters.constData()), characters.size());
}

} // namespace

std::optional<dom::ParseError> firstFault(const QByteArray &utf8, const files::TextEncoding &encoding,
                                          std::optional<dom::ParseError> ofMarkup)
{
    if (ofMarkup && ofMarkup->stopped)
        return ofMarkup; // nobody waited to know more
    const auto fault = files::encodingFault(utf8, encoding);
    if (!fault || (ofMarkup && ofMarkup->offset < fault->offset)) {
        if (ofMarkup)
            ofMarkup->sourceText = withoutBytes(ofMarkup->sourceText, encoding.block);
        return ofMarkup;
    }
    const dom::TextPlace place = dom::placeOf(utf8, fault->offset);
    dom::ParseError error;
    error.code = faultyEncoding;
    error.reason = fault->reason + QLatin1Char('\n');
    error.line = place.line;
    error.position = place.position;
    error.sourceText = withoutBytes(place.sourceText, encoding.block);
    error.offset = fault->offset;
    return error;
}

} // namespace document
