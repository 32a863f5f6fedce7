#include "app/view_frame.h"

#include "document/workspace.h"

#include <QEvent>
#include <QProgressBar>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QToolBar>
#include <QVBoxLayout>

namespace app {

namespace {

// Puts a control of at most this size into the middle of the room it has.
void place(QWidget &control, QSize size, QSize room)
{
    const QSize fitting = size.boundedTo(room);
    const QSize rest = (room - fitting) / 2;
    control.setGeometry(QRect(QPoint(rest.width(), rest.height()), fitting));
}

QWidget *toolbarRow(const QList<QToolBar *> &toolbars, QWidget *page)
{
    auto *row = new QWidget(page);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (QToolBar *toolbar : toolbars) {
        layout->addWidget(toolbar);
        if (toolbar != toolbars.last())
            toolbar->addSeparator();
    }
    layout->addStretch(1);
    return row;
}

} // namespace

ViewFrame::ViewFrame(QWidget *parent)
    : QWidget(parent), Picture1(new QWidget(this)), SSTab1(new QTabWidget(Picture1)),
      ProgressBar1(new QProgressBar(this))
{
    Picture1->setObjectName(QStringLiteral("Picture1"));
    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->hide();
}

void ViewFrame::addPage(const QString &title, QWidget *view, const QList<QToolBar *> &toolbars)
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(toolbarRow(toolbars, page));
    auto *room = new QWidget(page);
    layout->addWidget(room, 1);
    view->setParent(room);
    room->installEventFilter(this);
    const int tab = SSTab1->addTab(page, title);
    pages_.at(std::size_t(tab)) = {room, view};
    if (tab == document::XmlMode)
        ProgressBar1->setParent(room);
}

void ViewFrame::addBelow(int tab, QWidget *widget) { SSTab1->widget(tab)->layout()->addWidget(widget); }

bool ViewFrame::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && resized_)
        resized_();
    return QWidget::eventFilter(watched, event);
}

void ViewFrame::resizeEvent(QResizeEvent *)
{
    if (resized_)
        resized_();
}

void ViewFrame::layOut(const layout_rule::WindowMeasure &window)
{
    if (layingOut_)
        return;
    const QScopedValueRollback<bool> guard(layingOut_, true);
    if (const auto container = layout_rule::containerSize(window))
        place(*Picture1, *container, size());
    if (const auto strip = layout_rule::tabStripSize(Picture1->size()))
        place(*SSTab1, *strip, Picture1->size());
    const Page &page = pages_.at(std::size_t(SSTab1->currentIndex()));
    layOutView(page);
    if (SSTab1->currentIndex() == document::XmlMode)
        placeProgressBar();
}

void ViewFrame::layOutView(const Page &page)
{
    SSTab1->currentWidget()->layout()->activate();
    if (const auto size = layout_rule::viewSize(SSTab1->size()))
        place(*page.view, *size, page.room->size());
}

void ViewFrame::placeProgressBar()
{
    const QWidget *editor = view(document::XmlMode);
    if (const auto where = layout_rule::progressBarPlace(editor->size(), ProgressBar1->size()))
        ProgressBar1->setGeometry(where->translated(editor->pos()));
    ProgressBar1->raise();
}

} // namespace app
