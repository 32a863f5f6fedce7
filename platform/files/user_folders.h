// Where a running program keeps what it writes for itself: beside the program where that is the user's own to
// write, in the user's data folder where the program is installed for everybody.
#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace files {

class OwnerLock;

class UserFolders
{
public:
    // Finds or makes the folders, and puts into them what they lack of the program folder's originals.
    // What cannot be made is told by notes().
    explicit UserFolders(const QString &programFolder);
    ~UserFolders();
    UserFolders(const UserFolders &) = delete;
    UserFolders &operator=(const UserFolders &) = delete;

    // The user's Tidy options and macros; shared by all windows of the user.
    const QString &data() const { return data_; }

    // With the exchange of Tidy runs: data() for one window, one of its own for each further window, so that
    // their runs do not meet.
    const QString &exchange() const { return exchange_; }

    // Which of the user's windows this is, from 1 on; a number is free again when its window has closed.
    int window() const { return window_; }

    // One line for each thing that could not be done.
    const QStringList &notes() const { return notes_; }
    void addNote(const QString &line) { notes_.append(line); }

private:
    void seed(const QString &programFolder, const QString &folder);
    bool claim(const QString &folder);
    void claimExchange();

    QString data_;
    QString exchange_;
    int window_ = 1;
    QStringList notes_;
    std::unique_ptr<OwnerLock> lock_; // on the exchange folder, for as long as the program runs
};

} // namespace files
