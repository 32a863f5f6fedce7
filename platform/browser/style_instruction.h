// The style-sheet instruction of early XML browsers, "<?xml:stylesheet ...?>".
#pragma once

#include <QByteArray>

namespace browser {

// The document with each "<?xml:stylesheet" before its root element spelt "<?xml-stylesheet", the only
// spelling that today's browsers obey. Nothing moves: both are equally long.
QByteArray withModernStyleInstructions(QByteArray xml);

} // namespace browser
