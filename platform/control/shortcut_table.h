// Which keys run which numbered command. Only the editor with the focus obeys them.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QMap>

class QKeyEvent;

namespace control {

class ShortcutTable
{
public:
    // The built-in shortcuts.
    ShortcutTable();

    // In order; the first is the one to show. Empty when the command has none.
    QList<QKeySequence> shortcuts(int command) const { return shortcuts_.value(command); }

    // Keys of one or two strokes; taken from any other command that had them.
    void setShortcuts(int command, const QList<QKeySequence> &keys);

    // The command run by exactly these keys; 0 for none.
    int command(const QKeySequence &typed) const;

    // Whether these keys are the beginning of a longer shortcut.
    bool beginsShortcut(const QKeySequence &typed) const;

private:
    QMap<int, QList<QKeySequence>> shortcuts_;
};

// The stroke of a key event, after an earlier one when that is not empty.
QKeySequence typedKeys(const QKeySequence &earlier, const QKeyEvent &event);

} // namespace control
