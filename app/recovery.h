// What is unsaved survives the program: a copy of it is written whenever the user pauses, offered after a
// start that follows a crash, and gone when there is nothing unsaved any more. What the user let go of stays
// for a while in the "Recover Text" menu.
#pragma once

#include "document/recovery_store.h"
#include "document/recovery_writer.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>

class QMenu;

namespace dialogs {
class Dialogs;
}
namespace document {
class Session;
}

namespace app {

class Recovery : public QObject
{
public:
    // All of it outlives this.
    struct Around
    {
        document::Session &session;
        dialogs::Dialogs &dialogs;
        QMenu &menu;
        std::function<void(const QString &)> note;
        std::function<void(const QString &)> fileNote; // what stands until the document is saved
        QString dataFolder; // the copies are in a folder of it
    };

    // When a change is written, in milliseconds.
    struct Pace
    {
        int rest; // since the last change
        int least; // since the last time
        int longest; // since the first change that is not written, whether there is a rest or not
    };

    explicit Recovery(const Around &around);
    ~Recovery() override;
    Recovery(const Recovery &) = delete;
    Recovery &operator=(const Recovery &) = delete;

    // For documents of any size, in place of what is usual.
    void setPace(const Pace &pace) { pace_ = largePace_ = pace; }

    // Something was edited.
    void edited();
    // The document was saved, or is another one.
    void settled();
    // The user let this text of the open document go.
    void givenUp(const QByteArray &text);
    // The program ends as it should, with nothing unsaved.
    void end();
    // The program ends all the same: what is unsaved is written before this returns.
    void endUnsaved();

    // After start-up: asks about what windows left behind that are no more.
    void offer();

private:
    void take();
    document::RecoveryCopy copyOf(const QByteArray &text) const;
    void written(const platform::Result<void> &result);

    void keepNow(const QByteArray &text);
    QList<document::WaitingText> waiting();
    bool ask(const document::RecoveryCopy &copy);
    bool offerOne(document::WaitingText &text);
    void choose(const document::WaitingText &text);
    bool open(const document::WaitingText &text, const document::OpenedCopy &opened);
    void fill();
    void deleteKept();

    Around around_;
    // Taking the text of a large document could be felt while somebody types, and writing it is work.
    Pace pace_{2000, 5000, 8000};
    Pace largePace_{2000, 10000, 30000};
    QTimer rest_;
    QElapsedTimer lastTaken_;
    QElapsedTimer waitingSince_; // the first change that is not written
    bool ended_ = false;
    bool toldOfFailure_ = false;
    const document::RecoveryStore looking_; // of the same folder, while the writer has the other
    document::RecoveryStore store_;
    document::RecoveryWriter writer_; // last, so that nothing is told after the rest has gone
};

} // namespace app
