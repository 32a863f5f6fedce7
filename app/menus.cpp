#include "app/menus.h"

#include "app/command_set.h"
#include "app/commands.h"
#include "document/view_modes.h"

#include <QMenu>
#include <QMenuBar>

namespace app {

namespace {

QString text(const char *constant) { return QString::fromLatin1(constant); }

QMenu *addMenu(QWidget &parent, const char *name, const char *caption)
{
    auto *menu = new QMenu(text(caption), &parent);
    menu->setObjectName(text(name));
    return menu;
}

} // namespace

Menus::Menus(QMenuBar &bar, const CommandSet &commands)
{
    for (const Menu &row : menuTable()) {
        QMenu *menu = addMenu(bar, row.name, row.caption);
        bar.addMenu(menu)->setVisible(!row.contextOnly);
        menus_.insert(text(row.name), menu);
    }
    for (const Command &row : commandTable()) {
        QMenu *menu = menus_.value(text(row.menu));
        if (menu == nullptr)
            continue;
        if (row.submenu) {
            QMenu *submenu = addMenu(*menu, row.name, row.caption);
            menu->addMenu(submenu);
            menus_.insert(text(row.name), submenu);
        } else if (QAction *action = commands.action(row)) {
            menu->addAction(action);
        } else {
            menu->addSeparator()->setObjectName(text(row.name));
        }
    }
}

void Menus::showFor(int tab)
{
    for (const document::ModeMenu &row : document::modeMenus())
        menus_.value(row.name.toString())->menuAction()->setVisible(row.shown.at(std::size_t(tab)));
}

} // namespace app
