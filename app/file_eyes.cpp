#include "app/file_eyes.h"

#include <QFileInfo>

namespace app {

namespace {

constexpr int patience = 250; // milliseconds; a program that writes in steps is left to end

} // namespace

FileEyes::FileEyes() : watcher_(this), soon_(this)
{
    soon_.setSingleShot(true);
    soon_.setInterval(patience);
    connect(&watcher_, &QFileSystemWatcher::fileChanged, &soon_, qOverload<>(&QTimer::start));
    connect(&soon_, &QTimer::timeout, this, &FileEyes::look);
}

void FileEyes::attend(const QString &path, quint64 age)
{
    if (!watcher_.files().isEmpty())
        watcher_.removePaths(watcher_.files());
    if (path != path_)
        identity_.reset();
    path_ = path;
    age_ = age;
    look();
}

// A file that was replaced is another one to the watcher, which lets go of the old one by itself.
void FileEyes::look()
{
    if (path_.isEmpty())
        return;
    if (!watcher_.files().contains(path_) && QFileInfo::exists(path_))
        watcher_.addPath(path_);
    if (const auto stamp = files::stampOf(path_))
        Q_EMIT looked(age_, *stamp, newName(*stamp));
}

// Only of a file that was seen under the old name.
QString FileEyes::newName(const files::FileStamp &stamp)
{
    if (!stamp.exists)
        return identity_ ? files::renamedTo(path_, *identity_, last_) : QString();
    identity_ = files::identityOf(path_);
    last_ = stamp;
    return {};
}

} // namespace app
