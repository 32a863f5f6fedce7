// Rows on record: how what a step did to them is taken back and done again.
#include "tree/tree_model.h"

#include <utility>

namespace tree {

QModelIndex TreeModel::find(const dom::Node *node) const
{
    if (!node || !rows_->top().made(0))
        return {};
    if (rows_->top().made(0)->dom == node)
        return createIndex(0, 0, &rows_->top());
    RowList *around = node->parent() ? rows_->listOf(node->parent()) : nullptr;
    if (!around || !rows_->isInTree(*around))
        return {};
    const qint64 row = rows_->rowOf(*around, node, node->indexInParent());
    return row < 0 ? QModelIndex() : createIndex(int(row), 0, around);
}

QModelIndex TreeModel::reach(const dom::Node *node)
{
    // From the first ancestor whose rows are listed, downwards.
    std::vector<const dom::Node *> way;
    for (const dom::Node *at = node; at; at = at->parent()) {
        way.push_back(at);
        if (find(at).isValid())
            break;
    }
    QModelIndex reached;
    for (; !way.empty(); way.pop_back()) {
        reached = find(way.back());
        if (reached.isValid())
            rowCount(reached); // lists what is below
    }
    return reached;
}

void TreeModel::beginRecording()
{
    recorded_.clear();
    isRecording_ = true;
}

RowEdits TreeModel::endRecording()
{
    isRecording_ = false;
    return std::exchange(recorded_, {});
}

void TreeModel::record(const RowEdit &edit)
{
    if (isRecording_)
        recorded_.push_back(edit);
}

void TreeModel::revert(const RowEdits &edits, const std::function<void()> &turnDocument)
{
    {
        const RowsByHand byHand(*this);
        turnDocument();
    }
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
        switch (edit->kind) {
        case RowEdit::Kind::Inserted:
            takeAway(edit->to, edit->toRow);
            break;
        case RowEdit::Kind::Removed:
            putBack(edit->from, edit->fromRow, edit->node);
            break;
        case RowEdit::Kind::Moved:
            shift(edit->to, edit->toRow, edit->from, edit->fromRow);
            break;
        case RowEdit::Kind::Relabelled:
            relabel(on(*edit), edit->ruleBefore);
            break;
        case RowEdit::Kind::KeysLengthened:
            addToKeysBelow(*nodeAt(on(*edit)), -1);
            break;
        case RowEdit::Kind::TreeExchanged:
            show(edit->treeBefore);
            break;
        }
    }
}

void TreeModel::reapply(const RowEdits &edits, const std::function<void()> &turnDocument)
{
    {
        const RowsByHand byHand(*this);
        turnDocument();
    }
    for (const RowEdit &edit : edits) {
        switch (edit.kind) {
        case RowEdit::Kind::Inserted:
            putBack(edit.to, edit.toRow, edit.node);
            break;
        case RowEdit::Kind::Removed:
            takeAway(edit.from, edit.fromRow);
            break;
        case RowEdit::Kind::Moved:
            shift(edit.from, edit.fromRow, edit.to, edit.toRow);
            break;
        case RowEdit::Kind::Relabelled:
            relabel(on(edit), TagRule::AsItStands);
            break;
        case RowEdit::Kind::KeysLengthened:
            addToKeysBelow(*nodeAt(on(edit)), 1);
            break;
        case RowEdit::Kind::TreeExchanged:
            show(edit.treeAfter);
            break;
        }
    }
}

// The row an edit left in place. By its place on record: the document is a step ahead of the rows by now.
QModelIndex TreeModel::on(const RowEdit &edit) const
{
    return createIndex(edit.toRow, 0, edit.to ? rows_->listOf(edit.to) : &rows_->top());
}

void TreeModel::putBack(dom::Node *parent, int row, dom::Node *node)
{
    RowList &list = *rows_->listOf(parent);
    beginInsertRows(ownerIndex(list), row, row);
    list.insert(row, rows_->unpark(node));
    endInsertRows();
}

void TreeModel::takeAway(dom::Node *parent, int row)
{
    RowList &list = *rows_->listOf(parent);
    rows_->node(list, row);
    beginRemoveRows(ownerIndex(list), row, row);
    rows_->park(list.take(row));
    endRemoveRows();
}

void TreeModel::shift(dom::Node *from, int fromRow, dom::Node *to, int toRow)
{
    RowList &source = *rows_->listOf(from);
    RowList &target = *rows_->listOf(to);
    rows_->node(source, fromRow);
    const int before = &source == &target && toRow > fromRow ? toRow + 1 : toRow;
    if (!beginMoveRows(ownerIndex(source), fromRow, fromRow, ownerIndex(target), before))
        return;
    target.insert(toRow, source.take(fromRow));
    endMoveRows();
}

void TreeModel::relabel(const QModelIndex &node, TagRule rule)
{
    nodeAt(node)->rule = rule;
    Q_EMIT dataChanged(node, node);
}

void TreeModel::addToKeysBelow(TreeNode &top, int underscores)
{
    std::vector<TreeNode *> open{&top};
    while (!open.empty()) {
        TreeNode *at = open.back();
        open.pop_back();
        at->childSuffix += underscores;
        if (!at->children)
            continue;
        at->children->forEachMade([&open, underscores](TreeNode &child) {
            child.suffix += underscores;
            open.push_back(&child);
        });
    }
}

} // namespace tree
