#include "platform/files/atomic_write.h"

#include "platform/files/file_helpers.h"
#include "platform/files/posix_file.h"

#include <QFile>

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace files {

namespace {

using Pieces = std::span<const QByteArrayView>;

// What stands where the file is to be written.
struct Place
{
    QByteArray path; // links followed
    QByteArray folder;
    bool exists = false;
    struct stat status = {};
};

platform::Failure failure(const QString &path, int error)
{
    return {QStringLiteral("%1 cannot be written: %2.").arg(path, errorText(error))};
}

QByteArray folderOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.first(std::max<qsizetype>(slash, 1));
}

QByteArray linkTarget(const QByteArray &link)
{
    char buffer[PATH_MAX];
    const ssize_t size = readlink(link.constData(), buffer, sizeof buffer);
    if (size < 0)
        return {};
    const QByteArray target(buffer, size);
    return target.startsWith('/') ? target : folderOf(link) + '/' + target;
}

// Follows links to the name that is really written; 0 or the error.
int findPlace(Place &place)
{
    constexpr int mostLinks = 40;
    for (int links = 0; links < mostLinks; ++links) {
        place.folder = folderOf(place.path);
        if (lstat(place.path.constData(), &place.status) != 0)
            return errno == ENOENT ? 0 : errno;
        if (!S_ISLNK(place.status.st_mode)) {
            place.exists = true;
            return 0;
        }
        place.path = linkTarget(place.path);
        if (place.path.isEmpty())
            return errno;
    }
    return ELOOP;
}

int writePieces(int file, Pieces pieces)
{
    for (const QByteArrayView piece : pieces) {
        if (const int error = writeAll(file, piece))
            return error;
    }
    return 0;
}

// Gives a new file the old one's owner, mode and attributes; false when the owner cannot be kept.
bool takeOver(int to, const Place &place)
{
    const struct stat &old = place.status;
    struct stat now = {};
    if (fstat(to, &now) != 0)
        return false;
    const bool other = now.st_uid != old.st_uid || now.st_gid != old.st_gid;
    if (other && fchown(to, old.st_uid, old.st_gid) != 0)
        return false;
    if (fchmod(to, old.st_mode & 07777) != 0)
        return false;
    const Descriptor from = openFile(place.path, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    if (from.valid())
        copyAttributes(from.get(), to);
    return true;
}

enum class Outcome
{
    Done,
    Failed,
    NotThisWay
};

struct Attempt
{
    Outcome outcome;
    int error = 0;
};

// Errors that say that this folder takes no new name, though the file itself may be writable.
bool isFoldersRefusal(int error)
{
    return error == EACCES || error == EPERM || error == EROFS || error == EBUSY || error == EXDEV;
}

Attempt refused(int error, const Place &place)
{
    return {place.exists && isFoldersRefusal(error) ? Outcome::NotThisWay : Outcome::Failed, error};
}

Attempt replaceByRename(const Place &place, Pieces pieces)
{
    NewFile fresh(place.folder, place.exists ? 0600 : 0666, NewFile::Name::Late);
    if (!fresh.valid())
        return refused(fresh.error(), place);
    if (place.exists && !takeOver(fresh.get(), place))
        return {Outcome::NotThisWay};
    if (const int error = writePieces(fresh.get(), pieces))
        return {Outcome::Failed, error};
    if (const int error = flushFile(fresh.get()))
        return {Outcome::Failed, error};
    if (const int error = fresh.renameTo(place.path))
        return refused(error, place);
    flushFolder(place.folder);
    return {Outcome::Done};
}

int copyInto(const QByteArray &folder, int old, NewFile &copy)
{
    copy = NewFile(folder, 0600, NewFile::Name::Now);
    if (!copy.valid())
        return copy.error();
    if (const int error = copyContent(old, copy.get()))
        return error;
    return flushFile(copy.get());
}

// Makes a flushed copy of the old content, beside it or, where that cannot be, in the private temporary
// folder.
int keepCopy(int old, const Place &place, NewFile &copy)
{
    const int error = copyInto(place.folder, old, copy);
    if (error == 0)
        return 0;
    const platform::Result<QString> folder = privateTempFolder();
    return folder && copyInto(QFile::encodeName(*folder), old, copy) == 0 ? 0 : error;
}

// Writes from the file's start and cuts it behind what was written.
int writeOver(int file, Pieces pieces)
{
    if (lseek(file, 0, SEEK_SET) != 0)
        return errno;
    if (const int error = writePieces(file, pieces))
        return error;
    const off_t end = lseek(file, 0, SEEK_CUR);
    return end < 0 || ftruncate(file, end) != 0 ? errno : flushFile(file);
}

int restore(int file, int copy)
{
    if (lseek(file, 0, SEEK_SET) != 0)
        return errno;
    if (const int error = copyContent(copy, file))
        return error;
    const off_t end = lseek(file, 0, SEEK_CUR);
    return end < 0 || ftruncate(file, end) != 0 ? errno : flushFile(file);
}

platform::Result<void> replaceInPlace(const QString &path, const Place &place, Pieces pieces,
                                      const std::function<void()> &writesOver)
{
    const Descriptor file = openFile(place.path, O_RDWR | O_NOFOLLOW);
    if (!file.valid())
        return failure(path, errno);
    NewFile copy;
    if (const int error = keepCopy(file.get(), place, copy))
        return failure(path, error);
    if (writesOver)
        writesOver();
    const int error = writeOver(file.get(), pieces);
    if (error == 0)
        return {};
    if (restore(file.get(), copy.get()) == 0)
        return failure(path, error);
    return platform::Failure{QStringLiteral("%1 cannot be written: %2; its old content is in %3.")
                                 .arg(path, errorText(error), QFile::decodeName(copy.keep()))};
}

} // namespace

platform::Result<void> replaceFile(const QString &path, std::span<const QByteArrayView> pieces,
                                   const std::function<void()> &writesOver)
{
    const QString named = systemPath(path);
    Place place;
    place.path = QFile::encodeName(named);
    if (const int error = findPlace(place))
        return failure(named, error);
    if (place.exists && !S_ISREG(place.status.st_mode))
        return platform::Failure{QStringLiteral("%1 cannot be written: it is not a file.").arg(named)};
    if (place.exists && faccessat(AT_FDCWD, place.path.constData(), W_OK, AT_EACCESS) != 0)
        return failure(named, errno);
    if (place.exists && place.status.st_nlink > 1)
        return replaceInPlace(named, place, pieces, writesOver);
    const Attempt attempt = replaceByRename(place, pieces);
    if (attempt.outcome == Outcome::NotThisWay)
        return replaceInPlace(named, place, pieces, writesOver);
    return attempt.outcome == Outcome::Done ? platform::Result<void>() : failure(named, attempt.error);
}

} // namespace files
