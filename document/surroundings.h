// The windows that the document's life works through; all belong to the main window and outlive the session.
#pragma once

#include "document/workspace.h"
#include "platform/browser/browser.h"
#include "platform/control/editor_control.h"
#include "platform/dialogs/dialogs.h"

namespace document {

struct Surroundings
{
    Workspace &workspace;
    control::EditorControl &editor;
    browser::Browser &browser;
    dialogs::Dialogs &dialogs;
    QString exchangeFolder; // where Tidy runs leave their files
};

// The pointer shows that a long step runs, for as long as this lives. Never around a question to the user.
class Busy
{
public:
    explicit Busy(Workspace &workspace) : workspace_(workspace) { workspace_.showBusy(true); }
    ~Busy() { workspace_.showBusy(false); }
    Busy(const Busy &) = delete;
    Busy &operator=(const Busy &) = delete;

private:
    Workspace &workspace_;
};

} // namespace document
