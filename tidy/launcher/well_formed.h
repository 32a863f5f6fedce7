// The last step to XML. Tidy's XML output keeps what XML cannot hold: conditional sections, server-side code,
// control characters, prefixes that nobody declared.
#pragma once

#include <QByteArray>

namespace launcher {

// Tidy's XML or XHTML output (UTF-8) as text that an XML parser with namespaces accepts. What is no XML
// markup becomes a comment, as browsers see it; characters that XML forbids become blanks or U+FFFD;
// undeclared prefixes are declared on the document element, under their usual names where they have one.
// Everything else stays byte for byte.
QByteArray wellFormed(const QByteArray &tidied);

} // namespace launcher
