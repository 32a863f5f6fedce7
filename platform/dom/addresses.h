// Addresses of files, and references as people write them: with blanks and letters of any language, which
// addresses have only in escapes.
#pragma once

#include <QByteArray>
#include <QString>

namespace dom {

// The reference with everything escaped that may not stand in an address. Escapes stay as they are.
QByteArray asAddress(const QByteArray &reference);

// The file: address of a path, every sign of which belongs to a name.
QByteArray addressOfPath(const QString &path);

} // namespace dom
