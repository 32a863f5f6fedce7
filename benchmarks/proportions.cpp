#include "proportions.h"

#include <cstdio>

namespace bench {

namespace {

constexpr double aim = 1.5; // what no longer fits in the processor's caches costs a little more
constexpr const char *rows[] = {
    "yardstick: SAX pass",
    "open until the tree is shown",
    "memory grown by, in Normal Mode",
    "serialise unedited",
    "serialise after the edits",
    "one structural edit in the middle",
    "save after the edits",
    "Expand All until painted",
    "Collapse All until painted",
    "Normal to XML Mode, first time",
    "Check for Errors",
};

// Below that only noise would be compared.
constexpr double least = 1; // milliseconds, or megabytes

} // namespace

QStringList printProportions(const QMap<int, QMap<QString, double>> &figuresBySize)
{
    QStringList missed;
    if (figuresBySize.size() < 2)
        return missed;
    const int large = figuresBySize.lastKey();
    const int small = std::prev(figuresBySize.end(), 2).key();
    const QMap<QString, double> &atLarge = figuresBySize[large];
    const QMap<QString, double> &atSmall = figuresBySize[small];
    std::printf("  by the megabyte, %d MB beside %d MB:\n", large, small);
    for (const char *row : rows) {
        const QString what = QLatin1StringView(row);
        if (!atLarge.contains(what) || !atSmall.contains(what) || atLarge[what] < least)
            continue;
        const double ratio = atLarge[what] / large / (atSmall[what] / small);
        const QString line = QStringLiteral("%1 %2 (aim %3)").arg(what, -46).arg(ratio, 10, 'f', 2).arg(aim);
        std::printf("%c %s\n", ratio > aim ? '!' : ' ', qPrintable(line));
        if (ratio > aim)
            missed += line + QStringLiteral(" by the megabyte");
    }
    std::fflush(stdout);
    return missed;
}

} // namespace bench
