#include "platform/files/raw_bytes.h"

#include "platform/files/code_points.h"

#include <bitset>

namespace files {

namespace {

// Plane 16 is for private use, and hardly anybody uses it; the last block holds two characters that are none.
constexpr char32_t firstBlock = 0x10FE00;
constexpr char32_t lastBlock = 0x100000;

} // namespace

qsizetype RawBytes::next(QByteArrayView utf8, qsizetype from) const
{
    if (block_ == 0)
        return utf8.size();
    const char lead[] = {char(0xF4), char(0x80 | ((block_ >> 12) & 0x3F))};
    for (qsizetype at = utf8.indexOf(QByteArrayView(lead, 2), from); at >= 0;
         at = utf8.indexOf(QByteArrayView(lead, 2), at + 2)) {
        if ((codePointAt(utf8, at).value & ~(count - 1)) == block_)
            return at;
    }
    return utf8.size();
}

char RawBytes::byteAt(QByteArrayView utf8, qsizetype at) { return char(codePointAt(utf8, at).value & 0xFF); }

qsizetype RawBytes::take(QByteArrayView utf8, qsizetype at, QByteArray &out) const
{
    while (at < utf8.size() && next(utf8.first(qMin(at + size, utf8.size())), at) == at) {
        out += byteAt(utf8, at);
        at += size;
    }
    return at;
}

char *RawBytes::write(char *to, char byte) const { return writeCodePoint(to, block_ + uchar(byte)); }

char32_t freeBlock(QByteArrayView utf8)
{
    std::bitset<0x100> used; // by the number of the block in its plane
    for (qsizetype at = utf8.indexOf('\xF4'); at >= 0; at = utf8.indexOf('\xF4', at + 1))
        used.set((codePointAt(utf8, at).value >> 8) & 0xFF);
    for (char32_t block = firstBlock; block >= lastBlock; block -= RawBytes::count) {
        if (!used.test((block >> 8) & 0xFF))
            return block;
    }
    return 0;
}

char32_t validBlock(int number)
{
    const char32_t block = number < 0 ? 0 : char32_t(number);
    return block >= lastBlock && block <= firstBlock && block % RawBytes::count == 0 ? block : 0;
}

} // namespace files
