// The main window's code editor with all that serves it: its settings and macros between runs, find and
// replace, and the Assigned file Preview.
#pragma once

#include "document/session.h"
#include "editor/editor_services.h"
#include "editor/find_memory.h"
#include "editor/macro_files.h"
#include "platform/control/shortcut_table.h"

#include <QPointer>
#include <memory>

namespace browser {
class PreviewProfile;
}
namespace editor {
class frmprview;
}

namespace app {

class CommandSet;
class StatusBar;
class ViewFrame;

class EditorHost : public QObject
{
public:
    // All of it outlives the host.
    struct Around
    {
        QWidget &window;
        ViewFrame &frame;
        StatusBar &bar;
        control::CodeEditor &editor;
        document::Session &session;
        dialogs::Dialogs &dialogs;
        settings::SettingsStore &settings;
        CommandSet &commands;
        std::shared_ptr<browser::PreviewProfile> previews;
        QString dataFolder; // that the macros stand in
        std::function<void(const QString &)> note;
    };

    explicit EditorHost(const Around &around);
    ~EditorHost() override;

    // Start-up: the editor's settings, then the macros.
    void load();

    // The window is left: keeps how the text is shown.
    void rememberView();

    // Asks about macros that were recorded and not saved; false when the window is to stay.
    bool mayLeave();

    void saveMacros(); // "Save Macro's"
    void countAll(); // "Count All"
    void toggleAssignedPreview(); // "Assigned file Preview"
    void closeAssignedPreview();

private:
    void saveSettings();
    void showKeys();
    void showActivity(const QString &text);
    void openAssignedPreview();
    void showAssigned(bool open);

    Around around_;
    editor::FindMemory memory_;
    editor::EditorServices services_;
    editor::MacroFiles macros_;
    control::ShortcutTable keys_; // as the menus show them
    QPointer<editor::frmprview> assigned_;
    std::unique_ptr<editor::EditorServices> assignedServices_; // go before the dialog and its editor do
};

} // namespace app
