// What code editors share: the keys of their commands, and the macros.
#pragma once

#include "platform/control/macro_slots.h"
#include "platform/control/shortcut_table.h"

namespace control {

struct EditorLibrary
{
    ShortcutTable shortcuts;
    MacroSlots macros;
};

} // namespace control
