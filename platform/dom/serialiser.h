#pragma once

#include <QByteArray>

namespace dom {

class Node;

// Markup of a subtree: untouched spans are copied whole, edited nodes piece by piece.
class Serialiser
{
public:
    static QByteArray xml(const Node &node);
};

} // namespace dom
