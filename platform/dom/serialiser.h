#pragma once

#include <QByteArray>

namespace dom {

class Node;

// Markup of a subtree: untouched spans are copied whole, edited nodes piece by piece.
class Serialiser
{
public:
    static QByteArray xml(const Node &node);

    // Where a node begins in the markup of one above it, in bytes; -1 when it is not below that
    // (node_places.cpp).
    static qsizetype beginOf(const Node &node, const Node &top);

    // The node in which that byte of top's markup stands. Of layout between two nodes what shares a line with
    // one of them belongs to that, and all else to the node around them.
    static const Node *nodeAt(const Node &top, qsizetype offset);

private:
    static qsizetype sizeOf(const Node &node); // of its markup
    static qsizetype sizeBefore(const Node &node); // of what its parent holds before it, its lead included
};

} // namespace dom
