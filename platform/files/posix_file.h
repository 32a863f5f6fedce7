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

// A new file under a name that nobody can foresee; deleted with the object unless renamed or kept.
class NewFile
{
public:
    NewFile() = default;
    NewFile(const QByteArray &folder, mode_t mode);
    NewFile(NewFile &&other) noexcept = default;
    NewFile &operator=(NewFile &&other) noexcept;
    ~NewFile();

    bool valid() const { return file_.valid(); }
    int error() const { return error_; } // why it could not be made
    int get() const { return file_.get(); }

    int flush() const;
    int renameTo(const QByteArray &path);
    QByteArray keep() { return std::exchange(path_, {}); }

private:
    Descriptor file_;
    QByteArray path_;
    int error_ = 0;
};

int writeAll(int file, QByteArrayView bytes);

// Copies the whole of a file, wherever its position is, to the other's position.
int copyContent(int from, int to);

// Extended attributes, access control lists among them; those that cannot be copied are left out.
void copyAttributes(int from, int to);

// Makes a new name in a folder survive a power failure. File systems that cannot are left alone.
void flushFolder(const QByteArray &folder);

} // namespace files
