// What the list of commands lists: every row of the menus, and every command of the code editor that has
// none.
#pragma once

#include "app/command_list.h"

namespace control {
class CodeEditor;
}

namespace app {

// tab: the mode shown now; what acts on another cannot be run. editor and commands outlive what is returned.
QList<ListedCommand> allCommands(const CommandSet &commands, control::CodeEditor &editor, int tab);

} // namespace app
