#include "platform/files/file_identity.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace files {

std::optional<FileIdentity> identityOf(const QString &path)
{
    struct stat found = {};
    if (::lstat(QFile::encodeName(path).constData(), &found) != 0 || !S_ISREG(found.st_mode)
        || found.st_nlink != 1)
        return std::nullopt;
    return FileIdentity{found.st_dev, found.st_ino};
}

// The number of a file that is gone may be given to a new one, which was not written at the same time.
QString renamedTo(const QString &path, const FileIdentity &identity, const FileStamp &stamp)
{
    QDirIterator folder(QFileInfo(path).absolutePath(), QDir::Files | QDir::Hidden | QDir::System);
    while (folder.hasNext()) {
        const QString other = folder.next();
        if (identityOf(other) == identity && stampOf(other) == stamp)
            return other;
    }
    return {};
}

} // namespace files
