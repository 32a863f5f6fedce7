// Paints the rows in view, as the style would have them painted by any tree.
#include "tree/tree_view.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

namespace tree {

void TreeView::paintEvent(QPaintEvent *event)
{
    executeDelayedItemsLayout();
    QPainter painter(viewport());
    QStyleOptionViewItem options;
    initViewItemOption(&options);
    options.widget = this;
    const QRect area = event->rect();
    const int skipped = qMax(0, area.top()) / rowHeight_;
    QModelIndex row = model_.shownAt(verticalScrollBar()->value() + skipped);
    int level = row.isValid() ? model_.levelOf(row) : 0;
    for (int top = skipped * rowHeight_; row.isValid() && top <= area.bottom(); top += rowHeight_) {
        options.rect = QRect(columnLeft(), top, columnWidth(0), rowHeight_);
        drawRowAt(&painter, options, labelPlace(level, top), row);
        row = model_.shownAfter(row, &level);
    }
}

void TreeView::drawRowAt(QPainter *painter, const QStyleOptionViewItem &options, const QRect &label,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem option = options;
    const int indent = options.rect.width() - label.width();
    const QPoint pointer = viewport()->mapFromGlobal(QCursor::pos());
    option.state.setFlag(QStyle::State_Open, isExpanded(index));
    option.state.setFlag(QStyle::State_Children, model_.hasChildren(index));
    option.state.setFlag(QStyle::State_Sibling, hasMoreSiblings(index));
    option.state.setFlag(QStyle::State_HasFocus, hasFocus() && index == currentIndex());
    option.state.setFlag(QStyle::State_MouseOver, viewport()->underMouse() && options.rect.contains(pointer));
    option.viewItemPosition = QStyleOptionViewItem::OnlyOne;

    option.rect.setWidth(indent);
    if (isRightToLeft())
        option.rect.moveRight(options.rect.right());
    const QRect branches = option.rect;
    const bool isSelected = selectionModel()->isSelected(index);
    option.state.setFlag(QStyle::State_Selected, isSelected);
    style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &option, painter, this);
    option.rect = label;
    option.state.setFlag(QStyle::State_Selected, false); // there the delegate paints it
    style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &option, painter, this);
    option.state.setFlag(QStyle::State_Selected, isSelected);
    drawBranches(painter, branches, index);
    itemDelegateForIndex(index)->paint(painter, option, index);

    if (!dropHighlight_.isValid() || dropHighlight_ != index)
        return;
    QColor fill = options.palette.color(QPalette::Highlight);
    painter->save();
    painter->setPen(fill);
    fill.setAlphaF(0.25F);
    painter->setBrush(fill);
    painter->drawRect(label.intersected(viewport()->rect()).adjusted(0, 0, -1, -1));
    painter->restore();
}

bool TreeView::hasMoreSiblings(const QModelIndex &node) const
{
    return node.row() + 1 < model_.rowCount(node.parent());
}

// From the node's own branch outwards; what is out of sight is not painted.
void TreeView::drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const
{
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    QStyle::State always = QStyle::State_None;
    always.setFlag(QStyle::State_Enabled, isEnabled());
    always.setFlag(QStyle::State_Active, hasFocus());
    always.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
    const int outwards = isRightToLeft() ? indentation() : -indentation();
    option.rect = QRect(isRightToLeft() ? rect.left() : rect.right() + 1 - indentation(), rect.top(),
                        indentation(), rect.height());
    option.state = always | QStyle::State_Item;
    option.state.setFlag(QStyle::State_Children, model_.hasChildren(index));
    option.state.setFlag(QStyle::State_Open, isExpanded(index));
    for (QModelIndex node = index; node.isValid(); node = node.parent()) {
        if (isRightToLeft() ? option.rect.left() > viewport()->width() : option.rect.right() < 0)
            return;
        if (option.rect.intersects(viewport()->rect())) {
            option.state.setFlag(QStyle::State_Sibling, hasMoreSiblings(node));
            style()->drawPrimitive(QStyle::PE_IndicatorBranch, &option, painter, this);
        }
        option.rect.translate(outwards, 0);
        option.state = always;
    }
}

} // namespace tree
