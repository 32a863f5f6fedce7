// Namespace prefixes of nodes that go elsewhere: a document in which a prefix is not declared does not parse.
#pragma once

#include "platform/result.h"

#include <QByteArray>
#include <QMap>
#include <QString>

namespace dom {
class Document;
class Node;
} // namespace dom

namespace tree {

// The prefixes that are bound at a place in the document, and to what.
using Scope = QMap<QString, QString>;

Scope scopeOf(const dom::Node *element);

// Whether the prefix of a name, if it has one, is bound there.
bool isPrefixBound(const dom::Node *element, const QString &name);

// Declares, on a node that has come from a place with the scope from to the place where it is now, the
// prefixes used in it that were bound otherwise there. Costs a look at the node's markup only when scopes
// differ.
platform::Result<void> takeScopeAlong(dom::Document &document, dom::Node *node, const Scope &from);

// An element's markup that declares all prefixes of scope that it uses and does not declare itself.
QByteArray withScope(const dom::Node &element, const Scope &scope);

} // namespace tree
