// What a tree node is called and which picture it has, from the document node it shows.
#pragma once

#include "platform/dom/node.h"

#include <QByteArray>
#include <QString>

namespace tree {

// Pictures, by kind of node. Nodes that have none (entity references) have no label either.
enum Image
{
    NoImage = 0,
    ElementImage = 1,
    InstructionImage = 2,
    CommentImage = 3,
    CDataImage = 4,
    TextImage = 5,
};

Image imageOf(dom::NodeKind kind);

// How an element's start tag becomes its label. The root of the tree, and an element relabelled after an
// edit, show it as it stands; all others leave out the declaration of the namespace they are in.
enum class TagRule
{
    AsItStands,
    WithoutOwnNamespace
};

// The text between "<" and the first ">" or "/>" of markup, on one line: line breaks and the blanks around
// them become one blank. A ">" in an attribute's value ends it too.
QString startTagLabel(const QByteArray &markup);

// A start tag without its first declaration (xmlns or xmlns:prefix) of the namespace uri and the blanks
// before that. An ordinary attribute that happens to have the same value stays.
QByteArray withoutNamespace(const QByteArray &startTag, const QString &uri);

// The whole label. Reads and decodes all of the node's own content.
QString label(const dom::Node &node, TagRule rule);

// The label for a row: on one line, and cut after limit characters with an ellipsis. However long the node
// is, only about as much of it is read as is shown.
QString shortLabel(const dom::Node &node, TagRule rule, qsizetype limit = 500);

} // namespace tree
