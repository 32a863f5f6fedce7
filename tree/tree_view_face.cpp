// What the commands on nodes ask of the view.
#include "tree/tree_model.h"
#include "tree/tree_view.h"

#include <QGuiApplication>
#include <vector>

namespace tree {

namespace {

constexpr qint64 mostOpened
    = 2'000'000; // rows that Expand shows: each takes memory, and time at every change

} // namespace

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
    const dom::Node *root = model_.GetNodepar(model_.index(0, 0));
    if (!root)
        return;
    setUpdatesEnabled(false);
    if (root->subtreeCount() <= mostOpened)
        expandAll();
    else
        openLevels(mostOpened);
    setUpdatesEnabled(true);
    scrollTo(currentIndex());
    fitSoon_.start();
}

// Level by level, so that what is left closed lies deepest.
void TreeView::openLevels(qint64 bound)
{
    qint64 rows = 1;
    std::vector<QModelIndex> level{model_.index(0, 0)};
    scheduleDelayedItemsLayout(); // once, for all that is opened
    while (!level.empty()) {
        std::vector<QModelIndex> next;
        for (const QModelIndex &node : level) {
            const int below = model_.rowCount(node);
            rows += below;
            if (rows > bound) {
                Q_EMIT noted(tr("Only the first %L1 nodes were expanded").arg(bound));
                return;
            }
            expand(node);
            for (int row = 0; row < below; ++row) {
                const QModelIndex child = model_.index(row, 0, node);
                if (model_.hasChildren(child))
                    next.push_back(child);
            }
        }
        level.swap(next);
    }
}

void TreeView::closeAll()
{
    columnNeeds_ = 0;
    collapseAll();
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
    QTreeView::currentChanged(current, previous);
    Q_EMIT selectionMoved();
}

} // namespace tree
