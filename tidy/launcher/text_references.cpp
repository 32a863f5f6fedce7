#include "tidy/launcher/text_references.h"

#include "platform/files/code_points.h"

#include <QByteArray>

#include <libxml/HTMLparser.h>

#include <algorithm>
#include <optional>

namespace launcher {

namespace {

constexpr qsizetype longestName = 32;

// What pages mean by the characters that are controls: Windows-1252, which browsers read as well.
char32_t asBrowsersRead(char32_t c)
{
    static constexpr char16_t windows[32]
        = {0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021, 0x2C6,  0x2030, 0x160,
           0x2039, 0x152,  0x8D,   0x17D,  0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
           0x2013, 0x2014, 0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};
    return c >= 0x80 && c < 0xA0 ? windows[c - 0x80] : c;
}

std::optional<char32_t> numbered(QByteArrayView digits)
{
    const bool hexadecimal = digits.startsWith('x') || digits.startsWith('X');
    bool known = false;
    const QByteArray number = digits.sliced(hexadecimal ? 1 : 0).toByteArray();
    const qulonglong value = number.toULongLong(&known, hexadecimal ? 16 : 10);
    const bool character = value > 0 && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
    if (!known)
        return std::nullopt;
    return character ? char32_t(value) : files::replacementCharacter;
}

std::optional<char32_t> named(QByteArrayView name)
{
    if (name == "apos")
        return U'\'';
    const QByteArray terminated = name.toByteArray();
    const htmlEntityDesc *entity
        = htmlEntityLookup(reinterpret_cast<const xmlChar *>(terminated.constData()));
    return entity ? std::optional<char32_t>(entity->value) : std::nullopt;
}

bool isOfReference(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '#';
}

std::optional<TextCharacter> referenceAt(QByteArrayView text, qsizetype at)
{
    qsizetype end = at + 1;
    while (end < text.size() && end - at <= longestName && isOfReference(text[end]))
        ++end;
    const bool closed = end < text.size() && text[end] == ';';
    const QByteArrayView inside = text.sliced(at + 1, end - at - 1);
    if (inside.empty())
        return std::nullopt;
    const bool number = inside.startsWith('#');
    const std::optional<char32_t> value = number ? numbered(inside.sliced(1)) : named(inside);
    if (!value || (!closed && !number && *value > 0xFF))
        return std::nullopt;
    return TextCharacter{asBrowsersRead(*value), end + (closed ? 1 : 0) - at};
}

} // namespace

TextCharacter textCharacterAt(QByteArrayView text, qsizetype at)
{
    if (text[at] == '&') {
        if (const auto reference = referenceAt(text, at))
            return *reference;
    }
    const files::CodePoint plain = files::codePointAt(text, at);
    return {asBrowsersRead(plain.value), plain.size};
}

} // namespace launcher
