// How rows come, go and move.
#include "tree/tree_model.h"

#include <QScopeGuard>

namespace tree {

// Its rows go once, when the move is done.
bool TreeModel::isMoving(const dom::Node *parent) const
{
    return parent == movesFrom_ || parent == movesInto_;
}

void TreeModel::aboutToInsert(dom::Node *parent, qsizetype index, dom::Node *)
{
    if (isMoving(parent))
        return;
    if (isRecording_)
        reach(parent); // what a command brings in gets its key now
    RowList *list = rows_->listOf(parent); // counted before the change, if anybody can see it
    announced_ = list && rows_->isInTree(*list); // to what was taken out nobody looks, but its rows follow
    if (announced_)
        beginInsertRows(ownerIndex(*list), int(index), int(index));
}

void TreeModel::inserted(dom::Node *parent, qsizetype index, dom::Node *node)
{
    RowList *list = isMoving(parent) ? nullptr : rows_->listOf(parent);
    if (!list)
        return;
    std::unique_ptr<TreeNode> row = rows_->unpark(node);
    list->insert(index, row ? std::move(row) : rows_->makeNode(node, *list->owner()));
    if (announced_)
        endInsertRows();
}

void TreeModel::aboutToRemove(dom::Node *parent, qsizetype index, dom::Node *)
{
    if (isMoving(parent))
        return;
    if (isRecording_)
        reach(parent); // so that it has the same key when it comes back
    RowList *list = rows_->listOf(parent);
    announced_ = list && rows_->isInTree(*list);
    if (list)
        rows_->node(*list, index); // made while its node is still in place
    if (announced_)
        beginRemoveRows(ownerIndex(*list), int(index), int(index));
}

void TreeModel::removed(dom::Node *parent, qsizetype index, dom::Node *)
{
    RowList *list = isMoving(parent) ? nullptr : rows_->listOf(parent);
    if (!list)
        return;
    rows_->park(list->take(index));
    if (announced_)
        endRemoveRows();
}

void TreeModel::textChanged(dom::Node *node)
{
    const TreeNode *shown = rows_->madeNode(node);
    if (!shown || !rows_->isInTree(*shown->run->list))
        return; // nobody has asked for it yet
    const QModelIndex at = indexOf(*shown);
    Q_EMIT dataChanged(at, at);
}

platform::Result<void> TreeModel::move(dom::Node *node, dom::Node *into, const Edits &edits)
{
    TreeNode *moved = nodeAt(find(node));
    if (!moved || !rows_->listOf(into)) // listed before the change, or its count is wrong
        return edits();
    movesFrom_ = node->parent();
    movesInto_ = into;
    const auto over = qScopeGuard([this] { movesFrom_ = movesInto_ = nullptr; });
    auto done = edits();
    goAlong(*moved);
    return done;
}

void TreeModel::goAlong(TreeNode &moved)
{
    RowList *from = moved.run->list;
    RowList *into = rows_->listOf(moved.dom->parent());
    const int row = int(moved.run->rowOf(&moved));
    const int target = int(moved.dom->indexInParent());
    const int before = from == into && target > row ? target + 1 : target;
    if (!beginMoveRows(ownerIndex(*from), row, row, ownerIndex(*into), before))
        return; // it has stayed where it was
    into->insert(target, from->take(row));
    endMoveRows();
    record({.kind = RowEdit::Kind::Moved,
            .node = moved.dom,
            .from = from->owner()->dom,
            .into = into->owner()->dom});
    const QModelIndex arrived = indexOf(moved);
    Q_EMIT dataChanged(arrived, arrived); // what was edited on the way
}

void TreeModel::setLabelFrom(const QModelIndex &node)
{
    TreeNode *shown = nodeAt(node);
    if (!shown || shown->rule == TagRule::AsItStands)
        return;
    record({.kind = RowEdit::Kind::Relabelled, .node = shown->dom, .ruleBefore = shown->rule});
    relabel(*shown, TagRule::AsItStands);
}

void TreeModel::lengthenKeysBelow(const QModelIndex &node)
{
    TreeNode *top = nodeAt(node);
    if (!top)
        return;
    record({.kind = RowEdit::Kind::KeysLengthened, .node = top->dom});
    addToKeysBelow(*top, 1);
}

void TreeModel::exchangeTree()
{
    auto fresh = std::make_shared<TreeRows>();
    fresh->numberOnFrom(*rows_);
    fresh->rebuild(document_.documentElement(), true);
    record({.kind = RowEdit::Kind::TreeExchanged, .treeBefore = rows_, .treeAfter = fresh});
    show(fresh);
}

void TreeModel::show(const std::shared_ptr<TreeRows> &rows)
{
    beginResetModel();
    endDrag();
    rows->numberOnFrom(*rows_);
    rows_ = rows;
    builtFrom_ = document_.documentNode();
    topLevelCount_ = builtFrom_->childCount();
    endResetModel();
}

platform::Result<void> TreeModel::drop(const QModelIndex &dragged, const QModelIndex &target)
{
    const QString refusal = dropRefusal(dragged, target);
    if (!refusal.isEmpty())
        return platform::Failure{refusal};
    dom::Node *node = GetNodepar(dragged);
    dom::Node *into = GetNodepar(target);
    return move(node, into, [&] { return document_.insertBefore(into, node, into->firstChild()); });
}

} // namespace tree
