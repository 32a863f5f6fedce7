#include "app/layout_rule.h"

#include <QtMath>

namespace app::layout_rule {

namespace {

int less(int pixels, int twips) { return qRound((pixels * twipsPerPixel - twips) / double(twipsPerPixel)); }

std::optional<QSize> checked(int width, int height)
{
    if (width < 0 || height < 0)
        return std::nullopt;
    return QSize(width, height);
}

} // namespace

std::optional<QSize> containerSize(const WindowMeasure &window)
{
    return checked(less(window.outerWidth, containerWidthMargin),
                   window.innerHeight - (window.statusBarHeight + window.toolbarHeight));
}

std::optional<QSize> tabStripSize(QSize container)
{
    return checked(less(container.width(), tabStripWidthMargin),
                   less(container.height(), tabStripHeightMargin));
}

std::optional<QSize> viewSize(QSize tabStrip)
{
    return checked(less(tabStrip.width(), viewWidthMargin), less(tabStrip.height(), viewHeightMargin));
}

std::optional<QRect> progressBarPlace(QSize editor, QSize bar)
{
    const QPoint corner((editor.width() - bar.width()) / 2, (editor.height() - bar.height()) / 2);
    if (corner.x() < 0 || corner.y() < 0)
        return std::nullopt;
    return QRect(corner, QSize(editor.width() / 2, bar.height()));
}

} // namespace app::layout_rule
