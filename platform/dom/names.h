// What XML allows in names and characters.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace dom {

// XML's blanks: space, tab, carriage return, line feed.
constexpr bool isBlank(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

// Where the blanks at from end.
inline qsizetype skipBlanks(QByteArrayView text, qsizetype from)
{
    while (from < text.size() && isBlank(text[from]))
        ++from;
    return from;
}

// Every character may stand in a document; false for controls, lone surrogates, U+FFFE and U+FFFF.
bool allCharactersAllowed(QStringView text);

// A name without a colon.
bool isNCName(QStringView name);

// A name, or prefix and name joined by a colon: what elements and attributes may be called.
bool isQName(QStringView name);

} // namespace dom
