#include "app/file_watch.h"

#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QTimer>

#include <filesystem>
#include <system_error>

namespace app {

namespace {

constexpr int patience = 250; // milliseconds; a program that writes in steps is left to end
constexpr int longestEnd = 1000; // milliseconds, for a look that is not answered when the window closes

// Nothing where it cannot be told: a file that is out of reach for a while is not gone.
std::optional<FileStamp> stampOf(const QString &path)
{
    const QFileInfo file(path);
    if (file.exists())
        return FileStamp{true, file.size(), file.lastModified()};
    std::error_code error;
    const auto status = std::filesystem::status(QFile::encodeName(path).toStdString(), error);
    if (path.isEmpty() || status.type() == std::filesystem::file_type::not_found)
        return FileStamp();
    return std::nullopt;
}

} // namespace

class FileEyes : public QObject
{
    Q_OBJECT

public:
    FileEyes() : watcher_(this), soon_(this)
    {
        soon_.setSingleShot(true);
        soon_.setInterval(patience);
        connect(&watcher_, &QFileSystemWatcher::fileChanged, &soon_, qOverload<>(&QTimer::start));
        connect(&soon_, &QTimer::timeout, this, &FileEyes::look);
    }

    void attend(const QString &path, quint64 age)
    {
        if (!watcher_.files().isEmpty())
            watcher_.removePaths(watcher_.files());
        path_ = path;
        age_ = age;
        look();
    }

    // A file that was replaced is another one to the watcher, which lets go of the old one by itself.
    void look()
    {
        if (path_.isEmpty())
            return;
        if (!watcher_.files().contains(path_) && QFileInfo::exists(path_))
            watcher_.addPath(path_);
        if (const auto stamp = stampOf(path_))
            Q_EMIT looked(age_, *stamp);
    }

Q_SIGNALS:
    void looked(quint64 age, const app::FileStamp &stamp);

private:
    QString path_;
    quint64 age_ = 0;
    QFileSystemWatcher watcher_;
    QTimer soon_;
};

FileWatch::FileWatch() : eyes_(std::make_unique<FileEyes>().release()), thread_(std::make_unique<QThread>())
{
    eyes_->moveToThread(thread_.get());
    connect(thread_.get(), &QThread::finished, eyes_, &QObject::deleteLater);
    connect(eyes_, &FileEyes::looked, this, &FileWatch::seen);
    thread_->start();
}

// A file system that does not answer would hold the window for ever: its look is left to end with the
// process.
FileWatch::~FileWatch()
{
    thread_->quit();
    if (!thread_->wait(longestEnd))
        (void)thread_.release();
}

void FileWatch::watch(const QString &path)
{
    path_ = path;
    known_ = {};
    remember();
}

void FileWatch::remember()
{
    known_ = stampOf(path_).value_or(known_);
    found_.reset();
    ++age_;
    QMetaObject::invokeMethod(eyes_, [eyes = eyes_, path = path_, age = age_] { eyes->attend(path, age); });
}

void FileWatch::check()
{
    if (!found_) {
        QMetaObject::invokeMethod(eyes_, &FileEyes::look);
        return;
    }
    known_ = *std::exchange(found_, std::nullopt);
    if (known_.exists)
        Q_EMIT changed();
    else
        Q_EMIT gone();
}

void FileWatch::seen(quint64 age, const FileStamp &stamp)
{
    if (age != age_ || stamp == known_)
        return;
    found_ = stamp;
    Q_EMIT touched();
    found_.reset();
}

} // namespace app

#include "file_watch.moc"
