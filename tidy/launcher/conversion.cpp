#include "tidy/launcher/conversion.h"

#include "tidy/launcher/blank_repair.h"
#include "tidy/launcher/html_tags.h"
#include "tidy/launcher/open_asides.h"
#include "tidy/launcher/references.h"
#include "tidy/launcher/well_formed.h"
#include "tidy/launcher/xml_pieces.h"

#include <algorithm>
#include <utility>

namespace launcher {

namespace {

bool isBlank(const QByteArray &text) { return std::all_of(text.begin(), text.end(), isXmlBlank); }

bool beginsXhtml(const QByteArray &text)
{
    for (Piece piece{}; piece.end < text.size();) {
        piece = pieceAt(text, piece.end);
        const QByteArrayView tag = QByteArrayView(text).sliced(piece.begin, piece.size());
        if (piece.kind == PieceKind::StartTag || piece.kind == PieceKind::EmptyTag)
            return tagName(tag) == "html" && tag.contains("http://www.w3.org/1999/xhtml");
    }
    return false;
}

// It is the exchange's own.
QByteArrayView withoutLastLineEnd(QByteArrayView text)
{
    return text.endsWith("\r\n") ? text.chopped(2) : text;
}

// Tidy respells the declaration of the encoding.
QByteArray withDeclarationOf(const QByteArray &input, QByteArray text)
{
    constexpr QByteArrayView begin = "<?xml ";
    const qsizetype had = input.indexOf("?>");
    const qsizetype has = text.indexOf("?>");
    if (input.startsWith(begin) && text.startsWith(begin) && had >= 0 && has >= 0)
        text.replace(0, has, input.first(had));
    return text;
}

// The name of the encoding in the declaration that a text begins with: where it stands.
std::pair<qsizetype, qsizetype> declaredEncoding(const QByteArray &text)
{
    const qsizetype end = text.startsWith("<?xml ") ? text.indexOf("?>") : -1;
    const qsizetype at = end < 0 ? -1 : text.first(end).indexOf("encoding=");
    if (at < 0)
        return {0, 0};
    const qsizetype begin = at + qsizetype(sizeof("encoding=\"")) - 1;
    const qsizetype close = text.indexOf(text.at(begin - 1), begin);
    return close < 0 || close > end ? std::pair<qsizetype, qsizetype>{0, 0} : std::pair{begin, close - begin};
}

// Tidy writes the name of an encoding in lower case; where it kept the encoding it keeps the spelling, too.
QByteArray withEncodingOf(const QByteArray &input, QByteArray text)
{
    const auto [hadAt, hadLength] = declaredEncoding(input);
    const auto [hasAt, hasLength] = declaredEncoding(text);
    const QByteArray had = input.mid(hadAt, hadLength);
    if (hadLength > 0 && text.mid(hasAt, hasLength).compare(had, Qt::CaseInsensitive) == 0)
        text.replace(hasAt, hasLength, had);
    return text;
}

} // namespace

Conversion::Conversion(const QByteArray &input, const RunOptions &options) : input_(input), options_(options)
{
    const bool xhtml = !options.inputXml && beginsXhtml(input);
    if (options.inputXml || xhtml)
        words_ = wordsOf(input, options.keepsComments);
    if (!options.inputXml) {
        page_.emplace(input, HtmlShield::Kind{xhtml && words_.has_value(), options.writesXml()});
        return;
    }
    if (!words_)
        mended_ = closeAsides(input_);
    xml_.emplace(input_,
                 Shielding{.wellFormed = words_.has_value(),
                           .escapesSections = !options.keepsSections,
                           .dropsComments = !options.keepsComments,
                           .plainTypography = !options.keepsWords});
}

platform::Result<QByteArray> Conversion::finished(const QByteArray &tidied) const
{
    if (isBlank(tidied) && !isBlank(input_))
        return platform::Failure{QStringLiteral("Tidy left nothing of the text")};
    platform::Result<QByteArray> text = xml_ ? finishedXml(tidied) : finishedPage(tidied);
    if (!text)
        return text;
    return withReferences(withEncodingOf(input_, *text), options_.alphabet, options_.namedReferences);
}

platform::Result<QByteArray> Conversion::finishedXml(const QByteArray &tidied) const
{
    QByteArray text = xml_->restored(tidied, options_.lineEnd);
    if (!words_ && options_.keepsWords) {
        const ReadText source{withoutLastLineEnd(input_), Dialect::Xml};
        text = withRepairedBlanks(source, {text, Dialect::Xml}, options_.lineEnd);
        const QString differs = differenceInReading(source, {text, Dialect::Xml});
        if (!differs.isEmpty())
            return platform::Failure{QStringLiteral("Tidy would have changed the text: ") + differs};
    }
    if (options_.writesXml() || options_.output == Output::Html)
        text = wellFormed(text);
    if (words_) {
        text = withDeclarationOf(input_, text);
        const std::optional<XmlWords> left = wordsOf(text, options_.keepsComments);
        if (!left || (options_.keepsWords && *left != *words_))
            return platform::Failure{
                QStringLiteral("Tidy would have damaged the text, which is well-formed")};
    }
    return options_.writesXml() ? text : withHtmlTags(text);
}

platform::Result<QByteArray> Conversion::finishedPage(const QByteArray &tidied) const
{
    const ReadText source{page_->shielded(), Dialect::Html};
    const ReadText made{tidied, options_.writesXml() ? Dialect::Xhtml : Dialect::Html};
    QByteArray text = withRepairedBlanks(source, made, options_.lineEnd);
    if (options_.keepsPageWords) {
        const QString differs = differenceInReading(source, {text, made.dialect});
        if (!differs.isEmpty())
            return platform::Failure{QStringLiteral("Tidy would have changed what is read: ") + differs};
        if (!page_->isWholeIn(text))
            return platform::Failure{
                QStringLiteral("Tidy would have left out a script, a style sheet, a drawing or a formula")};
    }
    text = page_->restored(text, options_.lineEnd);
    return options_.writesXml() ? wellFormed(text) : text;
}

QByteArray Conversion::told(const QByteArray &report) const
{
    return mended_ + (xml_ ? xml_->restored(report, " ") : page_->told(report));
}

} // namespace launcher
