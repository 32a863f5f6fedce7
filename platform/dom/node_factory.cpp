#include "platform/dom/node_factory.h"

#include "platform/dom/document_private.h"
#include "platform/dom/scanner.h"
#include "platform/dom/source.h"
#include "platform/dom/start_tag.h"

#include <algorithm>

namespace dom {

// Gathers scanned children into blocks.
class NodeFactory::BlockBuilder
{
public:
    BlockBuilder(ChildList &list, const Source &source, qint32 firstOrdinal)
        : list_(list), source_(source), ordinal_(firstOrdinal)
    { }

    void add(const ScannedChild &child)
    {
        if (block_ && block_->count == ChildList::blockSize)
            flush();
        if (!block_) {
            block_ = std::make_unique<ChildList::Block>();
            block_->source = &source_;
            block_->firstOrdinal = ordinal_;
            block_->span.begin = child.whole.begin - child.leadSize;
        }
        const Span lead{child.whole.begin - child.leadSize, child.whole.begin};
        block_->hasText = block_->hasText || ChildList::mixes(child.kind, source_.view(lead));
        block_->haveChildren |= quint64(child.nodes > 1) << block_->count;
        block_->count += 1;
        block_->subtreeNodes += child.nodes;
        block_->span.end = child.whole.end;
        ordinal_ += child.nodes;
    }

