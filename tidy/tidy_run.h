// Running Tidy on a piece of markup: the text goes into the exchange folder, the launcher is started, and a
// timer watches for the marker that says the output is complete. The output then takes the place of the
// editor's text, at once or when the editor is shown again; but never unasked that of a text which is another
// than the one that the run began with.
#pragma once

#include "tidy/tidy_messages.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace control {
class EditorControl;
}
namespace shell {
class Helper;
class Shell;
} // namespace shell

namespace tidy {

// The main window's progress bar, 0 to 100.
class ProgressBar
{
public:
    virtual ~ProgressBar() = default;
    virtual void showProgress(int value) = 0; // shows the bar when it is hidden
    virtual void hideProgress() = 0;
};

// One at most is in progress; a second one started meanwhile takes the first one's place. The editor, the
// bar and the shell must outlive the object.
class TidyRun : public QObject
{
    Q_OBJECT

public:
    TidyRun(const QString &programFolder, control::EditorControl &editor, ProgressBar &bar,
            shell::Shell &shell, QObject *parent = nullptr);
    ~TidyRun() override; // a run in progress is ended

    // What is done with the output in place of replacing the editor's text.
    using Put = std::function<void(const QByteArray &)>;

    // Starts a run on markup (UTF-8) with the options of the two configuration files, and returns at once.
    // Where the exchange files cannot be prepared nothing is started and a note says why: what an earlier run
    // left must not pass for this one's. A launcher that cannot be started is noted as well, and waited for.
    void start(const QByteArray &markup, Put put = {});

    // What runs, or has come and was not put in, is for a text that is gone: it is given up, and a note says
    // so.
    void abandon();

    // The user does not want to wait: launcher and Tidy are ended, and a note says so. Nothing where there is
    // no run.
    void cancel();

    // Whether the editor's text is the one that the user sees. What comes meanwhile is kept until it is
    // again, and then put in unless the text has become another, for which it is offered.
    void setEditorShown(bool shown);

    // Whether there is an output that was not put in, because the text was edited after the run began.
    bool offersOutput() const { return kept_ && kept_->offered; }

    // Puts in what is offered. Undo brings the edited text back.
    void takeOffer();

    bool inProgress() const { return timer_.isActive(); }

    // Whether a run's output is kept until the editor is shown.
    bool keepsOutput() const { return kept_ && !kept_->offered; }

    // What Tidy said in the last run that ended, a failure first of all; empty before the first.
    const std::vector<Message> &messages() const { return messages_; }
    const Counts &counts() const { return counts_; }

public Q_SLOTS:
    // One step of the watch; the timer's, every 100 ms while a run is in progress.
    void tick();

Q_SIGNALS:
    // The run is over: the editor's text is replaced, the output is kept or offered, or the note says why
    // not.
    void finished();

    // offersOutput() has become another.
    void offerChanged();

    // One line for the status bar: something was skipped.
    void note(const QString &line);

private:
    struct Kept
    {
        QByteArray text;
        bool offered = false;
    };

    bool handOver(const QByteArray &markup);
    void complete();
    void fail(const QString &reason);
    void readReport(bool hasOutput);
    void takeOutput();
    void putIn();
    void deliver(const QByteArray &output);
    void stop();
    void endHelper();
    void clearScratch() const;
    void dropOutput();
    void withdrawInput();
    QString exchangeFile(const char *name) const;

    QString folder_;
    control::EditorControl &editor_;
    ProgressBar &bar_;
    shell::Shell &shell_;
    QTimer timer_;
    int progress_ = 0;
    bool editorShown_ = true;
    quint64 revision_ = 0; // of the editor's text when the run began
    std::unique_ptr<shell::Helper> helper_; // the launcher
    std::optional<Kept> kept_;
    Put put_; // of the last run
    std::vector<Message> messages_;
    Counts counts_;
};

} // namespace tidy
