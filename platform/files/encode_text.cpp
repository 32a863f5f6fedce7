// Text to bytes: as it declares, else as it came.
#include "platform/files/encode_text.h"

#include "platform/files/code_points.h"
#include "platform/files/declaration.h"
#include "platform/files/markup_context.h"
#include "platform/files/narrow_codec.h"
#include "platform/files/wide_codec.h"

namespace files {

namespace {

// The encoding that the text declares, if it is one that can be written here.
const EncodingEntry *writableDeclaration(const QByteArray &utf8)
{
    const EncodingEntry *entry = declaredEntry(declarationIn(utf8));
    if (entry && entry->codec == Codec::System && !narrowEncoder(*entry))
        return nullptr;
    return entry;
}

bool sameFamily(Codec a, Codec b)
{
    return a == b || (isUtf16(a) && isUtf16(b)) || (isUtf32(a) && isUtf32(b));
}

struct Target
{
    const EncodingEntry *entry;
    Codec codec; // with its byte order settled
    bool mark;
};

Codec inByteOrder(Codec codec, Codec cameWith)
{
    if (codec == Codec::Utf16)
        return cameWith == Codec::Utf16BE ? Codec::Utf16BE : Codec::Utf16LE;
    if (codec == Codec::Utf32)
        return cameWith == Codec::Utf32BE ? Codec::Utf32BE : Codec::Utf32LE;
    return codec;
}

// A mark is kept where the file had one of the same kind; where the byte order is left open it is needed.
Target targetFor(const QByteArray &utf8, const TextEncoding &cameWith)
{
    const EncodingEntry *came = findEncoding(cameWith.name);
    if (!came)
        came = &entryOf(Codec::Utf8);
    const EncodingEntry *entry = writableDeclaration(utf8);
    if (!entry)
        entry = came;
    const bool unicode = entry->codec == Codec::Utf8 || isWide(entry->codec);
    const bool kept = cameWith.byteOrderMark && unicode && sameFamily(entry->codec, came->codec);
    const bool needed = entry->codec == Codec::Utf16 || entry->codec == Codec::Utf32;
    return {entry, inByteOrder(entry->codec, came->codec), kept || needed};
}

QByteArray markOf(Codec codec)
{
    const QByteArray mark("\xEF\xBB\xBF");
    return codec == Codec::Utf8 ? mark : encodeWide(mark, codec);
}

// Lines as a person counts them: ended by LF, CR LF or CR.
qsizetype lineOf(QByteArrayView utf8, qsizetype at)
{
    qsizetype line = 1;
    for (qsizetype i = 0; i < at; ++i)
        line += utf8[i] == '\n' || (utf8[i] == '\r' && (i + 1 >= utf8.size() || utf8[i + 1] != '\n'));
    return line;
}

platform::Failure lacking(QByteArrayView utf8, qsizetype at, const EncodingEntry &entry)
{
    const CodePoint c = codePointAt(utf8, at);
    const QString number = QString::number(uint(c.value), 16).toUpper().rightJustified(4, QLatin1Char('0'));
    return {QStringLiteral("The character U+%1 in line %2 cannot be written in %3.")
                .arg(number)
                .arg(lineOf(utf8, at))
                .arg(QString::fromLatin1(entry.name))};
}

// The tag characters (U+E0000 to U+E007F): GB18030 alone has them, and the system's library drops them
// without a word for the others.
qsizetype nextTagCharacter(QByteArrayView utf8, qsizetype from)
{
    for (qsizetype at = utf8.indexOf("\xF3\xA0", from); at >= 0; at = utf8.indexOf("\xF3\xA0", at + 2)) {
        const uchar third = at + 2 < utf8.size() ? uchar(utf8[at + 2]) : 0;
        if (third == 0x80 || third == 0x81)
            return at;
    }
    return utf8.size();
}

platform::Result<QByteArray> encodeNarrow(QByteArrayView utf8, const EncodingEntry &entry,
                                          QByteArrayView lineEnd)
{
    const std::unique_ptr<NarrowEncoder> encoder = narrowEncoder(entry);
    if (!encoder)
        return platform::Failure{
            QStringLiteral("This system cannot write %1.").arg(QString::fromLatin1(entry.name))};
    const bool hasTags = QByteArrayView(entry.name) == "GB18030";
    qsizetype tag = hasTags ? utf8.size() : nextTagCharacter(utf8, 0);
    MarkupContext context(utf8);
    QByteArray bytes;
    qsizetype at = 0;
    for (;;) {
        at += encoder->encode(utf8.sliced(at, tag - at), bytes);
        if (at == utf8.size())
            break;
        if (!context.allowsReferenceAt(at))
            return lacking(utf8, at, entry);
        const CodePoint c = codePointAt(utf8, at);
        encoder->encode("&#x" + QByteArray::number(uint(c.value), 16).toUpper() + ';', bytes);
        at += c.size;
        if (tag < at)
            tag = nextTagCharacter(utf8, at);
    }
    encoder->encode(lineEnd, bytes);
    encoder->finish(bytes);
    return bytes;
}

} // namespace

QByteArray declaredEncoding(const QByteArray &utf8)
{
    const EncodingEntry *entry = writableDeclaration(utf8);
    return entry ? QByteArray(entry->name) : QByteArray();
}

platform::Result<EncodedPieces> encodePieces(const QByteArray &utf8, const TextEncoding &cameWith,
                                             QByteArrayView lineEnd)
{
    const Target target = targetFor(utf8, cameWith);
    const QByteArray mark = target.mark ? markOf(target.codec) : QByteArray();
    if (target.codec == Codec::Utf8)
        return EncodedPieces{mark, utf8, lineEnd.toByteArray()};
    if (isWide(target.codec))
        return EncodedPieces{mark, encodeWide(utf8, target.codec), encodeWide(lineEnd, target.codec)};
    platform::Result<QByteArray> bytes = encodeNarrow(utf8, *target.entry, lineEnd);
    if (!bytes)
        return platform::Failure{bytes.reason()};
    return EncodedPieces{{}, std::move(*bytes), {}};
}

platform::Result<QByteArray> encodeText(const QByteArray &utf8, const TextEncoding &cameWith)
{
    platform::Result<EncodedPieces> pieces = encodePieces(utf8, cameWith, {});
    if (!pieces)
        return platform::Failure{pieces.reason()};
    return pieces->mark.isEmpty() ? pieces->body : pieces->mark + pieces->body;
}

} // namespace files
