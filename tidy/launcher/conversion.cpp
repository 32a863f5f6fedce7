#include "tidy/launcher/conversion.h"

#include "tidy/launcher/html_tags.h"
#include "tidy/launcher/references.h"
#include "tidy/launcher/well_formed.h"
#include "tidy/launcher/xml_pieces.h"

#include <algorithm>

namespace launcher {

namespace {

bool isBlank(const QByteArray &text) { return std::all_of(text.begin(), text.end(), isXmlBlank); }

} // namespace

Conversion::Conversion(const QByteArray &input, const RunOptions &options) : input_(input), options_(options)
{
    if (!options.inputXml)
        return;
    words_ = wordsOf(input, options.keepsComments);
    shield_.emplace(input,
                    Shielding{.wellFormed = words_.has_value(),
                              .escapesSections = !options.keepsSections,
                              .dropsComments = !options.keepsComments,
                              .plainTypography = !options.keepsWords});
}

platform::Result<QByteArray> Conversion::finished(const QByteArray &tidied) const
{
    if (isBlank(tidied) && !isBlank(input_))
        return platform::Failure{QStringLiteral("Tidy left nothing of the text")};
    QByteArray text = shield_ ? shield_->restored(tidied, options_.lineEnd) : tidied;
    if (options_.output == Output::Xml || options_.output == Output::Xhtml)
        text = wellFormed(text);
    if (isDamaged(text))
        return platform::Failure{QStringLiteral("Tidy would have damaged the text, which is well-formed")};
    if (options_.inputXml && !options_.writesXml())
        text = withHtmlTags(text);
    return withReferences(text, options_.alphabet, options_.namedReferences);
}

QByteArray Conversion::told(const QByteArray &report) const
{
    return shield_ ? shield_->restored(report, " ") : report;
}

bool Conversion::isDamaged(const QByteArray &text) const
{
    if (!words_)
        return false;
    const std::optional<XmlWords> left = wordsOf(text, options_.keepsComments);
    return !left || (options_.keepsWords && *left != *words_);
}

} // namespace launcher
