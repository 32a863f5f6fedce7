// Everything about the one open document, as the main window owns it.
//
// The window makes one session with its workspace, editor, browser and dialogs, and drives it like this:
//
//   start-up (after settings and macros)  session.life().prelodr(path that the program was started with)
//   "&New", "New1"                        session.life().newDocument()
//   "&Open...", "Open1"                   session.life().open()
//   a file dropped on the window          session.life().openPath(path)
//   "&Save", "Save1"                      session.saving().save()
//   "Save &As..."                         session.saving().saveAs()
//   close event ("E&xit" closes)          accept it when session.life().leave()
//   Help menu                             session.life().openHelp(HelpPage::Index)
//   any change of SSTab1's tab            session.views().enteredTab(newTab, previousTab)
//   "Check for Errors"                    session.parsing().xmlerr(true, true)
//   a result made of the document        session.succession().follow(text, proposed path)
//   Assigned file Preview                 session.saving().currentText(),
//   session.files().writePreviewCopy(text)
//
// "Normal Mode", "XML Mode" and "Preview" only select their tab. Workspace::showMenusFor shows and hides the
// menus by modeMenus(); Workspace::selectTab must end in enteredTab when (and only when) the tab changed,
// before it returns.
//
// Commands of the tree edit session.state().Document in place; nothing here has to be told.
#pragma once

#include "document/encodings.h"
#include "document/life.h"
#include "document/view_modes.h"

namespace document {

class Session
{
public:
    explicit Session(const Surroundings &around);
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    DocumentState &state() { return state_; }
    Parsing &parsing() { return parsing_; }
    WorkingFiles &files() { return files_; }
    Saving &saving() { return saving_; }
    Succession &succession() { return succession_; }
    Life &life() { return life_; }
    ViewModes &views() { return views_; }
    Encodings &encodings() { return encodings_; }

private:
    DocumentState state_;
    Parsing parsing_;
    WorkingFiles files_;
    Saving saving_;
    Succession succession_;
    Life life_;
    ViewModes views_;
    Encodings encodings_;
};

} // namespace document
