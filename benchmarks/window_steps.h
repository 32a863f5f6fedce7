#pragma once

#include "yardsticks.h"

#include <QString>

namespace bench {

// Opens the document in the real window and takes it through what a person does, printing each step beside
// the yardsticks. before: resident memory before anything of the document was in it.
void measureWindow(const QString &documentPath, const Yardsticks &yardsticks);

} // namespace bench
