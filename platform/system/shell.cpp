#include "platform/system/shell.h"

#include "platform/system/child_process.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace shell {

namespace {

constexpr int longestEnd = 5000; // milliseconds, for what is killed

class Process : public Helper
{
public:
    ~Process() override
    {
        if (hasEnded())
            return;
        killGroup(process.processId());
        process.waitForFinished(longestEnd);
    }

    bool hasEnded() const override { return process.state() == QProcess::NotRunning; }

    QProcess process;
};

} // namespace

StartedHelper startHelper(const QString &program, const QString &workingFolder)
{
    const auto failure = [&](const QString &why) {
        return platform::Failure{QStringLiteral("%1 cannot be started: %2.").arg(program, why)};
    };
    if (!QFileInfo(program).isFile())
        return failure(QStringLiteral("there is no such file"));
    if (!QFileInfo(workingFolder).isDir())
        return failure(QStringLiteral("the folder %1 is missing").arg(workingFolder));
    auto helper = std::make_unique<Process>();
    QProcess &process = helper->process;
    tieToThisProcess(process, Group::OfItsOwn);
    process.setProgram(QFileInfo(program).absoluteFilePath());
    process.setWorkingDirectory(workingFolder);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QIODevice::NotOpen);
    if (!process.waitForStarted())
        return failure(process.errorString());
    return std::unique_ptr<Helper>(std::move(helper));
}

} // namespace shell
