#include "tidy/launcher/run_tidy.h"

#include "platform/result.h"
#include "platform/system/child_process.h"
#include "tidy/launcher/conversion.h"
#include "tidy/launcher/run_options.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <filesystem>
#include <system_error>

namespace launcher {

namespace {

constexpr int longestLockWait = 2000; // milliseconds

using Outcome = platform::Result<void>;

std::filesystem::path pathOf(const QString &name) { return QFile::encodeName(name).toStdString(); }

// The files of one run. What is being written lies in a folder of the run's own until it is whole: a second
// launcher may be at work beside this one.
struct Run
{
    explicit Run(const QString &programFolder)
        : exchange(programFolder + QStringLiteral("/tdyex")),
          scratch(exchange.filePath(QStringLiteral("run-XXXXXX")))
    {
        hold();
    }

    QString shared(const char *name) const { return exchange.filePath(QString::fromLatin1(name)); }
    QString own(const char *name) const { return scratch.filePath(QString::fromLatin1(name)); }

    // A second name for the input keeps it in reach, and its identity from being given to another file. Where
    // the file system has no second names a copy must do.
    void hold()
    {
        std::error_code error;
        std::filesystem::create_hard_link(pathOf(shared("i.txt")), pathOf(own("i.txt")), error);
        linked = !error;
        wanted = error != std::errc::no_such_file_or_directory || !scratch.isValid();
        held = linked || (wanted && QFile::copy(shared("i.txt"), own("i.txt")));
    }

    // Another input stands there, or none: what this run makes is wanted no longer. A launcher that begins
    // when its input was taken back already must not answer for the next one.
    bool superseded() const
    {
        std::error_code error;
        if (!wanted)
            return true;
        if (linked)
            return !std::filesystem::equivalent(pathOf(shared("i.txt")), pathOf(own("i.txt")), error);
        return held && !QFileInfo(shared("i.txt")).isFile();
    }

