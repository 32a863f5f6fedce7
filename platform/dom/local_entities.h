#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace dom {

// From now on libxml2 reads external entities and document types from local regular files of a bounded size
// only, for every user of the library in this process. Safe to call any number of times.
void allowLocalEntitiesOnly();

// The file that an address leads to, links followed; empty where none may be read.
QString localEntityPath(const char *address);

// The bytes of the file at such a path; nothing where it cannot be read.
std::optional<QByteArray> readLocalEntity(const QString &path);

} // namespace dom
