#pragma once

#include "yardsticks.h"

#include <QDir>

namespace bench {

class Report;
struct Shape;

// Opens the folder's "document.xml", of that shape, in the real window and takes it through what a person
// does, printing each step beside the yardsticks. Texts of longer lines than Shape::mostText are not shown as
// text.
void measureWindow(const QDir &folder, const Shape &shape, int megabytes, const Yardsticks &yardsticks,
                   const Report &report);

// Makes the window as the start-up window does when it goes.
void measureStart(const QDir &folder, const Report &report);

} // namespace bench
