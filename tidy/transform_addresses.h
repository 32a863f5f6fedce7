// References as people write them, with blanks and letters of any language, which addresses have only in
// escapes.
#pragma once

#include <QByteArray>

#include <libxslt/xsltInternals.h>

namespace tidy {

// The reference with everything escaped that may not stand in an address. Escapes stay as they are.
QByteArray asAddress(const QByteArray &reference);

// The same for what a style sheet includes and imports.
void escapeReferences(xmlDoc &styleSheet);

// document() takes references as people write them: libxslt finds nothing under one that is no address, and
// says nothing of it.
void registerDocumentFunction(xsltTransformContext &context);

} // namespace tidy
