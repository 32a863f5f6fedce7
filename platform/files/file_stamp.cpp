#include "platform/files/file_stamp.h"

#include <QFile>

#include <system_error>

namespace files {

std::optional<FileStamp> stampOf(const QString &path)
{
    const std::filesystem::path name = QFile::encodeName(path).toStdString();
    std::error_code error;
    FileStamp stamp{true, std::filesystem::file_size(name, error), {}};
    if (!error)
        stamp.written = std::filesystem::last_write_time(name, error);
    if (!error)
        return stamp;
    const bool gone = error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
    return gone ? std::optional(FileStamp()) : std::nullopt;
}

} // namespace files
