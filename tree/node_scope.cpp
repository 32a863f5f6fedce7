#include "tree/node_scope.h"

#include "platform/dom/document.h"

#include <cctype>

namespace tree {

namespace {

const QString declares = QStringLiteral("xmlns:");

bool isNameByte(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || std::isalnum(byte) || c == '_' || c == '-' || c == '.';
}

// In names, or within values, as XPath has it.
bool uses(const QByteArray &markup, const QString &prefix)
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

} // namespace

Scope scopeOf(const dom::Node *element)
{
    Scope scope;
    for (; element && element->kind() == dom::NodeKind::Element; element = element->parent()) {
        if (!element->startTag().contains("xmlns:"))
            continue;
        for (const dom::Attribute &attribute : element->attributes()) {
            const QString prefix = attribute.name.mid(declares.size());
            if (attribute.name.startsWith(declares) && !scope.contains(prefix))
                scope.insert(prefix, attribute.value);
        }
    }
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
    if (node->kind() != dom::NodeKind::Element || from.isEmpty())
        return {};
    const Scope here = scopeOf(node->parent());
    QByteArray markup;
    for (auto binding = from.cbegin(); binding != from.cend(); ++binding) {
        if (here.value(binding.key()) == binding.value() || node->attribute(declares + binding.key()))
            continue;
        if (markup.isEmpty())
            markup = node->xml();
        if (!uses(markup, binding.key()))
            continue;
        auto done = document.setAttribute(node, declares + binding.key(), binding.value());
        if (!done)
            return done;
    }
    return {};
}

QByteArray withScope(const dom::Node &element, const Scope &scope)
{
    const QByteArray markup = element.xml();
    QByteArray declarations;
    for (auto binding = scope.cbegin(); binding != scope.cend(); ++binding) {
        if (element.attribute(declares + binding.key()) || !uses(markup, binding.key()))
            continue;
        const QString value = binding.value().toHtmlEscaped();
        declarations += QStringLiteral(" xmlns:%1=\"%2\"").arg(binding.key(), value).toUtf8();
    }
    if (declarations.isEmpty())
        return markup;
    return QByteArray(markup).insert(1 + element.name().toUtf8().size(), declarations);
}

} // namespace tree
