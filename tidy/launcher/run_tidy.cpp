#include "tidy/launcher/run_tidy.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <filesystem>
#include <system_error>

namespace launcher {

namespace {

// The files of one run. What is being written lies in a folder of the run's own until it is whole: a second
// launcher may be at work beside this one.
struct Run
{
    explicit Run(const QString &programFolder)
        : exchange(programFolder + QStringLiteral("/tdyex")),
          scratch(exchange.filePath(QStringLiteral("run-XXXXXX")))
    { }

    QString shared(const char *name) const { return exchange.filePath(QString::fromLatin1(name)); }
    QString own(const char *name) const { return scratch.filePath(QString::fromLatin1(name)); }

    QDir exchange;
    QTemporaryDir scratch;
};

// Takes the other's place in one step, so that nobody sees half of it.
bool moveOver(const QString &from, const QString &to)
{
    std::error_code error;
    std::filesystem::rename(QFile::encodeName(from).toStdString(), QFile::encodeName(to).toStdString(),
                            error);
    return !error;
}

// What a run leaves is settled here, whatever the configuration files say: output and messages go where the
// launcher finds them, and the input stays as it is.
QStringList argumentsFor(const Run &run)
{
    QStringList arguments;
    for (const char *name : {"default.tidy", "default2.tidy"}) {
        if (QFileInfo(run.shared(name)).isFile())
            arguments << QStringLiteral("-config") << run.shared(name);
    }
    arguments << QStringLiteral("--write-back") << QStringLiteral("no");
    arguments << QStringLiteral("--output-file") << run.own("output");
    arguments << QStringLiteral("--error-file") << run.own("report");
    return arguments << run.shared("i.txt");
}

// Tidy ends with 0, with 1 after warnings, or with 2 after errors, when it writes only what it was forced to.
bool succeeded(const QProcess &tidy, const QString &output)
{
    constexpr int worstGoodCode = 2;
    return tidy.exitStatus() == QProcess::NormalExit && tidy.exitCode() <= worstGoodCode
        && QFileInfo(output).size() > 0;
}

bool tidied(const Run &run, const QString &programFolder, int bound)
{
    QProcess tidy;
    tidy.setWorkingDirectory(programFolder);
    tidy.setStandardInputFile(QProcess::nullDevice());
    tidy.setStandardOutputFile(QProcess::nullDevice());
    tidy.setStandardErrorFile(run.own("complaints"));
    tidy.start(run.shared("tidy.exe"), argumentsFor(run));
    if (!tidy.waitForStarted())
        return false;
    if (!tidy.waitForFinished(bound)) {
        tidy.kill();
        tidy.waitForFinished();
        return false;
    }
    return succeeded(tidy, run.own("output"));
}

void appendTo(QFile &to, const QString &path)
{
    QFile from(path);
    if (from.open(QIODevice::ReadOnly))
        to.write(from.readAll());
}

// What Tidy said about its options stands before what it said about the text.
void leaveReport(const Run &run)
{
    QFile report(run.own("f.txt"));
    if (!report.open(QIODevice::WriteOnly))
        return;
    appendTo(report, run.own("complaints"));
    appendTo(report, run.own("report"));
    report.close();
    moveOver(run.own("f.txt"), run.shared("f.txt"));
}

// The input stands in for an output that there is not; where not even a copy can be made it is given up
// itself.
void leaveInput(const Run &run)
{
    const bool copied = QFile::copy(run.shared("i.txt"), run.own("copy"));
    if (!copied || !moveOver(run.own("copy"), run.shared("o.txt")))
        moveOver(run.shared("i.txt"), run.shared("o.txt"));
}

bool leaveMarker(const Run &run)
{
    QFile marker(run.shared("d.txt"));
    return marker.open(QIODevice::WriteOnly);
}

} // namespace

bool runTidy(const QString &programFolder, int boundInMilliseconds)
{
    const Run run(QDir(programFolder).absolutePath());
    const bool done = run.scratch.isValid() && tidied(run, programFolder, boundInMilliseconds)
        && moveOver(run.own("output"), run.shared("o.txt"));
    if (!done)
        leaveInput(run);
    leaveReport(run);
    return leaveMarker(run);
}

} // namespace launcher
