// A node of the tree, as far as somebody has looked at it.
#pragma once

#include "platform/dom/node.h"
#include "tree/label.h"

#include <QString>
#include <memory>
#include <vector>

namespace tree {

class RowList;
struct Run;

struct TreeNode
{
    dom::Node *dom = nullptr;
    Run *run = nullptr; // where it stands among its siblings; null while it is out of the tree

    qint64 number = 0; // of its key
    int suffix = 1; // underscores of its key: one, and one more for each move of a node above it
    // What its children get that came with the text: their number in the text (dom::Node::ordinal) and base.
    qint64 base = 0;
    int childSuffix = 1;

    TagRule rule = TagRule::WithoutOwnNamespace;
    bool open = false; // what is below it is shown where it is shown itself
    std::unique_ptr<RowList> children; // null until asked for

    TreeNode();
    ~TreeNode();
    TreeNode(const TreeNode &) = delete;
    TreeNode &operator=(const TreeNode &) = delete;

    qint64 shownBelow() const; // rows to be seen below it; none while it is closed
    QString key() const { return QString::number(number) + QString(suffix, u'_'); }
};

// Rows of one parent that follow each other. Until one of them is looked at they have no tree nodes.
struct Run
{
    RowList *list = nullptr;
    qint64 firstRow = 0;
    qint64 count = 0;
    qint64 below = 0; // what its nodes show below them
    std::vector<std::unique_ptr<TreeNode>> nodes; // empty until made

    bool made() const { return !nodes.empty(); }
    qint64 rowOf(const TreeNode *node) const; // node stands in this run
};

} // namespace tree
