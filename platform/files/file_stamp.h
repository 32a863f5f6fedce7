// What tells a file from its former self, without reading it.
#pragma once

#include <QString>

#include <cstdint>
#include <filesystem>
#include <optional>

namespace files {

struct FileStamp
{
    bool exists = false;
    std::uintmax_t size = 0;
    std::filesystem::file_time_type written;
    bool operator==(const FileStamp &) const = default;
};

// What stands at path now. Nothing where it cannot be told: a file that is out of reach for a while is not
// gone.
std::optional<FileStamp> stampOf(const QString &path);

} // namespace files
