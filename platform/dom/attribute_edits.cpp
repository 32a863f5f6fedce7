// An element's attributes as a whole: which there are, in which order, and how much of their spelling stays.
#include "platform/dom/characters.h"
#include "platform/dom/document.h"
#include "platform/dom/document_private.h"
#include "platform/dom/entity_references.h"
#include "platform/dom/rules.h"
#include "platform/dom/start_tag.h"

#include <QHash>
#include <QMap>
#include <optional>
#include <vector>

namespace dom {

using platform::Result;

namespace {

// One for each name: an earlier one gives its place to the later.
QList<AttributeEdit> onePerName(const QList<AttributeEdit> &attributes)
{
    QList<AttributeEdit> out;
    QHash<QString, qsizetype> places;
    for (const AttributeEdit &attribute : attributes) {
        const auto earlier = places.constFind(attribute.name);
        if (earlier != places.constEnd()) {
            out[*earlier] = attribute;
            continue;
        }
        places.insert(attribute.name, out.size());
        out.append(attribute);
    }
    return out;
}

// What an element binds prefixes to, in an order of its own.
QMap<QString, QString> bindingsOf(const Node &element)
{
    QMap<QString, QString> bindings;
    for (const Attribute &attribute : element.attributes())
        if (attribute.name.startsWith(QStringLiteral("xmlns:")))
            bindings.insert(attribute.name, attribute.value);
    return bindings;
}

// An attribute as it is to be, and how much of its spelling stays.
struct Wanted
{
    QByteArray name;
    const StartTag::AttributeSpan *was; // null for a new one
    QByteArray value; // as written
    bool changed;
};

char quoteOf(const StartTag &tag, const StartTag::AttributeSpan *was)
{
    return was ? tag.valueOf(*was).data()[-1] : '"';
}

// Looks none of them up by going through all.
std::vector<Wanted> wantedOf(const StartTag &tag, const QList<AttributeEdit> &attributes,
                             const Entities &entities)
{
    QHash<QByteArrayView, const StartTag::AttributeSpan *> spans;
    for (const StartTag::AttributeSpan &span : tag.attributes())
        spans.insert(tag.nameOf(span), &span);
    std::vector<Wanted> all;
    for (const AttributeEdit &attribute : onePerName(attributes)) {
        const StartTag::AttributeSpan *was = spans.value(attribute.original.toUtf8());
        const QByteArrayView written = was ? tag.valueOf(*was) : QByteArrayView();
        const QByteArray value = respelledAttribute(written, attribute.value, entities, quoteOf(tag, was));
        const bool changed = !was || value != written || attribute.name != attribute.original;
        all.push_back({attribute.name.toUtf8(), was, value, changed});
    }
    return all;
}

// Each by itself, on an element that has no other.
Result<void> areAttributes(const std::vector<Wanted> &attributes, const Entities &entities)
{
    Document scratch;
    const Node *bare = *scratch.createElement(QStringLiteral("a"));
    for (const Wanted &attribute : attributes) {
        if (!attribute.changed)
            continue;
        const QString value = decodeAttribute(attribute.value, entities);
        if (auto verdict = Rules::isAttribute(bare, textOf(attribute.name), value); !verdict)
            return verdict;
    }
    return {};
}

QByteArray tagWith(const StartTag &tag, const std::vector<Wanted> &attributes)
{
    std::vector<StartTag::Spelled> all;
    for (const Wanted &attribute : attributes) {
        const char quote = quoteOf(tag, attribute.was);
        const QByteArray sign = attribute.was ? tag.signOf(*attribute.was).toByteArray() : "=";
        all.push_back({attribute.was, attribute.name + sign + quote + attribute.value + quote});
    }
    return tag.withAttributes(all);
}

// What the content of a node says, as it is written in an attribute: the references in it stay.
QByteArray textAsAttribute(const Node &node, char quote)
{
    const Manner manner{.place = Place::Attribute, .quote = quote};
    QByteArray out;
    for (const Node *at = &node; at;) {
        const Node *below = at->kind() == NodeKind::Element ? at->firstChild() : nullptr;
        if (at->kind() == NodeKind::Text || at->kind() == NodeKind::EntityReference)
            out += withReferencesKept(at->xml(), manner);
        else if (at->kind() == NodeKind::CData)
            out += spelled(at->data(), manner);
        for (; !below && at != &node; at = at->parent()) {
            if ((below = at->nextSibling()))
                break;
        }
        at = below;
    }
    return out;
}

} // namespace

Result<void> Document::setAttribute(Node *element, const QString &name, const QString &value)
{
    if (!element || element->kind() != NodeKind::Element)
        return platform::Failure{QStringLiteral("Only an element has attributes")};
    const StartTag tag(element->head());
    const StartTag::AttributeSpan *there = tag.find(name.toUtf8());
    const QByteArrayView written = there ? tag.valueOf(*there) : QByteArrayView();
    const bool same = there && decodeAttribute(written, d->content->entities) == value;
    const Manner manner{.place = Place::Attribute, .quote = quoteOf(tag, there)};
    return setAttributeAs(element, name,
                          same ? written.toByteArray() : respelled(written, Value(value), manner));
}

Result<void> Document::setAttributeToText(Node *element, const QString &name, const Node &from)
{
    if (!element || element->kind() != NodeKind::Element)
        return platform::Failure{QStringLiteral("Only an element has attributes")};
    const StartTag tag(element->head());
    const QByteArray value = textAsAttribute(from, quoteOf(tag, tag.find(name.toUtf8())));
    const Value meant = valueOf(value, Place::Attribute);
    const IsEntity isEntity = entitiesOfAttribute(d->content->entities, {});
    for (const char32_t item : meant.items) {
        if (Value::isReference(item) && !isEntity(meant.nameOf(item)))
            return platform::Failure{QStringLiteral("The entity \"%1\" cannot stand in an attribute")
                                         .arg(textOf(meant.nameOf(item)))};
    }
    const std::optional<QString> now = element->attribute(name);
    if (now && *now == decodeAttribute(value, d->content->entities))
        return {};
    return setAttributeAs(element, name, value);
}

Result<void> Document::setAttributeAs(Node *element, const QString &name, const QByteArray &value)
{
    const QString meant = decodeAttribute(value, d->content->entities);
    if (auto verdict = Rules::isAttribute(element, name, meant); !verdict)
        return verdict;
    return edit([&]() -> Result<void> {
        const StartTag tag(element->head());
        const StartTag::AttributeSpan *there = tag.find(name.toUtf8());
        if (!there)
            setHead(element, tag.withAttribute(name.toUtf8(), value));
        else if (tag.valueOf(*there) != value)
            setHead(element, tag.withValue(*there, value));
        return name.startsWith(QStringLiteral("xmlns:")) ? keepsAttributesApart(element) : Result<void>();
    });
}

Result<void> Document::removeAttribute(Node *element, const QString &name)
{
    if (!element || element->kind() != NodeKind::Element)
        return platform::Failure{QStringLiteral("Only an element has attributes")};
    return edit([&]() -> Result<void> {
        const StartTag tag(element->head());
        if (const StartTag::AttributeSpan *there = tag.find(name.toUtf8()))
            setHead(element, tag.without(*there));
        return name.startsWith(QStringLiteral("xmlns:")) ? keepsAttributesApart(element) : Result<void>();
    });
}

Result<void> Document::setAttributes(Node *element, const QList<AttributeEdit> &attributes)
{
    if (!element || element->kind() != NodeKind::Element)
        return platform::Failure{QStringLiteral("Only an element has attributes")};
    const StartTag tag(element->head());
    const std::vector<Wanted> wanted = wantedOf(tag, attributes, d->content->entities);
    if (auto verdict = areAttributes(wanted, d->content->entities); !verdict)
        return verdict;
    return edit([&]() -> Result<void> {
        const QMap<QString, QString> bindings = bindingsOf(*element);
        const QByteArray markup = tagWith(tag, wanted);
        if (markup == element->head())
            return {};
        setHead(element, markup);
        return bindingsOf(*element) == bindings ? keepsAttributesApart(element, markup)
                                                : keepsAttributesApart(element);
    });
}

} // namespace dom
