#include "platform/dialogs/file_filter.h"

#include <QDir>
#include <QRegularExpression>

namespace dialogs {
namespace {

QString withoutBracketedPatterns(const QString &name)
{
    static const QRegularExpression bracketed(QStringLiteral("\\s*\\([^()]*\\*[^()]*\\)\\s*$"));
    return QString(name).remove(bracketed).trimmed();
}

QString patternsForQt(const QString &patterns)
{
    QStringList list;
    for (const QString &pattern : patterns.split(u';', Qt::SkipEmptyParts)) {
        const QString trimmed = pattern.trimmed();
        list.append(trimmed == QStringLiteral("*.*") ? QStringLiteral("*") : trimmed);
    }
    return list.join(u' ');
}

} // namespace

QStringList nameFilters(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns = patternsForQt(parts[i + 1]);
        if (!patterns.isEmpty())
            filters.append(QStringLiteral("%1 (%2)").arg(withoutBracketedPatterns(parts[i]), patterns));
    }
    return filters;
}

QString filterFor(const QString &name, const QStringList &nameFilters)
{
    static const QRegularExpression patterns(QStringLiteral("\\(([^()]*)\\)$"));
    QString ofEverything;
    for (const QString &filter : nameFilters) {
        const QStringList wanted = patterns.match(filter).captured(1).split(u' ');
        if (wanted.contains(u"*"))
            ofEverything = ofEverything.isEmpty() ? filter : ofEverything;
        else if (QDir::match(wanted, name))
            return filter;
    }
    return ofEverything;
}

QString defaultEnding(const QString &nameFilter)
{
    static const QRegularExpression firstPattern(QStringLiteral("\\(\\*\\.([^\\s*?()]+)"));
    return firstPattern.match(nameFilter).captured(1);
}

} // namespace dialogs
