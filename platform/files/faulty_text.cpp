#include "platform/files/faulty_text.h"

#include "platform/files/code_points.h"
#include "platform/files/narrow_codec.h"
#include "platform/files/wide_codec.h"

#include <algorithm>

namespace files {

namespace {

constexpr qsizetype readAtOnce = 65536; // bytes
constexpr qsizetype longestSequence = 16; // bytes, escapes included

// Puts bytes that are no characters into a text, or U+FFFD for each while no block is known.
class Marks
{
public:
    explicit Marks(char32_t block) : block_(block) { }

    void add(QByteArray &utf8, char byte)
    {
        char piece[RawBytes::size];
        const char *end
            = block_ != 0 ? RawBytes(block_).write(piece, byte) : writeCodePoint(piece, replacementCharacter);
        faults_ += utf8.size() != behind_;
        utf8.append(piece, end - piece);
        behind_ = utf8.size();
        ++count_;
    }

    qsizetype count() const { return count_; }
    qsizetype faults() const { return faults_; }

private:
    char32_t block_;
    qsizetype count_ = 0;
    qsizetype faults_ = 0;
    qsizetype behind_ = -1; // the last of them
};

void decodeUtf8(QByteArrayView bytes, QByteArray &utf8, Marks &marks)
{
    qsizetype written = 0; // up to here
    for (qsizetype at = 0; at < bytes.size();) {
        const CodePoint c = codePointAt(bytes, at);
        const bool broken = c.value == replacementCharacter && c.size == 1;
        if (broken) {
            utf8.append(bytes.sliced(written, at - written));
            marks.add(utf8, bytes[at]);
            written = at + 1;
        }
        at += c.size;
    }
    utf8.append(bytes.sliced(written));
}

void decodeAscii(QByteArrayView bytes, QByteArray &utf8, Marks &marks)
{
    for (const char c : bytes) {
        if (uchar(c) < 0x80)
            utf8 += c;
        else
            marks.add(utf8, c);
    }
}

void decodePieces(QByteArrayView bytes, NarrowDecoder &decoder, QByteArray &utf8, Marks &marks)
{
    for (qsizetype at = 0; at < bytes.size();) {
        const qsizetype size = std::min(readAtOnce, bytes.size() - at);
        const qsizetype used = decoder.decode(bytes.sliced(at, size), utf8);
        at += used;
        const bool cutThrough = used > 0 && size - used < longestSequence && at - used + size < bytes.size();
        if (used < size && !cutThrough)
            marks.add(utf8, bytes[at++]);
    }
}

qsizetype charactersBeyondAscii(QByteArrayView utf8)
{
    return std::count_if(utf8.begin(), utf8.end(), [](char c) { return uchar(c) >= 0xC0; });
}

std::optional<FaultyText> decodeOnce(QByteArrayView bytes, const EncodingEntry &entry, char32_t block)
{
    FaultyText text;
    text.block = block;
    if (isWide(entry.codec)) {
        WideText wide = decodeWide(bytes, entry.codec, block);
        text.utf8 = std::move(wide.utf8);
        text.bad = wide.replaced * (isUtf16(entry.codec) ? 2 : 4);
        text.faults = wide.replaced;
        text.good = (bytes.size() - text.bad) / (isUtf16(entry.codec) ? 2 : 4);
        return text;
    }
    Marks marks(block);
    if (entry.codec == Codec::Utf8) {
        decodeUtf8(bytes, text.utf8, marks);
    } else if (entry.codec == Codec::System) {
        const std::unique_ptr<NarrowDecoder> decoder = systemDecoder(entry.systemName);
        if (!decoder)
            return std::nullopt;
        decodePieces(bytes, *decoder, text.utf8, marks);
    } else if (entry.codec == Codec::Ascii) {
        decodeAscii(bytes, text.utf8, marks);
    } else {
        text.utf8 = *decodeNarrow(bytes, entry); // which take any byte
    }
    text.bad = marks.count();
    text.faults = marks.faults();
    text.good = charactersBeyondAscii(text.utf8) - text.bad;
    return text;
}

} // namespace

std::optional<FaultyText> decodeFaulty(QByteArrayView bytes, const EncodingEntry &entry)
{
    std::optional<FaultyText> text = decodeOnce(bytes, entry, 0);
    if (!text || text->bad == 0)
        return text;
    const char32_t block = freeBlock(text->utf8);
    return block != 0 ? decodeOnce(bytes, entry, block) : std::nullopt;
}

} // namespace files
