// The main window: one document, its three views, and everything that acts on them.
#pragma once

#include "app/command_set.h"
#include "app/editor_routing.h"
#include "app/menus.h"
#include "document/session.h"
#include "document/workspace.h"
#include "platform/dialogs/dialogs.h"

#include <QMainWindow>
#include <memory>

class QToolBar;

namespace browser {
class PreviewProfile;
class WebBrowser;
} // namespace browser
namespace control {
class CodeEditor;
}
namespace tree {
class NodeCommands;
class TreeModel;
class TreeView;
} // namespace tree
namespace files {
class UserFolders;
}
namespace settings {
class SettingsStore;
}
namespace shell {
class Shell;
}

namespace app {

struct Appearance;
class DocumentMark;
class EditorHost;
class EncodingMenu;
class FileDrop;
class FileWatch;
class frmHelp;
class MarkupClipboard;
class NodeEditing;
class QuickTagsHost;
class RecentDocuments;
class Recovery;
class TidyHost;
class TreePlace;
class StatusBar;
class ViewFrame;

// What the main window is given; all of it outlives the window.
struct Outside
{
    dialogs::Dialogs &dialogs;
    shell::Shell &shell;
    settings::SettingsStore &settings;
    const files::UserFolders &folders;
    std::shared_ptr<browser::PreviewProfile> previews;
};

class mainfrm : public QMainWindow, private document::Workspace
{
    Q_OBJECT

public:
    explicit mainfrm(const Outside &outside);
    ~mainfrm() override;

    // Start-up, before the window is shown: opens the document that the arguments name, or a new one.
    void prelodr(const QString &document);

    // The system ends the program and does not wait for answers: what is unsaved is kept for the next start.
    void endAtOnce();

    // Once the window is shown: asks about unsaved texts of windows that did not end as they should.
    void offerRecovery();

    document::Session &session() { return *session_; }
    CommandSet &commands() { return commands_; }
    Recovery &recovery() { return *recovery_; }

Q_SIGNALS:
    // The window was closed for good; nothing but the end of the process may follow.
    void left();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    // document::Workspace
    int currentTab() const override;
    void selectTab(int tab) override;
    void documentGoing() override;
    void rebuildTree() override;
    void documentSaved() override;
    void textGivenUp(const QByteArray &text) override;
    void setTitleLine(const QString &text) override;
    void note(const QString &text) override;
    void fileNote(const QString &text) override;
    void setModesEnabled(bool normal, bool xml, bool preview) override;
    void showMenusFor(int tab) override;
    void layOut() override;
    void enterEditor() override;
    void closeAssignedPreview() override;
    void openPage(const QString &path) override;
    void showBusy(bool busy) override;
    std::function<bool()> patience() override;

    // The commands, each named for what its menu item does (main_window_commands.cpp).
    void bindCommands();
    void New();
    void Open();
    void Save();
    void SaveAs();
    void Exit();
    void checkForErrors();
    void normalMode();
    void xmlMode();
    void preview();
    void helpContents();
    void helpIndex();
    void helpSearch();
    void about();
    void listCommands();
    void openAddress(const QString &address); // a page of the web, in the desktop's browser
    void quickTags();
    void convertAndTidy();
    void tidyOptions();
    void tidyMessages();
    void saveMacros();
    void countAll();
    void assignedPreview();
    void browseBack();
    void browseForward();
    void browseReload();
    void browsed();

    void addToolBars();
    void bindAppearances();
    void showAppearance(const Appearance &chosen);
    void addViews();
    void connectEditor();
    void connectTree();
    void editNodes();
    void serveEditor(const Outside &outside);
    void tellOfDocument();
    void tellOfFirstWriting();
    void keepUnsaved();
    void watchFile();
    void checkFile();
    void fileChanged();
    bool askToLoadAgain(const QString &otherwise);
    bool mayWriteFile();
    void fileGone();
    void fileRenamed(const QString &path);
    void leaveForGood();
    void tabChanged(int tab);
    void chooseMode(int tab);
    void carryPlace(int to, bool fromText);
    void focusView();
    void openDropped(const QStringList &paths);

    dialogs::Dialogs &dialogs_;
    shell::Shell &shell_;
    settings::SettingsStore &settings_;
    const files::UserFolders &folders_;

    CommandSet commands_;
    Menus menus_;
    StatusBar *StatusBar1;
    QToolBar *Toolbar1;
    ViewFrame *frame_;
    control::CodeEditor *CodeMax1;
    browser::WebBrowser *WebBrowser1;
    EditorRouting routing_;
    std::unique_ptr<document::Session> session_;
    std::unique_ptr<tree::TreeModel> model_; // of the session's document
    tree::TreeView *TreeView1;
    std::unique_ptr<TreePlace> place_;
    std::unique_ptr<MarkupClipboard> clipboard_;
    std::unique_ptr<tree::NodeCommands> nodes_;
    std::unique_ptr<NodeEditing> nodeEditing_;
    std::unique_ptr<QuickTagsHost> quickTags_;
    std::unique_ptr<TidyHost> tidy_;
    std::unique_ptr<EditorHost> editorHost_;
    std::unique_ptr<FileDrop> drops_;
    frmHelp *help_ = nullptr; // once it was asked for
    std::unique_ptr<DocumentMark> mark_;
    std::unique_ptr<EncodingMenu> encodings_;
    std::unique_ptr<FileWatch> watch_;
    std::unique_ptr<RecentDocuments> recent_;
    std::unique_ptr<Recovery> recovery_;
    int tab_ = document::NormalMode; // the one that the last switch led to
    bool keepsPlace_ = false; // what is parsed now is the same document
    bool fileGone_ = false; // since it was last written
    bool left_ = false;
};

} // namespace app
