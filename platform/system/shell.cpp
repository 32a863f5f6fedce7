#include "platform/system/shell.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace shell {

platform::Result<void> startDetached(const QString &program, const QString &workingFolder,
                                     const QStringList &arguments)
{
    const auto failure = [&](const QString &why) {
        return platform::Failure{QStringLiteral("%1 cannot be started: %2.").arg(program, why)};
    };
    if (!QFileInfo(program).isFile())
        return failure(QStringLiteral("there is no such file"));
    if (!QFileInfo(workingFolder).isDir())
        return failure(QStringLiteral("the folder %1 is missing").arg(workingFolder));
    QProcess process;
    process.setProgram(QFileInfo(program).absoluteFilePath());
    process.setArguments(arguments);
    process.setWorkingDirectory(workingFolder);
    if (!process.startDetached())
        return failure(process.errorString());
    return {};
}

} // namespace shell
