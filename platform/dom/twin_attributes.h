#pragma once

#include <QByteArrayView>
#include <QString>

#include <functional>

namespace dom {

// Two prefixes bound to one namespace can make p:x and q:x the same attribute twice, which no parser accepts.
// Looks for such an element in the markup of a subtree; outer tells what a prefix that the subtree does not
// declare is bound to around it. Returns the names of the twins ("p:x and q:x"), or an empty text.
QString findTwinAttributes(QByteArrayView markup, const std::function<QString(QByteArrayView prefix)> &outer);

} // namespace dom
