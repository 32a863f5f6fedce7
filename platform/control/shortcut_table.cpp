#include "platform/control/shortcut_table.h"

#include "platform/control/editor_commands.h"

#include <QKeyEvent>
#include <algorithm>
#include <tuple>
#include <utility>

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

constexpr std::pair<ModifierFlag, Qt::KeyboardModifier> modifierRows[] = {
    {CtrlModifier, Qt::ControlModifier},
    {ShiftModifier, Qt::ShiftModifier},
    {AltModifier, Qt::AltModifier},
    {MetaModifier, Qt::MetaModifier},
};
constexpr int allModifiers = CtrlModifier | ShiftModifier | AltModifier | MetaModifier;

bool isModifier(Qt::Key key)
{
    constexpr Qt::Key modifiers[] = {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt,     Qt::Key_Meta,
                                     Qt::Key_AltGr, Qt::Key_NumLock, Qt::Key_CapsLock};
    return std::find(std::begin(modifiers), std::end(modifiers), key) != std::end(modifiers);
}

std::optional<QKeyCombination> strokeOf(int flags, const QString &name)
{
    constexpr qsizetype longestName = 40;
    if (flags < 0 || flags > allModifiers || name.isEmpty() || name.size() > longestName)
        return {};
    const QKeySequence keys = QKeySequence::fromString(name, QKeySequence::PortableText);
    if (keys.count() != 1)
        return {};
    const QKeyCombination bare = keys[0];
    if (bare.keyboardModifiers() != Qt::NoModifier || bare.key() == Qt::Key_unknown
        || bare.key() == Qt::Key(0) || isModifier(bare.key()))
        return {};
    Qt::KeyboardModifiers modifiers;
    for (const auto &[flag, modifier] : modifierRows)
        modifiers.setFlag(modifier, (flags & flag) != 0);
    return QKeyCombination(modifiers, bare.key());
}

// A key that brings a sign into the text, alone or with Shift.
bool types(QKeyCombination stroke)
{
    constexpr int firstNamedKey = 0x01000000;
    return stroke.key() < firstNamedKey && (stroke.keyboardModifiers() & ~Qt::ShiftModifier) == 0;
}

std::pair<int, QString> partsOf(QKeyCombination stroke)
{
    int flags = 0;
    for (const auto &[flag, modifier] : modifierRows)
        flags |= stroke.keyboardModifiers().testFlag(modifier) ? flag : 0;
    return {flags, QKeySequence(stroke.key()).toString(QKeySequence::PortableText)};
}

} // namespace

std::optional<QKeySequence> keysOf(const Shortcut &shortcut)
{
    const std::optional<QKeyCombination> first = strokeOf(shortcut.Modifiers1, shortcut.VirtKey1);
    if (!first || types(*first))
        return {};
    if (shortcut.VirtKey2.isEmpty())
        return QKeySequence(*first);
    const std::optional<QKeyCombination> second = strokeOf(shortcut.Modifiers2, shortcut.VirtKey2);
    if (!second)
        return {};
    return QKeySequence(*first, *second);
}

Shortcut shortcutOf(const QKeySequence &keys)
{
    Shortcut shortcut;
    if (keys.count() > 0)
        std::tie(shortcut.Modifiers1, shortcut.VirtKey1) = partsOf(keys[0]);
    if (keys.count() > 1)
        std::tie(shortcut.Modifiers2, shortcut.VirtKey2) = partsOf(keys[1]);
    return shortcut;
}

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

Shortcut ShortcutTable::shortcut(int command, int index) const
{
    return shortcutOf(shortcuts(command).value(index));
}

void ShortcutTable::unregisterShortcut(int command, int index)
{
    QList<QKeySequence> keys = shortcuts(command);
    if (index < 0 || index >= keys.size())
        return;
    keys.removeAt(index);
    setShortcuts(command, keys);
}

bool ShortcutTable::registerShortcut(int command, const Shortcut &shortcut)
{
    const std::optional<QKeySequence> keys = keysOf(shortcut);
    if (!keys)
        return false;
    setShortcuts(command, shortcuts(command) << *keys);
    return true;
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
