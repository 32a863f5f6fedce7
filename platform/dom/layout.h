// The blanks around a node that comes: its own line and indent where its siblings have theirs, nothing where
// they run inline, and never anything in mixed content or under xml:space="preserve".
#pragma once

#include <QByteArray>
#include <optional>

namespace dom {

class Document;
class Node;

class Layout
{
public:
    struct Placement
    {
        QByteArray lead; // what goes before the node
        std::optional<QByteArray> tail; // what then goes before the parent's end tag; nothing: as it is
    };

    // For a node about to be inserted into parent before reference (null: at the end).
    static Placement place(const Node &parent, const Node &node, const Node *reference);

    // What the document's lines end with; a line feed when it has only one line.
    static QByteArray lineEnd(const Document &document);

private:
    static Placement placeInEmpty(const Node &parent, const Node &node);
    static QByteArray indentUnit(const Node &parent);
    static std::optional<QByteArray> indentOf(const Node &node); // nothing when it does not begin its line
};

} // namespace dom
