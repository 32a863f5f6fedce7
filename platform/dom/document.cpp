#include "platform/dom/document.h"

#include "platform/dom/document_private.h"
#include "platform/dom/layout.h"
#include "platform/dom/node_factory.h"
#include "platform/dom/rules.h"
#include "platform/dom/start_tag.h"
#include "platform/dom/twin_attributes.h"

#include <utility>

namespace dom {

using platform::Result;

namespace {

qsizetype endingBrackets(QByteArrayView text)
{
    qsizetype start = text.size();
    while (start > 0 && text[start - 1] == ']')
        --start;
    return text.size() - start;
}

} // namespace

void Document::Private::startAfresh()
{
    changes.take();
    if (content && !owner->isEmpty())
        former = std::move(content);
    content = emptyContent();
    inCommand = false;
    revision = ++lastRevision;
}

std::shared_ptr<Content> Document::Private::emptyContent()
{
    auto made = std::make_shared<Content>();
    made->documentNode = &made->nodes.emplace_back();
    NodeFactory::makeDocumentNode(*made->documentNode, noSource);
    return made;
}

void Document::Private::fill(const QByteArray &utf8, const Entities &entities)
{
    content->entities = entities;
    NodeFactory::parse(*newSource(utf8), *content->documentNode);
}

Document::Document() : d(std::make_unique<Private>(*this)) { d->startAfresh(); }

Document::~Document() = default;

std::optional<ParseError> Document::load(const QByteArray &utf8, const QString &baseFolder)
{
    Entities entities;
    std::optional<ParseError> error = checkWellFormed(utf8, baseFolder, &entities);
    if (error)
        clear();
    else
        loadAccepted(utf8, entities);
    return error;
}

void Document::loadAccepted(const QByteArray &utf8, const Entities &entities)
{
    d->startAfresh();
    d->fill(utf8, entities);
}

void Document::clear() { d->startAfresh(); }

void Document::releaseFormer() { d->former.reset(); }

bool Document::isEmpty() const { return documentElement() == nullptr; }

Node *Document::documentNode() const { return d->content->documentNode; }

// Looked up each time: it may have been replaced, and undo may have brought the former one back.
Node *Document::documentElement() const
{
    for (Node *node = d->content->documentNode->firstChild(); node; node = node->nextSibling()) {
        if (node->kind() == NodeKind::Element)
            return node;
    }
    return nullptr;
}

QByteArray Document::xml() const
{
    const bool untouched = !d->content->documentNode->dirty_ && !d->content->sources.empty();
    return untouched ? d->content->sources.front().utf8 : d->content->documentNode->xml();
}

const Entities &Document::entities() const { return d->content->entities; }

quint64 Document::revision() const { return d->revision; }

void Document::setObserver(Observer *observer) { d->observer = observer; }

Result<Node *> Document::createElement(const QString &name)
{
    if (const auto verdict = Rules::isElementName(name); !verdict)
        return platform::Failure{verdict.reason()};
    return NodeFactory::create(*this, NodeKind::Element, '<' + name.toUtf8() + "/>");
}

Result<Node *> Document::cloneNode(Node *node, bool deep)
{
    if (!node || node->kind() == NodeKind::Document)
        return platform::Failure{QStringLiteral("There is no node to copy")};
    return NodeFactory::clone(*node, deep);
}

Result<void> Document::edit(const std::function<Result<void>()> &operation)
{
    const qsizetype mark = d->changes.mark();
    Result<void> result = operation();
    if (!result)
        d->changes.undoTo(mark);
    else if (d->changes.mark() > mark)
        d->revision = ++d->lastRevision;
    if (!d->inCommand)
        d->changes.take();
    return result;
}

Result<void> Document::appendChild(Node *parent, Node *node) { return insertBefore(parent, node, nullptr); }

Result<void> Document::insertBefore(Node *parent, Node *node, Node *reference)
{
    if (node && node == reference)
        return {};
    if (auto verdict = Rules::mayInsert(parent, node, reference, nullptr); !verdict)
        return verdict;
    return edit([&]() -> Result<void> {
        Node *follower = node->nextSibling();
        const QByteArray formerLead = node->lead().toByteArray();
        if (node->parent())
            takeOut(node);
        const Layout::Placement placement = Layout::place(*parent, *node, reference);
        if (placement.after)
            setAfter(parent, reference, *placement.after);
        putIn(parent, node, reference ? reference->indexInParent() : parent->childCount(),
              Text(placement.lead));
        takeIndentation(node, formerLead);
        keepTextsApart({follower, node, reference});
        return {};
    });
}

// The blanks before a child, or with null before the end tag.
void Document::setAfter(Node *parent, Node *follower, const QByteArray &blanks)
{
    Node *node = follower ? follower : parent;
    const Piece piece = follower ? Piece::Lead : Piece::Tail;
    if (!follower)
        parent->children(); // the end tag is known once they are listed
    if (node->piece(piece).view() != blanks)
        d->changes.setPiece(node, piece, Text(blanks));
}

Result<void> Document::replaceChild(Node *parent, Node *node, Node *replaced)
{
    if (!replaced)
        return platform::Failure{QStringLiteral("There is no node to replace")};
    if (node == replaced)
        return {};
    if (auto verdict = Rules::mayInsert(parent, node, replaced->nextSibling(), replaced); !verdict)
        return verdict;
    if (replaced->kind() == NodeKind::DocumentType)
        return Rules::mayRemove(parent, replaced);
    return edit([&]() -> Result<void> {
        Node *follower = node->nextSibling();
        const QByteArray formerLead = node->lead().toByteArray();
        if (node->parent())
            takeOut(node);
        const qsizetype index = replaced->indexInParent();
        Node *next = replaced->nextSibling();
        Text lead = replaced->piece(Piece::Lead);
        d->changes.removeChild(parent, index);
        const bool isText = node->kind() == NodeKind::Text || replaced->kind() == NodeKind::Text;
        if (isText && parent->hasChildren() && !parent->children().hasText()) {
            const Layout::Placement placement = Layout::place(*parent, *node, next);
            lead = Text(placement.lead);
            if (placement.after)
                setAfter(parent, next, *placement.after);
        }
        putIn(parent, node, index, lead);
        takeIndentation(node, formerLead);
        keepTextsApart({follower, node, node->nextSibling()});
        return keepsAttributesApart(node);
    });
}

Result<void> Document::removeChild(Node *parent, Node *node)
{
    if (auto verdict = Rules::mayRemove(parent, node); !verdict)
        return verdict;
    return edit([&]() -> Result<void> {
        Node *follower = node->nextSibling();
        takeOut(node);
        keepTextsApart({follower});
        return {};
    });
}

// Texts that follow each other directly must not spell "]]>" together: its ">" is written as a reference
// then. Before each of the nodes, which may be null, something has changed.
void Document::keepTextsApart(std::initializer_list<Node *> nodes)
{
    for (Node *node : nodes) {
        if (!node || node->kind() != NodeKind::Text)
            continue;
        qsizetype brackets = 0;
        for (const Node *at = node->textBefore(); at; at = at->textBefore()) {
            brackets += endingBrackets(at->head());
            if (endingBrackets(at->head()) < at->head().size())
                break;
        }
        while (node && endingBrackets(node->head()) == node->head().size()) {
            brackets += node->head().size();
            Node *next = node->nextSibling();
            node = next && next->textBefore() ? next : nullptr;
        }
        const QByteArrayView head = node ? node->head() : QByteArrayView();
        const qsizetype end = head.indexOf('>');
        const bool onlyBrackets = end >= 0 && endingBrackets(head.first(end)) == end;
        if (onlyBrackets && brackets + end >= 2)
            setHead(node, head.first(end).toByteArray() + "&gt;" + head.sliced(end + 1).toByteArray());
    }
}

Result<void> Document::exchange(Node *one, Node *other)
{
    if (!one || !other || one == other || !one->parent() || one->parent() != other->parent())
        return platform::Failure{QStringLiteral("Only two children of one element can change places")};
    Node *parent = one->parent();
    if (parent->kind() != NodeKind::Element)
        return platform::Failure{QStringLiteral("Only children of an element can change places")};
    if (one->indexInParent() > other->indexInParent())
        std::swap(one, other);
    return edit([&]() -> Result<void> {
        const qsizetype first = one->indexInParent();
        const qsizetype second = other->indexInParent();
        const Text firstLead = one->piece(Piece::Lead);
        const Text secondLead = other->piece(Piece::Lead);
        d->changes.removeChild(parent, second);
        d->changes.removeChild(parent, first);
        const bool textPasses = second == first + 1
            && (one->kind() == NodeKind::Text) != (other->kind() == NodeKind::Text)
            && !Layout::keepsBlanks(*parent) && !parent->children().hasText();
        putIn(parent, other, first, firstLead);
        putIn(parent, one, second, secondLead);
        if (textPasses)
            letTextPass(one, other, firstLead, secondLead);
        takeIndentation(other, secondLead.view().toByteArray());
        takeIndentation(one, firstLead.view().toByteArray());
        keepTextsApart({one, one->nextSibling(), other, other->nextSibling()});
        return {};
    });
}

// Of two neighbours that have changed places, one is the only text there.
void Document::letTextPass(Node *one, Node *other, const Text &firstLead, const Text &secondLead)
{
    Node *parent = one->parent();
    Node *follower = one->nextSibling();
    const bool goesUp = other->kind() == NodeKind::Text;
    const auto passing = Layout::pass(*parent, goesUp, (goesUp ? firstLead : secondLead).view(), follower);
    if (!passing)
        return;
    setAfter(parent, goesUp ? other : one, {});
    setAfter(parent, goesUp ? one : other, passing->lead);
    setAfter(parent, follower, passing->after);
}

// An element that loses its last child does not keep the line its end tag stood on.
void Document::takeOut(Node *node)
{
    Node *parent = node->parent();
    Node *follower = node->nextSibling();
    d->changes.removeChild(parent, node->indexInParent());
    const bool losesTail = parent->childCount() == 0 && !Layout::keepsBlanks(*parent);
    if (losesTail || Layout::joinsText(*parent, follower))
        setAfter(parent, follower, {});
}

void Document::putIn(Node *parent, Node *node, qsizetype index, const Text &lead)
{
    if (parent->kind() == NodeKind::Element && parent->end().isEmpty()) {
        const StartTag tag(parent->head());
        const QByteArray end = "</" + tag.name().toByteArray() + '>';
        d->changes.setPiece(parent, Piece::Head, Text(tag.opened()));
        d->changes.setPiece(parent, Piece::End, Text(end));
    }
    d->changes.setPiece(node, Piece::Lead, lead);
    d->changes.insertChild(parent, index, node);
}

Result<void> Document::renameElement(Node *element, const QString &name)
{
    if (!element || element->kind() != NodeKind::Element)
        return platform::Failure{QStringLiteral("Only an element has a tag name")};
    if (auto verdict = Rules::isElementName(name); !verdict)
        return verdict;
    return edit([&]() -> Result<void> {
        if (element->name() == name)
            return {};
        element->children(); // the end tag is known once they are listed
        if (const QByteArrayView end = element->end(); !end.isEmpty()) {
            const qsizetype nameSize = tagName(element->head()).size();
            d->changes.setPiece(element, Piece::End,
                                Text("</" + name.toUtf8() + end.sliced(2 + nameSize).toByteArray()));
        }
        setHead(element, StartTag(element->head()).withName(name.toUtf8()));
        return {};
    });
}

// What its prefixes are bound to has changed for this subtree.
Result<void> Document::keepsAttributesApart(const Node *node) const
{
    if (!node->hasChildren() && node->head().count(':') < 2)
        return {};
    const QByteArray markup = node->dirty_ ? node->xml() : QByteArray();
    return keepsAttributesApart(node,
                                node->dirty_ ? QByteArrayView(markup) : node->source_->view(node->whole_));
}

// The same for a part of it, which starts with its start tag.
Result<void> Document::keepsAttributesApart(const Node *node, QByteArrayView markup) const
{
    const QString twins = findTwinAttributes(markup, [node](QByteArrayView prefix) {
        return node->parent_ ? node->parent_->resolvePrefix(prefix) : QString();
    });
    if (twins.isEmpty())
        return {};
    return platform::Failure{QStringLiteral("%1 would be the same attribute of one element").arg(twins)};
}

Result<void> Document::replaceContent(const QByteArray &utf8)
{
    Entities entities;
    if (const auto error = checkWellFormed(utf8, {}, &entities))
        return platform::Failure{error->reason.simplified()};
    return edit([&]() -> Result<void> {
        d->changes.setContent(d->emptyContent());
        d->fill(utf8, entities);
        return {};
    });
}

void Document::setHead(Node *node, const QByteArray &markup)
{
    d->changes.setPiece(node, Piece::Head, Text(markup));
}

void Document::beginCommand()
{
    d->changes.take();
    d->inCommand = true;
    d->revisionBefore = d->revision;
}

ChangeSet Document::endCommand()
{
    ChangeSet set;
    set.changes_ = d->changes.take();
    set.revisionBefore_ = d->revisionBefore;
    set.revisionAfter_ = d->revision;
    d->inCommand = false;
    return set;
}

void Document::rollBack()
{
    d->changes.undoTo(0);
    d->revision = d->revisionBefore;
    d->inCommand = false;
}

void Document::revert(const ChangeSet &changes)
{
    d->changes.revertAll(changes.changes_);
    d->revision = changes.revisionBefore_;
}

void Document::reapply(const ChangeSet &changes)
{
    d->changes.applyAll(changes.changes_);
    d->revision = changes.revisionAfter_;
}

} // namespace dom
