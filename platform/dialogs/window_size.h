// How large a window opens: by its font, and never larger than its screen.
#pragma once

#include <QSize>

class QWidget;

namespace dialogs {

// The wished size in pixels, or as much of it as the screen holds beside the frame that a desktop adds.
QSize withinScreen(const QWidget &window, const QSize &wished);

// Room for so many characters and lines of the window's font, within the screen.
QSize sizeInCharacters(const QWidget &window, int columns, int lines);

} // namespace dialogs
