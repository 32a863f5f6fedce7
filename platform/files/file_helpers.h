// The small questions that the whole program asks of the file system. Paths come from users and mean what
// they mean to the system: where a backslash is a sign like others it may belong to a name, beside a folder's
// file of nearly the same path. Only the program's own suffixes are written with either separator.
#pragma once

#include "platform/result.h"

#include <QString>
#include <QStringList>

namespace files {

// The full path of a file named from the current folder. Where ".." follows a link it leads out of where the
// link leads to, as the system has it.
QString fullPath(const QString &path);

bool fileExists(const QString &path);
bool folderExists(const QString &path);
QString extensionOf(const QString &path); // without the dot; empty when the last name has none
QString fileNameOf(const QString &path); // last component
QString parentFolderOf(const QString &path);
platform::Result<QString> createFolder(const QString &path); // the new folder's path
QStringList nonEmptyLines(const QString &path); // of a file that is no document; empty when it cannot be read
bool deleteIfExists(const QString &path); // false when a file of that name is still there

// The smallest N >= 0 for which nothing named path followed by N's digits exists, not even a folder.
int firstFreeNumber(const QString &path);

// folder joined with a suffix of the program's own, such as "\tdyex\i.txt" or "/tdyex/default.tidy",; its
// separators become the system's.
QString joinPath(const QString &folder, const QString &suffix);

// The folder that the program was started from, without a trailing separator.
QString programFolder();

struct TemporaryFolder
{
    QString path; // full, without links
    QString note; // why it is not the one that the environment names; else empty
};

// The folder that temporary files go to: the one that the environment names, or the system's, or the user's
// cache; the first that is there and can be written to. Where none can it is the last.
TemporaryFolder temporaryFolder();

// The folder in it that is private to this user: made 0700 when missing; fails when it is a link, belongs to
// somebody else or is open to others.
platform::Result<QString> privateTempFolder();

} // namespace files
