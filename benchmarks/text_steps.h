#pragma once

#include "yardsticks.h"

namespace bench {

class Report;
struct Shape;

// What a person does in XML Mode with a text of that shape, each step beside the same step in the bare
// component, which colours and folds nothing. Texts in few lines are shorter: see Shape::mostText.
void measureText(const Shape &shape, int megabytes, const Yardsticks &yardsticks, const Report &report);

} // namespace bench
