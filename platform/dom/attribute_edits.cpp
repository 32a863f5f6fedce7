// An element's attributes as a whole: which there are, in which order, and how much of their spelling stays.
#include "platform/dom/characters.h"
#include "platform/dom/document.h"
#include "platform/dom/document_private.h"
#include "platform/dom/rules.h"
#include "platform/dom/start_tag.h"

#include <QMap>
#include <algorithm>

namespace dom {

using platform::Result;

namespace {

// One for each name: an earlier one gives its place to the later.
QList<AttributeEdit> onePerName(const QList<AttributeEdit> &attributes)
{
    QList<AttributeEdit> out;
    for (const AttributeEdit &attribute : attributes) {
        const auto earlier = std::find_if(out.begin(), out.end(), [&attribute](const AttributeEdit &other) {
            return other.name == attribute.name;
        });
        if (earlier == out.end())
            out.append(attribute);
        else
            *earlier = attribute;
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
    for (const AttributeEdit &attribute : attributes) {
        if (attribute.name == attribute.original && element.attribute(attribute.name) == attribute.value)
            continue;
        if (auto verdict = Rules::isAttribute(bare, attribute.name, attribute.value); !verdict)
            return verdict;
    }
    return {};
}

} // namespace

// Name, sign and quoted value, as they were written as far as they are the same.
QByteArray Document::spelled(const StartTag &tag, const AttributeEdit &attribute) const
{
    const StartTag::AttributeSpan *was = tag.find(attribute.original.toUtf8());
    if (!was)
        return attribute.name.toUtf8() + "=\"" + encodeAttribute(attribute.value, '"') + '"';
    const QByteArrayView written = tag.valueOf(*was);
    const char quote = written.data()[-1];
    const bool same = decodeAttribute(written, d->content->entities) == attribute.value;
    return attribute.name.toUtf8() + tag.signOf(*was).toByteArray() + quote
        + (same ? written.toByteArray() : encodeAttribute(attribute.value, quote)) + quote;
}

Result<void> Document::setAttributes(Node *element, const QList<AttributeEdit> &attributes)
{
    if (!element || element->kind() != NodeKind::Element)
        return platform::Failure{QStringLiteral("Only an element has attributes")};
    const QList<AttributeEdit> wanted = onePerName(attributes);
    if (auto verdict = areAttributes(*element, wanted); !verdict)
        return verdict;
    return edit([&]() -> Result<void> {
        const QMap<QString, QString> bindings = bindingsOf(*element);
        const StartTag tag(element->head());
        std::vector<StartTag::Spelled> all;
        for (const AttributeEdit &attribute : wanted)
            all.push_back({tag.find(attribute.original.toUtf8()), spelled(tag, attribute)});
        const QByteArray markup = tag.withAttributes(all);
        if (markup == element->head())
            return {};
        setHead(element, markup);
        return bindingsOf(*element) == bindings ? keepsAttributesApart(element, markup)
                                                : keepsAttributesApart(element);
    });
}

} // namespace dom
