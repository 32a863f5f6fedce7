// Which row is where. The vertical scroll bar counts rows, all of one height.
#include "tree/tree_view.h"

#include <QHeaderView>
#include <QScrollBar>
#include <climits>

namespace tree {

void TreeView::doItemsLayout()
{
    rowHeight_ = qMax(1, indexRowSizeHint(model_.index(0, 0)));
    QAbstractItemView::doItemsLayout();
}

void TreeView::setExpanded(const QModelIndex &node, bool open)
{
    if (!node.isValid() || isExpanded(node) == open)
        return;
    model_.setOpen(node, open);
    updateGeometries();
    viewport()->update();
    if (open)
        Q_EMIT expanded(node);
    else
        Q_EMIT collapsed(node);
}

QModelIndex TreeView::indexAbove(const QModelIndex &node) const
{
    return model_.shownAt(model_.positionOf(node) - 1);
}

QModelIndex TreeView::indexBelow(const QModelIndex &node) const
{
    const qint64 position = model_.positionOf(node);
    return position < 0 ? QModelIndex() : model_.shownAt(position + 1);
}

int TreeView::rowsInView() const { return qMax(1, viewport()->height() / rowHeight_); }

int TreeView::columnLeft() const
{
    const int offset = horizontalScrollBar()->value();
    return isRightToLeft() ? viewport()->width() - columnWidth(0) + offset : -offset;
}

int TreeView::horizontalOffset() const { return horizontalScrollBar()->value(); }

int TreeView::verticalOffset() const { return verticalScrollBar()->value() * rowHeight_; }

void TreeView::updateGeometries()
{
    const qint64 beyond = model_.shownCount() - rowsInView();
    verticalScrollBar()->setRange(0, int(qBound(qint64(0), beyond, qint64(INT_MAX))));
    verticalScrollBar()->setPageStep(rowsInView());
    verticalScrollBar()->setSingleStep(1);
    horizontalScrollBar()->setRange(0, qMax(0, columnWidth(0) - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(qMax(2, indentation()));
    QAbstractItemView::updateGeometries();
}

void TreeView::scrollContentsBy(int, int) { viewport()->update(); }

QRect TreeView::visualRect(const QModelIndex &node) const
{
    const qint64 position = model_.positionOf(node);
    if (position < 0 || columnWidth(0) == 0)
        return {};
    const qint64 top = (position - verticalScrollBar()->value()) * rowHeight_;
    return labelPlace(model_.levelOf(node), int(qBound(qint64(INT_MIN / 2), top, qint64(INT_MAX / 2))));
}

QRect TreeView::labelPlace(int level, int top) const
{
    const int indent = (level + 1) * indentation();
    return {columnLeft() + (isRightToLeft() ? 0 : indent), top, columnWidth(0) - indent, rowHeight_};
}

QModelIndex TreeView::indexAt(const QPoint &position) const
{
    const_cast<TreeView *>(this)->executeDelayedItemsLayout();
    const int across = position.x() - columnLeft();
    if (position.y() < 0 || across < 0 || across >= columnWidth(0))
        return {};
    return model_.shownAt(verticalScrollBar()->value() + position.y() / rowHeight_);
}

bool TreeView::isBranchAt(const QPoint &position) const
{
    const QModelIndex node = indexAt(position);
    if (!node.isValid() || !model_.hasChildren(node))
        return false;
    const QRect row = visualRect(node);
    const int left = isRightToLeft() ? row.right() + 1 : row.left() - indentation();
    return position.x() >= left && position.x() < left + indentation();
}

void TreeView::scrollTo(const QModelIndex &node, ScrollHint hint)
{
    if (!node.isValid())
        return;
    for (QModelIndex above = node.parent(); above.isValid(); above = above.parent())
        expand(above);
    executeDelayedItemsLayout();
    QScrollBar *bar = verticalScrollBar();
    const int row = int(model_.positionOf(node));
    const int last = row - rowsInView() + 1; // the first row, when this one is the last
    const int first[] = {qBound(last, bar->value(), row), row, last, row - rowsInView() / 2}; // by hint
    bar->setValue(first[hint]);

    fitColumn();
    QScrollBar *sideways = horizontalScrollBar();
    const int left = (model_.levelOf(node) + 1) * indentation();
    const int leftmost = left + qMin(labelRoom(), viewport()->width()) - viewport()->width();
    sideways->setValue(qBound(leftmost, sideways->value(), qMax(leftmost, left - indentation())));
}

QModelIndex TreeView::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    executeDelayedItemsLayout();
    const qint64 last = model_.shownCount() - 1;
    const qint64 now = model_.positionOf(currentIndex());
    if (now < 0)
        return model_.shownAt(0);
    switch (action) {
    case MoveUp:
    case MovePrevious:
        return model_.shownAt(qMax<qint64>(0, now - 1));
    case MoveDown:
    case MoveNext:
        return model_.shownAt(qMin(last, now + 1));
    case MovePageUp:
        return model_.shownAt(qMax<qint64>(0, now - rowsInView()));
    case MovePageDown:
        return model_.shownAt(qMin(last, now + rowsInView()));
    case MoveHome:
        return model_.shownAt(0);
    case MoveEnd:
        return model_.shownAt(last);
    default:
        return currentIndex();
    }
}

void TreeView::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command)
{
    const QModelIndex node = indexAt(rect.center());
    if (node.isValid())
        selectionModel()->select(node, command);
}

QRegion TreeView::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region;
    for (const QItemSelectionRange &range : selection) {
        const QRect first = visualRect(range.topLeft());
        const QRect last = visualRect(range.bottomRight());
        if (first.isValid() && last.isValid())
            region += QRect(0, first.top(), viewport()->width(), last.bottom() - first.top() + 1);
    }
    return region;
}

// The base class would go by its items.
void TreeView::rowsInserted(const QModelIndex &parent, int start, int end)
{
    scheduleDelayedItemsLayout();
    QAbstractItemView::rowsInserted(parent, start, end);
}

void TreeView::rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end)
{
    scheduleDelayedItemsLayout();
    QAbstractItemView::rowsAboutToBeRemoved(parent, start, end);
}

} // namespace tree
