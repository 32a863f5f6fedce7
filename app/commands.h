// The main window's commands as data: every menu item and toolbar button is one row, and menus, buttons
// and shortcuts are made from the rows alone. A row says how a command looks; what it does is said where
// its name is bound to a handler.
#pragma once

#include <span>

namespace app {

// One menu item with the toolbar button that belongs to it. Plain constants; absent is "".
struct Command
{
    const char *menu = ""; // control name of the menu it stands in; "" for a button without an item
    const char *name = ""; // control name of the item; NAME_INDEX for an item of an array
    const char *caption = ""; // "-" for a separator
    const char *toolbar = ""; // control name of the toolbar that has its button
    const char *key = ""; // the button's key
    int place = 0; // on the toolbar, left to right; a new ten starts a new group
    const char *icon = ""; // name in the icon theme, or of a picture drawn for it
    const char *tip = ""; // tool tip where the caption does not do
    const char *shortcut = "";
    const char *otherShortcut = ""; // does the same without being shown
    int editorCommand = 0; // the code editor's number for it, whose key is shown; 0 for none
    bool checkable = false;
    bool once = false; // a key that is held down runs it no more than once: Delete would climb to the root
    bool submenu = false; // opens the menu of the same name
};

// One menu of the bar. Which of them a mode hides is the document's to say.
struct Menu
{
    const char *name;
    const char *caption;
    bool contextOnly = false; // never shown in the bar, only at the pointer
};

// In the order of the bar, and in the order of each menu.
std::span<const Menu> menuTable();
std::span<const Command> commandTable();

// Whether it acts on the tree's nodes: its shortcut then works while the tree has the focus, and there alone.
bool actsOnTree(const Command &command);

} // namespace app
