// The menu bar, made from the tables.
#pragma once

#include <QHash>
#include <QList>
#include <QString>

class QMenu;
class QMenuBar;

namespace app {

class CommandSet;

class Menus
{
public:
    // Fills the bar; it owns the menus.
    Menus(QMenuBar &bar, const CommandSet &commands);

    // The menu of a control name; null when there is none.
    QMenu *menu(const QString &name) const { return menus_.value(name); }

    // Shows in the bar what belongs to a tab (0, 1 or 2) and hides the rest.
    void showFor(int tab);

private:
    QMenuBar &bar_;
    QList<QMenu *> inBar_; // in some mode or all, in their order
    QHash<QString, QMenu *> menus_;
};

} // namespace app
