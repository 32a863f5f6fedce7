#include "editor/header_lines.h"

namespace editor {

QString urlLocation(const QString &path)
{
    QString location = path;
    return location.replace(u'\\', u'/').replace(u' ', QStringLiteral("%20"));
}

QString headerLine(const HeaderLineRow &row, const QString &location)
{
    return QLatin1String(row.before) + location + QLatin1String(row.after);
}

} // namespace editor
