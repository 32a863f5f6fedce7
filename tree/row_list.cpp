#include "tree/row_list.h"

#include <algorithm>
#include <iterator>

namespace tree {

TreeNode::TreeNode() = default;
TreeNode::~TreeNode() = default;

qint64 TreeNode::shownBelow() const { return open && children ? children->shown() : 0; }

qint64 Run::rowOf(const TreeNode *node) const
{
    for (size_t slot = 0; slot < nodes.size(); ++slot) {
        if (nodes[slot].get() == node)
            return firstRow + qint64(slot);
    }
    return -1;
}

RowList::RowList(TreeNode *owner, qint64 count) : owner_(owner), count_(count), shown_(count)
{
    if (count > 0)
        addRun(0, 0, count);
}

void RowList::addRun(size_t at, qint64 firstRow, qint64 count)
{
    auto run = std::make_unique<Run>();
    run->list = this;
    run->firstRow = firstRow;
    run->count = count;
    runs_.insert(runs_.begin() + qsizetype(at), std::move(run));
    sums_.clear();
}

size_t RowList::runAt(qint64 row) const
{
    if (row < 0 || row >= count_)
        return runs_.size();
    // A view asks for one row after the other.
    if (lastRun_ < runs_.size() && row >= runs_[lastRun_]->firstRow
        && row < runs_[lastRun_]->firstRow + runs_[lastRun_]->count)
        return lastRun_;
    const auto after = std::upper_bound(runs_.begin(), runs_.end(), row, [](qint64 wanted, const auto &run) {
        return wanted < run->firstRow;
    });
    lastRun_ = size_t(std::distance(runs_.begin(), after)) - 1;
    return lastRun_;
}

TreeNode *RowList::made(qint64 row) const
{
    const size_t at = runAt(row);
    if (at == runs_.size() || !runs_[at]->made())
        return nullptr;
    return runs_[at]->nodes[size_t(row - runs_[at]->firstRow)].get();
}

TreeNode *RowList::make(qint64 row, const Maker &from)
{
    if (TreeNode *known = made(row))
        return known;
    // Cut the block out of its run, along the document's blocks.
    size_t at = runAt(row);
    const qint64 blockBegin = row - row % blockSize;
    if (blockBegin > runs_[at]->firstRow) {
        splitUnmade(at, blockBegin - runs_[at]->firstRow);
        ++at;
    }
    Run &run = *runs_[at];
    const qint64 size = blockBegin + blockSize - run.firstRow;
    if (size < run.count)
        splitUnmade(at, size);

    std::vector<std::unique_ptr<TreeNode>> nodes;
    nodes.reserve(size_t(run.count));
    for (qint64 i = 0; i < run.count; ++i) {
        nodes.push_back(from(run.firstRow + i));
        nodes.back()->run = &run;
    }
    run.nodes = std::move(nodes);
    return made(row);
}

void RowList::splitUnmade(size_t run, qint64 before)
{
    Run &first = *runs_[run];
    addRun(run + 1, first.firstRow + before, first.count - before);
    first.count = before;
}

void RowList::shiftRows(size_t fromRun, qint64 by)
{
    for (size_t i = fromRun; i < runs_.size(); ++i)
        runs_[i]->firstRow += by;
    count_ += by;
}

void RowList::insert(qint64 row, std::unique_ptr<TreeNode> node)
{
    // Into the run at that row, or at the end of the one before it, or into a new one between them.
    size_t at = runAt(row);
    if (at < runs_.size() && !runs_[at]->made() && row > runs_[at]->firstRow) {
        splitUnmade(at, row - runs_[at]->firstRow);
        ++at;
    }
    if (at == runs_.size() || !runs_[at]->made()) {
        if (at > 0 && runs_[at - 1]->made())
            --at;
        else
            addRun(at, row, 0);
    }
    Run &run = *runs_[at];
    node->run = &run;
    run.nodes.insert(run.nodes.begin() + (row - run.firstRow), std::move(node));
    ++run.count;
    run.below += run.nodes[size_t(row - run.firstRow)]->shownBelow();
    addShown(1 + run.nodes[size_t(row - run.firstRow)]->shownBelow());
    shiftRows(at + 1, 1);
    halveWhenLong(at);
}

void RowList::halveWhenLong(size_t run)
{
    Run &first = *runs_[run];
    if (first.nodes.size() <= splitSize)
        return;
    const qint64 half = first.count / 2;
    addRun(run + 1, first.firstRow + half, first.count - half);
    Run &second = *runs_[run + 1];
    second.nodes.assign(std::make_move_iterator(first.nodes.begin() + half),
                        std::make_move_iterator(first.nodes.end()));
    first.nodes.resize(size_t(half));
    first.count = half;
    for (const auto &node : second.nodes) {
        node->run = &second;
        second.below += node->shownBelow();
    }
    first.below -= second.below;
}

std::unique_ptr<TreeNode> RowList::take(qint64 row)
{
    const size_t at = runAt(row);
    Run &run = *runs_[at];
    const auto slot = run.nodes.begin() + (row - run.firstRow);
    std::unique_ptr<TreeNode> node = std::move(*slot);
    node->run = nullptr;
    run.nodes.erase(slot);
    --run.count;
    run.below -= node->shownBelow();
    addShown(-1 - node->shownBelow());
    shiftRows(at + 1, -1);
    if (run.count == 0)
        runs_.erase(runs_.begin() + qsizetype(at));
    return node;
}

void RowList::forEachMade(const std::function<void(TreeNode &)> &visit) const
{
    for (const auto &run : runs_) {
        for (const auto &node : run->nodes)
            visit(*node);
    }
}

} // namespace tree
