#include "editor/key_assignment.h"

#include "platform/control/editor_commands.h"

#include <QStringList>

namespace editor {

namespace {

constexpr int selectAllCommand = 137;

bool excludeEachOther(const QKeySequence &one, const QKeySequence &other)
{
    return one.matches(other) != QKeySequence::NoMatch || other.matches(one) != QKeySequence::NoMatch;
}

QString sentences(const QList<KeyConflict> &conflicts, const QString &pattern)
{
    QStringList told;
    for (const KeyConflict &conflict : conflicts)
        told.append(pattern.arg(conflict.keys.toString(QKeySequence::NativeText),
                                QString::fromLatin1(control::findEditorCommand(conflict.command)->name)));
    return told.join(u' ');
}

} // namespace

QList<KeyConflict> keyConflicts(const control::ShortcutTable &table, int command, const QKeySequence &keys)
{
    QList<KeyConflict> found;
    if (keys.isEmpty())
        return found;
    for (const control::EditorCommand &other : control::editorCommands())
        for (const QKeySequence &used : table.shortcuts(other.number))
            if (other.number != command && excludeEachOther(keys, used))
                found.append({other.number, used});
    return found;
}

QString conflictText(const QList<KeyConflict> &conflicts)
{
    return sentences(conflicts, QStringLiteral("%1 is used by %2."));
}

QString takenText(const QList<KeyConflict> &conflicts)
{
    return sentences(conflicts, QStringLiteral("%1 was taken from %2."));
}

void assignKeys(control::ShortcutTable &table, int command, const QList<QKeySequence> &keys)
{
    for (const QKeySequence &each : keys) {
        for (const KeyConflict &conflict : keyConflicts(table, command, each)) {
            QList<QKeySequence> left = table.shortcuts(conflict.command);
            left.removeAll(conflict.keys);
            table.setShortcuts(conflict.command, left);
        }
    }
    table.setShortcuts(command, keys);
}

// Select All gets its key where the settings are read, when it has none.
control::ShortcutTable firstShortcuts()
{
    control::ShortcutTable table;
    if (table.shortcuts(selectAllCommand).isEmpty())
        table.setShortcuts(selectAllCommand, {QKeySequence(Qt::CTRL | Qt::Key_L)});
    return table;
}

QString keysText(const control::ShortcutTable &table, int command)
{
    return QKeySequence::listToString(table.shortcuts(command), QKeySequence::NativeText);
}

} // namespace editor
