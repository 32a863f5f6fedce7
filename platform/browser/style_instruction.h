// The style-sheet instruction of early XML browsers, "<?xml:stylesheet ...?>".
#pragma once

#include <QByteArray>
#include <QStringList>

namespace browser {

// The document with each "<?xml:stylesheet" before its root element spelt "<?xml-stylesheet", the only
// spelling that today's browsers obey. In either spelling a "&" that begins no reference, and a "<", as
// paths are pasted in, become references. Reads bytes of UTF-16 too.
QByteArray withModernStyleInstructions(QByteArray xml);

// What the instructions before the root element, in either spelling, name as style sheets.
QStringList styleSheets(const QByteArray &xml);

} // namespace browser
