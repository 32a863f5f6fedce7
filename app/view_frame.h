// The middle of the main window: the tab strip with the three views, each below its own toolbars.
//
// The sizes follow the layout rule as far as there is room for them; where the rule gives more than the real
// tabs, toolbars and borders leave, what is left counts.
#pragma once

#include "app/layout_rule.h"

#include <QTabWidget>
#include <QWidget>
#include <array>
#include <functional>

class QProgressBar;
class QToolBar;

namespace app {

class ViewFrame : public QWidget
{
public:
    explicit ViewFrame(QWidget *parent);

    // Adds the next tab. The frame takes the view and the toolbars, which stand above it in one row.
    // What stands below a page's view and takes room from it while it is shown.
    void addBelow(int tab, QWidget *widget);

    void addPage(const QString &title, QWidget *view, const QList<QToolBar *> &toolbars);

    // Called whenever the area changes; expected to call layOut.
    void setResized(std::function<void()> resized) { resized_ = std::move(resized); }

    // The layout rule, for the current tab.
    void layOut(const layout_rule::WindowMeasure &window);

    QTabWidget *tabs() const { return SSTab1; }
    QWidget *view(int tab) const { return pages_.at(std::size_t(tab)).view; }
    QProgressBar *progressBar() const { return ProgressBar1; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Page
    {
        QWidget *room = nullptr; // what the toolbars leave of the page
        QWidget *view = nullptr;
    };

    void layOutView(const Page &page);
    void placeProgressBar();

    QWidget *Picture1;
    QTabWidget *SSTab1;
    QProgressBar *ProgressBar1;
    std::array<Page, 3> pages_;
    std::function<void()> resized_;
    bool layingOut_ = false;
};

} // namespace app
