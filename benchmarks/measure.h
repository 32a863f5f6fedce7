#pragma once

#include <QtGlobal>

#include <functional>

class QWidget;

namespace bench {

// Milliseconds that step takes: the least of several runs, since noise only ever adds; of one when it is
// slow. Does not count the time in which other programs kept this thread from going on, as far as the system
// tells.
double milliseconds(const std::function<void()> &step, int runs = 1);

// Bytes of memory that this process has resident; 0 where the system does not tell.
qint64 residentBytes();

// Until nothing is waiting to be done at once, what is put off to a moment without work included.
void waitUntilIdle();

// Does what is waiting, which paints what has changed; the view is painted in any case.
void paint(QWidget *view);

} // namespace bench
