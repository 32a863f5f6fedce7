#include "platform/dialogs/page_view.h"

namespace dialogs {

PageView::PageView(QWidget *page, QWidget *parent) : QScrollArea(parent)
{
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidget(page);
    // The ground of the tabs shows through.
    viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
}

QSize PageView::sizeHint() const { return widget()->sizeHint(); }

QSize PageView::minimumSizeHint() const
{
    constexpr int fewestColumns = 30;
    constexpr int fewestLines = 6;
    return widget()->minimumSizeHint().boundedTo(
        {fontMetrics().averageCharWidth() * fewestColumns, fontMetrics().lineSpacing() * fewestLines});
}

} // namespace dialogs
