// References as people write them, with blanks and letters of any language, which addresses have only in
// escapes.
#pragma once

#include <libxslt/xsltInternals.h>

namespace tidy {

// Escapes what may not stand in an address in all that a style sheet includes and imports.
void escapeReferences(xmlDoc &styleSheet);

// document() takes references as people write them: libxslt finds nothing under one that is no address, and
// says nothing of it.
void registerDocumentFunction(xsltTransformContext &context);

} // namespace tidy
