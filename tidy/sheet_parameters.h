// Parameters of style sheets as they are typed.
#pragma once

#include "platform/result.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

namespace tidy {

// A name (of a namespace: "{address}name") and a value, UTF-8.
using SheetParameters = QList<std::pair<QByteArray, QByteArray>>;

// "name=value", one a line; blanks around the name count for nothing, those of the value stay, and empty
// lines are skipped. The failure is a line without a name or "=".
platform::Result<SheetParameters> sheetParameters(const QString &typed);

} // namespace tidy
