// The characters of a text in markup, references resolved.
#pragma once

#include <QByteArrayView>

namespace launcher {

struct TextCharacter
{
    char32_t value; // U+FFFD for what is none
    qsizetype size; // in the markup
};

// The character at a byte. References are read by number, and by the names that HTML 4 has; what is none, or
// is of another name, reads as it stands. A reference by number or to a Latin letter needs no semicolon.
TextCharacter textCharacterAt(QByteArrayView text, qsizetype at);

inline bool isBlankCharacter(char32_t c)
{
    return c == U' ' || c == U'\t' || c == U'\n' || c == U'\r' || c == U'\f';
}

} // namespace launcher
