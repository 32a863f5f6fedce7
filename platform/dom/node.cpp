#include "platform/dom/node.h"

#include "platform/dom/characters.h"
#include "platform/dom/document.h"
#include "platform/dom/entity_references.h"
#include "platform/dom/names.h"
#include "platform/dom/node_factory.h"
#include "platform/dom/serialiser.h"
#include "platform/dom/source.h"
#include "platform/dom/start_tag.h"

#include <algorithm>

namespace dom {

namespace {

// What stands around the content of each kind of leaf.
struct Wrapping
{
    NodeKind kind;
    qsizetype before;
    qsizetype after;
};

constexpr Wrapping wrappings[] = {
    {NodeKind::CData, 9, 3},
    {NodeKind::Comment, 4, 3},
    {NodeKind::ProcessingInstruction, 2, 2},
    {NodeKind::EntityReference, 1, 1},
    {NodeKind::DocumentType, 9, 1},
};

qsizetype nameEnd(QByteArrayView text, qsizetype from)
{
    while (from < text.size() && !isBlank(text[from]) && text[from] != '[')
        ++from;
    return from;
}

QByteArrayView instructionData(QByteArrayView content)
{
    return content.sliced(skipBlanks(content, nameEnd(content, 0)));
}

// The next node in document order that is not below node, or null when root's subtree is walked.
const Node *nextOutside(const Node *node, const Node *root)
{
    while (node != root) {
        if (const Node *sibling = node->nextSibling())
            return sibling;
        node = node->parent();
    }
    return nullptr;
}

} // namespace

Text Node::piece(Piece piece) const
{
    if (edited_ && edited_->pieces[int(piece)])
        return *edited_->pieces[int(piece)];
    const Span spans[4] = {
        {whole_.begin - leadSize_, whole_.begin},
        {whole_.begin, whole_.begin + headSize_},
        {whole_.end - endSize_ - tailSize_, whole_.end - endSize_},
        {whole_.end - endSize_, whole_.end},
    };
    return Text::range(source_->view(spans[int(piece)]));
}

void Node::setPiece(Piece piece, const Text &text)
{
    if (!edited_)
        edited_ = std::make_unique<Edited>();
    edited_->pieces[int(piece)] = text;
}

bool Node::isContentAsParsed() const
{
    if (whole_.size() == 0 || (edited_ && edited_->pieces[int(Piece::Tail)]))
        return false;
    return !children_
        || std::none_of(children_->blocks().begin(), children_->blocks().end(),
                        [](const auto &block) { return block->dirty; });
}

const Node *Node::textBefore() const
{
    const Node *before = kind_ == NodeKind::Text && lead().isEmpty() ? previousSibling() : nullptr;
    return before && before->kind_ == NodeKind::Text ? before : nullptr;
}

QByteArrayView Node::content() const
{
    const QByteArrayView all = head();
    for (const Wrapping &wrapping : wrappings) {
        if (wrapping.kind == kind_ && all.size() >= wrapping.before + wrapping.after)
            return all.sliced(wrapping.before, all.size() - wrapping.before - wrapping.after);
    }
    return all;
}

ChildList &Node::children() const
{
    if (!children_)
        NodeFactory::list(*this);
    return *children_;
}

void Node::markDirty()
{
    for (Node *node = this; node; node = node->parent_) {
        const bool known = node->dirty_ && (!node->block_ || node->block_->dirty);
        node->dirty_ = true;
        if (node->block_)
            node->block_->dirty = true;
        if (known && node != this)
            return;
    }
}

void Node::addToCounts(Node *node, qint32 nodes)
{
    for (; node; node = node->parent_) {
        node->subtreeCount_ += nodes;
        if (node->block_)
            node->block_->subtreeNodes += nodes;
    }
}

Document &Node::document() const { return *source_->document; }

bool Node::hasChildren() const { return children_ ? children_->count() > 0 : subtreeCount_ > 1; }

qsizetype Node::childCount() const { return children().count(); }

Node *Node::child(qsizetype index) const { return children().at(index); }

bool Node::childHasChildren(qsizetype index) const { return children().hasChildrenAt(index); }

Node *Node::nextSibling() const { return parent_ ? parent_->children().next(this) : nullptr; }

Node *Node::previousSibling() const { return parent_ ? parent_->children().previous(this) : nullptr; }

qsizetype Node::indexInParent() const { return parent_ ? parent_->children().indexOf(this) : -1; }

bool Node::contains(const Node *other) const
{
    while (other && other != this)
        other = other->parent_;
    return other == this;
}

qint64 Node::subtreeCount() const { return subtreeCount_; }

QString Node::name() const
{
    switch (kind_) {
    case NodeKind::Element:
        return textOf(tagName(head()));
    case NodeKind::ProcessingInstruction:
        return textOf(content().first(nameEnd(content(), 0)));
    case NodeKind::EntityReference:
        return textOf(content());
    case NodeKind::DocumentType: {
        const QByteArrayView declared = content().sliced(skipBlanks(content(), 0));
        return textOf(declared.first(nameEnd(declared, 0)));
    }
    default:
        return {};
    }
}

QByteArrayView Node::writtenData() const
{
    return kind_ == NodeKind::ProcessingInstruction ? instructionData(content()) : content();
}

QString Node::data() const
{
    switch (kind_) {
    case NodeKind::Text:
        return decodeText(head());
    case NodeKind::CData:
    case NodeKind::Comment:
    case NodeKind::ProcessingInstruction:
        return decodeVerbatim(writtenData());
    default:
        return {};
    }
}

QString Node::text() const
{
    if (kind_ == NodeKind::Text || kind_ == NodeKind::CData)
        return data();
    if (kind_ == NodeKind::EntityReference)
        return decodeText(document().entities().value(content().toByteArray()));
    QString out;
    if (kind_ != NodeKind::Element)
        return out;
    for (const Node *node = firstChild(); node;) {
        const Node *below = node->kind_ == NodeKind::Element ? node->firstChild() : nullptr;
        if (node->kind_ != NodeKind::Element)
            out += node->text();
        node = below ? below : nextOutside(node, this);
    }
    return out;
}

QString Node::shownText() const
{
    return kind_ == NodeKind::Text ? shownValue(Value(data()), entitiesOfContent(document().entities()))
                                   : data();
}

QByteArray Node::xml() const { return Serialiser::xml(*this); }

QByteArray Node::startTag() const { return kind_ == NodeKind::Document ? xml() : head().toByteArray(); }

QByteArray Node::rawContent(qsizetype atMost) const
{
    const QByteArrayView raw = content();
    return raw.first(qMin(raw.size(), atMost)).toByteArray();
}

QString Node::namespaceUri() const
{
    if (kind_ != NodeKind::Element)
        return {};
    const QByteArrayView name = tagName(head());
    const qsizetype colon = name.indexOf(':');
    return colon < 0 ? resolvePrefix({}) : resolvePrefix(name.first(colon));
}

QString Node::resolvePrefix(QByteArrayView prefix) const
{
    if (prefix == QByteArrayView("xml"))
        return QStringLiteral("http://www.w3.org/XML/1998/namespace");
    const QByteArray declaration = prefix.isEmpty() ? QByteArray("xmlns") : "xmlns:" + prefix.toByteArray();
    for (const Node *node = this; node && node->kind_ == NodeKind::Element; node = node->parent_) {
        if (!node->head().contains(declaration))
            continue;
        const StartTag tag(node->head());
        if (const StartTag::AttributeSpan *found = tag.find(declaration))
            return decodeAttribute(tag.valueOf(*found), document().entities());
    }
    return {};
}

QList<Attribute> Node::attributes() const
{
    QList<Attribute> out;
    if (kind_ != NodeKind::Element)
        return out;
    const StartTag tag(head());
    for (const StartTag::AttributeSpan &span : tag.attributes())
        out.append({textOf(tag.nameOf(span)), decodeAttribute(tag.valueOf(span), document().entities())});
    return out;
}

QList<Attribute> Node::shownAttributes() const
{
    QList<Attribute> out;
    if (kind_ != NodeKind::Element)
        return out;
    const StartTag tag(head());
    for (const StartTag::AttributeSpan &span : tag.attributes())
        out.append({textOf(tag.nameOf(span)), shownAttribute(tag.valueOf(span), document().entities())});
    return out;
}

std::optional<QString> Node::attribute(const QString &name) const
{
    if (kind_ != NodeKind::Element)
        return std::nullopt;
    const StartTag tag(head());
    const StartTag::AttributeSpan *found = tag.find(name.toUtf8());
    return found ? std::optional(decodeAttribute(tag.valueOf(*found), document().entities())) : std::nullopt;
}

} // namespace dom
