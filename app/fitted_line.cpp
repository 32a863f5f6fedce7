#include "app/fitted_line.h"

#include <QRegularExpression>

#include <algorithm>

namespace app {

namespace {

constexpr int leastOfWord = 12; // letters, by which a name can still be told

// Cuts what matches in its middle, the last first, each as little as is needed but to no less than least.
void shorten(QString &line, const QRegularExpression &what, const QFontMetrics &metrics, int width, int least)
{
    QList<QRegularExpressionMatch> matches;
    for (auto found = what.globalMatch(line); found.hasNext();)
        matches.prepend(found.next());
    for (const QRegularExpressionMatch &match : std::as_const(matches)) {
        const int tooMuch = metrics.horizontalAdvance(line) + 1 - width; // which is rounded
        if (tooMuch <= 0)
            return;
        const QString part = match.captured();
        const int left = std::max(metrics.horizontalAdvance(part) - tooMuch, least);
        line.replace(match.capturedStart(), part.size(), metrics.elidedText(part, Qt::ElideMiddle, left));
    }
}

// Of two paths, what stands between them is not taken for a folder of either.
const QRegularExpression &folders()
{
    static const QRegularExpression pattern(
        QStringLiteral(R"((?<!\S)/[^/:;]*[^/:;\s](?:/[^/:;]*[^/:;\s])*(?=/))"));
    return pattern;
}

} // namespace

int widthOfWords(const QString &line, const QFontMetrics &metrics)
{
    return metrics.horizontalAdvance(QString(line).replace(folders(), QChar(0x2026))) + 1; // which is rounded
}

QString fittedLine(const QString &line, const QFontMetrics &metrics, int width)
{
    static const QRegularExpression words(QStringLiteral(R"(\S{16,})"));
    QString shown = line;
    shown.replace(QLatin1Char('\n'), QLatin1Char(' ')); // a file name may hold one
    shorten(shown, folders(), metrics, width, metrics.horizontalAdvance(QChar(0x2026)));
    shorten(shown, words, metrics, width, metrics.averageCharWidth() * leastOfWord);
    return metrics.elidedText(shown, Qt::ElideMiddle, width);
}

} // namespace app
