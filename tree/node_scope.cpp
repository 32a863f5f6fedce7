#include "tree/node_scope.h"

#include "platform/dom/characters.h"
#include "platform/dom/document.h"
#include "platform/dom/markup_reader.h"
#include "platform/dom/spelling.h"
#include "platform/dom/start_tag.h"

#include <QSet>
#include <cctype>

namespace tree {

namespace {

// The attribute that binds a prefix, or the default namespace.
QString declaration(const QString &prefix)
{
    return prefix.isEmpty() ? QStringLiteral("xmlns") : QStringLiteral("xmlns:") + prefix;
}

bool isNameByte(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || std::isalnum(byte) || c == '_' || c == '-' || c == '.';
}

// In names, or within values, as XPath has it.
bool usesPrefix(const QByteArray &markup, const QString &prefix)
{
    const QByteArray name = prefix.toUtf8() + ':';
    for (qsizetype at = markup.indexOf(name); at >= 0; at = markup.indexOf(name, at + 1)) {
        const qsizetype end = at + name.size();
        const bool begins = at == 0 || !isNameByte(markup[at - 1]);
        if (begins && end < markup.size() && isNameByte(markup[end]))
            return true;
    }
    return false;
}

// Whether an element without a prefix has its namespace from around the markup.
bool usesDefault(const QByteArray &markup)
{
    int depth = 0;
    int declaredAt = 0; // the depth from which on none has; 0 for none
    dom::MarkupReader reader(markup);
    while (const auto tag = reader.nextTag()) {
        if (tag->kind != dom::MarkupReader::Tag::End && ++depth && declaredAt == 0) {
            const dom::StartTag start(tag->text);
            if (start.find("xmlns"))
                declaredAt = depth;
            else if (!start.name().contains(':'))
                return true;
        }
        if (tag->kind != dom::MarkupReader::Tag::Start && depth-- == declaredAt)
            declaredAt = 0;
    }
    return false;
}

bool uses(const QByteArray &markup, const QString &prefix)
{
    return prefix.isEmpty() ? usesDefault(markup) : usesPrefix(markup, prefix);
}

// The replacement texts of the entities that markup refers to, directly or through others; of each once.
QByteArray entityTexts(const QByteArray &markup, const dom::Entities &entities)
{
    QByteArray texts;
    QSet<QByteArray> seen;
    const auto gather = [&](const QByteArray &from, qsizetype at) {
        for (at = from.indexOf('&', at); at >= 0; at = from.indexOf('&', at + 1)) {
            const QByteArray name = from.sliced(at + 1, qMax<qsizetype>(0, from.indexOf(';', at) - at - 1));
            if (!entities.contains(name) || seen.contains(name))
                continue;
            seen.insert(name);
            texts += entities.value(name);
        }
    };
    if (!entities.isEmpty())
        gather(markup, 0);
    for (qsizetype at = 0; at < texts.size();) {
        const qsizetype end = texts.size();
        gather(QByteArray(texts), at);
        at = end;
    }
    return texts;
}

QByteArray withEntities(const QByteArray &markup, const dom::Entities &entities)
{
    return markup + entityTexts(markup, entities);
}

} // namespace

Scope scopeOf(const dom::Node *element)
{
    Scope scope;
    for (; element && element->kind() == dom::NodeKind::Element; element = element->parent()) {
        if (!element->startTag().contains("xmlns"))
            continue;
        for (const dom::Attribute &attribute : element->attributes()) {
            const QString prefix = attribute.name.section(u':', 1);
            if (attribute.name == declaration(prefix) && !scope.contains(prefix))
                scope.insert(prefix, attribute.value);
        }
    }
    if (!scope.contains(QString()))
        scope.insert(QString(), QString());
    return scope;
}

bool isPrefixBound(const dom::Node *element, const QString &name)
{
    const QString prefix = name.section(u':', 0, -2);
    return prefix.isEmpty() || prefix == QStringLiteral("xml") || prefix == QStringLiteral("xmlns")
        || scopeOf(element).contains(prefix);
}

platform::Result<void> takeScopeAlong(dom::Document &document, dom::Node *node, const Scope &from)
{
    const bool isElement = node->kind() == dom::NodeKind::Element;
    if (!isElement && node->kind() != dom::NodeKind::EntityReference)
        return {};
    const Scope here = scopeOf(node->parent());
    QByteArray markup;
    for (auto binding = from.cbegin(); binding != from.cend(); ++binding) {
        const QString name = declaration(binding.key());
        if (here.value(binding.key()) == binding.value() || node->attribute(name))
            continue;
        if (markup.isEmpty())
            markup = withEntities(node->xml(), document.entities());
        if (!uses(markup, binding.key()))
            continue;
        if (!isElement)
            return platform::Failure{
                QStringLiteral("\"&%1;\" needs the declaration %2, which does not hold there")
                    .arg(node->name(), name)};
        auto done = document.setAttribute(node, name, binding.value());
        if (!done)
            return done;
    }
    return {};
}

QByteArray declarationsOf(const Scope &scope)
{
    QByteArray declarations;
    for (auto binding = scope.cbegin(); binding != scope.cend(); ++binding) {
        if (!binding.value().isEmpty())
            declarations += ' ' + declaration(binding.key()).toUtf8() + "=\""
                + dom::spelled(binding.value(), {.place = dom::Place::Attribute}) + '"';
    }
    return declarations;
}

Scope scopeFrom(const QByteArray &markup)
{
    Scope scope{{QString(), QString()}};
    const auto first = dom::MarkupReader(markup).nextTag();
    if (!first)
        return scope;
    const dom::StartTag tag(first->text);
    for (const dom::StartTag::AttributeSpan &attribute : tag.attributes()) {
        const QString name = QString::fromUtf8(tag.nameOf(attribute));
        const QString prefix = name.section(u':', 1);
        if (name == declaration(prefix))
            scope.insert(prefix, dom::decodeAttribute(tag.valueOf(attribute), {}));
    }
    return scope;
}

QByteArray neededDeclarations(const dom::Node &node, const Scope &scope, const dom::Entities &entities)
{
    Scope needed;
    QByteArray markup;
    for (auto binding = scope.cbegin(); binding != scope.cend(); ++binding) {
        if (binding.value().isEmpty() || node.attribute(declaration(binding.key())))
            continue;
        if (markup.isEmpty())
            markup = withEntities(node.xml(), entities);
        if (uses(markup, binding.key()))
            needed.insert(binding.key(), binding.value());
    }
    return declarationsOf(needed);
}

bool refersToEntities(const dom::Node &node, const dom::Entities &entities)
{
    return !entities.isEmpty() && !entityTexts(node.xml(), entities).isEmpty();
}

bool entitiesUse(const dom::Node &node, const QString &prefix, const dom::Entities &entities)
{
    return !entities.isEmpty() && usesPrefix(entityTexts(node.xml(), entities), prefix);
}

} // namespace tree
