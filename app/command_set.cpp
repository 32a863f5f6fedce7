#include "app/command_set.h"

#include "app/commands.h"
#include "platform/dialogs/theme_icon.h"

namespace app {

namespace {

QString text(const char *constant) { return QString::fromLatin1(constant); }

// The caption without its mnemonic and dots, for a tool tip.
QString plainCaption(const QString &caption)
{
    QString plain = caption.trimmed();
    plain.remove(QLatin1Char('&'));
    if (plain.endsWith(QStringLiteral("...")))
        plain.chop(3);
    return plain;
}

QString toolTip(const Command &row, const QKeySequence &shortcut)
{
    if (*row.tip != 0)
        return text(row.tip);
    const QString plain = plainCaption(text(row.caption));
    return shortcut.isEmpty()
        ? plain
        : QStringLiteral("%1 (%2)").arg(plain, shortcut.toString(QKeySequence::NativeText));
}

// An item of an array carries its index.
void numberItem(QAction &action, const QString &name)
{
    bool isNumber = false;
    const int index = name.section(QLatin1Char('_'), -1).toInt(&isNumber);
    if (isNumber)
        action.setProperty("index", index);
}

QList<QKeySequence> shortcutsOf(const Command &row)
{
    QList<QKeySequence> shortcuts;
    for (const char *keys : {row.shortcut, row.otherShortcut})
        if (*keys != 0)
            shortcuts.append(QKeySequence(text(keys)));
    return shortcuts;
}

QAction *makeAction(const Command &row, QObject *owner)
{
    auto *action = new QAction(text(row.caption), owner);
    action->setObjectName(text(row.name));
    numberItem(*action, action->objectName());
    action->setToolTip(toolTip(row, QKeySequence(text(row.shortcut))));
    action->setShortcuts(shortcutsOf(row));
    action->setAutoRepeat(!row.once);
    action->setCheckable(row.checkable);
    action->setMenuRole(QAction::NoRole);
    if (*row.icon != 0)
        action->setIcon(dialogs::themeIcon(text(row.icon)));
    return action;
}

bool hasAction(const Command &row) { return !row.submenu && text(row.caption) != QStringLiteral("-"); }

} // namespace

CommandSet::CommandSet(QObject *parent) : QObject(parent)
{
    for (const Command &row : commandTable()) {
        if (hasAction(row))
            actions_.insert(text(row.name), makeAction(row, this));
    }
}

QAction *CommandSet::action(const Command &row) const { return action(text(row.name)); }

void CommandSet::bind(const char *name, const std::function<void()> &run)
{
    QAction *bound = action(text(name));
    if (bound == nullptr)
        qFatal("There is no command %s to bind anything to.", name);
    const bool again = bound_.contains(text(name));
    bound_.insert(text(name), run);
    if (again)
        return;
    connect(bound, &QAction::triggered, this, [this, name = text(name)] {
        if (beforeRun_)
            beforeRun_();
        bound_.value(name)();
    });
}

void CommandSet::showEditorKeys(const std::function<QKeySequence(int)> &keyOf)
{
    for (const Command &row : commandTable()) {
        if (row.editorCommand == 0)
            continue;
        const QKeySequence keys = keyOf(row.editorCommand);
        QAction *shown = action(row);
        shown->setShortcutContext(Qt::WidgetShortcut); // of a menu, which never has the focus: shown only
        shown->setShortcut(keys);
        shown->setToolTip(toolTip(row, keys));
    }
}

void CommandSet::offerTreeKeys(bool offered)
{
    for (const Command &row : commandTable())
        if (QAction *shown = action(row); shown != nullptr && actsOnTree(row))
            shown->setShortcuts(offered ? shortcutsOf(row) : QList<QKeySequence>());
}

void CommandSet::refreshIcons()
{
    for (const Command &row : commandTable())
        if (QAction *shown = action(row); shown != nullptr && *row.icon != 0)
            shown->setIcon(dialogs::themeIcon(text(row.icon)));
}

QStringList CommandSet::unbound() const
{
    QStringList names;
    for (auto it = actions_.cbegin(); it != actions_.cend(); ++it)
        if (!bound_.contains(it.key()))
            names.append(it.key());
    return names;
}

void CommandSet::disableUnbound()
{
    const QStringList names = unbound();
    for (auto it = actions_.cbegin(); it != actions_.cend(); ++it)
        it.value()->setEnabled(!names.contains(it.key()));
}

} // namespace app
