#include "measure.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <limits>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#ifdef __linux__
#include <unistd.h>
#endif

namespace bench {

double milliseconds(const std::function<void()> &step, int runs)
{
    double least = std::numeric_limits<double>::max();
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        step();
        least = std::min(least, double(timer.nsecsElapsed()) / 1e6);
    }
    return least;
}

qint64 residentBytes()
{
#ifdef __GLIBC__
    malloc_trim(0); // what is free again but not given back is nobody's use of memory
#endif
#ifdef __linux__
    QFile file(QStringLiteral("/proc/self/statm"));
    if (file.open(QIODevice::ReadOnly))
        return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
#endif
    return 0;
}

void print(const QString &what, double value, const QString &unit, const QString &ratios)
{
    std::printf("  %-44s %10.2f %-4s %s\n", qPrintable(what), value, qPrintable(unit), qPrintable(ratios));
    std::fflush(stdout);
}

QString ratio(double value, double yardstick, const char *name)
{
    return QStringLiteral("%1 of %2   ").arg(value / yardstick, 0, 'f', 2).arg(QLatin1StringView(name));
}

} // namespace bench
