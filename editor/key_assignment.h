// Giving keys to a command of the editor, and what other commands lose by it.
#pragma once

#include "platform/control/shortcut_table.h"

#include <QList>
#include <QString>

namespace editor {

// Another command's keys that would no longer run it.
struct KeyConflict
{
    int command;
    QKeySequence keys; // the same ones, or ones that begin with them, or their beginning
};

QList<KeyConflict> keyConflicts(const control::ShortcutTable &table, int command, const QKeySequence &keys);

// One sentence about each of them, "Ctrl+D is used by Duplicate Selection or Line."; empty for none.
QString conflictText(const QList<KeyConflict> &conflicts);

// The same after they were taken, "Ctrl+D was taken from Duplicate Selection or Line."
QString takenText(const QList<KeyConflict> &conflicts);

// Gives the command these keys alone, and takes from other commands what would be in conflict with them.
// No keys leave the command without.
void assignKeys(control::ShortcutTable &table, int command, const QList<QKeySequence> &keys);

// The keys before anybody chose others.
control::ShortcutTable firstShortcuts();

// All keys of a command as the user reads them.
QString keysText(const control::ShortcutTable &table, int command);

} // namespace editor
