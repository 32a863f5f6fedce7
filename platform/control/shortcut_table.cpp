#include "platform/control/shortcut_table.h"

#include "platform/control/editor_commands.h"

#include <QKeyEvent>

namespace control {

namespace {

// A key that prints a sign carries Shift in the sign itself, and differently on each keyboard.
bool printsSign(Qt::Key key)
{
    return key > Qt::Key_Space && key < Qt::Key_AsciiTilde && (key < Qt::Key_0 || key > Qt::Key_9)
        && (key < Qt::Key_A || key > Qt::Key_Z);
}

QKeyCombination plainStroke(Qt::KeyboardModifiers modifiers, Qt::Key key)
{
    modifiers &= ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
    if (key == Qt::Key_Enter)
        key = Qt::Key_Return;
    if (key == Qt::Key_Backtab) {
        key = Qt::Key_Tab;
        modifiers |= Qt::ShiftModifier;
    }
    if (printsSign(key))
        modifiers &= ~Qt::ShiftModifier;
    return QKeyCombination(modifiers, key);
}

QKeyCombination plainStroke(QKeyCombination stroke)
{
    return plainStroke(stroke.keyboardModifiers(), stroke.key());
}

QKeySequence plainKeys(const QKeySequence &keys)
{
    if (keys.count() < 2)
        return keys.isEmpty() ? keys : QKeySequence(plainStroke(keys[0]));
    return {plainStroke(keys[0]), plainStroke(keys[1])};
}

} // namespace

ShortcutTable::ShortcutTable()
{
    for (const EditorCommand &command : editorCommands())
        if (const QString keys = QString::fromLatin1(command.keys); !keys.isEmpty())
            setShortcuts(command.number, QKeySequence::listFromString(keys, QKeySequence::PortableText));
}

void ShortcutTable::setShortcuts(int command, const QList<QKeySequence> &keys)
{
    shortcuts_.remove(command);
    QList<QKeySequence> own;
    for (const QKeySequence &given : keys) {
        const QKeySequence plain = plainKeys(given);
        if (plain.isEmpty() || own.contains(plain))
            continue;
        for (QList<QKeySequence> &others : shortcuts_)
            others.removeAll(plain);
        own.append(plain);
    }
    shortcuts_.insert(command, own);
}

int ShortcutTable::command(const QKeySequence &typed) const
{
    for (auto row = shortcuts_.cbegin(); row != shortcuts_.cend(); ++row)
        if (row->contains(typed))
            return row.key();
    return 0;
}

bool ShortcutTable::beginsShortcut(const QKeySequence &typed) const
{
    for (const QList<QKeySequence> &row : shortcuts_)
        for (const QKeySequence &keys : row)
            if (typed.matches(keys) == QKeySequence::PartialMatch)
                return true;
    return false;
}

QKeySequence typedKeys(const QKeySequence &earlier, const QKeyEvent &event)
{
    const QKeyCombination stroke = plainStroke(event.modifiers(), static_cast<Qt::Key>(event.key()));
    return earlier.isEmpty() ? QKeySequence(stroke) : QKeySequence(earlier[0], stroke);
}

} // namespace control
