#include "platform/files/file_helpers.h"
#include "platform/files/private_files.h"

#include <QDir>

#include <unistd.h>

namespace files {

platform::Result<QString> privateTempFolder()
{
    const QString path = QDir::cleanPath(QDir::tempPath() + QStringLiteral("/xmleditor-%1").arg(geteuid()));
    if (const auto made = makePrivateFolder(path); !made)
        return platform::Failure{made.reason()};
    return path;
}

} // namespace files
