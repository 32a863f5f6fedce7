// The pictures of buttons and menus.
#pragma once

#include <QIcon>
#include <QString>

namespace dialogs {

// The picture of that freedesktop name from the desktop's icon theme, or from Breeze where the desktop's
// has not the whole set, or else as drawn for the program (share/icons/fallback); names that start with
// "xe-" are the program's own pictures. What the program has drawn is in colours that fit the palette.
// Empty when there is no such picture anywhere.
QIcon themeIcon(const QString &name);

// Where one of the program's own pictures stands among its resources, by its name without ending.
QString iconPath(const QString &name);

} // namespace dialogs
