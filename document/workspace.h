// What the document's life needs of the window around it. The main window is one; tests are another.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace document {

// The three views, by tab number.
enum Tab
{
    NormalMode = 0,
    XmlMode = 1,
    Preview = 2
};

class Workspace
{
public:
    virtual ~Workspace() = default;

    virtual int currentTab() const = 0;
    // Selects a tab; a change of tab runs the tab switch handler, as a click on the tab would.
    virtual void selectTab(int tab) = 0;

    // The document is about to be parsed anew: the tree's nodes leave it, and can only be looked at until
    // the next rebuildTree(). When the parse fails the tree goes on showing them.
    virtual void documentGoing() { }

    // Rebuilds the tree from the document element and expands its first node.
    virtual void rebuildTree() = 0;

    virtual void documentSaved() { } // the document's file was just written

    // The user let an unsaved text go, which the document still is; it may yet be wanted back.
    virtual void textGivenUp(const QByteArray &) { }

    virtual void setTitleLine(const QString &text) = 0; // first panel of the status bar
    // Right end of the status bar: what was not done, and why. Until the next command.
    virtual void note(const QString &text) = 0;
    // There as well: what is to be known of the document's file. Until the file is written, or another
    // document is opened; empty for nothing.
    virtual void fileNote(const QString &text) = 0;

    // Enables or disables each mode's menu item and toolbar button together.
    virtual void setModesEnabled(bool normal, bool xml, bool preview) = 0;
    virtual void showMenusFor(int tab) = 0;
    virtual void layOut() = 0; // the resize rule, for the current tab
    virtual void enterEditor() = 0; // XML Mode is entered: fresh line history, command states

    virtual void closeAssignedPreview() = 0;
    virtual void openPage(const QString &path) = 0; // of the help
    virtual void showBusy(bool busy) = 0; // the pointer while a long step runs

    // What is asked, again and again, while a text is judged; false when the user wants that stopped. Once it
    // takes long it shows itself, for as long as the function lives. Nothing but that stop happens meanwhile.
    virtual std::function<bool()> patience() { return {}; }
};

} // namespace document
