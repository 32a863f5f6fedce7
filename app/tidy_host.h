// Tidy in the main window: its two dialogs, its runs, and the panel with what it said.
#pragma once

#include "tidy/convert_services.h"
#include "tidy/tidy_run.h"

#include <QObject>
#include <QPointer>

class QDockWidget;
class QMainWindow;
class QProgressBar;

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
        std::function<void(const QString &)> note;
    };

    explicit TidyHost(const Around &around);

    void convert(); // "Convert and Tidy"
    void editOptions(); // "Convert and Tidy Options"
    void showMessages(); // "Tidy Messages"

private:
    void showProgress(int value) override;
    void hideProgress() override;
    void addPanel();
    void run(const QByteArray &markup);
    void tellMessages(const std::vector<tidy::Message> &messages);
    void goTo(int line, int column);

    Around around_;
    tidy::TidyRun run_;
    tidy::ConvertServices services_;
    QDockWidget *dock_; // of the window
    tidy::MessagesPanel *panel_; // in the dock
};

} // namespace app
