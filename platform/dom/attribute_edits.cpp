// An element's attributes as a whole: which there are, in which order, and how much of their spelling stays.
#include "platform/dom/characters.h"
#include "platform/dom/document.h"
#include "platform/dom/document_private.h"
#include "platform/dom/rules.h"
#include "platform/dom/start_tag.h"

#include <QHash>
#include <QMap>
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

// Each by itself, on an element that has no other.
Result<void> areAttributes(const Node &element, const QList<AttributeEdit> &attributes)
{
    Document scratch;
    const Node *bare = *scratch.createElement(QStringLiteral("a"));
    QHash<QString, QString> before;
    for (const Attribute &attribute : element.attributes())
        before.insert(attribute.name, attribute.value);
    for (const AttributeEdit &attribute : attributes) {
        const auto was = before.constFind(attribute.name);
        if (attribute.name == attribute.original && was != before.constEnd() && *was == attribute.value)
            continue;
        if (auto verdict = Rules::isAttribute(bare, attribute.name, attribute.value); !verdict)
            return verdict;
    }
    return {};
}

// Name, sign and quoted value, as they were written (null: nowhere) as far as they are the same.
QByteArray spelled(const StartTag &tag, const StartTag::AttributeSpan *was, const AttributeEdit &attribute,
                   const Entities &entities)
{
    if (!was)
        return attribute.name.toUtf8() + "=\"" + encodeAttribute(attribute.value, '"') + '"';
    const QByteArrayView written = tag.valueOf(*was);
    const char quote = written.data()[-1];
    const bool same = decodeAttribute(written, entities) == attribute.value;
    return attribute.name.toUtf8() + tag.signOf(*was).toByteArray() + quote
        + (same ? written.toByteArray() : encodeAttribute(attribute.value, quote)) + quote;
}

// The tag with these attributes. Looks none of them up by going through all.
QByteArray tagWith(const StartTag &tag, const QList<AttributeEdit> &attributes, const Entities &entities)
{
    QHash<QByteArrayView, const StartTag::AttributeSpan *> spans;
    for (const StartTag::AttributeSpan &span : tag.attributes())
        spans.insert(tag.nameOf(span), &span);
    std::vector<StartTag::Spelled> all;
    for (const AttributeEdit &attribute : attributes) {
        const StartTag::AttributeSpan *was = spans.value(attribute.original.toUtf8());
        all.push_back({was, spelled(tag, was, attribute, entities)});
    }
    return tag.withAttributes(all);
}

} // namespace

Result<void> Document::setAttributes(Node *element, const QList<AttributeEdit> &attributes)
{
    if (!element || element->kind() != NodeKind::Element)
        return platform::Failure{QStringLiteral("Only an element has attributes")};
    const QList<AttributeEdit> wanted = onePerName(attributes);
    if (auto verdict = areAttributes(*element, wanted); !verdict)
        return verdict;
    return edit([&]() -> Result<void> {
        const QMap<QString, QString> bindings = bindingsOf(*element);
        const QByteArray markup = tagWith(StartTag(element->head()), wanted, d->content->entities);
        if (markup == element->head())
            return {};
        setHead(element, markup);
        return bindingsOf(*element) == bindings ? keepsAttributesApart(element, markup)
                                                : keepsAttributesApart(element);
    });
}

} // namespace dom
