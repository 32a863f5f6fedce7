#include "platform/files/owner_lock.h"

#include "platform/files/posix_file.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace files {

namespace {

class LockedFile : public OwnerLock
{
public:
    LockedFile(const QByteArray &name, Descriptor &&file) : name_(name), file_(std::move(file)) { }
    ~LockedFile() override { unlink(name_.constData()); }
    LockedFile(const LockedFile &) = delete;
    LockedFile &operator=(const LockedFile &) = delete;

private:
    QByteArray name_;
    Descriptor file_;
};

// Somebody who let go of the lock in between took the name away from the file.
bool standsThere(const Descriptor &file, const QByteArray &name)
{
    struct stat locked = {};
    struct stat there = {};
    return fstat(file.get(), &locked) == 0 && lstat(name.constData(), &there) == 0
        && locked.st_ino == there.st_ino && locked.st_dev == there.st_dev;
}

} // namespace

std::unique_ptr<OwnerLock> OwnerLock::tryTake(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    Descriptor file = openFile(name, O_RDWR | O_CREAT | O_NOFOLLOW, 0600);
    if (!file.valid() || flock(file.get(), LOCK_EX | LOCK_NB) != 0 || !standsThere(file, name))
        return nullptr;
    return std::make_unique<LockedFile>(name, std::move(file));
}

} // namespace files
