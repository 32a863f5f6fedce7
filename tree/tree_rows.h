// All rows of the tree: makes tree nodes and their keys when they are asked for, and finds them again by the
// document node they show, which stands at the same position among its siblings.
//
// Keys are those a build of the whole tree in document order would give: the root is 1, and a node's number
// in the text added to the key counter's value at the start of the build gives every other, so that a node's
// key does not depend on who looked at what first. Nodes that came by an edit have no number in the text;
// they take the counter's next value when they are first seen, and the values after it for all that came
// below them.
#pragma once

#include "tree/row_list.h"

#include <QHash>
#include <memory>
#include <unordered_map>

namespace tree {

class TreeRows
{
public:
    TreeRows() : top_(nullptr, 0) { }

    // Starts anew with root (null: an empty tree). loaded: its document was parsed since the last rebuild.
    void rebuild(dom::Node *root, bool loaded);

    // Never gives a number out that other has given.
    void numberOnFrom(const TreeRows &other) { counter_ = qMax(counter_, other.counter_); }

    RowList &top() { return top_; }
    TreeNode *node(RowList &list, qint64 row); // made if need be; null when out of range
    RowList &below(TreeNode &node); // listed if need be
    bool hasChildren(const RowList &list, qint64 row) const; // makes nothing
    bool isInTree(const RowList &list) const; // hangs from the root; false within what was taken out

    // The list that shows the children of parent; null when not even the row of parent has been listed.
    RowList *listOf(const dom::Node *parent);
    TreeNode *madeNode(const dom::Node *node) const; // null when its row has not been looked at

    std::unique_ptr<TreeNode> makeNode(dom::Node *node, const TreeNode &parent);
    qint64 nextNumber() { return ++counter_; }

    // What was taken out, in case it comes back; null when that node was not.
    void park(std::unique_ptr<TreeNode> node);
    std::unique_ptr<TreeNode> unpark(const dom::Node *node);

    // The tree nodes there are; the rest of the rows is not made yet.
    qint64 madeCount() const { return madeCount_; }

private:
    RowList top_;
    QHash<const dom::Node *, RowList *> lists_; // by the node whose children they show
    std::unordered_map<const dom::Node *, std::unique_ptr<TreeNode>> parked_;
    qint64 counter_ = 1; // the last number given out; never reset
    qint64 textNumbers_ = 0; // how many numbers the text takes: more than its nodes once some are removed
    qint64 madeCount_ = 0;
};

} // namespace tree
