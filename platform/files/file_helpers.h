// The small questions that the whole program asks of the file system. Both path separators are accepted
// in what is asked; answers use the system's own.
#pragma once

#include "platform/result.h"

#include <QString>
#include <QStringList>

namespace files {

// A path in the system's separators. A name that exists as it was given is left as it is.
QString systemPath(const QString &path);

bool fileExists(const QString &path);
bool folderExists(const QString &path);
QString extensionOf(const QString &path); // without the dot; empty when the last name has none
QString fileNameOf(const QString &path); // last component
QString parentFolderOf(const QString &path);
platform::Result<QString> createFolder(const QString &path); // the new folder's path
QStringList nonEmptyLines(const QString &path); // of a file that is no document; empty when it cannot be read
bool deleteIfExists(const QString &path); // false when a file of that name is still there

// The smallest N >= 0 for which no file named path followed by N's digits exists.
int firstFreeNumber(const QString &path);

// folder joined with a suffix such as "\tdyex\i.txt" or "/tdyex/default.tidy", in the system's separators.
QString joinPath(const QString &folder, const QString &suffix);

// The folder that the program was started from, without a trailing separator.
QString programFolder();

// The temporary folder private to this user: made 0700 when missing; fails when it is a link, belongs to
// somebody else or is open to others.
platform::Result<QString> privateTempFolder();

} // namespace files
