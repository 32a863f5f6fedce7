// From nodes to places in the markup and back. What was never edited knows its place; of what was, the sizes
// of the pieces before it are added up, and nothing is put together.
#include "platform/dom/node.h"
#include "platform/dom/serialiser.h"
#include "platform/dom/source.h"

#include <algorithm>
#include <vector>

namespace dom {

namespace {

bool breaksLine(QByteArrayView blanks)
{
    return std::any_of(blanks.begin(), blanks.end(), [](char c) { return c == '\n' || c == '\r'; });
}

// Whose the place is, so many bytes into the layout after one node and before another.
const Node *ownerOf(QByteArrayView gap, qsizetype into, const Node &around, const Node *before,
                    const Node *after)
{
    if (before && !breaksLine(gap.first(into)))
        return before;
    if (after && !breaksLine(gap.sliced(into)))
        return after;
    return &around;
}

} // namespace

qsizetype Serialiser::sizeOf(const Node &node)
{
    qsizetype size = 0;
    std::vector<const Node *> left{&node};
    while (!left.empty()) {
        const Node &at = *left.back();
        left.pop_back();
        if (!at.dirty_) {
            size += at.whole_.size();
            continue;
        }
        size += at.head().size();
        if (at.kind_ != NodeKind::Element && !at.children_)
            continue;
        for (const auto &block : at.children().blocks()) {
            if (!block->dirty) {
                size += block->span.size();
                continue;
            }
            for (const Node *child : block->nodes) {
                size += child->lead().size();
                left.push_back(child);
            }
        }
        size += at.tail().size() + at.end().size();
    }
    return size;
}

qsizetype Serialiser::sizeBefore(const Node &node)
{
    qsizetype size = 0;
    for (const auto &block : node.parent_->children().blocks()) {
        if (!block->dirty && block.get() == node.block_)
            return size + node.whole_.begin - block->span.begin;
        if (!block->dirty) {
            size += block->span.size();
            continue;
        }
        for (const Node *child : block->nodes) {
            size += child->lead().size();
            if (child == &node)
                return size;
            size += sizeOf(*child);
        }
    }
    return size;
}

qsizetype Serialiser::beginOf(const Node &node, const Node &top)
{
    qsizetype offset = 0;
    for (const Node *at = &node; at != &top; at = at->parent_) {
        const Node *parent = at->parent_;
        if (!parent)
            return -1;
        offset += parent->dirty_ ? parent->head().size() + sizeBefore(*at)
                                 : qsizetype(at->whole_.begin) - parent->whole_.begin;
    }
    return offset;
}

const Node *Serialiser::nodeAt(const Node &top, qsizetype offset)
{
    const Node *at = &top;
    qsizetype place = 0; // where at begins
    for (;;) {
        place += at->head().size();
        if (offset < place || !at->hasChildren())
            return at;
        const Node *inside = nullptr;
        qsizetype index = 0;
        for (const auto &block : at->children().blocks()) {
            if (!block->dirty && offset > place + block->span.size()) {
                place += block->span.size();
                index += block->count;
                continue;
            }
            for (const qsizetype end = index + block->count; index < end && !inside; ++index) {
                const Node *child = at->child(index);
                const QByteArrayView lead = child->lead();
                if (offset < place + lead.size())
                    return ownerOf(lead, offset - place, *at, at->child(index - 1), child);
                place += lead.size();
                if (const qsizetype size = sizeOf(*child); offset < place + size)
                    inside = child;
                else
                    place += size;
            }
            if (inside)
                break;
        }
        if (!inside && offset <= place + at->tail().size())
            return ownerOf(at->tail(), offset - place, *at, at->lastChild(), nullptr);
        if (!inside)
            return at;
        at = inside;
    }
}

} // namespace dom
