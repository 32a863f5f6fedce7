// How rows come, go and move: by following the document, and by hand.
#include "tree/tree_model.h"

namespace tree {

// Only what is in the document can be placed by a command. What goes on in a subtree that is out of it has no
// rows to see, and its list follows.
bool TreeModel::staysByHand(const dom::Node *parent) const
{
    return byHand_ && document_.documentNode()->contains(parent);
}

void TreeModel::aboutToInsert(dom::Node *parent, qsizetype index, dom::Node *)
{
    if (isRecording_)
        reach(parent); // a row that is to be taken back must be one
    RowList *list = rows_->listOf(parent); // counted before the change, if anybody can see it
    announced_ = list && !staysByHand(parent) && rows_->isInTree(*list);
    row_ = list ? followingRow(*list, parent, index) : 0;
    if (announced_)
        beginInsertRows(ownerIndex(*list), int(row_), int(row_));
}

void TreeModel::inserted(dom::Node *parent, qsizetype index, dom::Node *node)
{
    RowList *list = rows_->listOf(parent);
    if (!list)
        return;
    list->domInserted(index);
    if (staysByHand(parent))
        return;
    std::unique_ptr<TreeNode> row = rows_->unpark(node);
    list->insert(row_, row ? std::move(row) : rows_->makeNode(node, *list->owner()));
    if (!announced_)
        return;
    endInsertRows();
    record({.kind = RowEdit::Kind::Inserted, .node = node, .to = parent, .toRow = int(row_)});
}

void TreeModel::aboutToRemove(dom::Node *parent, qsizetype index, dom::Node *node)
{
    if (isRecording_)
        reach(parent);
    RowList *list = rows_->listOf(parent);
    row_ = list ? rows_->rowOf(*list, node, index) : -1;
    announced_ = list && !staysByHand(parent) && row_ >= 0 && rows_->isInTree(*list);
    if (row_ >= 0)
        rows_->node(*list, row_); // from here on it no longer goes by its position in the document
    if (announced_)
        beginRemoveRows(ownerIndex(*list), int(row_), int(row_));
}

void TreeModel::removed(dom::Node *parent, qsizetype index, dom::Node *node)
{
    RowList *list = rows_->listOf(parent);
    if (!list)
        return;
    list->domRemoved(index);
    if (staysByHand(parent) || row_ < 0)
        return;
    rows_->park(list->take(row_));
    if (!announced_)
        return;
    endRemoveRows();
    record({.kind = RowEdit::Kind::Removed, .node = node, .from = parent, .fromRow = int(row_)});
}

void TreeModel::textChanged(dom::Node *node)
{
    const TreeNode *shown = rows_->madeNode(node);
    if (!shown || !rows_->isInTree(*shown->run->list))
        return; // nobody has asked for it yet
    const QModelIndex at = indexOf(*shown);
    Q_EMIT dataChanged(at, at);
}

// The first and the last place are the same in rows and document; any other is the one after the same node.
qint64 TreeModel::followingRow(const RowList &list, const dom::Node *parent, qint64 domIndex) const
{
    if (domIndex <= 0)
        return 0;
    if (domIndex >= parent->childCount())
        return list.count();
    const qint64 before = rows_->rowOf(list, parent->child(domIndex - 1), domIndex - 1);
    return before < 0 ? list.count() : before + 1;
}

QModelIndex TreeModel::insertFresh(RowList &list, qint64 row, dom::Node *node)
{
    std::unique_ptr<TreeNode> made = rows_->makeNode(node, *list.owner());
    if (node->ordinal() >= 0) { // a fresh key even so
        made->number = rows_->nextNumber();
        made->suffix = 1;
    }
    beginInsertRows(ownerIndex(list), int(row), int(row));
    list.insert(row, std::move(made));
    endInsertRows();
    record({.kind = RowEdit::Kind::Inserted, .node = node, .to = list.owner()->dom, .toRow = int(row)});
    return createIndex(int(row), 0, &list);
}

QModelIndex TreeModel::insertLast(const QModelIndex &parent, dom::Node *node)
{
    TreeNode *below = nodeAt(parent);
    if (!below || !node)
        return {};
    RowList &list = rows_->below(*below);
    return insertFresh(list, list.count(), node);
}

QModelIndex TreeModel::insertAfter(const QModelIndex &sibling, dom::Node *node)
{
    if (!node || !sibling.parent().isValid())
        return {};
    return insertFresh(*static_cast<RowList *>(sibling.internalPointer()), sibling.row() + 1, node);
}

QModelIndex TreeModel::move(const QModelIndex &node, const QModelIndex &parent, int row)
{
    TreeNode *moved = nodeAt(node);
    TreeNode *owner = nodeAt(parent);
    if (!moved || !owner)
        return {};
    RowList *from = moved->run->list;
    RowList *to = &rows_->below(*owner);
    const int fromRow = node.row();
    if (!beginMoveRows(node.parent(), fromRow, fromRow, parent, row))
        return node; // it stands there already
    std::unique_ptr<TreeNode> taken = from->take(fromRow);
    const int target = from == to && row > fromRow ? row - 1 : row;
    to->insert(target, std::move(taken));
    endMoveRows();
    record({.kind = RowEdit::Kind::Moved,
            .node = moved->dom,
            .from = from->owner()->dom,
            .fromRow = fromRow,
            .to = owner->dom,
            .toRow = target});
    return indexOf(*moved);
}

void TreeModel::remove(const QModelIndex &node)
{
    const TreeNode *gone = nodeAt(node);
    if (!gone || !node.parent().isValid())
        return;
    record({.kind = RowEdit::Kind::Removed,
            .node = gone->dom,
            .from = gone->run->list->owner()->dom,
            .fromRow = node.row()});
    beginRemoveRows(node.parent(), node.row(), node.row());
    rows_->park(gone->run->list->take(node.row()));
    endRemoveRows();
}

dom::Node *TreeModel::parentNode(const QModelIndex &node) const
{
    const TreeNode *above = nodeAt(node.parent());
    return above ? above->dom : nullptr;
}

void TreeModel::setLabelFrom(const QModelIndex &node)
{
    const TreeNode *shown = nodeAt(node);
    if (!shown || shown->rule == TagRule::AsItStands)
        return;
    record({.kind = RowEdit::Kind::Relabelled,
            .node = shown->dom,
            .to = parentNode(node),
            .toRow = node.row(),
            .ruleBefore = shown->rule});
    relabel(node, TagRule::AsItStands);
}

void TreeModel::lengthenKeysBelow(const QModelIndex &node)
{
    TreeNode *top = nodeAt(node);
    if (!top)
        return;
    record({.kind = RowEdit::Kind::KeysLengthened,
            .node = top->dom,
            .to = parentNode(node),
            .toRow = node.row()});
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
    if (into->firstChild() != node) {
        const RowsByHand byHand(*this);
        auto done = document_.insertBefore(into, node, into->firstChild());
        if (!done)
            return done;
    }
    move(dragged, target, rowCount(target));
    return {};
}

} // namespace tree
