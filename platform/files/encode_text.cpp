// Text to bytes: as it came, or as it declares since.
#include "platform/files/encode_text.h"

#include "platform/files/code_points.h"
#include "platform/files/declaration.h"
#include "platform/files/markup_context.h"
#include "platform/files/narrow_codec.h"
#include "platform/files/outlook.h"
#include "platform/files/raw_bytes.h"
#include "platform/files/spelling.h"
#include "platform/files/wide_codec.h"

namespace files {

namespace {

using Bytes = platform::Result<QByteArray>;

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

QString nameOf(const EncodingEntry &entry) { return QString::fromLatin1(entry.name); }

platform::Failure lacking(QByteArrayView utf8, qsizetype at, const EncodingEntry &entry)
{
    const CodePoint c = codePointAt(utf8, at);
    const QString number = QString::number(uint(c.value), 16).toUpper().rightJustified(4, QLatin1Char('0'));
    return {QStringLiteral("The character U+%1 in line %2 cannot be written in %3.")
                .arg(number)
                .arg(lineOf(utf8, at))
                .arg(nameOf(entry))};
}

platform::Failure stray(QByteArrayView utf8, qsizetype at, const EncodingEntry &entry)
{
    const QString number = QString::number(uchar(RawBytes::byteAt(utf8, at)), 16).toUpper();
    return {QStringLiteral("The byte %1 in line %2 is no character and cannot be written in %3; replace it "
                           "first.")
                .arg(number.rightJustified(2, QLatin1Char('0')))
                .arg(lineOf(utf8, at))
                .arg(nameOf(entry))};
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

// A stretch of text between bytes that stand for themselves; what the encoding lacks is written as
// references.
class NarrowWriter
{
public:
    NarrowWriter(QByteArrayView utf8, const EncodingEntry &entry, NarrowEncoder &encoder)
        : utf8_(utf8), entry_(entry), encoder_(encoder), context_(utf8),
          hasTags_(QByteArrayView(entry.name) == "GB18030")
    { }

    // Appends what stands from one place to another; stretches come in their order.
    platform::Result<void> write(qsizetype at, qsizetype end, QByteArray &out)
    {
        qsizetype tag = tagFrom(at, end);
        for (;;) {
            at += encoder_.encode(utf8_.sliced(at, tag - at), out);
            if (at == end)
                return {};
            if (!context_.allowsReferenceAt(at))
                return lacking(utf8_, at, entry_);
            const CodePoint c = codePointAt(utf8_, at);
            encoder_.encode("&#x" + QByteArray::number(uint(c.value), 16).toUpper() + ';', out);
            at += c.size;
            if (tag < at)
                tag = tagFrom(at, end);
        }
    }

private:
    qsizetype tagFrom(qsizetype at, qsizetype end) const
    {
        return hasTags_ ? end : at + nextTagCharacter(utf8_.sliced(at, end - at), 0);
    }

    QByteArrayView utf8_;
    const EncodingEntry &entry_;
    NarrowEncoder &encoder_;
    MarkupContext context_;
    bool hasTags_;
};

Bytes encodeNarrow(QByteArrayView utf8, const EncodingEntry &entry, const RawBytes &raw,
                   const Respelling &former, QByteArrayView end)
{
    const std::unique_ptr<NarrowEncoder> encoder = narrowEncoder(entry);
    if (!encoder)
        return platform::Failure{QStringLiteral("This system cannot write %1.").arg(nameOf(entry))};
    NarrowWriter writer(utf8, entry, *encoder);
    QByteArray bytes;
    for (qsizetype at = 0; at < utf8.size();) {
        const std::optional<Respelling::Piece> piece = former.next(at);
        const qsizetype stop = qMin(raw.next(utf8, at), piece ? piece->at : utf8.size());
        if (const auto written = writer.write(at, stop, bytes); !written)
            return platform::Failure{written.reason()};
        at = stop;
        if (piece && piece->at == stop) {
            encoder->finish(bytes);
            bytes += piece->bytes;
            at += piece->size;
        } else {
            at = raw.take(utf8, stop, bytes);
        }
    }
    encoder->encode(end, bytes);
    encoder->finish(bytes);
    return bytes;
}

// Bytes that stand for themselves must not put the units behind them out of step.
Bytes encodeWideAround(QByteArrayView utf8, const EncodingEntry &entry, const RawBytes &raw, bool lineEnd)
{
    const qsizetype unit = isUtf16(entry.codec) ? 2 : 4;
    QByteArray bytes;
    for (qsizetype at = 0; at < utf8.size();) {
        const qsizetype stop = raw.next(utf8, at);
        bytes += encodeWide(utf8.sliced(at, stop - at), entry.codec);
        at = raw.take(utf8, stop, bytes);
        if (bytes.size() % unit != 0 && (at < utf8.size() || lineEnd))
            return stray(utf8, stop, entry);
    }
    return bytes;
}

QByteArray encodeUtf8Around(QByteArrayView utf8, const RawBytes &raw)
{
    QByteArray bytes;
    for (qsizetype at = 0; at < utf8.size();) {
        const qsizetype stop = raw.next(utf8, at);
        bytes += utf8.sliced(at, stop - at);
        at = raw.take(utf8, stop, bytes);
    }
    return bytes;
}

Bytes encodeBody(const QByteArray &utf8, const EncodingEntry &entry, const RawBytes &raw,
                 const Respelling &former, QByteArrayView end)
{
    const bool anyRaw = raw.next(utf8, 0) < utf8.size();
    if (entry.codec == Codec::Utf8)
        return anyRaw ? encodeUtf8Around(utf8, raw) : utf8;
    if (isWide(entry.codec))
        return anyRaw ? encodeWideAround(utf8, entry, raw, !end.isEmpty()) : encodeWide(utf8, entry.codec);
    return encodeNarrow(utf8, entry, raw, former, end);
}

// How a text will stand in its bytes: what it came with, as far as that is still so.
TextEncoding encodingOf(const QByteArray &utf8, const Outlook &outlook, const TextEncoding &cameWith)
{
    TextEncoding encoding;
    encoding.name = outlook.name;
    encoding.byteOrderMark = outlook.byteOrderMark;
    encoding.declared = declarationIn(utf8);
    encoding.block = cameWith.block; // undo may bring such characters back
    if (outlook.asCame)
        encoding.spelling = cameWith.spelling;
    return encoding;
}

QString respellingNote(const EncodingEntry &entry)
{
    return QStringLiteral(
               "The file used %1 in a way of its own; where it was edited it is written in the usual "
               "bytes.")
        .arg(nameOf(entry));
}

} // namespace

QByteArray declaredEncoding(const QByteArray &utf8)
{
    const EncodingEntry *entry = writableDeclaration(declarationIn(utf8));
    return entry ? QByteArray(entry->name) : QByteArray();
}

platform::Result<EncodedPieces> encodePieces(const QByteArray &utf8, const TextEncoding &cameWith,
                                             QByteArrayView lineEnd)
{
    const auto outlook = outlookOf(utf8, cameWith);
    if (!outlook)
        return platform::Failure{outlook.reason()};
    EncodedPieces pieces;
    pieces.encoding = encodingOf(utf8, *outlook, cameWith);
    pieces.note = outlook->note;
    const EncodingEntry &entry = *findEncoding(outlook->name);
    const bool spelt = !pieces.encoding.spelling.text.isEmpty();
    const QByteArray whole = spelt && !lineEnd.isEmpty() ? utf8 + lineEnd.toByteArray() : utf8;
    if (spelt && whole == pieces.encoding.spelling.text) {
        pieces.body = pieces.encoding.spelling.bytes;
        return pieces;
    }
    const RawBytes raw(cameWith.block);
    if (const qsizetype at = raw.next(utf8, 0); !outlook->asCame && at < utf8.size())
        return stray(utf8, at, entry);
    const QByteArrayView end = spelt ? QByteArrayView() : lineEnd;
    const Respelling former(pieces.encoding, whole, entry);
    Bytes body = encodeBody(whole, entry, raw, former, end);
    if (!body)
        return platform::Failure{body.reason()};
    pieces.body = *std::move(body);
    if (outlook->byteOrderMark)
        pieces.mark = markOf(entry.codec);
    if (entry.codec == Codec::Utf8 || isWide(entry.codec))
        pieces.lineEnd = isWide(entry.codec) ? encodeWide(end, entry.codec) : end.toByteArray();
    if (spelt) {
        pieces.note = former.givesUp() ? respellingNote(entry) : QString();
        pieces.encoding.spelling = {};
        if (former.any())
            pieces.encoding.spelling = {whole, pieces.mark + pieces.body + pieces.lineEnd};
    }
    return pieces;
}

platform::Result<QByteArray> encodeText(const QByteArray &utf8, const TextEncoding &cameWith)
{
    platform::Result<EncodedPieces> pieces = encodePieces(utf8, cameWith, {});
    if (!pieces)
        return platform::Failure{pieces.reason()};
    return pieces->mark.isEmpty() ? pieces->body : pieces->mark + pieces->body;
}

} // namespace files
