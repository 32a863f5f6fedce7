// What the commands on nodes ask of the view.
#include "tree/opening_progress.h"
#include "tree/tree_view.h"

#include <QAccessible>
#include <QGuiApplication>

namespace tree {

void TreeView::select(const QModelIndex &node)
{
    for (QModelIndex above = node.parent(); above.isValid(); above = above.parent())
        expand(above);
    setCurrentIndex(node);
}

void TreeView::setOpen(const QModelIndex &node, bool open)
{
    if (node.isValid())
        setExpanded(node, open);
}

void TreeView::openAll()
{
    Opening opening = model_.openAll();
    const dom::Node *root = model_.GetNodepar(model_.index(0, 0));
    switch (runWithProgress(opening, root ? root->subtreeCount() : 0, model_, this)) {
    case Opened::Cancelled:
        Q_EMIT noted(tr("Expanding was cancelled; what was reached is open"));
        break;
    case Opened::AtBound:
        Q_EMIT noted(tr("Only the first %L1 nodes were expanded").arg(opening.passed()));
        break;
    default:
        break;
    }
    scheduleDelayedItemsLayout();
    scrollTo(currentIndex());
    fitSoon_.start();
}

void TreeView::closeAll()
{
    columnNeeds_ = 0;
    model_.closeAll();
    scheduleDelayedItemsLayout();
    fitSoon_.start();
}

void TreeView::showBusy(bool busy)
{
    if (busy)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

void TreeView::freeze(bool frozen)
{
    freeze_.reset();
    if (!frozen)
        return;
    freeze_.emplace();
    freeze_->setForm(this);
}

void TreeView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QAbstractItemView::currentChanged(current, previous);
    tellFocus();
    Q_EMIT selectionMoved();
}

void TreeView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected);
    if (!QAccessible::isActive() || selected.isEmpty())
        return;
    QAccessibleEvent event(this, QAccessible::Selection);
    event.setChild(positionOf(selected.first().topLeft()));
    QAccessible::updateAccessibility(&event);
}

void TreeView::tellFocus() const
{
    if (!QAccessible::isActive() || !hasFocus() || !currentIndex().isValid())
        return;
    QAccessibleEvent event(const_cast<TreeView *>(this), QAccessible::Focus);
    event.setChild(positionOf(currentIndex()));
    QAccessible::updateAccessibility(&event);
}

} // namespace tree
