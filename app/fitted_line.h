// A line of text that is too long for its place.
#pragma once

#include <QFontMetrics>
#include <QString>

namespace app {

// The line, made to fit into so many pixels. What it says stays for as long as that can be: first the folders
// of the paths in it give way, in their middle, then long words such as a file's name, and only then the
// line.
QString fittedLine(const QString &line, const QFontMetrics &metrics, int width);

// So many pixels the line needs to keep its words.
int widthOfWords(const QString &line, const QFontMetrics &metrics);

} // namespace app
