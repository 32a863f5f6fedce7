// The part of the file watch that looks, in a thread of its own: a file far away may keep it waiting for any
// time.
#pragma once

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
    void looked(quint64 age, const files::FileStamp &stamp);

private:
    QString path_;
    quint64 age_ = 0;
    QFileSystemWatcher watcher_;
    QTimer soon_;
};

} // namespace app
