#include "app/file_watch.h"

#include <QFileInfo>

namespace app {

namespace {

constexpr int patience = 250; // milliseconds

}

FileWatch::FileWatch()
{
    soon_.setSingleShot(true);
    soon_.setInterval(patience);
    connect(&watcher_, &QFileSystemWatcher::fileChanged, &soon_, qOverload<>(&QTimer::start));
    connect(&soon_, &QTimer::timeout, this, &FileWatch::touched);
}

void FileWatch::watch(const QString &path)
{
    if (!watcher_.files().isEmpty())
        watcher_.removePaths(watcher_.files());
    path_ = path;
    remember();
}

// A file that was replaced is another one to the watcher, which lets go of the old one by itself.
void FileWatch::remember()
{
    soon_.stop();
    known_ = stamp();
    if (known_.exists && !watcher_.files().contains(path_))
        watcher_.addPath(path_);
}

FileWatch::Stamp FileWatch::stamp() const
{
    const QFileInfo file(path_);
    if (path_.isEmpty() || !file.exists())
        return {};
    return {true, file.size(), file.lastModified()};
}

void FileWatch::check()
{
    if (path_.isEmpty())
        return;
    const Stamp before = known_;
    remember();
    if (known_ == before)
        return;
    if (known_.exists)
        Q_EMIT changed();
    else
        Q_EMIT gone();
}

} // namespace app
