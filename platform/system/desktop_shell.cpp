#include "platform/system/desktop_shell.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
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

StartedHelper DesktopShell::start(const QString &program, const QString &workingFolder)
{
    return startHelper(program, workingFolder);
}

platform::Result<void> DesktopShell::openWindow(const QString &path)
{
    const QStringList arguments{QStringLiteral("--"), QFileInfo(path).absoluteFilePath()};
    if (!QProcess::startDetached(QCoreApplication::applicationFilePath(), arguments))
        return platform::Failure{QStringLiteral("No window could be opened for %1.").arg(path)};
    return {};
}

} // namespace shell
