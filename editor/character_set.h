// The characters of the map: the codes 32 to 255 of Windows-1252, counted from 1.
#pragma once

#include <QChar>
#include <QString>

namespace editor {

constexpr int characterCount = 224;

// index is at least 1 and at most characterCount.
QChar character(int index);

// The other way round; 0 when the map has no such character.
int indexOfCharacter(QChar wanted);

// Has no shape and no name.
bool isControl(int index);

// For people, and for screen readers: "Latin small letter e with acute, U+00E9".
QString characterName(int index);

} // namespace editor
