#include "editor/header_lines.h"

#include <QDir>

namespace editor {

QString urlLocation(const QString &path)
{
    QString location = QDir::fromNativeSeparators(path);
    // Where it is no separator it belongs to a name; bare, whoever reads the location would take it for one.
    return location.replace(u'\\', QStringLiteral("%5C")).replace(u' ', QStringLiteral("%20"));
}

QString headerLine(const HeaderLineRow &row, const QString &location)
{
    return QLatin1String(row.before) + (row.escaped ? location.toHtmlEscaped() : location)
        + QLatin1String(row.after);
}

} // namespace editor
