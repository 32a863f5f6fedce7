#include "app/menus.h"

#include "app/command_set.h"
#include "app/commands.h"
#include "document/view_modes.h"

#include <QMenu>
#include <QMenuBar>

#include <utility>

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

Menus::Menus(QMenuBar &bar, const CommandSet &commands) : bar_(bar)
{
    for (const Menu &row : menuTable()) {
        QMenu *menu = addMenu(bar, row.name, row.caption);
        if (!row.contextOnly)
            inBar_.append(menu);
        menus_.insert(text(row.name), menu);
    }
    showFor(document::NormalMode);
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

// The bar takes the mnemonics of hidden menus too; so they are taken out of it.
void Menus::showFor(int tab)
{
    QList<QMenu *> shown = inBar_;
    for (const document::ModeMenu &row : document::modeMenus())
        if (!row.shown.at(std::size_t(tab)))
            shown.removeOne(menus_.value(row.name.toString()));
    for (QMenu *menu : std::as_const(inBar_))
        bar_.removeAction(menu->menuAction());
    for (QMenu *menu : std::as_const(shown))
        bar_.addMenu(menu);
}

} // namespace app
