// The rows below one tree node.
//
// A row shows the child at its position in the document: a list is told of all that the document gains and
// loses below its node, and has no order of its own. It starts as one run, which costs nothing a child.
// Looking at a row makes the tree nodes of the block around it. A list also knows how many rows are to be
// seen for what is open in it, so that a place among millions of them is found without walking.
#pragma once

#include "tree/tree_node.h"

#include <functional>
#include <memory>
#include <vector>

namespace tree {

class RowList
{
public:
    static constexpr qint64 blockSize = 64; // the document's own blocks are as large
    static constexpr size_t splitSize = 128; // an edited run is halved beyond this

    // The rows below owner, which has count children (null: the list of the root alone).
    RowList(TreeNode *owner, qint64 count);

    TreeNode *owner() const { return owner_; }
    qint64 count() const { return count_; }

    TreeNode *made(qint64 row) const; // null when not made, or out of range

    // Makes the nodes of the block around row, which is in range; from gives the node of a row.
    using Maker = std::function<std::unique_ptr<TreeNode>(qint64 row)>;
    TreeNode *make(qint64 row, const Maker &from);

    void insert(qint64 row, std::unique_ptr<TreeNode> node);
    std::unique_ptr<TreeNode> take(qint64 row); // a made one

    // What is seen of this list: its rows and, after each, what is open below it.
    qint64 shown() const { return shown_; }
    qint64 shownBefore(const TreeNode &node) const; // rows seen above one that stands here
    qint64 shownBeforeUnmade(qint64 row) const;
    struct Place
    {
        qint64 row;
        qint64 into; // of what is open below that row, counted from 1; 0 for the row itself
    };
    Place placeOf(qint64 shown) const; // in range
    void setOpen(TreeNode &node, bool open); // it stands here, and what is below it is listed
    void closeAll(); // all that has been made; nothing below it

    void forEachMade(const std::function<void(TreeNode &)> &visit) const;

private:
    size_t runAt(qint64 row) const; // the run that holds row; runs_.size() when out of range
    void splitUnmade(size_t run, qint64 before); // in two: before rows, and the rest
    void halveWhenLong(size_t run);
    void shiftRows(size_t fromRun, qint64 by);
    void addRun(size_t at, qint64 firstRow, qint64 count);
    void addShown(qint64 rows); // here, and wherever this list is to be seen
    const std::vector<qint64> &sums() const; // rows seen before each run

    TreeNode *owner_;
    qint64 count_;
    qint64 shown_;
    mutable std::vector<qint64> sums_; // empty until asked for again
    mutable size_t lastRun_ = 0; // the one last asked for, if it is still one
    std::vector<std::unique_ptr<Run>> runs_; // in the order of the rows, none empty
};

} // namespace tree
