#include "app/file_watch.h"

namespace app {

namespace {

constexpr int longestEnd = 1000; // milliseconds, for a look that is not answered when the window closes

} // namespace

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

void FileWatch::watch(const QString &path, const files::FileStamp &read)
{
    path_ = path;
    known_ = read;
    attend();
}

void FileWatch::remember()
{
    known_ = files::stampOf(path_).value_or(known_);
    attend();
}

void FileWatch::attend()
{
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
    else if (newName_.isEmpty())
        Q_EMIT gone();
    else
        Q_EMIT renamed(QString(newName_));
}

FileWatch::Found FileWatch::checkNow()
{
    const files::FileStamp former = known_;
    remember();
    if (known_ == former)
        return Found::AsKnown;
    return known_.exists ? Found::Changed : Found::Gone;
}

void FileWatch::seen(quint64 age, const files::FileStamp &stamp, const QString &renamed)
{
    if (age != age_ || stamp == known_)
        return;
    found_ = stamp;
    newName_ = renamed;
    Q_EMIT touched();
    found_.reset();
}

} // namespace app
