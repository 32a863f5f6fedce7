// Notices when another program changes or removes the document's file.
#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace app {

class FileWatch : public QObject
{
    Q_OBJECT

public:
    FileWatch();

    // From now on this file, as it is now; none for an empty path.
    void watch(const QString &path);

    // What the file is now is known: it was just read, written or asked about.
    void remember();

    // Looks now; the signals come before it returns.
    void check();

Q_SIGNALS:
    void touched(); // somebody did something to the file: check() when that suits
    void changed(); // another content since it was remembered
    void gone(); // there is no such file any more; told once

private:
    struct Stamp
    {
        bool exists = false;
        qint64 size = 0;
        QDateTime written;
        bool operator==(const Stamp &) const = default;
    };

    Stamp stamp() const;

    QString path_;
    Stamp known_;
    QFileSystemWatcher watcher_;
    QTimer soon_; // a program that writes in steps is left to end
};

} // namespace app
