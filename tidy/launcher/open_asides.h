// What begins in faulty XML and never ends.
#pragma once

#include <QByteArray>

namespace launcher {

// Closes a CDATA section, comment or instruction that reaches to the end of a text (UTF-8), and which Tidy
// would drop with all that it holds. Returns a line for Tidy's report; an empty one where there was none.
QByteArray closeAsides(QByteArray &xml);

} // namespace launcher
