#include "platform/files/posix_file.h"

#include <QList>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <system_error>
#include <unistd.h>

namespace files {

QString errorText(int error) { return QString::fromStdString(std::generic_category().message(error)); }

Descriptor::~Descriptor()
{
    if (valid())
        close(number_);
}

namespace {

constexpr int nameAttempts = 100;

QByteArray freshName(const QByteArray &folder)
{
    return folder + "/.xmleditor-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16);
}

} // namespace

Descriptor openFile(const QByteArray &path, int flags, mode_t mode)
{
    int file = -1;
    do
        file = open(path.constData(), flags | O_CLOEXEC, mode);
    while (file < 0 && errno == EINTR);
    return Descriptor(file);
}

int flushFile(int file)
{
    while (fsync(file) != 0) {
        if (errno == EINTR)
            continue;
        return errno == EINVAL || errno == ENOSYS || errno == ENOTSUP ? 0 : errno;
    }
    return 0;
}

QByteArray draftName(const QByteArray &folder, const QByteArray &stem, int number)
{
    return folder + "/.xmleditor-" + QByteArray::number(number) + '-' + stem;
}

void clearDrafts(const QByteArray &folder, const QByteArray &stem)
{
    for (int number = 0; number < draftNames; ++number) {
        const QByteArray path = draftName(folder, stem, number);
        const Descriptor file = openFile(path, O_RDWR | O_NOFOLLOW | O_NONBLOCK);
        if (!file.valid() && errno == ENOENT)
            return;
        struct stat status = {};
        if (file.valid() && fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode)
            && status.st_uid == geteuid() && status.st_nlink == 1
            && flock(file.get(), LOCK_EX | LOCK_NB) == 0)
            unlink(path.constData());
    }
}

// The lock says that the process lives.
NewFile::NewFile(const QByteArray &folder, const QByteArray &stem, mode_t mode) : folder_(folder), stem_(stem)
{
    for (int i = 0; i < nameAttempts && !openNameless(mode); ++i) {
        const QByteArray path = nameFor(i);
        file_ = openFile(path, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
        error_ = file_.valid() ? 0 : errno;
        if (file_.valid())
            path_ = path;
        if (error_ != EEXIST)
            break;
    }
    if (file_.valid())
        flock(file_.get(), LOCK_EX | LOCK_NB);
}

QByteArray NewFile::nameFor(int attempt) const
{
    return attempt < draftNames ? draftName(folder_, stem_, attempt) : freshName(folder_);
}

// It gets its name through the system's list of this process's files.
bool NewFile::openNameless([[maybe_unused]] mode_t mode)
{
#ifdef O_TMPFILE
    if (access("/proc/self/fd", X_OK) == 0)
        file_ = openFile(folder_, O_RDWR | O_TMPFILE, mode);
#endif
    return file_.valid();
}

int NewFile::giveName()
{
    if (!path_.isEmpty())
        return 0;
    const QByteArray listed = "/proc/self/fd/" + QByteArray::number(file_.get());
    for (int i = 0; i < nameAttempts; ++i) {
        const QByteArray path = nameFor(i);
        if (linkat(AT_FDCWD, listed.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW) == 0) {
            path_ = path;
            return 0;
        }
        if (errno != EEXIST)
            break;
    }
    return errno;
}

NewFile &NewFile::operator=(NewFile &&other) noexcept
{
    std::swap(file_, other.file_);
    std::swap(folder_, other.folder_);
    std::swap(stem_, other.stem_);
    std::swap(path_, other.path_);
    std::swap(error_, other.error_);
    return *this;
}

NewFile::~NewFile()
{
    if (!path_.isEmpty())
        unlink(path_.constData());
}

int NewFile::renameTo(const QByteArray &path)
{
    if (const int error = giveName())
        return error;
    if (rename(path_.constData(), path.constData()) != 0)
        return errno;
    path_.clear();
    return 0;
}

int writeAll(int file, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = write(file, bytes.data(), size_t(bytes.size()));
        if (written < 0 && errno != EINTR)
            return errno;
        bytes = bytes.sliced(std::max<ssize_t>(written, 0));
    }
    return 0;
}

int copyContent(int from, int to)
{
    QByteArray buffer(1 << 20, Qt::Uninitialized);
    for (off_t at = 0;;) {
        const ssize_t count = pread(from, buffer.data(), size_t(buffer.size()), at);
        if (count == 0)
            return 0;
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno;
        if (const int error = writeAll(to, QByteArrayView(buffer).first(count)))
            return error;
        at += count;
    }
}

void copyAttributes(int from, int to)
{
    constexpr const char *accessList = "system.posix_acl_access";
    if (fgetxattr(from, accessList, nullptr, 0) < 0)
        fremovexattr(to, accessList);
    const ssize_t size = flistxattr(from, nullptr, 0);
    if (size <= 0)
        return;
    QByteArray names(size, '\0');
    names.resize(std::max<ssize_t>(flistxattr(from, names.data(), size_t(size)), 0));
    for (const QByteArray &name : names.split('\0')) {
        const ssize_t length = name.isEmpty() ? -1 : fgetxattr(from, name.constData(), nullptr, 0);
        if (length < 0)
            continue;
        QByteArray value(length, '\0');
        if (fgetxattr(from, name.constData(), value.data(), size_t(length)) == length)
            fsetxattr(to, name.constData(), value.constData(), size_t(length), 0);
    }
}

void flushFolder(const QByteArray &folder)
{
    const Descriptor file = openFile(folder, O_RDONLY | O_DIRECTORY);
    if (file.valid())
        flushFile(file.get());
}

} // namespace files
