#pragma once

#include <QMap>
#include <QStringList>

namespace bench {

// What the steps cost by the megabyte at one size beside what they cost at another, as a table. The rows out
// of proportion are marked, and returned.
QStringList printProportions(const QMap<int, QMap<QString, double>> &figuresBySize);

} // namespace bench
