// Namespaces of nodes that go elsewhere: they stay what they are, and a document in which a prefix is not
// declared does not parse.
#pragma once

#include "platform/dom/verdict.h"
#include "platform/result.h"

#include <QByteArray>
#include <QMap>
#include <QString>

namespace dom {
class Document;
class Node;
} // namespace dom

namespace tree {

// The prefixes that are bound at a place in the document, and to what. The empty one, always there, is the
// default namespace.
using Scope = QMap<QString, QString>;

Scope scopeOf(const dom::Node *element);

// Whether the prefix of a name, if it has one, is bound there.
bool isPrefixBound(const dom::Node *element, const QString &name);

// Declares, on a node that has come from a place with the scope from to the place where it is now, what is
// used in it, or in the entities it refers to, and was bound otherwise there. Fails for an entity that would
// need it. Costs a look at the node's markup only when scopes differ.
platform::Result<void> takeScopeAlong(dom::Document &document, dom::Node *node, const Scope &from);

// Attributes that declare a scope, each with a blank before it. No namespace is not declared.
QByteArray declarationsOf(const Scope &scope);
// The scope that the first start tag in markup declares.
Scope scopeFrom(const QByteArray &markup);

// Declarations of all of scope that a node uses and does not declare itself.
QByteArray neededDeclarations(const dom::Node &node, const Scope &scope, const dom::Entities &entities);

// Whether a node refers to an entity, other than those that are always there.
bool refersToEntities(const dom::Node &node, const dom::Entities &entities);

// Whether entities that the node refers to use a prefix.
bool entitiesUse(const dom::Node &node, const QString &prefix, const dom::Entities &entities);

} // namespace tree
