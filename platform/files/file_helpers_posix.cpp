#include "platform/files/file_helpers.h"
#include "platform/files/private_files.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <unistd.h>

namespace files {

// Its full path without links, when files can be made there; else empty.
static QString usableFolder(const QString &path)
{
    const QString folder = path.isEmpty() ? path : QDir(path).canonicalPath();
    return !folder.isEmpty() && access(QFile::encodeName(folder).constData(), W_OK | X_OK) == 0 ? folder
                                                                                                : QString();
}

// Not the library's own answer, which is the root of all files where the folder that was named is not there.
TemporaryFolder temporaryFolder()
{
    const QString named = qEnvironmentVariable("TMPDIR");
    if (const QString folder = usableFolder(named); !folder.isEmpty())
        return {folder, {}};
    QString folder = usableFolder(QStringLiteral("/tmp"));
    if (folder.isEmpty()) {
        folder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
        QDir().mkpath(folder);
    }
    const QString note
        = QStringLiteral("The folder for temporary files, %1, cannot be used; they are in %2.");
    return {folder, named.isEmpty() ? QString() : note.arg(named, folder)};
}

platform::Result<QString> privateTempFolder()
{
    const QString path = QDir(temporaryFolder().path).filePath(QStringLiteral("xmleditor-%1").arg(geteuid()));
    if (const auto made = makePrivateFolder(path); !made)
        return platform::Failure{made.reason()};
    return path;
}

} // namespace files
