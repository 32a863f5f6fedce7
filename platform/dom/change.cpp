#include "platform/dom/change.h"

#include "platform/dom/document_private.h"
#include "platform/dom/node.h"
#include "platform/dom/node_factory.h"

#include <utility>

namespace dom {

void Changes::insertChild(Node *parent, qsizetype index, Node *node)
{
    log_.push_back({.kind = Change::Kind::Inserted, .node = node, .parent = parent, .index = index});
    apply(log_.back());
}

void Changes::removeChild(Node *parent, qsizetype index)
{
    log_.push_back(
        {.kind = Change::Kind::Removed, .node = parent->child(index), .parent = parent, .index = index});
    apply(log_.back());
}

void Changes::setPiece(Node *node, Piece piece, Text text)
{
    log_.push_back({.kind = Change::Kind::PieceSet,
                    .node = node,
                    .piece = piece,
                    .before = node->piece(piece),
                    .after = std::move(text)});
    apply(log_.back());
}

void Changes::setHome(Node *element, const Home &home)
{
    log_.push_back({.kind = Change::Kind::HomeSet,
                    .node = element,
                    .homeBefore = NodeFactory::homeOf(*element),
                    .homeAfter = home});
    apply(log_.back());
}

void Changes::setContent(std::shared_ptr<Content> content)
{
    log_.push_back({.kind = Change::Kind::ContentSet,
                    .contentBefore = document_.d->content,
                    .contentAfter = std::move(content)});
    apply(log_.back());
}

void Changes::undoTo(qsizetype mark)
{
    while (qsizetype(log_.size()) > mark) {
        revert(log_.back());
        log_.pop_back();
    }
}

std::vector<Change> Changes::take() { return std::exchange(log_, {}); }

void Changes::applyAll(const std::vector<Change> &changes)
{
    for (const Change &change : changes)
        apply(change);
}

void Changes::revertAll(const std::vector<Change> &changes)
{
    for (auto change = changes.rbegin(); change != changes.rend(); ++change)
        revert(*change);
}

void Changes::apply(const Change &change)
{
    switch (change.kind) {
    case Change::Kind::Inserted:
        return doInsert(change.parent, change.index, change.node);
    case Change::Kind::Removed:
        return doRemove(change.parent, change.index, change.node);
    case Change::Kind::PieceSet:
        return doSetPiece(change.node, change.piece, change.after);
    case Change::Kind::HomeSet:
        return NodeFactory::settle(*change.node, change.homeAfter);
    case Change::Kind::ContentSet:
        document_.d->content = change.contentAfter;
    }
}

void Changes::revert(const Change &change)
{
    switch (change.kind) {
    case Change::Kind::Inserted:
        return doRemove(change.parent, change.index, change.node);
    case Change::Kind::Removed:
        return doInsert(change.parent, change.index, change.node);
    case Change::Kind::PieceSet:
        return doSetPiece(change.node, change.piece, change.before);
    case Change::Kind::HomeSet:
        return NodeFactory::settle(*change.node, change.homeBefore);
    case Change::Kind::ContentSet:
        document_.d->content = change.contentBefore;
    }
}

void Changes::doInsert(Node *parent, qsizetype index, Node *node)
{
    Observer *observer = document_.d->observer;
    if (observer)
        observer->aboutToInsert(parent, index, node);
    parent->children().insert(index, node);
    parent->markDirty();
    Node::addToCounts(parent, node->subtreeCount_);
    if (observer)
        observer->inserted(parent, index, node);
}

void Changes::doRemove(Node *parent, qsizetype index, Node *node)
{
    Observer *observer = document_.d->observer;
    if (observer)
        observer->aboutToRemove(parent, index, node);
    parent->children().remove(index);
    parent->markDirty();
    Node::addToCounts(parent, -node->subtreeCount_);
    if (observer)
        observer->removed(parent, index, node);
}

void Changes::doSetPiece(Node *node, Piece piece, const Text &text)
{
    node->setPiece(piece, text);
    node->markDirty();
    if (document_.d->observer && piece == Piece::Head)
        document_.d->observer->textChanged(node);
}

} // namespace dom
