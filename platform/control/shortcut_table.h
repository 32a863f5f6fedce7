// Which keys run which numbered command. Only the editor with the focus obeys them.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QMap>
#include <QString>
#include <optional>

class QKeyEvent;

namespace control {

// The modifiers of a stroke are the sum of these.
enum ModifierFlag
{
    CtrlModifier = 1,
    ShiftModifier = 2,
    AltModifier = 4,
    MetaModifier = 8
};

// A shortcut in the form in which it is kept: one stroke or two, each its modifiers and the portable name of
// its key ("L", "F3", "PgUp", "+").
struct Shortcut
{
    int Modifiers1 = 0;
    QString VirtKey1;
    int Modifiers2 = 0;
    QString VirtKey2; // empty for one stroke

    bool operator==(const Shortcut &) const = default;
};

// Nothing when there is no such key or modifier, or when a plain sign could no longer be typed.
std::optional<QKeySequence> keysOf(const Shortcut &shortcut);

// Of the first two strokes.
Shortcut shortcutOf(const QKeySequence &keys);

class ShortcutTable
{
public:
    // The built-in shortcuts.
    ShortcutTable();

    // In order; the first is the one to show. Empty when the command has none.
    QList<QKeySequence> shortcuts(int command) const { return shortcuts_.value(command); }

    // Keys of one or two strokes; taken from any other command that had them.
    void setShortcuts(int command, const QList<QKeySequence> &keys);

    // The same one by one; an index out of range is an empty shortcut, and removing it does nothing.
    int shortcutCount(int command) const { return int(shortcuts(command).size()); }
    Shortcut shortcut(int command, int index) const;
    void unregisterShortcut(int command, int index);
    // Behind the command's others; false for a shortcut that is none.
    bool registerShortcut(int command, const Shortcut &shortcut);

    // The command run by exactly these keys; 0 for none.
    int command(const QKeySequence &typed) const;

    // Whether these keys are the beginning of a longer shortcut.
    bool beginsShortcut(const QKeySequence &typed) const;

    bool operator==(const ShortcutTable &) const = default;

private:
    QMap<int, QList<QKeySequence>> shortcuts_;
};

// The stroke of a key event, after an earlier one when that is not empty.
QKeySequence typedKeys(const QKeySequence &earlier, const QKeyEvent &event);

} // namespace control
