#include "platform/files/posix_file.h"

#include <QList>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
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

NewFile::NewFile(const QByteArray &folder, mode_t mode)
{
    constexpr int attempts = 100;
    for (int i = 0; i < attempts; ++i) {
        const quint64 number = QRandomGenerator::system()->generate64();
        path_ = folder + "/.xmleditor-" + QByteArray::number(number, 16);
        file_ = Descriptor(open(path_.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
        if (file_.valid())
            return;
        error_ = errno;
        path_.clear();
        if (error_ != EEXIST)
            return;
    }
}

NewFile &NewFile::operator=(NewFile &&other) noexcept
{
    std::swap(file_, other.file_);
    std::swap(path_, other.path_);
    std::swap(error_, other.error_);
    return *this;
}

NewFile::~NewFile()
{
    if (!path_.isEmpty())
        unlink(path_.constData());
}

int NewFile::flush() const { return fsync(file_.get()) == 0 ? 0 : errno; }

int NewFile::renameTo(const QByteArray &path)
{
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
    const Descriptor file(open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (file.valid())
        fsync(file.get());
}

} // namespace files
