#include "platform/dom/child_list.h"

#include "platform/dom/node.h"
#include "platform/dom/node_factory.h"

#include <algorithm>

namespace dom {

// A section or a reference on a line of its own among elements on theirs does not make a paragraph of them.
bool ChildList::mixes(NodeKind kind, QByteArrayView lead)
{
    return kind == NodeKind::Text || (isTextLike(kind) && !lead.contains('\n') && !lead.contains('\r'));
}

void ChildList::addBlock(std::unique_ptr<Block> block)
{
    block->list = this;
    block->position = qsizetype(blocks_.size());
    block->firstIndex = count_;
    count_ += block->count;
    indicesFresh_ = blocks_.empty() || indicesFresh_;
    blocks_.push_back(std::move(block));
}

void ChildList::refreshIndices()
{
    if (indicesFresh_)
        return;
    qsizetype index = 0;
    for (const auto &block : blocks_) {
        block->firstIndex = index;
        index += block->count;
    }
    indicesFresh_ = true;
}

void ChildList::renumber(qsizetype from)
{
    for (qsizetype i = from; i < qsizetype(blocks_.size()); ++i)
        blocks_[size_t(i)]->position = i;
    indicesFresh_ = false;
}

ChildList::Block *ChildList::blockOf(qsizetype index)
{
    if (index < 0 || index >= count_)
        return nullptr;
    refreshIndices();
    // Children are mostly asked for one after the other.
    if (lastAsked_ < blocks_.size()) {
        Block *last = blocks_[lastAsked_].get();
        if (index >= last->firstIndex && index < last->firstIndex + last->count)
            return last;
    }
    const auto after = std::upper_bound(blocks_.begin(), blocks_.end(), index,
                                        [](qsizetype i, const auto &block) { return i < block->firstIndex; });
    lastAsked_ = size_t(std::distance(blocks_.begin(), after)) - 1;
    return blocks_[lastAsked_].get();
}

void ChildList::make(Block &block)
{
    if (block.nodes.empty())
        NodeFactory::makeNodes(block);
}

Node *ChildList::at(qsizetype index)
{
    Block *block = blockOf(index);
    if (!block)
        return nullptr;
    make(*block);
    return block->nodes[size_t(index - block->firstIndex)];
}

bool ChildList::hasChildrenAt(qsizetype index)
{
    const Block *block = blockOf(index);
    if (!block)
        return false;
    const qsizetype within = index - block->firstIndex;
    if (block->nodes.empty())
        return (block->haveChildren >> within) & 1;
    return block->nodes[size_t(within)]->hasChildren();
}

qsizetype ChildList::indexOf(const Node *node)
{
    refreshIndices();
    const std::vector<Node *> &nodes = node->block_->nodes;
    return node->block_->firstIndex + (std::find(nodes.begin(), nodes.end(), node) - nodes.begin());
}

Node *ChildList::next(const Node *node)
{
    const Block &block = *node->block_;
    const auto at = std::next(std::find(block.nodes.begin(), block.nodes.end(), node));
    if (at != block.nodes.end())
        return *at;
    if (block.position + 1 == qsizetype(blocks_.size()))
        return nullptr;
    Block &following = *blocks_[size_t(block.position + 1)];
    make(following);
    return following.nodes.front();
}

Node *ChildList::previous(const Node *node)
{
    const Block &block = *node->block_;
    const auto at = std::find(block.nodes.begin(), block.nodes.end(), node);
    if (at != block.nodes.begin())
        return *std::prev(at);
    if (block.position == 0)
        return nullptr;
    Block &preceding = *blocks_[size_t(block.position - 1)];
    make(preceding);
    return preceding.nodes.back();
}

bool ChildList::hasText() const
{
    return std::any_of(blocks_.begin(), blocks_.end(), [](const auto &block) { return block->hasText; });
}

void ChildList::insert(qsizetype index, Node *node)
{
    if (blocks_.empty()) {
        auto block = std::make_unique<Block>();
        block->source = node->source_;
        block->dirty = true;
        addBlock(std::move(block));
    }
    Block *block = index < count_ ? blockOf(index) : blocks_.back().get();
    refreshIndices();
    if (block->count > 0)
        make(*block);
    block->nodes.insert(block->nodes.begin() + (index - block->firstIndex), node);
    block->count += 1;
    block->dirty = true;
    block->hasText = block->hasText || mixes(node->kind(), node->lead());
    block->subtreeNodes += node->subtreeCount_;
    node->block_ = block;
    node->parent_ = owner_;
    count_ += 1;
    indicesFresh_ = false;
    if (block->count > splitSize)
        split(*block);
}

void ChildList::remove(qsizetype index)
{
    Block *block = blockOf(index);
    make(*block);
    const auto at = block->nodes.begin() + (index - block->firstIndex);
    Node *node = *at;
    block->nodes.erase(at);
    block->count -= 1;
    block->dirty = true;
    block->subtreeNodes -= node->subtreeCount_;
    block->hasText = std::any_of(block->nodes.begin(), block->nodes.end(),
                                 [](const Node *other) { return mixes(other->kind(), other->lead()); });
    node->block_ = nullptr;
    node->parent_ = nullptr;
    count_ -= 1;
    indicesFresh_ = false;
    if (block->count == 0) {
        const qsizetype position = block->position;
        blocks_.erase(blocks_.begin() + position);
        renumber(position);
    }
}

void ChildList::split(Block &block)
{
    auto half = std::make_unique<Block>();
    half->list = this;
    half->source = block.source;
    half->dirty = true;
    const auto middle = block.nodes.begin() + block.count / 2;
    half->nodes.assign(middle, block.nodes.end());
    block.nodes.erase(middle, block.nodes.end());
    for (Block *part : {&block, half.get()}) {
        part->count = qint32(part->nodes.size());
        part->subtreeNodes = 0;
        part->hasText = false;
        for (Node *node : part->nodes) {
            node->block_ = part;
            part->subtreeNodes += node->subtreeCount_;
            part->hasText = part->hasText || mixes(node->kind(), node->lead());
        }
    }
    const qsizetype position = block.position + 1;
    blocks_.insert(blocks_.begin() + position, std::move(half));
    renumber(position);
}

} // namespace dom
