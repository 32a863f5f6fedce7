// A page of a dialog, which can be scrolled in a window that is too small for it.
#pragma once

#include <QScrollArea>

namespace dialogs {

// As large as the page wants to be, or in a smaller window what there is room for. Takes the page.
class PageView : public QScrollArea
{
public:
    explicit PageView(QWidget *page, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
};

} // namespace dialogs
