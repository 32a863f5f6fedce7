#include "platform/files/file_helpers.h"
#include "platform/files/posix_file.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace files {

namespace {

platform::Failure unusable(const QString &path, const QString &why)
{
    return {QStringLiteral("The temporary folder %1 cannot be used: %2.").arg(path, why)};
}

} // namespace

// The folder is looked at and closed to others through one descriptor, so that nobody can put another in its
// place in between.
platform::Result<QString> privateTempFolder()
{
    const QString path = QDir::cleanPath(QDir::tempPath() + QStringLiteral("/xmleditor-%1").arg(geteuid()));
    const QByteArray name = QFile::encodeName(path);
    if (mkdir(name.constData(), 0700) != 0 && errno != EEXIST)
        return unusable(path, errorText(errno));
    const Descriptor folder(open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status = {};
    if (!folder.valid() || fstat(folder.get(), &status) != 0) {
        const bool link = errno == ELOOP || errno == ENOTDIR;
        return unusable(path, link ? QStringLiteral("it is not a folder of its own") : errorText(errno));
    }
    if (status.st_uid != geteuid())
        return unusable(path, QStringLiteral("it belongs to somebody else"));
    if ((status.st_mode & 0777) != 0700 && fchmod(folder.get(), 0700) != 0)
        return unusable(path, errorText(errno));
    return path;
}

} // namespace files
