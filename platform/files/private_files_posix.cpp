#include "platform/files/private_files.h"

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

platform::Failure failure(const QString &path, const char *what, const QString &why)
{
    return {QStringLiteral("%1 cannot be %2: %3.").arg(path, QLatin1String(what), why)};
}

int writeDraft(const QByteArray &draft, std::span<const QByteArrayView> pieces)
{
    unlink(draft.constData());
    const Descriptor file = openFile(draft, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
    if (!file.valid())
        return errno;
    for (const QByteArrayView piece : pieces) {
        if (const int error = writeAll(file.get(), piece))
            return error;
    }
    return flushFile(file.get());
}

} // namespace

// The folder is looked at and closed to others through one descriptor, so that nobody can put another in its
// place in between.
platform::Result<void> makePrivateFolder(const QString &path)
{
    QDir().mkpath(parentFolderOf(path));
    const QByteArray name = QFile::encodeName(path);
    if (mkdir(name.constData(), 0700) != 0 && errno != EEXIST)
        return failure(path, "used", errorText(errno));
    const Descriptor folder = openFile(name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    struct stat status = {};
    if (!folder.valid() || fstat(folder.get(), &status) != 0) {
        const bool link = errno == ELOOP || errno == ENOTDIR;
        return failure(path, "used",
                       link ? QStringLiteral("it is not a folder of its own") : errorText(errno));
    }
    if (status.st_uid != geteuid())
        return failure(path, "used", QStringLiteral("it belongs to somebody else"));
    if ((status.st_mode & 0777) != 0700 && fchmod(folder.get(), 0700) != 0)
        return failure(path, "used", errorText(errno));
    return {};
}

platform::Result<void> writePrivateFile(const QString &path, const QString &draft,
                                        std::span<const QByteArrayView> pieces)
{
    const QByteArray draftName = QFile::encodeName(draft);
    const QByteArray name = QFile::encodeName(path);
    int error = writeDraft(draftName, pieces);
    if (error == 0 && rename(draftName.constData(), name.constData()) != 0)
        error = errno;
    if (error != 0) {
        unlink(draftName.constData());
        return failure(path, "written", errorText(error));
    }
    flushFolder(QFile::encodeName(parentFolderOf(path)));
    return {};
}

platform::Result<QByteArray> readPrivateFile(const QString &path, qint64 most)
{
    const Descriptor file = openFile(QFile::encodeName(path), O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    struct stat status = {};
    if (!file.valid() || fstat(file.get(), &status) != 0)
        return failure(path, "read", errorText(errno));
    if (!S_ISREG(status.st_mode))
        return failure(path, "read", QStringLiteral("it is not a file"));
    QByteArray bytes(qMin(qint64(status.st_size), most), Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count = read(file.get(), bytes.data() + filled, size_t(bytes.size() - filled));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return failure(path, "read", errorText(errno));
        if (count == 0)
            break;
        filled += count;
    }
    bytes.truncate(filled);
    return bytes;
}

} // namespace files
