#include "platform/files/encoding_fault.h"

#include "platform/files/code_points.h"
#include "platform/files/narrow_codec.h"
#include "platform/files/outlook.h"
#include "platform/files/raw_bytes.h"

#include <algorithm>

namespace files {

namespace {

QString latin1(const QByteArray &name) { return QString::fromLatin1(name); }

QString quotedName(const Declaration &declaration)
{
    return QLatin1Char('"') + QString::fromUtf8(declaration.name.left(40)) + QLatin1Char('"');
}

EncodingFault unreadableBytes(const QByteArray &utf8, qsizetype at, const TextEncoding &encoding)
{
    QByteArray bytes;
    RawBytes(encoding.block).take(utf8, at, bytes);
    const qsizetype shown = std::min(bytes.size(), qsizetype(4));
    const QString numbers = latin1(bytes.first(shown).toHex(' ').toUpper());
    const QString sentence = shown == 1 ? QStringLiteral("The byte %1 is no character in %2.")
                                        : QStringLiteral("The bytes %1 are no characters in %2.");
    return {at, sentence.arg(numbers, latin1(encoding.name)), false};
}

// The first character whose bytes in an encoding are not UTF-8; the first beyond ASCII where that cannot be
// said of a single one.
qsizetype firstNotUtf8(QByteArrayView utf8, const EncodingEntry &entry)
{
    const std::unique_ptr<NarrowEncoder> encoder = narrowEncoder(entry);
    const auto isHigh = [](char c) { return uchar(c) >= 0x80; };
    const auto *const begin = utf8.begin();
    const auto *const first = std::find_if(begin, utf8.end(), isHigh);
    for (const auto *run = first; run != utf8.end();) {
        const auto *const end = std::find_if_not(run, utf8.end(), isHigh);
        QByteArray bytes;
        if (encoder)
            encoder->encode(QByteArrayView(run, end), bytes);
        qsizetype at = run - begin;
        for (qsizetype byte = 0; byte < bytes.size();) {
            const CodePoint c = codePointAt(bytes, byte);
            if (c.value == replacementCharacter && c.size == 1)
                return std::min(at, qsizetype(end - begin));
            byte += c.size;
            for (int skipped = 0; skipped < c.size && at < end - begin; ++skipped) // one byte a character
                at += codePointAt(utf8, at).size;
        }
        run = std::find_if(end, utf8.end(), isHigh);
    }
    return first - begin;
}

EncodingFault undeclared(const QByteArray &utf8, const EncodingEntry &came)
{
    return {firstNotUtf8(utf8, came),
            QStringLiteral("This is not UTF-8, and the document names no other encoding; it is shown as %1.")
                .arg(latin1(came.name))};
}

EncodingFault unfitting(const QByteArray &utf8, const Declaration &declaration, const EncodingEntry &declared,
                        const EncodingEntry &came)
{
    const bool saysUtf8 = declared.codec == Codec::Utf8 && !isWide(came.codec);
    return {saysUtf8 ? firstNotUtf8(utf8, came) : declaration.at,
            QStringLiteral("The document declares the encoding %1, but it is not in it; it is shown as %2.")
                .arg(quotedName(declaration), latin1(came.name))};
}

EncodingFault unknown(const Declaration &declaration)
{
    return {declaration.at, QStringLiteral("The encoding %1 is not known.").arg(quotedName(declaration))};
}

// To browsers a mark counts for more than a page's meta element, and an encoding that nobody knows for
// nothing.
std::optional<EncodingFault> fitting(const QByteArray &utf8, const Declaration &declaration,
                                     const TextEncoding &encoding, const EncodingEntry &came)
{
    const EncodingEntry *declared = writableDeclaration(declaration);
    const bool html = declaration.by == DeclaredBy::Html;
    if (declaration.names() && !declared)
        return html ? std::nullopt : std::optional(unknown(declaration));
    const EncodingEntry &said = declared ? *declared : entryOf(Codec::Utf8);
    if (standsFor(said, came) || (html && encoding.byteOrderMark))
        return std::nullopt;
    if (!declared && isWide(came.codec))
        return std::nullopt;
    if (!isWide(said.codec) && !isWide(came.codec) && isAsciiOnly(utf8))
        return std::nullopt;
    return declared ? unfitting(utf8, declaration, said, came) : undeclared(utf8, came);
}

} // namespace

std::optional<EncodingFault> encodingFault(const QByteArray &utf8, const TextEncoding &cameWith)
{
    const Declaration declaration = declarationIn(utf8);
    const auto outlook = outlookOf(utf8, cameWith);
    if (!outlook)
        return unknown(declaration);
    const qsizetype raw = RawBytes(cameWith.block).next(utf8, 0);
    if (raw < utf8.size())
        return unreadableBytes(utf8, raw, cameWith);
    if (!outlook->asCame)
        return std::nullopt;
    return fitting(utf8, declaration, cameWith, *findEncoding(outlook->name));
}

} // namespace files
