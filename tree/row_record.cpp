// Rows on record: how what a step did to them is taken back and done again.
#include "tree/tree_model.h"

#include <algorithm>
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
    return createIndex(int(node->indexInParent()), 0, around);
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
    turn(edits, true, turnDocument);
}

void TreeModel::reapply(const RowEdits &edits, const std::function<void()> &turnDocument)
{
    turn(edits, false, turnDocument);
}

void TreeModel::turn(const RowEdits &edits, bool back, const std::function<void()> &turnDocument)
{
    const auto moved = std::find_if(edits.begin(), edits.end(),
                                    [](const RowEdit &edit) { return edit.kind == RowEdit::Kind::Moved; });
    if (moved == edits.end()) {
        turnDocument();
    } else {
        (void)move(moved->node, back ? moved->from : moved->into, [&turnDocument] {
            turnDocument();
            return platform::Result<void>();
        });
    }
    for (const RowEdit &edit : edits)
        turnRow(edit, back);
}

// What does not depend on where the row stands by now; none of it depends on another.
void TreeModel::turnRow(const RowEdit &edit, bool back)
{
    if (edit.kind == RowEdit::Kind::TreeExchanged)
        return show(back ? edit.treeBefore : edit.treeAfter);
    TreeNode *shown = rows_->madeNode(edit.node);
    if (!shown)
        return; // it went with the step
    if (edit.kind == RowEdit::Kind::Relabelled)
        relabel(*shown, back ? edit.ruleBefore : TagRule::AsItStands);
    if (edit.kind == RowEdit::Kind::KeysLengthened)
        addToKeysBelow(*shown, back ? -1 : 1);
}

void TreeModel::relabel(TreeNode &node, TagRule rule)
{
    node.rule = rule;
    const QModelIndex at = indexOf(node);
    Q_EMIT dataChanged(at, at);
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
