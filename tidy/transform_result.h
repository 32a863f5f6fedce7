#pragma once

#include "platform/result.h"

#include <QByteArray>

#include <libxml/tree.h>

namespace tidy {

// The markup of the node at position 1 of a transformation's result, for a reader of HTML. The result's
// children are counted as a document's are: document type, element, comments and processing instructions. A
// result that is one element alone is preceded by its declaration, which takes position 0. Changes the
// result.
platform::Result<QByteArray> markupAtPositionOne(xmlDoc &result);

} // namespace tidy
