#include "platform/files/narrow_codec.h"

#include "platform/files/code_points.h"

#include <algorithm>
#include <array>

namespace files {

namespace {

// What the bytes 0x80 to 0x9F stand for; those from 0xA0 stand for the character of their number.
using UpperControls = std::array<char16_t, 32>;

constexpr UpperControls windows1252
    = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
       0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
       0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr UpperControls latin1
    = {0x80, 0x81, 0x82, 0x83, 0x84, 0x85, 0x86, 0x87, 0x88, 0x89, 0x8A, 0x8B, 0x8C, 0x8D, 0x8E, 0x8F,
       0x90, 0x91, 0x92, 0x93, 0x94, 0x95, 0x96, 0x97, 0x98, 0x99, 0x9A, 0x9B, 0x9C, 0x9D, 0x9E, 0x9F};

QByteArray decodeBytes(QByteArrayView bytes, const UpperControls &controls)
{
    const qsizetype high = std::count_if(bytes.begin(), bytes.end(), [](char c) { return uchar(c) >= 0x80; });
    QByteArray utf8(bytes.size() + 2 * high, Qt::Uninitialized);
    char *to = utf8.data();
    for (char c : bytes) {
        const uchar byte = uchar(c);
        to = writeCodePoint(to, byte >= 0x80 && byte < 0xA0 ? controls[byte - 0x80] : byte);
    }
    utf8.resize(to - utf8.data());
    return utf8;
}

// Writes the encodings of one byte a character; no table means ASCII alone.
class ByteEncoder : public NarrowEncoder
{
public:
    explicit ByteEncoder(const UpperControls *controls) : controls_(controls) { }

    qsizetype encode(QByteArrayView utf8, QByteArray &out) override
    {
        const qsizetype before = out.size();
        out.resize(before + utf8.size());
        char *to = out.data() + before;
        qsizetype at = 0;
        while (at < utf8.size()) {
            if (uchar(utf8[at]) < 0x80) {
                *to++ = utf8[at++];
                continue;
            }
            const CodePoint c = codePointAt(utf8, at);
            const int byte = byteOf(c.value);
            if (byte < 0)
                break;
            *to++ = char(byte);
            at += c.size;
        }
        out.resize(to - out.data());
        return at;
    }

private:
    int byteOf(char32_t c) const
    {
        if (!controls_)
            return -1;
        if (c >= 0xA0 && c <= 0xFF)
            return int(c);
        const auto *found = std::find(controls_->begin(), controls_->end(), c);
        return found == controls_->end() ? -1 : 0x80 + int(found - controls_->begin());
    }

    const UpperControls *controls_;
};

bool isAscii(QByteArrayView bytes)
{
    return std::none_of(bytes.begin(), bytes.end(), [](char c) { return uchar(c) >= 0x80; });
}

} // namespace

QByteArray decodeWindows1252(QByteArrayView bytes) { return decodeBytes(bytes, windows1252); }

std::optional<QByteArray> decodeNarrow(QByteArrayView bytes, const EncodingEntry &entry)
{
    switch (entry.codec) {
    case Codec::Ascii:
        return isAscii(bytes) ? std::optional(bytes.toByteArray()) : std::nullopt;
    case Codec::Latin1:
        return decodeBytes(bytes, latin1);
    case Codec::Windows1252:
        return decodeWindows1252(bytes);
    default:
        return decodeBySystem(bytes, entry.systemName);
    }
}

std::unique_ptr<NarrowEncoder> narrowEncoder(const EncodingEntry &entry)
{
    switch (entry.codec) {
    case Codec::Ascii:
        return std::make_unique<ByteEncoder>(nullptr);
    case Codec::Latin1:
        return std::make_unique<ByteEncoder>(&latin1);
    case Codec::Windows1252:
        return std::make_unique<ByteEncoder>(&windows1252);
    default:
        return systemEncoder(entry.systemName);
    }
}

} // namespace files
