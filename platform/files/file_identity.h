// What stays the same of a file that gets another name.
#pragma once

#include "platform/files/file_stamp.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace files {

struct FileIdentity
{
    std::uintmax_t device = 0;
    std::uintmax_t number = 0;
    bool operator==(const FileIdentity &) const = default;
};

// Of the file at path. Nothing where there is none, or where it has a second name already, so that the other
// name would be no new one.
std::optional<FileIdentity> identityOf(const QString &path);

// The new name of a file that was at path: what else in its folder is the same file, with the content that
// it had. Empty when there is none.
QString renamedTo(const QString &path, const FileIdentity &identity, const FileStamp &stamp);

} // namespace files
