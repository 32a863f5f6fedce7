// What libxml2 finds wrong, in plain sentences.
#pragma once

#include <QString>

#include <libxml/xmlerror.h>

#include <optional>

namespace dom {

// The sentence for an error. openedAt: the line of the innermost element that is open there, where known.
QString faultSentence(const xmlError &error, std::optional<qint64> openedAt);

} // namespace dom
