#pragma once

#include <QString>

#include <functional>

namespace bench {

// Milliseconds that step takes: the least of several runs, since noise only ever adds.
double milliseconds(const std::function<void()> &step, int runs = 1);

// Bytes of memory that this process has resident; 0 where the system does not tell.
qint64 residentBytes();

// One line of the table: a figure, and what it is to each yardstick ("0.43 of the SAX pass").
void print(const QString &what, double value, const QString &unit, const QString &ratios = {});

QString ratio(double value, double yardstick, const char *name);

} // namespace bench
