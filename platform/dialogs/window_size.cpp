#include "platform/dialogs/window_size.h"

#include <QFontMetrics>
#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace dialogs {

QSize withinScreen(const QWidget &window, const QSize &wished)
{
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    return wished.boundedTo(window.screen()->availableSize() - QSize(title, 2 * title));
}

QSize sizeInCharacters(const QWidget &window, int columns, int lines)
{
    const QFontMetrics metrics = window.fontMetrics();
    return withinScreen(window, {metrics.averageCharWidth() * columns, metrics.lineSpacing() * lines});
}

} // namespace dialogs
