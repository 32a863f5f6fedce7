// The files of the Tidy helper, without which the program does not start.
#pragma once

#include <QString>
#include <QStringList>

namespace app {

// What must be there, relative to the program folder, in the order in which it is looked for.
QStringList requiredEntries();

// The full path of the first entry that is missing below the folder; empty when none is. An entry
// without an extension is looked for as a folder, any other as a file.
QString firstMissing(const QString &programFolder);

// What the user is told about a missing path.
QString missingMessage(const QString &path);

} // namespace app