    QDir exchange;
    QTemporaryDir scratch;
    bool wanted = true; // there was an input to begin with
    bool linked = false;
    bool held = false;
};

// Takes the other's place in one step, so that nobody sees half of it, and nobody else any of it.
bool moveOver(const QString &from, const QString &to)
{
    QFile::setPermissions(from, QFile::ReadOwner | QFile::WriteOwner);
    std::error_code error;
    std::filesystem::rename(pathOf(from), pathOf(to), error);
    return !error;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ? file.readAll() : QByteArray();
}

bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(content) == content.size();
}

// What a run leaves is settled here, whatever the configuration files say: output and messages go where the
// launcher finds them, the input stays as it is, and both are UTF-8.
QStringList argumentsFor(const Run &run, const char *input)
{
    QStringList arguments{QStringLiteral("-config"), run.own("configuration")};
    for (const char *option : {"--input-encoding", "--output-encoding"})
        arguments << QString::fromLatin1(option) << QStringLiteral("utf8");
    arguments << QStringLiteral("--write-back") << QStringLiteral("no");
    arguments << QStringLiteral("--output-file") << run.own("output");
    arguments << QStringLiteral("--error-file") << run.own("report");
    return arguments << run.own(input);
}

Outcome failed(const char *reason) { return platform::Failure{QString::fromLatin1(reason)}; }

constexpr int codeAfterErrors = 2;

// Tidy ends with 0, with 1 after warnings, or with 2 after errors, when it writes only what it was forced to.
Outcome outcomeOf(const QProcess &tidy)
{
    if (tidy.exitStatus() != QProcess::NormalExit)
        return failed("Tidy crashed");
    if (tidy.exitCode() > codeAfterErrors)
        return platform::Failure{QStringLiteral("Tidy ended with code %1").arg(tidy.exitCode())};
    return {};
}

Outcome tidied(const Run &run, const char *input, const QString &programFolder, int bound, QProcess &tidy)
{
    tidy.setWorkingDirectory(programFolder);
    tidy.setStandardInputFile(QProcess::nullDevice());
    tidy.setStandardOutputFile(QProcess::nullDevice());
    tidy.setStandardErrorFile(run.own("complaints"));
    shell::tieToThisProcess(tidy, shell::Group::OfThisProcess);
    tidy.start(run.shared("tidy.exe"), argumentsFor(run, input));
    if (!tidy.waitForStarted())
        return failed("Tidy cannot be started");
    if (!tidy.waitForFinished(bound)) {
        tidy.kill();
        tidy.waitForFinished();
        return platform::Failure{QStringLiteral("Tidy was not done within %1 seconds").arg(bound / 1000)};
    }
    return outcomeOf(tidy);
}

// Puts what is made of Tidy's output in the output's place.
Outcome finished(const Run &run, const Conversion &conversion)
{
    const QByteArray output = contentOf(run.own("output"));
    if (output.isEmpty())
        return failed("Tidy wrote nothing");
    const platform::Result<QByteArray> text = conversion.finished(output);
    if (!text)
        return platform::Failure{text.reason()};
    if (*text != output && !write(run.own("output"), *text))
        return failed("Tidy's output cannot be written");
    return {};
}

// What Tidy said about its options stands before what it said about the text.
QByteArray reportOf(const Run &run, const Conversion &conversion)
{
    return conversion.told(contentOf(run.own("complaints")) + contentOf(run.own("report")));
}

bool tellsOfErrors(const QByteArray &report)
{
    return report.contains(" - Error: ") || report.contains(": Error: ") || report.contains("Tidy found ");
}

Outcome converted(const Run &run, const QString &programFolder, int bound, QByteArray &report)
{
    if (!run.scratch.isValid() || !run.held)
        return failed("the folder for Tidy's files cannot be written");
    const QList<QByteArray> files{contentOf(run.shared("default.tidy")),
                                  contentOf(run.shared("default2.tidy"))};
    const QByteArray text = contentOf(run.own("i.txt"));
    const RunOptions options = reconciledOptions(files, text);
    const Conversion conversion(text, options);
    const bool asItIs = conversion.forTidy() == text;
    if (!write(run.own("configuration"), options.configuration)
        || !(asItIs || write(run.own("shielded.txt"), conversion.forTidy())))
        return failed("the files for Tidy cannot be written");
    QProcess tidy;
    const Outcome ran = tidied(run, asItIs ? "i.txt" : "shielded.txt", programFolder, bound, tidy);
    report = reportOf(run, conversion);
    if (ran && tidy.exitCode() == codeAfterErrors && !tellsOfErrors(report))
        report += "Tidy found 0 warnings and 1 error or more, which the options keep from being shown.\n";
    return ran ? finished(run, conversion) : ran;
}

// A failure is said first.
void leaveReport(const Run &run, const Outcome &outcome, const QByteArray &report)
{
    const QByteArray failure
        = outcome ? QByteArray() : "Error: " + outcome.reason().toUtf8() + "; the text stays as it is.\n";
    if (write(run.own("f.txt"), failure + report))
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
    const QString path = run.shared("d.txt");
    QFile::remove(path); // a link there would be followed
    QFile marker(path);
    return marker.open(QIODevice::WriteOnly | QIODevice::NewOnly);
}

} // namespace

bool runTidy(const QString &programFolder, int boundInMilliseconds)
{
    const Run run(QDir(programFolder).absolutePath());
    if (!run.wanted)
        return true;
    QByteArray report;
    Outcome outcome = converted(run, programFolder, boundInMilliseconds, report);
    QLockFile lock(run.shared("lock"));
    lock.tryLock(longestLockWait);
    if (run.superseded())
        return true;
    if (outcome && !moveOver(run.own("output"), run.shared("o.txt")))
        outcome = failed("Tidy's output cannot be put in its place");
    if (!outcome)
        leaveInput(run);
    leaveReport(run, outcome, report);
    return leaveMarker(run);
}

} // namespace launcher
