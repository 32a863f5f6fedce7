#include "app/dependency_check.h"

#include "platform/files/file_helpers.h"

namespace app {

QStringList requiredEntries()
{
    return {QStringLiteral("tdyex"), QStringLiteral("tdyex\\default2.tidy"),
            QStringLiteral("tdyex\\default.tidy"), QStringLiteral("tdyex\\proclltidy.exe"),
            QStringLiteral("tdyex\\tidy.exe")};
}

QString firstMissing(const QString &programFolder)
{
    const QStringList entries = requiredEntries();
    for (const QString &entry : entries) {
        QString path = files::joinPath(programFolder, QStringLiteral("\\") + entry);
        const bool there
            = files::extensionOf(path).isEmpty() ? files::folderExists(path) : files::fileExists(path);
        if (!there)
            return path;
    }
    return {};
}

QString missingMessage(const QString &path)
{
    return QStringLiteral("This application has failed to start, because '%1' was not found.\r\n"
                          "Re-installing the application may fix the problem.\r\n")
        .arg(path);
}

} // namespace app
