// A node's properties as people see them, with references to entities as such, and how they get into the
// document.
#pragma once

#include "platform/dom/document.h"
#include "platform/result.h"

#include <QList>
#include <QString>

namespace tree {

// By kind of node: an element has a name and attributes, an instruction a name (its target) and data, all
// others data alone.
struct NodeProperties
{
    QString name;
    QList<dom::AttributeEdit> attributes;
    QString data;
};

NodeProperties propertiesOf(const dom::Node &node);

// Whether the node can have the name that it would have with these properties: XML allows it for the kind of
// node, and its prefix is declared then. Kinds without a name take any.
platform::Result<void> checkName(const dom::Node &node, const NodeProperties &properties);

// Whether XML allows such an attribute, tried on a document of its own.
platform::Result<void> checkAttribute(const QString &name, const QString &value);

// Gives the node these properties. It stays the same node with the same children. Fails also when a prefix
// would be left undeclared, here or below. On failure the node may have got some of the properties: belongs
// into a command that is rolled back.
platform::Result<void> setProperties(dom::Document &document, dom::Node *node,
                                     const NodeProperties &properties);

} // namespace tree
