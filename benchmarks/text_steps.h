#pragma once

#include "yardsticks.h"

namespace bench {

// What a person does in XML Mode with the text, each step beside the same step in the bare component, which
// colours and folds nothing.
void measureText(const QByteArray &text, const Yardsticks &yardsticks);

} // namespace bench
