// Texts of message boxes, made to fit a screen.
#pragma once

#include <QString>

namespace dialogs {

// The text as a box shows it. Ordinary texts stay as they are (line ends become single line feeds). What
// would blow the box up is cut and ends in "…": very long lines and very many of them; and a long
// run without blanks gets places where it may wrap.
QString fittedText(const QString &text);

// What was copied from such a text, without the places where it may wrap.
QString copiedText(QString text);

} // namespace dialogs
