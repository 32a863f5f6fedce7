#include "platform/files/wide_codec.h"

#include "platform/files/code_points.h"

#include <QtEndian>

namespace files {

namespace {

// One unit in its byte order, whatever its alignment.
template <typename Unit, bool Big>
Unit readUnit(const char *from)
{
    return Big ? qFromBigEndian<Unit>(from) : qFromLittleEndian<Unit>(from);
}

template <typename Unit, bool Big>
void writeUnit(char *&to, Unit unit)
{
    Big ? qToBigEndian(unit, to) : qToLittleEndian(unit, to);
    to += sizeof(Unit);
}

bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }
bool isNoCharacter(char32_t c) { return c > 0x10FFFF || (c >= 0xD800 && c < 0xE000); }

// Writes what stands for a unit, or for the rest of one, that is no character.
char *writeUnreadable(char *to, const char *from, qsizetype size, char32_t block)
{
    if (block == 0)
        return writeCodePoint(to, replacementCharacter);
    const RawBytes raw(block);
    for (const char *end = from + size; from < end; ++from)
        to = raw.write(to, *from);
    return to;
}

template <typename Unit, bool Big>
WideText decode(QByteArrayView bytes, char32_t block)
{
    WideText text;
    const qsizetype units = bytes.size() / qsizetype(sizeof(Unit));
    const char *from = bytes.data();
    const char *end = from + units * qsizetype(sizeof(Unit));
    // A unit of 2 bytes makes at most 3, one of 4 at most 4; bytes that stand for themselves make 4 each.
    const qsizetype most = block != 0 ? RawBytes::size * qsizetype(sizeof(Unit)) : sizeof(Unit) == 2 ? 3 : 4;
    text.utf8.resize((units + 1) * most);
    char *to = text.utf8.data();
    while (from < end) {
        const char *const unit = from;
        char32_t c = readUnit<Unit, Big>(from);
        from += sizeof(Unit);
        if (sizeof(Unit) == 2 && isHighSurrogate(c) && from < end) {
            const char32_t low = readUnit<Unit, Big>(from);
            if (isLowSurrogate(low)) {
                from += sizeof(Unit);
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
            }
        }
        text.replaced += isNoCharacter(c);
        to = isNoCharacter(c) ? writeUnreadable(to, unit, sizeof(Unit), block) : writeCodePoint(to, c);
    }
    if (const qsizetype rest = bytes.size() % qsizetype(sizeof(Unit)); rest != 0) {
        ++text.replaced;
        to = writeUnreadable(to, end, rest, block);
    }
    text.utf8.resize(to - text.utf8.data());
    text.utf8.squeeze();
    return text;
}

template <typename Unit, bool Big>
QByteArray encode(QByteArrayView utf8)
{
    QByteArray bytes(utf8.size() * qsizetype(sizeof(Unit)), Qt::Uninitialized);
    char *to = bytes.data();
    for (qsizetype at = 0; at < utf8.size();) {
        const CodePoint c = codePointAt(utf8, at);
        at += c.size;
        if (sizeof(Unit) == 4 || c.value < 0x10000) {
            writeUnit<Unit, Big>(to, Unit(c.value));
        } else {
            writeUnit<Unit, Big>(to, Unit(0xD800 + ((c.value - 0x10000) >> 10)));
            writeUnit<Unit, Big>(to, Unit(0xDC00 + ((c.value - 0x10000) & 0x3FF)));
        }
    }
    bytes.resize(to - bytes.data());
    return bytes;
}

} // namespace

WideText decodeWide(QByteArrayView bytes, Codec codec, char32_t block)
{
    if (isUtf16(codec)) {
        return codec == Codec::Utf16BE ? decode<quint16, true>(bytes, block)
                                       : decode<quint16, false>(bytes, block);
    }
    return codec == Codec::Utf32BE ? decode<quint32, true>(bytes, block)
                                   : decode<quint32, false>(bytes, block);
}

QByteArray encodeWide(QByteArrayView utf8, Codec codec)
{
    if (isUtf16(codec))
        return codec == Codec::Utf16BE ? encode<quint16, true>(utf8) : encode<quint16, false>(utf8);
    return codec == Codec::Utf32BE ? encode<quint32, true>(utf8) : encode<quint32, false>(utf8);
}

} // namespace files
