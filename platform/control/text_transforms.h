// What the editing commands make of a piece of text: pure functions over UTF-8 bytes.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace control {

// Tabs become blanks up to the next tab stop. The text begins at the given column.
QByteArray tabsToSpaces(QByteArrayView text, int tabWidth, int column);

// Two or more blanks that reach a tab stop become a tab. The text begins at the given column.
QByteArray spacesToTabs(QByteArrayView text, int tabWidth, int column);

// Case of letters: all up; all down; the first of each sentence up and the rest down; the first of each word
// up and the rest down; all turned round.
QByteArray upperCase(QByteArrayView text);
QByteArray lowerCase(QByteArrayView text);
QByteArray sentenceCase(QByteArrayView text);
QByteArray capitalised(QByteArrayView text);
QByteArray caseInverted(QByteArrayView text);

// Whole lines. The line ends stay where they are; only the contents move or go.
QByteArray sortedLines(QByteArrayView lines);
QByteArray sortedLinesDescending(QByteArrayView lines);
QByteArray reversedLines(QByteArrayView lines);
// Of equal lines the first is kept.
QByteArray withoutRepeatedLines(QByteArrayView lines);
QByteArray withoutBlankLines(QByteArrayView lines);
QByteArray withoutTrailingBlanks(QByteArrayView lines);
// All lines in one: indentation dropped, one blank between. The last line end is kept.
QByteArray joinedLines(QByteArrayView lines);

} // namespace control
