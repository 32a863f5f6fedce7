#include "platform/dom/rules.h"

#include "platform/dom/document.h"
#include "platform/dom/names.h"
#include "platform/dom/node.h"
#include "platform/dom/start_tag.h"

namespace dom {

namespace {

using Verdict = Rules::Verdict;

Verdict refuse(const QString &reason) { return platform::Failure{reason}; }

const QString xmlNamespace = QStringLiteral("http://www.w3.org/XML/1998/namespace");
const QString xmlnsNamespace = QStringLiteral("http://www.w3.org/2000/xmlns/");

bool isDeclaration(const Node *node)
{
    return node->kind() == NodeKind::ProcessingInstruction && node->name() == QStringLiteral("xml");
}

// What each kind of data must not hold, because it would end the markup early.
struct Forbidden
{
    NodeKind kind;
    const char *text;
    const char *where;
};

constexpr Forbidden forbidden[] = {
    {NodeKind::Comment, "--", "a comment"},
    {NodeKind::CData, "]]>", "a CDATA section"},
    {NodeKind::ProcessingInstruction, "?>", "a processing instruction"},
};

// The rules for binding prefixes to namespaces.
Verdict isNamespaceDeclaration(const QString &name, const QString &value)
{
    const QString prefix = name.section(u':', 1);
    if (prefix == QStringLiteral("xmlns") || value == xmlnsNamespace)
        return refuse(QStringLiteral("The prefix \"xmlns\" and its namespace cannot be declared"));
    if ((prefix == QStringLiteral("xml")) != (value == xmlNamespace))
        return refuse(QStringLiteral("The prefix \"xml\" and its namespace belong together"));
    if (!prefix.isEmpty() && value.isEmpty())
        return refuse(QStringLiteral("The prefix \"%1\" cannot be bound to an empty namespace").arg(prefix));
    return {};
}

} // namespace

Verdict Rules::mayInsert(const Node *parent, const Node *node, const Node *reference, const Node *replaced)
{
    if (!parent || !node)
        return refuse(QStringLiteral("There is no node to insert, or none to insert it into"));
    if (&parent->document() != &node->document())
        return refuse(QStringLiteral("The node belongs to another document"));
    if (parent->kind() != NodeKind::Element && parent->kind() != NodeKind::Document)
        return refuse(QStringLiteral("Only an element can have children"));
    if (node->contains(parent))
        return refuse(QStringLiteral("A node cannot become its own child"));
    if ((reference && reference->parent() != parent) || (replaced && replaced->parent() != parent))
        return refuse(QStringLiteral("The reference node is no child of this element"));
    if (node->kind() == NodeKind::Document || node->kind() == NodeKind::DocumentType || isDeclaration(node))
        return refuse(QStringLiteral("Declarations stay where they are"));
    if (node->parent() && node->parent() != parent) {
        if (const Verdict verdict = mayRemove(node->parent(), node); !verdict)
            return verdict;
    }
    return parent->kind() == NodeKind::Document ? mayStandAtTop(parent, node, reference, replaced)
                                                : Verdict();
}

Verdict Rules::mayStandAtTop(const Node *top, const Node *node, const Node *reference, const Node *replaced)
{
    const NodeKind kind = node->kind();
    if (kind != NodeKind::Element && kind != NodeKind::Comment && kind != NodeKind::ProcessingInstruction)
        return refuse(
            QStringLiteral("Only an element, comments and instructions can stand at document level"));
    for (const Node *other = top->firstChild(); other; other = other->nextSibling()) {
        if (other == replaced || other == node)
            continue;
        if (kind == NodeKind::Element && other->kind() == NodeKind::Element)
            return refuse(QStringLiteral("A document has only one document element"));
    }
    if (replaced && replaced->kind() == NodeKind::Element && kind != NodeKind::Element)
        return refuse(QStringLiteral("A document needs its document element"));
    if (reference && isDeclaration(reference))
        return refuse(QStringLiteral("Nothing can stand before the XML declaration"));
    for (const Node *later = reference; later && kind == NodeKind::Element; later = later->nextSibling()) {
        if (later->kind() == NodeKind::DocumentType)
            return refuse(QStringLiteral("The document element comes after the document type"));
    }
    return {};
}

Verdict Rules::mayRemove(const Node *parent, const Node *node)
{
    if (!node || !parent || node->parent() != parent)
        return refuse(QStringLiteral("The node is no child of this element"));
    if (parent->kind() == NodeKind::Document && node->kind() == NodeKind::Element)
        return refuse(QStringLiteral("A document needs its document element"));
    if (node->kind() == NodeKind::DocumentType || isDeclaration(node))
        return refuse(QStringLiteral("Declarations stay where they are"));
    return {};
}

Verdict Rules::isElementName(const QString &name)
{
    if (!isQName(name) || name.startsWith(QStringLiteral("xmlns:")))
        return refuse(QStringLiteral("\"%1\" is no legal element name").arg(name));
    return {};
}

Verdict Rules::isInstructionTarget(const QString &target)
{
    if (!isNCName(target) || target.compare(QStringLiteral("xml"), Qt::CaseInsensitive) == 0)
        return refuse(QStringLiteral("\"%1\" is no legal instruction target").arg(target));
    return {};
}

Verdict Rules::isData(NodeKind kind, const QString &data)
{
    if (!allCharactersAllowed(data))
        return refuse(QStringLiteral("The text holds a character that XML does not allow"));
    for (const Forbidden &rule : forbidden) {
        if (rule.kind == kind && data.contains(QLatin1StringView(rule.text)))
            return refuse(QStringLiteral("\"%1\" cannot stand in %2")
                              .arg(QLatin1StringView(rule.text), QLatin1StringView(rule.where)));
    }
    if (kind == NodeKind::Comment && data.endsWith(u'-'))
        return refuse(QStringLiteral("A comment cannot end with \"-\""));
    return {};
}

Verdict Rules::isAttribute(const Node *element, const QString &name, const QString &value)
{
    if (!isQName(name))
        return refuse(QStringLiteral("\"%1\" is no legal attribute name").arg(name));
    if (!allCharactersAllowed(value))
        return refuse(QStringLiteral("The value holds a character that XML does not allow"));
    if (name == QStringLiteral("xmlns") || name.startsWith(QStringLiteral("xmlns:")))
        return isNamespaceDeclaration(name, value);
    const qsizetype colon = name.indexOf(u':');
    if (colon < 0)
        return {};
    // Two prefixes of one namespace must not give one element the same attribute twice.
    const QString uri = element->resolvePrefix(name.first(colon).toUtf8());
    for (const Attribute &other : element->attributes()) {
        const qsizetype otherColon = other.name.indexOf(u':');
        if (otherColon < 0 || other.name == name || other.name.sliced(otherColon) != name.sliced(colon))
            continue;
        if (!uri.isEmpty() && element->resolvePrefix(other.name.first(otherColon).toUtf8()) == uri)
            return refuse(QStringLiteral("\"%1\" is the same attribute as \"%2\"").arg(name, other.name));
    }
    return {};
}

} // namespace dom
