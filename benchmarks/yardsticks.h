// What the same text costs without us, timed beside our own steps.
#pragma once

#include <QByteArray>
#include <QString>

namespace bench {

class Report;

struct Yardsticks
{
    double sax = 0; // libxml2's well-formedness pass, no handlers
    double dom = 0; // libxml2 builds its tree; 0 where that is too large
    double copy = 0; // the bytes in memory once more
    double write = 0; // the bytes to a file, plainly
    double durableWrite = 0; // the bytes to a new file, flushed to the disk
    double scintilla = 0; // a bare Scintilla takes the text
};

void printYardsticks(const Yardsticks &yardsticks, const Report &report);

// For handing them to another process.
QByteArray toBytes(const Yardsticks &yardsticks);
Yardsticks yardsticksFrom(const QByteArray &bytes);

Yardsticks measureYardsticks(const QByteArray &text, const QString &scratchFile);

} // namespace bench
