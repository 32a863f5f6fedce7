// The words of the well-formedness report.
#pragma once

#include "platform/dom/verdict.h"

#include <QString>

namespace document {

QString reportText(const dom::ParseError &error);

} // namespace document
