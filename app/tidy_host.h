// Tidy in the main window: its two dialogs, its runs, and the panel with what it said.
#pragma once

#include "tidy/convert_services.h"
#include "tidy/tidy_run.h"

#include <QHash>
#include <QObject>

class QDockWidget;
class QMainWindow;
class QProgressBar;
class QToolButton;

namespace control {
class CodeEditor;
}

namespace files {
class UserFolders;
}

namespace tidy {
class MessagesPanel;
}

namespace app {

class TidyHost : public QObject, private tidy::ProgressBar
{
public:
    // All of it outlives the host.
    struct Around
    {
        QMainWindow &window;
        control::CodeEditor &editor;
        QProgressBar &bar;
        dialogs::Dialogs &dialogs;
        shell::Shell &shell;
        const files::UserFolders &folders;
        std::function<QString()> currentPath;
        // What a transformation made, as a document of its own, with the name to propose.
        std::function<void(const QByteArray &, const QString &)> takeResult;
        std::function<int()> currentTab;
        std::function<void()> showXmlMode;
        std::function<void(const QString &)> note;
    };

    explicit TidyHost(const Around &around);

    void convert(); // "Convert and Tidy"
    void editOptions(); // "Convert and Tidy Options"
    void showMessages(); // "Tidy Messages"

    void modeChanged(); // another tab is the current one

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showProgress(int value) override;
    void hideProgress() override;
    void addPanel();
    void addButtons();
    void run(const QByteArray &markup, const QString &proposed = {});
    void textEdited();
    void takeTransformMessages(const std::vector<tidy::Message> &messages);
    void runEnded();
    QString summaryOf(const tidy::Counts &counts) const;
    void goTo(int line, int column);
    QByteArray textIdentity() const;

    Around around_;
    tidy::TidyRun run_;
    tidy::ConvertChoices choices_; // of the last conversion in this window
    tidy::ConvertServices services_;
    QToolButton *cmdcanceltidy; // in the status bar, while a run is on
    QToolButton *cmdtidyresult; // likewise, while an output is offered
    QDockWidget *dock_; // of the window
    tidy::MessagesPanel *panel_; // in the dock
    QHash<QString, QStringList> allowedFiles_; // to be read by transformations, by document
    std::vector<tidy::Message> transformMessages_; // of the transformation that the run follows
    QByteArray spokenOf_; // the identity of the text that the messages' places are in
    QString proposed_; // the name for what the run makes of a transformation's result; else empty
    bool runOnText_ = false; // the run is on that very text
    int tabSize_ = 0; // of that run
};

} // namespace app
