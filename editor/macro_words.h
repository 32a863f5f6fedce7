// What is said about macros: their names, what they hold, and how a play of them ended.
#pragma once

#include "platform/control/editor_library.h"
#include "platform/control/macro_player.h"

#include <QString>

namespace editor {

// "Macro 1" for slot 0.
QString macroName(int slot);

// "1 step", "12 steps".
QString countedSteps(qsizetype steps);

// "empty", or the number of steps.
QString holdingText(const QByteArray &macroBytes);

// The keys that play the slot; empty when it has none.
QString keysText(const control::EditorLibrary &library, int slot);

// Why a play ended before its end, for the status bar; empty when it did not.
QString endText(const control::PlayReport &report);

} // namespace editor
