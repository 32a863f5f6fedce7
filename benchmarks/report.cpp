#include "report.h"

#include <QFile>

#include <cstdio>

namespace bench {

namespace {

const QString figuresName = QStringLiteral("figures");
const QString missedName = QStringLiteral("missed");

void append(const QString &path, const QString &line)
{
    QFile file(path);
    if (file.open(QIODevice::Append))
        file.write(line.toUtf8() + '\n');
}

QStringList lines(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly)
        ? QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)
        : QStringList();
}

} // namespace

void Report::row(const QString &what, double value, const char *unit, std::initializer_list<Share> shares,
                 double most) const
{
    QString text = most > 0 ? QStringLiteral("aim %1   ").arg(most) : QString();
    bool missed = most > 0 && value > most;
    for (const Share &share : shares) {
        if (share.of <= 0)
            continue;
        const double ratio = value / share.of;
        text += QStringLiteral("%1 of %2").arg(ratio, 0, 'f', 2).arg(QLatin1StringView(share.name));
        text += share.aim > 0 ? QStringLiteral(" (aim %1)   ").arg(share.aim) : QStringLiteral("   ");
        missed |= share.aim > 0 && ratio > share.aim;
    }
    put(what, value, unit, text, missed);
}

void Report::note(const QString &sentence) const
{
    std::printf("! %s\n", qPrintable(sentence));
    std::fflush(stdout);
    append(folder_.filePath(missedName), sentence);
}

void Report::put(const QString &what, double value, const char *unit, const QString &shares,
                 bool missed) const
{
    const QString line = QStringLiteral("%1 %2 %3 %4")
                             .arg(what, -46)
                             .arg(value, 10, 'f', 2)
                             .arg(QLatin1StringView(unit), -4)
                             .arg(shares.trimmed());
    std::printf("%c %s\n", missed ? '!' : ' ', qPrintable(line));
    std::fflush(stdout);
    append(folder_.filePath(figuresName), QString::number(value, 'g', 17) + QLatin1Char('\t') + what);
    if (missed)
        append(folder_.filePath(missedName), line);
}

QMap<QString, double> Report::figures() const
{
    QMap<QString, double> figures;
    for (const QString &line : lines(folder_.filePath(figuresName))) {
        const double value = line.section(QLatin1Char('\t'), 0, 0).toDouble();
        const QString what = line.section(QLatin1Char('\t'), 1);
        figures[what] = std::min(value, figures.value(what, value));
    }
    return figures;
}

QStringList Report::missed() const { return lines(folder_.filePath(missedName)); }

} // namespace bench
