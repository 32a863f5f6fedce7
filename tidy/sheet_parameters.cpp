#include "tidy/sheet_parameters.h"

#include <QStringList>

namespace tidy {

// A namespace's address may hold a "=" of its own.
platform::Result<SheetParameters> sheetParameters(const QString &typed)
{
    SheetParameters parameters;
    for (const QString &line : typed.split(QLatin1Char('\n'))) {
        if (line.trimmed().isEmpty())
            continue;
        const qsizetype from
            = line.trimmed().startsWith(QLatin1Char('{')) ? line.indexOf(QLatin1Char('}')) : 0;
        const qsizetype equals = from < 0 ? -1 : line.indexOf(QLatin1Char('='), from);
        const QString name = line.left(qMax<qsizetype>(equals, 0)).trimmed();
        if (name.isEmpty())
            return platform::Failure{
                QStringLiteral("\"%1\" is no parameter: write name=value, one a line.").arg(line.trimmed())};
        parameters.append({name.toUtf8(), line.sliced(equals + 1).toUtf8()});
    }
    return parameters;
}

} // namespace tidy
