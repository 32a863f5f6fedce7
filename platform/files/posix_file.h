// Descriptors of the POSIX file system and what is done with them here. Functions that return int return 0,
// or the error's number.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <sys/types.h>
#include <utility>

namespace files {

QString errorText(int error);

// An open file, closed with the object.
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) { }
    Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) { }
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor();

    bool valid() const { return number_ >= 0; }
    int get() const { return number_; }

private:
    int number_ = -1;
};

// Opens a file, whatever interrupts that; errno says why it is not valid.
Descriptor openFile(const QByteArray &path, int flags, mode_t mode = 0);

// Makes what was written survive a power failure, where the file system can.
int flushFile(int file);

// The names that new files of a stem get, in this order; where all are taken, they get others.
constexpr int draftNames = 8;
QByteArray draftName(const QByteArray &folder, const QByteArray &stem, int number);

// Deletes what killed processes left under those names: plain files of this user that no living process has.
void clearDrafts(const QByteArray &folder, const QByteArray &stem);

// A new file, deleted with the object unless renamed or kept. Where the system can make such a file it has no
// name until it is given one, so that nothing is left of it when the process is killed before.
class NewFile
{
public:
    NewFile() = default;
    NewFile(const QByteArray &folder, const QByteArray &stem, mode_t mode);
    NewFile(NewFile &&other) noexcept = default;
    NewFile &operator=(NewFile &&other) noexcept;
    ~NewFile();

    bool valid() const { return file_.valid(); }
    int error() const { return error_; } // why it could not be made
    int get() const { return file_.get(); }

    int giveName();
    int renameTo(const QByteArray &path);
    QByteArray keep() { return std::exchange(path_, {}); }

private:
    bool openNameless(mode_t mode);
    QByteArray nameFor(int attempt) const;

    Descriptor file_;
    QByteArray folder_;
    QByteArray stem_;
    QByteArray path_;
    int error_ = 0;
};

int writeAll(int file, QByteArrayView bytes);

// Copies the whole of a file, wherever its position is, to the other's position.
int copyContent(int from, int to);

// Extended attributes, access control lists among them; those that cannot be copied are left out. An access
// control list that the folder gave the other file goes where this one has none.
void copyAttributes(int from, int to);

// Makes a new name in a folder survive a power failure. File systems that cannot are left alone.
void flushFolder(const QByteArray &folder);

} // namespace files
