// The external document type declaration, which browsers do not read.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>

namespace browser {

// What stands behind a system identifier; nothing when it cannot be had.
using SubsetReader = std::function<std::optional<QByteArray>(const QString &systemId)>;

// The document with what its external declaration says put to use: entities are replaced by what they stand
// for, and attributes have their default values. As it was, when it names no declaration that can be had,
// when it is not well-formed, or when it would take in other files.
QByteArray withExternalSubset(const QByteArray &xml, const SubsetReader &read);

} // namespace browser
