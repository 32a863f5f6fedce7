#include "app/all_commands.h"

#include "app/command_set.h"
#include "app/commands.h"
#include "document/view_modes.h"
#include "platform/control/code_editor.h"
#include "platform/control/editor_commands.h"

#include <QCoreApplication>
#include <QSet>
#include <algorithm>

namespace app {

namespace {

QString text(const char *constant) { return QString::fromLatin1(constant); }

QString translated(const char *english) { return QCoreApplication::translate("app::CommandList", english); }

QString plain(QString caption)
{
    caption.remove(QLatin1Char('&'));
    if (caption.endsWith(QStringLiteral("...")))
        caption.chop(3);
    return caption.trimmed();
}

// The menu of the bar that leads to one.
const Menu *barMenuOf(const QString &menu)
{
    for (const Menu &row : menuTable())
        if (text(row.name) == menu)
            return &row;
    for (const Command &row : commandTable())
        if (row.submenu && text(row.name) == menu)
            return barMenuOf(text(row.menu));
    return nullptr;
}

// Null for a menu that every mode shows.
const document::ModeMenu *modesOf(const Menu &menu)
{
    const auto rows = document::modeMenus();
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const document::ModeMenu &each) {
        return each.name == text(menu.name);
    });
    return row != rows.end() ? &*row : nullptr;
}

// "Edit › Lines"
QString wayTo(const QString &menu)
{
    for (const Command &row : commandTable())
        if (row.submenu && text(row.name) == menu)
            return wayTo(text(row.menu)) + QStringLiteral(" › ") + plain(text(row.caption));
    return plain(text(barMenuOf(menu)->caption));
}

// Two modes have a menu of the same name.
QString placeOf(const Menu &bar, const QString &menu)
{
    const document::ModeMenu *modes = modesOf(bar);
    const bool ofTree = modes != nullptr && !modes->shown[document::XmlMode];
    return ofTree ? translated("%1 (Normal Mode)").arg(wayTo(menu)) : wayTo(menu);
}

bool isShown(const Menu &bar, int tab)
{
    const document::ModeMenu *modes = modesOf(bar);
    return modes == nullptr || modes->shown.at(std::size_t(tab));
}

ListedCommand listed(const Command &row, QAction &action, int tab)
{
    const Menu *bar = barMenuOf(text(row.menu)); // none for what only a toolbar has
    return {plain(action.text()), bar != nullptr ? placeOf(*bar, text(row.menu)) : translated("Preview"),
            action.shortcut(),
            action.isEnabled() && (bar != nullptr ? isShown(*bar, tab) : tab == document::Preview),
            [&action] { action.trigger(); }};
}

// Stands in another menu, too, and is the same there.
bool isTwin(const Command &row)
{
    const Menu *bar = barMenuOf(text(row.menu));
    return bar != nullptr && bar->contextOnly;
}

} // namespace

QList<ListedCommand> allCommands(const CommandSet &commands, control::CodeEditor &editor, int tab)
{
    QList<ListedCommand> all;
    QSet<int> inMenus;
    for (const Command &row : commandTable()) {
        QAction *action = commands.action(row);
        if (action == nullptr || isTwin(row))
            continue;
        all.append(listed(row, *action, tab));
        inMenus.insert(row.editorCommand);
    }
    const QString place = translated("Text in XML Mode");
    const bool editorShown = tab == document::XmlMode;
    for (const control::EditorCommand &command : control::editorCommands())
        if (!inMenus.contains(command.number))
            all.append({text(command.name), place, editor.shortcuts().shortcuts(command.number).value(0),
                        editorShown, [&editor, number = command.number] { editor.execute(number); }});
    return all;
}

} // namespace app
