// Bytes to text: a byte order mark or the zero bytes of wide characters decide first, then what the text
// declares as far as the bytes bear it out, then what the bytes can be.
#include "platform/files/declaration.h"
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

void addNote(DecodedText &text, const QString &sentence)
{
    text.note += (text.note.isEmpty() ? QString() : QStringLiteral(" ")) + sentence;
}

QString nameOf(const EncodingEntry &entry) { return QString::fromLatin1(entry.name); }

// What the user is told when a file is not what it says it is.
QString disagreement(const Declaration &declaration, const EncodingEntry *declared, const TextEncoding &read)
{
    const QString name = QString::fromLatin1(read.name);
    if (!declared) {
        return QStringLiteral("The encoding %1 that the file declares is not known here; it was read as %2.")
            .arg(quoted(declaration.name), name);
    }
    return QStringLiteral("The file declares %1 but is not in it; it was read as %2 and will be saved as %1.")
        .arg(nameOf(*declared), name);
}

bool agrees(const EncodingEntry *declared, Codec found)
{
    if (!declared)
        return false;
    return declared->codec == found || (declared->codec == Codec::Utf16 && isUtf16(found))
        || (declared->codec == Codec::Utf32 && isUtf32(found));
}

// A text whose encoding its first bytes settled is still held against what it declares.
void noteDeclaration(DecodedText &text, Codec found)
{
    const Declaration declaration = declarationIn(text.utf8);
    const EncodingEntry *declared = declaredEntry(declaration);
    const bool silent = declaration.name.isEmpty() || (!declared && declaration.by == DeclaredBy::Html);
    if (!silent && !agrees(declared, found))
        addNote(text, disagreement(declaration, declared, text.encoding));
}

std::optional<DecodedText> decodeSigned(QByteArray &bytes, const Signature &signature)
{
    const qsizetype skipped = signature.mark ? signature.bytes.size() : 0;
    DecodedText text;
    text.encoding = {entryOf(signature.codec).name, signature.mark};
    if (signature.codec == Codec::Utf8) {
        if (!bytes.isValidUtf8())
            return std::nullopt;
        text.utf8 = std::move(bytes);
        text.utf8.remove(0, skipped);
    } else {
        WideText wide = decodeWide(QByteArrayView(bytes).sliced(skipped), signature.codec);
        if (wide.replaced > 0 && isUtf32(signature.codec))
            return std::nullopt;
        text.utf8 = std::move(wide.utf8);
        if (wide.replaced > 0) {
            addNote(text,
                    QStringLiteral("%1 places of the file are no characters and were replaced by U+FFFD; "
                                   "saving does not bring them back.")
                        .arg(wide.replaced));
        }
    }
    noteDeclaration(text, signature.codec);
    return text;
}

// What the bytes can be, whatever they say: UTF-8 when they are valid, else Windows-1252, which takes any.
DecodedText decodeByBytes(QByteArray bytes)
{
    DecodedText text;
    if (bytes.isValidUtf8()) {
        text.utf8 = std::move(bytes);
        return text;
    }
    text.utf8 = decodeWindows1252(bytes);
    text.encoding.name = entryOf(Codec::Windows1252).name;
    return text;
}

// Some encodings write one text in several ways, and only one of them is written back.
bool writesTheSame(const QByteArray &utf8, const EncodingEntry &entry, const QByteArray &bytes)
{
    const std::unique_ptr<NarrowEncoder> encoder = narrowEncoder(entry);
    QByteArray again;
    if (encoder->encode(utf8, again) != utf8.size())
        return false;
    encoder->finish(again);
    return again == bytes;
}

std::optional<DecodedText> decodeAsDeclared(QByteArray &bytes, const EncodingEntry &entry)
{
    DecodedText text;
    text.encoding.name = entry.name;
    if (isWide(entry.codec))
        return std::nullopt;
    if (entry.codec == Codec::Utf8) {
        if (!bytes.isValidUtf8())
            return std::nullopt;
        text.utf8 = std::move(bytes);
        return text;
    }
    std::optional<QByteArray> utf8 = decodeNarrow(bytes, entry);
    if (!utf8)
        return std::nullopt;
    if (entry.codec == Codec::System && !writesTheSame(*utf8, entry, bytes)) {
        addNote(text,
                QStringLiteral(
                    "The file uses %1 in a way of its own; saving writes the same text in other bytes.")
                    .arg(nameOf(entry)));
    }
    text.utf8 = std::move(*utf8);
    return text;
}

} // namespace

DecodedText decodeText(QByteArray bytes)
{
    for (const Signature &signature : signatures) {
        if (!bytes.startsWith(signature.bytes))
            continue;
        if (std::optional<DecodedText> text = decodeSigned(bytes, signature))
            return *std::move(text);
    }
    const Declaration declaration = declarationIn(bytes);
    const EncodingEntry *declared = declaredEntry(declaration);
    if (declared) {
        if (std::optional<DecodedText> text = decodeAsDeclared(bytes, *declared))
            return *std::move(text);
    }
    const bool markup = looksLikeMarkup(bytes);
    DecodedText text = decodeByBytes(std::move(bytes));
    if (declared || (declaration.by == DeclaredBy::Xml && !declaration.name.isEmpty()))
        addNote(text, disagreement(declaration, declared, text.encoding));
    else if (markup && text.encoding.name != entryOf(Codec::Utf8).name)
        addNote(text, QStringLiteral("The file is not valid UTF-8; it was read as Windows-1252."));
    return text;
}

QByteArray decodePlainText(QByteArray bytes)
{
    for (const Signature &signature : signatures) {
        if (!signature.mark || !bytes.startsWith(signature.bytes))
            continue;
        if (std::optional<DecodedText> text = decodeSigned(bytes, signature))
            return std::move(text->utf8);
    }
    return decodeByBytes(std::move(bytes)).utf8;
}

} // namespace files
