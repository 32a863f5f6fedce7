// The part of the file watch that looks, in a thread of its own: a file far away may keep it waiting for any
// time.
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include <filesystem>
#include <optional>

namespace app {

// What tells a file from its former self.
struct FileStamp
{
    bool exists = false;
    std::uintmax_t size = 0;
    std::filesystem::file_time_type written;
    bool operator==(const FileStamp &) const = default;
};

// What stands at path now. Nothing where it cannot be told: a file that is out of reach for a while is not
// gone.
std::optional<FileStamp> stampOf(const QString &path);

class FileEyes : public QObject
{
    Q_OBJECT

public:
    FileEyes();

    // Looks at this file, now and whenever it is written; what is told of it bears this age.
    void attend(const QString &path, quint64 age);
    void look();

Q_SIGNALS:
    void looked(quint64 age, const app::FileStamp &stamp);

private:
    QString path_;
    quint64 age_ = 0;
    QFileSystemWatcher watcher_;
    QTimer soon_;
};

} // namespace app
