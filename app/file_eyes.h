// The part of the file watch that looks, in a thread of its own: a file far away may keep it waiting for any
// time.
#pragma once

#include "platform/files/file_identity.h"
#include "platform/files/file_stamp.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

namespace app {

class FileEyes : public QObject
{
    Q_OBJECT

public:
    FileEyes();

    // Looks at this file, now and whenever it is written; what is told of it bears this age.
    void attend(const QString &path, quint64 age);
    void look();

Q_SIGNALS:
    // renamed is the new name of a file that is gone from the old one; empty when there is none.
    void looked(quint64 age, const files::FileStamp &stamp, const QString &renamed);

private:
    QString newName(const files::FileStamp &stamp);

    QString path_;
    std::optional<files::FileIdentity> identity_; // of the file that was there at the last look
    files::FileStamp last_; // of the same
    quint64 age_ = 0;
    QFileSystemWatcher watcher_;
    QTimer soon_;
};

} // namespace app
