// What is open, and the rows that are to be seen for it.
//
// An open node counts in its run, a run in its list, and a list in the node above it as long as that is open.
// Opening, closing, coming and going therefore cost a step for each level, however many rows are seen; the
// sums over the runs of one list are taken again when they are next asked for.
#include "tree/tree_model.h"

#include <algorithm>
#include <iterator>

namespace tree {

const std::vector<qint64> &RowList::sums() const
{
    if (sums_.size() == runs_.size())
        return sums_;
    sums_.clear();
    sums_.reserve(runs_.size());
    qint64 before = 0;
    for (const auto &run : runs_) {
        sums_.push_back(before);
        before += run->count + run->below;
    }
    return sums_;
}

void RowList::addShown(qint64 rows)
{
    sums_.clear();
    shown_ += rows;
    for (TreeNode *node = owner_; node && node->open && node->run; node = node->run->list->owner_) {
        RowList &list = *node->run->list;
        node->run->below += rows;
        list.sums_.clear();
        list.shown_ += rows;
    }
}

void RowList::setOpen(TreeNode &node, bool open)
{
    if (node.open == open)
        return;
    const qint64 rows = node.children->shown();
    node.open = open;
    node.run->below += open ? rows : -rows;
    addShown(open ? rows : -rows);
}

void RowList::closeAll()
{
    for (const auto &run : runs_) {
        run->below = 0;
        for (const auto &node : run->nodes)
            node->open = false;
    }
    sums_.clear();
    shown_ = count_;
}

qint64 RowList::shownBefore(const TreeNode &node) const
{
    const Run &run = *node.run;
    qint64 before = sums()[runAt(run.firstRow)];
    for (auto other = run.nodes.begin(); other->get() != &node; ++other)
        before += 1 + (*other)->shownBelow();
    return before;
}

qint64 RowList::shownBeforeUnmade(qint64 row) const
{
    const size_t run = runAt(row);
    return sums()[run] + row - runs_[run]->firstRow;
}

RowList::Place RowList::placeOf(qint64 shown) const
{
    const std::vector<qint64> &before = sums();
    const auto after = std::upper_bound(before.begin(), before.end(), shown);
    const size_t at = size_t(std::distance(before.begin(), after)) - 1;
    const Run &run = *runs_[at];
    qint64 rest = shown - before[at];
    if (run.below == 0)
        return {run.firstRow + rest, 0};
    for (size_t slot = 0; slot < run.nodes.size(); ++slot) {
        const qint64 below = run.nodes[slot]->shownBelow();
        if (rest <= below)
            return {run.firstRow + qint64(slot), rest};
        rest -= 1 + below;
    }
    return {run.firstRow, 0};
}

bool TreeModel::isOpen(const QModelIndex &node) const
{
    const TreeNode *made
        = node.isValid() ? static_cast<RowList *>(node.internalPointer())->made(node.row()) : nullptr;
    return made && made->open;
}

void TreeModel::setOpen(const QModelIndex &node, bool open)
{
    TreeNode *found = nodeAt(node);
    if (!found)
        return;
    rows_->below(*found);
    found->run->list->setOpen(*found, open);
}

void TreeModel::closeAll()
{
    std::vector<RowList *> lists{&rows_->top()};
    while (!lists.empty()) {
        RowList *list = lists.back();
        lists.pop_back();
        list->closeAll();
        list->forEachMade([&lists](TreeNode &node) {
            if (node.children)
                lists.push_back(node.children.get());
        });
    }
}

qint64 TreeModel::shownCount() const { return rows_->top().shown(); }

QModelIndex TreeModel::shownAt(qint64 position) const
{
    if (position < 0 || position >= shownCount())
        return {};
    RowList *list = &rows_->top();
    for (;;) {
        const RowList::Place place = list->placeOf(position);
        if (place.into == 0)
            return createIndex(int(place.row), 0, list);
        list = list->made(place.row)->children.get();
        position = place.into - 1;
    }
}

QModelIndex TreeModel::shownAfter(const QModelIndex &node, int *level) const
{
    RowList *list = static_cast<RowList *>(node.internalPointer());
    const TreeNode *at = list->made(node.row());
    int steps = 0;
    qint64 next = node.row() + 1;
    if (at && at->shownBelow() > 0) {
        next = 0;
        list = at->children.get();
        ++steps;
    }
    while (next >= list->count()) {
        const TreeNode *owner = list->owner();
        if (!owner)
            return {};
        next = owner->run->rowOf(owner) + 1;
        list = owner->run->list;
        --steps;
    }
    if (level)
        *level += steps;
    return createIndex(int(next), 0, list);
}

qint64 TreeModel::positionOf(const QModelIndex &node) const
{
    if (!node.isValid())
        return -1;
    const RowList *list = static_cast<RowList *>(node.internalPointer());
    const TreeNode *at = list->made(node.row());
    qint64 position = at ? list->shownBefore(*at) : list->shownBeforeUnmade(node.row());
    while (const TreeNode *owner = list->owner()) {
        if (!owner->open || !owner->run)
            return -1;
        list = owner->run->list;
        position += list->shownBefore(*owner) + 1;
    }
    return position;
}

int TreeModel::levelOf(const QModelIndex &node) const
{
    int level = -1;
    for (const RowList *list = static_cast<RowList *>(node.internalPointer()); list;
         list = list->owner() ? list->owner()->run->list : nullptr)
        ++level;
    return level;
}

} // namespace tree
