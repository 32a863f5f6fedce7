// Bytes to text: a byte order mark or the zero bytes of wide characters decide first, then what the text
// declares as far as the bytes bear it out, then what the bytes can be.
#include "platform/files/declaration.h"
#include "platform/files/faulty_text.h"
#include "platform/files/narrow_codec.h"
#include "platform/files/text_encoding.h"
#include "platform/files/wide_codec.h"

#include <iterator>

namespace files {

namespace {

struct Signature
{
    QByteArrayView bytes;
    Codec codec;
    bool mark; // a byte order mark; else the first characters of markup
};

// UTF-32 before UTF-16: its mark begins with the other's.
constexpr Signature signatures[] = {
    {{"\xFF\xFE\0\0", 4}, Codec::Utf32LE, true}, {{"\0\0\xFE\xFF", 4}, Codec::Utf32BE, true},
    {{"\xEF\xBB\xBF", 3}, Codec::Utf8, true},    {{"\xFF\xFE", 2}, Codec::Utf16LE, true},
    {{"\xFE\xFF", 2}, Codec::Utf16BE, true},     {{"<\0\0\0", 4}, Codec::Utf32LE, false},
    {{"\0\0\0<", 4}, Codec::Utf32BE, false},     {{"<\0?\0", 4}, Codec::Utf16LE, false},
    {{"\0<\0?", 4}, Codec::Utf16BE, false},
};

QString quoted(const QByteArray &name)
{
    return QLatin1Char('"') + QString::fromLatin1(name.left(40)) + QLatin1Char('"');
}

QString nameOf(const EncodingEntry &entry) { return QString::fromLatin1(entry.name); }

bool isNarrow(const EncodingEntry &entry) { return !isWide(entry.codec) && entry.codec != Codec::Utf8; }

// Whether bytes speak for an encoding, though not all of them are of it: of a text in another one hardly any
// are.
bool bearOut(const FaultyText &text) { return text.faults <= text.good; }

DecodedText made(FaultyText &&text, const EncodingEntry &entry, bool mark)
{
    DecodedText decoded;
    decoded.encoding.name = entry.name;
    decoded.encoding.byteOrderMark = mark;
    decoded.encoding.block = text.block;
    decoded.utf8 = std::move(text.utf8);
    if (text.bad > 0) {
        decoded.note
            = QStringLiteral("Bytes of the file that are no characters in %1: %2. Those that stay are "
                             "saved as they were.")
                  .arg(nameOf(entry))
                  .arg(text.bad);
    }
    return decoded;
}

// All of the bytes are of the encoding, or nothing.
std::optional<DecodedText> decodeWhole(QByteArray &bytes, qsizetype skipped, const EncodingEntry &entry)
{
    DecodedText text;
    text.encoding.name = entry.name;
    text.encoding.byteOrderMark = skipped > 0;
    if (entry.codec == Codec::Utf8) {
        if (!bytes.isValidUtf8())
            return std::nullopt;
        text.utf8 = std::move(bytes); // which is not copied
        text.utf8.remove(0, skipped);
        return text;
    }
    if (isWide(entry.codec)) {
        WideText wide = decodeWide(QByteArrayView(bytes).sliced(skipped), entry.codec);
        text.utf8 = std::move(wide.utf8);
        return wide.replaced == 0 ? std::optional(std::move(text)) : std::nullopt;
    }
    std::optional<QByteArray> utf8 = decodeNarrow(bytes, entry);
    if (!utf8)
        return std::nullopt;
    text.utf8 = *std::move(utf8);
    return text;
}

std::optional<DecodedText> decodeSigned(QByteArray &bytes, const Signature &signature)
{
    const qsizetype skipped = signature.mark ? signature.bytes.size() : 0;
    const EncodingEntry &entry = entryOf(signature.codec);
    if (std::optional<DecodedText> text = decodeWhole(bytes, skipped, entry))
        return text;
    std::optional<FaultyText> faulty = decodeFaulty(QByteArrayView(bytes).sliced(skipped), entry);
    if (!faulty || (isUtf32(signature.codec) && !bearOut(*faulty)))
        return std::nullopt;
    return made(*std::move(faulty), entry, signature.mark);
}

DecodedText decodeAsWindows1252(const QByteArray &bytes)
{
    DecodedText text;
    text.utf8 = decodeWindows1252(bytes);
    text.encoding.name = entryOf(Codec::Windows1252).name;
    return text;
}

// What the bytes can be, whatever they say: UTF-8 when they are valid, else what they were said to be or
// UTF-8 with some faults, else Windows-1252, which takes any.
DecodedText decodeByBytes(QByteArray &bytes, const EncodingEntry *declared)
{
    const EncodingEntry &utf8 = entryOf(Codec::Utf8);
    if (std::optional<DecodedText> text = decodeWhole(bytes, 0, utf8))
        return *std::move(text);
    const EncodingEntry &likely = declared && isNarrow(*declared) ? *declared : utf8;
    std::optional<FaultyText> faulty = decodeFaulty(bytes, likely);
    if (faulty && bearOut(*faulty))
        return made(*std::move(faulty), likely, false);
    return decodeAsWindows1252(bytes);
}

DecodedText decodeUnsigned(QByteArray &bytes)
{
    const EncodingEntry *declared = declaredEntry(declarationIn(bytes));
    if (declared && !isWide(declared->codec)) {
        if (std::optional<DecodedText> text = decodeWhole(bytes, 0, *declared))
            return *std::move(text);
    }
    return decodeByBytes(bytes, declared);
}

DecodedText decodeAs(QByteArray &bytes, const EncodingEntry &entry)
{
    for (const Signature &signature : signatures) {
        if (!signature.mark || signature.codec != entry.codec || !bytes.startsWith(signature.bytes))
            continue;
        if (std::optional<DecodedText> text = decodeSigned(bytes, signature))
            return *std::move(text);
    }
    if (std::optional<DecodedText> text = decodeWhole(bytes, 0, entry))
        return *std::move(text);
    std::optional<FaultyText> faulty = decodeFaulty(bytes, entry);
    return faulty ? made(*std::move(faulty), entry, false) : decodeAsWindows1252(bytes);
}

DecodedText decodeBySigns(QByteArray &bytes)
{
    for (const Signature &signature : signatures) {
        if (!bytes.startsWith(signature.bytes))
            continue;
        if (std::optional<DecodedText> text = decodeSigned(bytes, signature))
            return *std::move(text);
    }
    return decodeUnsigned(bytes);
}

// What the user is told when a file is not what it says it is.
QString disagreement(const DecodedText &text)
{
    const Declaration &declaration = text.encoding.declared;
    const EncodingEntry *declared = declaredEntry(declaration);
    const EncodingEntry *read = findEncoding(text.encoding.name);
    const QString name = QString::fromLatin1(text.encoding.name);
    if (!declaration.names()) {
        return isNarrow(*read) && looksLikeMarkup(text.utf8)
            ? QStringLiteral("The file is not valid UTF-8; it was read as %1.").arg(name)
            : QString();
    }
    if (!declared && declaration.by == DeclaredBy::Xml) {
        return QStringLiteral("The encoding %1 that the file declares is not known here; it was read as %2.")
            .arg(quoted(declaration.name), name);
    }
    const bool markWins = declaration.by == DeclaredBy::Html && text.encoding.byteOrderMark;
    if (!declared || markWins || standsFor(*declared, *read))
        return {};
    return QStringLiteral("The file declares %1 but is not in it; it was read as %2.")
        .arg(nameOf(*declared), name);
}

// Some encodings write one text in several ways, and only one of them is what it would be written in again.
void finish(DecodedText &text, const QByteArray &bytes)
{
    text.encoding.declared = declarationIn(text.utf8);
    if (text.note.isEmpty())
        text.note = disagreement(text);
    const EncodingEntry *read = findEncoding(text.encoding.name);
    if (text.encoding.block == 0 && read->codec != Codec::System)
        return;
    const auto again = encodeText(text.utf8, text.encoding);
    if (!again || *again != bytes)
        text.encoding.spelling = {text.utf8, bytes};
}

} // namespace

DecodedText decodeText(QByteArray bytes)
{
    DecodedText text = decodeBySigns(bytes); // which takes the bytes away only where they are the text
    finish(text, bytes);
    return text;
}

platform::Result<DecodedText> decodeTextAs(QByteArray bytes, const QByteArray &encoding)
{
    const EncodingEntry *entry = findEncoding(encoding);
    if (entry && (entry->codec == Codec::Utf16 || entry->codec == Codec::Utf32))
        entry = &entryOf(entry->codec == Codec::Utf16 ? Codec::Utf16LE : Codec::Utf32LE);
    if (!entry || (entry->codec == Codec::System && !systemDecoder(entry->systemName)))
        return platform::Failure{
            QStringLiteral("This system cannot read %1.").arg(QString::fromLatin1(encoding))};
    DecodedText text = decodeAs(bytes, *entry);
    finish(text, bytes);
    return text;
}

QByteArray decodePlainText(QByteArray bytes)
{
    for (const Signature &signature : signatures) {
        if (!signature.mark || !bytes.startsWith(signature.bytes))
            continue;
        if (std::optional<DecodedText> text
            = decodeWhole(bytes, signature.bytes.size(), entryOf(signature.codec)))
            return std::move(text->utf8);
    }
    if (bytes.isValidUtf8())
        return bytes;
    return decodeWindows1252(bytes);
}

} // namespace files
