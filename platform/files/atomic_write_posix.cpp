#include "platform/files/atomic_write.h"

#include "platform/files/file_helpers.h"
#include "platform/files/posix_file.h"

#include <QCryptographicHash>
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
    // Of a file that is to be made the system's words would say that this very file is missing.
    const QString why = error == ENOENT ? QStringLiteral("its folder does not exist") : errorText(error);
    return {QStringLiteral("%1 cannot be written: %2.").arg(path, why)};
}

QByteArray folderOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.first(std::max<qsizetype>(slash, 1));
}

QByteArray shortened(const QByteArray &name) // so that a name made of it is none too long
{
    constexpr qsizetype most = 200;
    return name.size() <= most ? name : QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex();
}

// What files for a document's sake are named for: the new content, and the copy of the old one beside it or
// in the private temporary folder, where documents of the same name meet.
struct Stems
{
    explicit Stems(const QByteArray &path)
    {
        const QByteArray name = shortened(path.sliced(path.lastIndexOf('/') + 1));
        fresh = "new-" + name;
        beside = "old-" + name;
        away = "old-" + QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex() + '-' + name;
    }

    QByteArray fresh;
    QByteArray beside;
    QByteArray away;
};

QByteArray privateFolder() // empty where there is none
{
    const platform::Result<QString> folder = privateTempFolder();
    return folder ? QFile::encodeName(*folder) : QByteArray();
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
    NewFile fresh(place.folder, Stems(place.path).fresh, place.exists ? 0600 : 0666);
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

// It has its name when it is whole.
int copyInto(const QByteArray &folder, const QByteArray &stem, int old, NewFile &copy)
{
    copy = NewFile(folder, stem, 0600);
    if (!copy.valid())
        return copy.error();
    if (const int error = copyContent(old, copy.get()))
        return error;
    if (const int error = flushFile(copy.get()))
        return error;
    if (const int error = copy.giveName())
        return error;
    flushFolder(folder);
    return 0;
}

// Makes a flushed copy of the old content, beside it or, where that cannot be, in the private temporary
// folder.
int keepCopy(int old, const Place &place, NewFile &copy)
{
    const Stems stems(place.path);
    const int error = copyInto(place.folder, stems.beside, old, copy);
    if (error == 0)
        return 0;
    const QByteArray folder = privateFolder();
    return !folder.isEmpty() && copyInto(folder, stems.away, old, copy) == 0 ? 0 : error;
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

// To others the file is what it was.
int restore(int file, int copy, const struct stat &old)
{
    if (lseek(file, 0, SEEK_SET) != 0)
        return errno;
    if (const int error = copyContent(copy, file))
        return error;
    const off_t end = lseek(file, 0, SEEK_CUR);
    if (end < 0 || ftruncate(file, end) != 0)
        return errno;
    const timespec times[] = {old.st_atim, old.st_mtim};
    futimens(file, times);
    return flushFile(file);
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
    if (restore(file.get(), copy.get(), place.status) == 0)
        return failure(path, error);
    return platform::Failure{QStringLiteral("%1 cannot be written: %2; its old content is in %3.")
                                 .arg(path, errorText(error), QFile::decodeName(copy.keep()))};
}

platform::Result<void> replace(const QString &path, const Place &place, Pieces pieces,
                               const std::function<void()> &writesOver)
{
    if (place.exists && !S_ISREG(place.status.st_mode))
        return platform::Failure{QStringLiteral("%1 cannot be written: it is not a file.").arg(path)};
    if (place.exists && faccessat(AT_FDCWD, place.path.constData(), W_OK, AT_EACCESS) != 0)
        return failure(path, errno);
    if (place.exists && place.status.st_nlink > 1)
        return replaceInPlace(path, place, pieces, writesOver);
    const Attempt attempt = replaceByRename(place, pieces);
    if (attempt.outcome == Outcome::NotThisWay)
        return replaceInPlace(path, place, pieces, writesOver);
    return attempt.outcome == Outcome::Done ? platform::Result<void>() : failure(path, attempt.error);
}

} // namespace

platform::Result<void> replaceFile(const QString &path, std::span<const QByteArrayView> pieces,
                                   const std::function<void()> &writesOver)
{
    Place place;
    place.path = QFile::encodeName(path);
    if (const int error = findPlace(place))
        return failure(path, error);
    platform::Result<void> done = replace(path, place, pieces, writesOver);
    if (!done)
        return done;
    const Stems stems(place.path);
    clearDrafts(place.folder, stems.fresh);
    clearDrafts(place.folder, stems.beside);
    if (const QByteArray folder = privateFolder(); !folder.isEmpty())
        clearDrafts(folder, stems.away);
    return done;
}

QString leftOfCutShort(const QString &path)
{
    Place place;
    place.path = QFile::encodeName(path);
    if (findPlace(place) != 0)
        return {};
    const Stems stems(place.path);
    const QByteArray folder = privateFolder();
    for (const QByteArray &copy :
         {draftName(place.folder, stems.beside, 0), draftName(folder, stems.away, 0)}) {
        struct stat status = {};
        if (lstat(copy.constData(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid())
            return QFile::decodeName(copy);
    }
    return {};
}

} // namespace files
