// Notices when another program changes or removes the document's file.
#pragma once

#include "app/file_eyes.h"

#include <QThread>

#include <memory>
#include <optional>

namespace app {

class FileWatch : public QObject
{
    Q_OBJECT

public:
    FileWatch();
    ~FileWatch() override;
    FileWatch(const FileWatch &) = delete;
    FileWatch &operator=(const FileWatch &) = delete;

    // From now on this file, held against what it was when it was read; none for an empty path.
    void watch(const QString &path, const files::FileStamp &read);

    // What the file is now is known: it was just read, written or asked about.
    void remember();

    // While touched() is told: what was found comes before it returns. Else only asks for a look.
    void check();

    enum class Found
    {
        AsKnown,
        Changed,
        Gone
    };

    // Before the file is written: looks at once, whatever the eyes are doing, and takes what is there for
    // known. Waits for the file system as long as that takes.
    Found checkNow();

Q_SIGNALS:
    void touched(); // the file is not as it was: check() when that suits, now or later
    void changed(); // another content since it was remembered
    void gone(); // there is no such file any more; told once
    void renamed(const QString &path); // it has this other name in the same folder; told in place of gone()

private:
    void attend();
    void seen(quint64 age, const files::FileStamp &stamp, const QString &renamed);

    QString path_;
    files::FileStamp known_;
    std::optional<files::FileStamp> found_; // while touched() is told
    QString newName_; // of what was found gone
    quint64 age_ = 0; // counts what was remembered; a look from before that tells nothing
    FileEyes *eyes_; // goes with its thread
    std::unique_ptr<QThread> thread_;
};

} // namespace app
