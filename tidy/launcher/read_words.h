// Whether two texts read the same.
#pragma once

#include "tidy/launcher/marked_text.h"

#include <QString>

namespace launcher {

// The first words that one of two texts has more often than the other, told of in a line; empty where both
// have the same, in whatever order. Characters that no text may hold are not looked at.
QString differenceOfWords(const MarkedText &before, const MarkedText &after);

// Where two texts part, told of in a line; empty where they do not.
QString firstDifference(const std::u32string &before, const std::u32string &after);

} // namespace launcher
