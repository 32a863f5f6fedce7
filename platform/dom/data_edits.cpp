// The data of texts, CDATA sections, comments and instructions: made, and changed no further than it differs.
#include "platform/dom/characters.h"
#include "platform/dom/document.h"
#include "platform/dom/document_private.h"
#include "platform/dom/entity_references.h"
#include "platform/dom/layout.h"
#include "platform/dom/node_factory.h"
#include "platform/dom/rules.h"

namespace dom {

using platform::Result;

namespace {

// The markup of a text, parted at its references to entities, which stand at every second place.
QList<QByteArray> partedAtEntities(const QByteArray &markup)
{
    QList<QByteArray> parts{QByteArray()};
    qsizetype done = 0;
    for (qsizetype at = markup.indexOf('&'); at >= 0; at = markup.indexOf('&', at + 1)) {
        const qsizetype end = markup.indexOf(';', at) + 1;
        if (characterOf(QByteArrayView(markup).sliced(at + 1, end - at - 2)))
            continue;
        parts.last() = markup.sliced(done, at - done);
        parts.append({markup.sliced(at, end - at), QByteArray()});
        done = end;
    }
    parts.last() = markup.sliced(done);
    return parts;
}

} // namespace

Result<Node *> Document::createTextNode(const QString &data) { return createLeaf(NodeKind::Text, {}, data); }

Result<Node *> Document::createCDATASection(const QString &data)
{
    return createLeaf(NodeKind::CData, {}, data);
}

Result<Node *> Document::createComment(const QString &data)
{
    return createLeaf(NodeKind::Comment, {}, data);
}

Result<Node *> Document::createProcessingInstruction(const QString &target, const QString &data)
{
    if (const auto verdict = Rules::isInstructionTarget(target); !verdict)
        return platform::Failure{verdict.reason()};
    return createLeaf(NodeKind::ProcessingInstruction, target, data);
}

Result<Node *> Document::createLeaf(NodeKind kind, const QString &target, const QString &data)
{
    if (const auto verdict = Rules::isData(kind, data); !verdict)
        return platform::Failure{verdict.reason()};
    return NodeFactory::create(*this, kind, leafMarkup(kind, target.toUtf8(), data));
}

QByteArray Document::leafMarkup(NodeKind kind, const QByteArray &target, const QString &data) const
{
    const Place place = kind == NodeKind::Text ? Place::Text : Place::Verbatim;
    const QByteArray written = spelled(data, {.place = place, .lineEnd = Layout::lineEnd(*this)});
    switch (kind) {
    case NodeKind::Text:
        return written;
    case NodeKind::CData:
        return "<![CDATA[" + written + "]]>";
    case NodeKind::Comment:
        return "<!--" + written + "-->";
    default:
        return "<?" + target + (written.isEmpty() ? "" : " ") + written + "?>";
    }
}

// The node's markup with other data. An instruction for another target is written as a new one; of one for
// the same the blanks before its data stay.
QByteArray Document::leafMarkup(const Node &node, const QByteArray &target, const QString &data) const
{
    const QByteArrayView head = node.head();
    const QByteArrayView was = node.writtenData();
    const bool isText = node.kind() == NodeKind::Text;
    const qsizetype before = was.begin() - head.begin();
    const bool isSet = node.kind() == NodeKind::ProcessingInstruction
        && (node.name().toUtf8() != target || was.isEmpty() != data.isEmpty());
    if (isSet)
        return leafMarkup(node.kind(), target, data);
    const QByteArray written
        = respelled(was, Value(data),
                    {.place = isText ? Place::Text : Place::Verbatim, .lineEnd = Layout::lineEnd(*this)});
    return head.first(before).toByteArray() + written + head.sliced(before + was.size()).toByteArray();
}

Result<void> Document::setData(Node *node, const QString &data)
{
    const NodeKind kind = node ? node->kind() : NodeKind::Document;
    const bool hasData = kind == NodeKind::Text || kind == NodeKind::CData || kind == NodeKind::Comment
        || kind == NodeKind::ProcessingInstruction;
    if (!hasData || (kind == NodeKind::ProcessingInstruction && node->name() == QStringLiteral("xml")))
        return platform::Failure{QStringLiteral("This node has no data to set")};
    if (auto verdict = Rules::isData(kind, data); !verdict)
        return verdict;
    return edit([&]() -> Result<void> {
        if (node->data() != data)
            setHead(node, leafMarkup(*node, node->name().toUtf8(), data));
        if (kind == NodeKind::Text)
            keepTextsApart({node, node->nextSibling()});
        return {};
    });
}

// Fails when what the entity brings does not fit.
Result<Node *> Document::createReference(const QByteArray &markup)
{
    const auto made = importContent("<x>" + markup + "</x>");
    if (!made)
        return platform::Failure{made.reason()};
    return made->front();
}

Result<void> Document::setShownText(Node *text, const QString &shown)
{
    if (!text || text->kind() != NodeKind::Text)
        return platform::Failure{QStringLiteral("This node is no text")};
    const Value value = valueShownAs(shown, entitiesOfContent(d->content->entities));
    if (!value.hasReferences()) {
        QString data;
        for (const char32_t item : value.items)
            data += textOf(item);
        return setData(text, data);
    }
    if (auto verdict = Rules::isData(NodeKind::Text, shown); !verdict)
        return verdict;
    if (!text->parent())
        return platform::Failure{QStringLiteral("The text is not in the document")};
    return edit([&]() -> Result<void> {
        const Manner manner{.place = Place::Text, .lineEnd = Layout::lineEnd(*this)};
        const QList<QByteArray> parts = partedAtEntities(respelled(text->head(), value, manner));
        setHead(text, parts.first());
        Node *last = text;
        for (qsizetype i = 1; i < parts.size(); ++i) {
            if (parts[i].isEmpty())
                continue;
            const Result<Node *> made = i % 2 == 1
                ? createReference(parts[i])
                : Result<Node *>(NodeFactory::create(*this, NodeKind::Text, parts[i]));
            if (!made)
                return platform::Failure{made.reason()};
            putIn(text->parent(), *made, last->indexInParent() + 1, {});
            last = *made;
        }
        keepTextsApart({text, last, last->nextSibling()});
        return keepsEntitiesBounded();
    });
}

Result<void> Document::setInstruction(Node *instruction, const QString &target, const QString &data)
{
    if (!instruction || instruction->kind() != NodeKind::ProcessingInstruction
        || instruction->name() == QStringLiteral("xml"))
        return platform::Failure{QStringLiteral("Only a processing instruction has a target")};
    const bool renamed = instruction->name() != target;
    if (auto verdict = renamed ? Rules::isInstructionTarget(target) : Result<void>(); !verdict)
        return verdict;
    if (auto verdict = Rules::isData(NodeKind::ProcessingInstruction, data); !verdict)
        return verdict;
    return edit([&]() -> Result<void> {
        if (renamed || instruction->data() != data)
            setHead(instruction, leafMarkup(*instruction, target.toUtf8(), data));
        return {};
    });
}

} // namespace dom
