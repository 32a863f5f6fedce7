#include "tree/properties.h"

#include "platform/dom/markup_reader.h"
#include "platform/dom/start_tag.h"
#include "tree/node_scope.h"

#include <algorithm>
#include <vector>

namespace tree {

namespace {

QList<dom::AttributeEdit> unchanged(const QList<dom::Attribute> &attributes)
{
    QList<dom::AttributeEdit> rows;
    for (const dom::Attribute &attribute : attributes)
        rows.append({attribute.name, attribute.value, attribute.name});
    return rows;
}

template <typename T>
platform::Result<void> verdict(const platform::Result<T> &result)
{
    return result ? platform::Result<void>() : platform::Failure{result.reason()};
}

platform::Failure undeclared(const QString &name)
{
    return {QStringLiteral("The prefix of \"%1\" is not declared").arg(name)};
}

// Finds names whose prefix is declared nowhere around them.
class UndeclaredFinder
{
public:
    explicit UndeclaredFinder(const dom::Node *around) : around_(around) { }

    // The first such name in the markup of a subtree, or of its start tag alone; empty when there is none.
    QString run(QByteArrayView markup)
    {
        dom::MarkupReader reader(markup);
        while (const auto tag = reader.nextTag()) {
            if (tag->kind != dom::MarkupReader::Tag::End) {
                ++depth_;
                if (QString name = enter(dom::StartTag(tag->text)); !name.isEmpty())
                    return name;
            }
            if (tag->kind != dom::MarkupReader::Tag::Start)
                leave();
        }
        return {};
    }

private:
    struct Declared
    {
        int depth;
        QByteArrayView prefix;
    };

    void leave()
    {
        while (!declared_.empty() && declared_.back().depth == depth_)
            declared_.pop_back();
        --depth_;
    }

    QString enter(const dom::StartTag &tag)
    {
        std::vector<QByteArrayView> names{tag.name()};
        for (const auto &attribute : tag.attributes()) {
            const QByteArrayView name = tag.nameOf(attribute);
            if (name.startsWith("xmlns:"))
                declared_.push_back({depth_, name.sliced(6)});
            else
                names.push_back(name);
        }
        const auto found
            = std::find_if(names.begin(), names.end(), [this](auto name) { return !isBound(name); });
        return found == names.end() ? QString() : QString::fromUtf8(*found);
    }

    bool isBound(QByteArrayView name) const
    {
        const QByteArrayView prefix = name.first(qMax<qsizetype>(0, name.indexOf(':')));
        return prefix.isEmpty()
            || std::any_of(declared_.begin(), declared_.end(),
                           [prefix](auto &row) { return row.prefix == prefix; })
            || isPrefixBound(around_, QString::fromUtf8(name));
    }

    const dom::Node *around_;
    std::vector<Declared> declared_;
    int depth_ = 0;
};

// What the element's subtree needs of the prefixes that the element declares no longer.
platform::Result<void> keepsPrefixes(const dom::Node &element, const QList<dom::Attribute> &before,
                                     const dom::Entities &entities)
{
    bool lost = false;
    for (const dom::Attribute &attribute : before) {
        if (!attribute.name.startsWith(QStringLiteral("xmlns:")) || element.attribute(attribute.name))
            continue;
        lost = true;
        const QString prefix = attribute.name.section(u':', 1);
        const bool bound = scopeOf(element.parent()).contains(prefix);
        if (!bound && entitiesUse(element, prefix, entities))
            return platform::Failure{
                QStringLiteral("The prefix \"%1\" is used by an entity, and is not declared").arg(prefix)};
    }
    const QByteArray markup = lost ? element.xml() : element.startTag();
    const QString name = UndeclaredFinder(element.parent()).run(markup);
    return name.isEmpty() ? platform::Result<void>() : undeclared(name);
}

} // namespace

NodeProperties propertiesOf(const dom::Node &node)
{
    return {node.name(), unchanged(node.shownAttributes()), node.shownText()};
}

platform::Result<void> checkName(const dom::Node &node, const NodeProperties &properties)
{
    if (properties.name == node.name())
        return {};
    dom::Document scratch;
    if (node.kind() == dom::NodeKind::ProcessingInstruction)
        return verdict(scratch.createProcessingInstruction(properties.name, {}));
    if (node.kind() != dom::NodeKind::Element)
        return {};
    if (const auto created = scratch.createElement(properties.name); !created)
        return platform::Failure{created.reason()};
    const QString declaration = QStringLiteral("xmlns:") + properties.name.section(u':', 0, -2);
    const bool declared = std::any_of(properties.attributes.begin(), properties.attributes.end(),
                                      [&declaration](const auto &row) { return row.name == declaration; });
    return declared || isPrefixBound(node.parent(), properties.name) ? platform::Result<void>()
                                                                     : undeclared(properties.name);
}

platform::Result<void> checkAttribute(const QString &name, const QString &value)
{
    dom::Document scratch;
    scratch.load("<?xml version=\"1.0\"?>\r\n<Element/>");
    return scratch.setAttribute(scratch.documentElement(), name, value);
}

platform::Result<void> setProperties(dom::Document &document, dom::Node *node,
                                     const NodeProperties &properties)
{
    if (node->kind() == dom::NodeKind::ProcessingInstruction)
        return document.setInstruction(node, properties.name, properties.data);
    if (node->kind() == dom::NodeKind::Text)
        return document.setShownText(node, properties.data);
    if (node->kind() != dom::NodeKind::Element)
        return document.setData(node, properties.data);
    const QList<dom::Attribute> before = node->attributes();
    const quint64 revision = document.revision();
    auto done = document.renameElement(node, properties.name);
    if (done)
        done = document.setAttributes(node, properties.attributes);
    // A document type can declare what no element does: what nobody changed is not asked about.
    const bool changed = document.revision() != revision;
    return done && changed ? keepsPrefixes(*node, before, document.entities()) : done;
}

} // namespace tree