    void flush()
    {
        if (block_)
            list_.addBlock(std::move(block_));
    }

private:
    ChildList &list_;
    const Source &source_;
    std::unique_ptr<ChildList::Block> block_;
    qint32 ordinal_;
};

Node *NodeFactory::makeNode(const Source &source, const ScannedChild &scanned, qint32 ordinal)
{
    Node *node = source.document->d->newNode();
    node->source_ = &source;
    node->kind_ = scanned.kind;
    node->whole_ = scanned.whole;
    node->leadSize_ = scanned.leadSize;
    node->headSize_ = scanned.headSize;
    node->subtreeCount_ = scanned.nodes;
    node->preservesSpace_ = scanned.preservesSpace;
    node->ordinal_ = ordinal;
    return node;
}

void NodeFactory::makeNodes(ChildList::Block &block)
{
    Node *parent = block.list->owner();
    block.nodes.reserve(size_t(block.count));
    qint32 ordinal = block.firstOrdinal;
    Scanner(*block.source)
        .children(block.span.begin, block.span.end, parent->preservesSpace_, [&](const ScannedChild &child) {
            Node *node = makeNode(*block.source, child, ordinal);
            node->parent_ = parent;
            node->block_ = &block;
            block.nodes.push_back(node);
            ordinal += child.nodes;
        });
}

void NodeFactory::list(const Node &element)
{
    element.children_ = std::make_unique<ChildList>(const_cast<Node *>(&element));
    const Span whole = element.whole_;
    if (element.kind_ != NodeKind::Element || element.headSize_ >= whole.size())
        return;
    BlockBuilder builder(*element.children_, *element.source_, element.ordinal_ + 1);
    const ContentEnd end = Scanner(*element.source_)
                               .children(whole.begin + element.headSize_, whole.end, element.preservesSpace_,
                                         [&builder](const ScannedChild &child) { builder.add(child); });
    builder.flush();
    element.tailSize_ = end.tag - end.tail;
    element.endSize_ = end.end - end.tag;
}

void NodeFactory::makeDocumentNode(Node &node, const Source &source)
{
    node.source_ = &source;
    node.kind_ = NodeKind::Document;
}

void NodeFactory::parse(Source &source, Node &documentNode)
{
    makeDocumentNode(documentNode, source);
    documentNode.whole_ = {0, quint32(source.utf8.size())};
    documentNode.children_ = std::make_unique<ChildList>(&documentNode);
    auto rootChildren = std::make_unique<ChildList>(nullptr);
    BlockBuilder builder(*rootChildren, source, 1);
    std::vector<ScannedChild> tops;
    ContentEnd rootEnd{};
    const ContentEnd end = Scanner(source).wholeDocument(
        source.index, [&tops](const ScannedChild &child) { tops.push_back(child); },
        [&builder](const ScannedChild &child) { builder.add(child); }, rootEnd);
    builder.flush();
    Node *root = nullptr;
    for (const ScannedChild &top : tops) {
        Node *node = makeNode(source, top, top.kind == NodeKind::Element ? 0 : -1);
        documentNode.children_->insert(documentNode.children_->count(), node);
        documentNode.subtreeCount_ += top.nodes;
        if (top.kind == NodeKind::Element && !root)
            root = node;
    }
    documentNode.tailSize_ = end.tag - end.tail;
    if (root && root->headSize_ < root->whole_.size()) {
        rootChildren->adopt(root);
        root->children_ = std::move(rootChildren);
        root->tailSize_ = rootEnd.tag - rootEnd.tail;
        root->endSize_ = rootEnd.end - rootEnd.tag;
    }
}

Node *NodeFactory::create(Document &document, NodeKind kind, const QByteArray &markup)
{
    Node *node = document.d->newNode();
    node->source_ = &document.d->noSource;
    node->kind_ = kind;
    node->dirty_ = true;
    node->setPiece(Piece::Head, Text(markup));
    return node;
}

Node *NodeFactory::clone(Node &node, bool deep)
{
    Document &document = node.document();
    const bool isElement = node.kind_ == NodeKind::Element;
    if (!isElement || (!deep && StartTag(node.head()).closesItself()))
        return create(document, node.kind_, node.head().toByteArray());
    if (!deep) {
        Node *copy = create(document, node.kind_, node.head().toByteArray());
        copy->setPiece(Piece::End, Text("</" + StartTag(node.head()).name().toByteArray() + '>'));
        copy->preservesSpace_ = node.preservesSpace_;
        return copy;
    }
    // An edited subtree is written out once and shared from there on; a clean one shares the text it stands
    // in.
    const Source *source = node.source_;
    ScannedChild scanned{node.kind_,     node.whole_,        0,
                         node.headSize_, node.subtreeCount_, node.preservesSpace_};
    if (node.dirty_) {
        Source *own = document.d->newSource(node.xml());
        source = own;
        Scanner(*own).element(own->index, 0, node.preservesSpace_,
                              [&scanned](const ScannedChild &root) { scanned = root; });
        scanned.preservesSpace = node.preservesSpace_;
    }
    return makeNode(*source, scanned, -1);
}

std::vector<Node *> NodeFactory::import(Document &document, const QByteArray &element)
{
    Source *source = document.d->newSource(element);
    std::vector<ScannedChild> found;
    ContentEnd end{};
    Scanner(*source).wholeDocument(
        source->index, [](const ScannedChild &) {},
        [&found](const ScannedChild &child) { found.push_back(child); }, end);
    const auto leadOf = [source](const ScannedChild &child) {
        return source->view({child.whole.begin - child.leadSize, child.whole.begin});
    };
    const bool mixed = found.empty() || std::any_of(found.begin(), found.end(), [&](const auto &child) {
                           return ChildList::mixes(child.kind, leadOf(child));
                       });
    std::vector<Node *> nodes;
    const auto addBlanks = [&](QByteArrayView blanks) {
        if (mixed && !blanks.isEmpty())
            nodes.push_back(create(document, NodeKind::Text, blanks.toByteArray()));
    };
    for (ScannedChild &child : found) {
        addBlanks(leadOf(child));
        if (mixed)
            child.leadSize = 0;
        nodes.push_back(makeNode(*source, child, -1));
    }
    addBlanks(source->view({end.tail, end.tag}));
    return nodes;
}

Home NodeFactory::homeOf(const Node &element)
{
    return {element.source_, element.whole_, element.leadSize_, element.headSize_};
}

Home NodeFactory::homeIn(Source &source, const Node &element)
{
    Home home{&source, {}, element.leadSize_, element.headSize_};
    Scanner(source).element(source.index, element.leadSize_, element.preservesSpace_,
                            [&home](const ScannedChild &root) { home.whole = root.whole; });
    return home;
}

struct NodeFactory::Settling
{
    Node *node;
    Home home;
};

void NodeFactory::settle(Node &element, const Home &home)
{
    std::vector<Settling> open{{&element, home}};
    while (!open.empty()) {
        const auto [node, at] = open.back();
        open.pop_back();
        node->source_ = at.source;
        node->whole_ = at.whole;
        node->leadSize_ = at.leadSize;
        node->headSize_ = at.headSize;
        if (node != &element) {
            node->edited_.reset();
            node->dirty_ = false;
        } else if (node->edited_) {
            node->edited_->pieces[int(Piece::Tail)].reset(); // of what stands between its tags
        }
        if (node->children_ && node->hasChildren())
            settleChildren(*node, *at.source, open);
    }
    element.markDirty();
}

void NodeFactory::settleChildren(const Node &element, const Source &source, std::vector<Settling> &open)
{
    std::vector<ScannedChild> found;
    const ContentEnd end = Scanner(source).children(
        element.whole_.begin + element.headSize_, element.whole_.end, element.preservesSpace_,
        [&found](const ScannedChild &child) { found.push_back(child); });
    element.tailSize_ = end.tag - end.tail;
    element.endSize_ = end.end - end.tag;
    Q_ASSERT(qsizetype(found.size()) == element.children_->count());
    auto child = found.cbegin();
    for (const auto &block : element.children_->blocks()) {
        block->source = &source;
        block->span = {child->whole.begin - child->leadSize, (child + block->count - 1)->whole.end};
        block->dirty = false;
        for (Node *node : block->nodes) {
            open.push_back({node, {&source, child->whole, child->leadSize, child->headSize}});
            ++child;
        }
        if (block->nodes.empty())
            child += block->count;
    }
}

} // namespace dom
