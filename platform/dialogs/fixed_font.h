// The desktop's font for code in a dialog.
#pragma once

#include <QFont>

class QWidget;

namespace dialogs {

// In the size of the widget's own font: desktops tell the two sizes apart, and whoever reads in large
// letters often has only set the one.
QFont fixedFont(const QWidget &widget);

} // namespace dialogs
