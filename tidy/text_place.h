// Places in a text, as Tidy counts them.
#pragma once

#include <QByteArrayView>

namespace tidy {

// The character (from 0) of a line at which a column is. Line and column count from 1, the column with tabs
// as wide as they are to Tidy. Beyond the line's end it is that end.
int characterAt(QByteArrayView utf8, int line, int column, int tabSize);

} // namespace tidy
