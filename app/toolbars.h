// The toolbars, made from the command table.
#pragma once

#include <QString>

class QToolBar;
class QWidget;

namespace app {

class CommandSet;

// The toolbar of a control name with its buttons in their places, each named by its key.
QToolBar *makeToolBar(const char *name, const QString &title, const CommandSet &commands, QWidget *parent);

} // namespace app
