#include "tree/tree_rows.h"

namespace tree {

void TreeRows::rebuild(dom::Node *root, bool loaded)
{
    lists_.clear();
    parked_.clear();
    top_ = RowList(nullptr, 0);
    madeCount_ = 0;
    if (!root)
        return;
    const qint64 nodes = root->subtreeCount();
    textNumbers_ = loaded ? nodes : qMax(textNumbers_, nodes);

    auto node = std::make_unique<TreeNode>();
    node->dom = root;
    node->number = 1;
    node->base = counter_;
    node->rule = TagRule::AsItStands;
    top_.insert(0, std::move(node));
    madeCount_ = 1;
    counter_ += textNumbers_ - 1;
}

TreeNode *TreeRows::node(RowList &list, qint64 row)
{
    if (row < 0 || row >= list.count())
        return nullptr;
    if (TreeNode *known = list.made(row))
        return known;
    const TreeNode &parent = *list.owner(); // the root's own list is made from the start
    return list.make(row, [&](qint64 index) { return makeNode(parent.dom->child(index), parent); });
}

std::unique_ptr<TreeNode> TreeRows::makeNode(dom::Node *node, const TreeNode &parent)
{
    auto made = std::make_unique<TreeNode>();
    made->dom = node;
    made->base = parent.base;
    made->childSuffix = parent.childSuffix;
    const qint64 ordinal = node->ordinal();
    if (ordinal >= 0) {
        made->number = parent.base + ordinal;
        made->suffix = parent.childSuffix;
    } else {
        // What came along with it, such as the children of a copy, is numbered on from it.
        made->number = nextNumber();
        made->base = made->number + 1;
        made->childSuffix = 1;
        counter_ += node->subtreeCount() - 1;
    }
    ++madeCount_;
    return made;
}

RowList &TreeRows::below(TreeNode &node)
{
    if (!node.children) {
        node.children = std::make_unique<RowList>(&node, node.dom->childCount());
        lists_.insert(node.dom, node.children.get());
    }
    return *node.children;
}

bool TreeRows::hasChildren(const RowList &list, qint64 row) const
{
    if (const TreeNode *known = list.made(row)) {
        if (known->children)
            return known->children->count() > 0;
        return known->dom->hasChildren();
    }
    const bool inRange = row >= 0 && row < list.count();
    return inRange && list.owner()->dom->childHasChildren(row);
}

bool TreeRows::isInTree(const RowList &list) const
{
    const RowList *at = &list;
    while (const TreeNode *owner = at->owner()) {
        if (!owner->run)
            return false;
        at = owner->run->list;
    }
    return true;
}

RowList *TreeRows::listOf(const dom::Node *parent)
{
    if (RowList *known = lists_.value(parent))
        return known;
    TreeNode *root = top_.made(0);
    if (root && root->dom == parent)
        return &below(*root);
    RowList *around = parent->parent() ? lists_.value(parent->parent()) : nullptr;
    TreeNode *shown = around ? node(*around, parent->indexInParent()) : nullptr;
    return shown ? &below(*shown) : nullptr;
}

TreeNode *TreeRows::madeNode(const dom::Node *node) const
{
    TreeNode *root = top_.made(0);
    if (root && root->dom == node)
        return root;
    const RowList *around = node->parent() ? lists_.value(node->parent()) : nullptr;
    TreeNode *made = around ? around->made(node->indexInParent()) : nullptr;
    return made && made->dom == node ? made : nullptr; // while it moves its row is still elsewhere
}

void TreeRows::park(std::unique_ptr<TreeNode> node)
{
    const dom::Node *key = node->dom;
    parked_[key] = std::move(node);
}

std::unique_ptr<TreeNode> TreeRows::unpark(const dom::Node *node)
{
    const auto found = parked_.find(node);
    if (found == parked_.end())
        return nullptr;
    std::unique_ptr<TreeNode> kept = std::move(found->second);
    parked_.erase(found);
    return kept;
}

} // namespace tree
