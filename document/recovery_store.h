// Where unsaved texts wait: a folder that only the user may enter, with a file for each.
//
//   ID.live  the text of a window that has not saved it yet, written again and again
//   ID.lock  locked while that window runs
//   ID.part  being written, to be renamed when it is complete
//   ID.kept  a text that was given up, kept for a while
//
// Several windows share the folder. One store is used by one thread at a time.
#pragma once

#include "document/recovery_copy.h"
#include "platform/files/owner_lock.h"
#include "platform/result.h"

#include <QList>
#include <memory>

namespace document {

// A text that waits. What its head says is as yet unproved: only the whole file's checksum tells.
struct WaitingText
{
    QString file; // full path
    RecoveryHead head; // nothing but the time when damaged
    qint64 size = 0; // bytes
    QDateTime since; // when it was written or retired
    bool abandoned = false; // no window has it, and nobody gave it up
    bool damaged = false;
    std::shared_ptr<files::OwnerLock> claim; // while it lives no other window can claim an abandoned text
};

class RecoveryStore
{
public:
    static constexpr int mostDays = 14;
    static constexpr int mostKept = 20;
    static constexpr qint64 mostBytes
        = 500'000'000; // but the latest stays, however long, and takes no other's room
    static constexpr qint64 mostDamaged = 64'000'000; // bytes that are read; damage makes files of any length
    static constexpr qint64 longestFile = (qint64(1) << 31) - 1; // no text that was kept is longer

    explicit RecoveryStore(const QString &folder);
    ~RecoveryStore() = default;
    RecoveryStore(const RecoveryStore &) = delete;
    RecoveryStore &operator=(const RecoveryStore &) = delete;

    // This window's unsaved text, in place of the one before; on failure that one stands.
    platform::Result<void> write(const RecoveryCopy &copy);
    // This window has nothing unsaved any more.
    void drop();

    // A text that was given up, beside all others; the oldest of them may go for it.
    platform::Result<void> keep(const RecoveryCopy &copy);

    // What was given up, and what windows left behind that are no more; the latest first.
    QList<WaitingText> waiting() const;

    // Makes an abandoned text this window's to ask about; false when another has it or it is gone.
    bool claim(WaitingText &text) const;

    // All of a text, proved; of a damaged one no more than mostDamaged.
    platform::Result<OpenedCopy> open(const WaitingText &text) const;

    // The text is open in this window now, and so its unsaved text; false when it could not be taken over.
    bool adopt(const WaitingText &text);
    // An abandoned text was given up: kept from now on.
    void retire(const WaitingText &text) const;
    void remove(const WaitingText &text) const;

    // Lets go of what was kept too long or is too much, and of what vanished processes left half written.
    void expire(const QDateTime &now);

private:
    platform::Result<void> claimOwn();
    platform::Result<void> put(const QString &place, const RecoveryCopy &copy);
    QString pathOf(const QString &id, const char *suffix) const;
    QStringList filesOf(const char *suffix) const;
    WaitingText look(const QString &file, bool abandoned) const;
    std::unique_ptr<files::OwnerLock> takeLock(const QString &file) const;
    void clearRemains();

    QString folder_;
    QString id_; // empty until something is written
    std::unique_ptr<files::OwnerLock> own_;
};

} // namespace document
