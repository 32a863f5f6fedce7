// The children of a node, in blocks: a block is a span of the source until somebody looks at a child in it.
//
// A list of a million children costs a few bytes a child. Each block knows how many children it spans, which
// of them have children, and how many nodes stand below, so that counting, numbering and "has it children?"
// make no node. Blocks whose nodes were edited are dirty and serialise node by node; clean ones are copied
// whole.
#pragma once

#include "platform/dom/node_kind.h"
#include "platform/dom/text.h"

#include <QtGlobal>
#include <memory>
#include <vector>

namespace dom {

class Node;
struct Source;

class ChildList
{
public:
    static constexpr qsizetype blockSize = 64; // as scanned: one bit a child in a 64-bit mask
    static constexpr qsizetype splitSize = 128; // an edited block is halved beyond this

    struct Block
    {
        ChildList *list = nullptr;
        const Source *source = nullptr;
        Span span; // leads and nodes of the block's children; holds while not dirty
        qint32 count = 0;
        qint32 firstOrdinal = 0; // of its first child as scanned
        qint32 subtreeNodes = 0; // of all its children together
        quint64 haveChildren = 0; // bit i: child i has children; holds while the nodes are not made
        bool hasText = false; // some child is text, CDATA or an entity reference that runs inline
        bool dirty = false;
        qsizetype position = 0; // in the list's blocks
        qsizetype firstIndex = 0; // of its first child; refreshed by refreshIndices()
        std::vector<Node *> nodes; // empty until made
    };

    explicit ChildList(Node *owner) : owner_(owner) { }

    // Whether such a child makes the content around it mixed content; lead is the layout before it.
    static bool mixes(NodeKind kind, QByteArrayView lead);

    qsizetype count() const { return count_; }
    Node *at(qsizetype index);
    bool hasChildrenAt(qsizetype index);
    qsizetype indexOf(const Node *node);
    Node *next(const Node *node); // null at the end
    Node *previous(const Node *node); // null at the beginning
    bool hasText() const; // mixed content, or text alone

    // Editing; only the gate for change may call these (see change.h).
    void insert(qsizetype index, Node *node);
    void remove(qsizetype index);

    void adopt(Node *owner) { owner_ = owner; } // a list that was scanned before its element was made

    // A scanned block is added at the end.
    void addBlock(std::unique_ptr<Block> block);

    const std::vector<std::unique_ptr<Block>> &blocks() const { return blocks_; }
    Node *owner() const { return owner_; }

private:
    Block *blockOf(qsizetype index); // null when out of range
    void make(Block &block);
    void refreshIndices();
    void renumber(qsizetype from);
    void split(Block &block);

    Node *owner_;
    std::vector<std::unique_ptr<Block>> blocks_;
    size_t lastAsked_ = 0; // the block that blockOf found last, if it is still one
    qsizetype count_ = 0;
    bool indicesFresh_ = false;
};

} // namespace dom
