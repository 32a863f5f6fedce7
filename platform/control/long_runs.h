// Parts what is long and of one style, so that the engine measures it cheaply: it remembers the widths of
// pieces under thirty bytes, and measures longer ones anew at each key in their line.
#pragma once

#include <QByteArrayView>
#include <array>

namespace control {

// What is added to a style for others that look the same.
constexpr std::array<int, 3> sameLooks = {0, 128, 192};

// Gives the pieces of long runs styles that look like the run's own. Where text is changed, the pieces and
// styles of what follows stay the same but for a few.
void partLongRuns(QByteArrayView text, char *styles);

} // namespace control
