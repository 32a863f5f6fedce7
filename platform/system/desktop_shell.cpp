#include "platform/system/desktop_shell.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace shell {

namespace {

bool isAddress(const QString &text)
{
    constexpr const char *schemes[] = {"http:", "https:", "mailto:", "file:"};
    for (const char *scheme : schemes) {
        if (text.startsWith(QLatin1String(scheme), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

} // namespace

platform::Result<void> DesktopShell::open(const QString &pathOrAddress)
{
    const bool address = isAddress(pathOrAddress);
    if (!address && !QFileInfo::exists(pathOrAddress))
        return platform::Failure{
            QStringLiteral("%1 cannot be opened: there is no such file.").arg(pathOrAddress)};
    const QUrl url
        = address ? QUrl(pathOrAddress) : QUrl::fromLocalFile(QFileInfo(pathOrAddress).absoluteFilePath());
    if (!QDesktopServices::openUrl(url))
        return platform::Failure{QStringLiteral("No program was found that opens %1.").arg(pathOrAddress)};
    return {};
}

platform::Result<void> DesktopShell::start(const QString &program, const QString &workingFolder)
{
    return startDetached(program, workingFolder);
}

platform::Result<void> DesktopShell::openWindow(const QString &path)
{
    return startDetached(QCoreApplication::applicationFilePath(), QDir::currentPath(),
                         {QStringLiteral("--"), QFileInfo(path).absoluteFilePath()});
}

} // namespace shell
