#include "tidy/launcher/run_tidy.h"

#include "tidy/launcher/references.h"
#include "tidy/launcher/run_options.h"
#include "tidy/launcher/well_formed.h"

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
        held = linked || QFile::copy(shared("i.txt"), own("i.txt"));
    }

    // Another input stands there, or none: what this run makes is wanted no longer.
    bool superseded() const
    {
        std::error_code error;
        if (linked)
            return !std::filesystem::equivalent(pathOf(shared("i.txt")), pathOf(own("i.txt")), error);
        return held && !QFileInfo(shared("i.txt")).isFile();
    }

    QDir exchange;
    QTemporaryDir scratch;
    bool linked = false;
    bool held = false;
};

// Takes the other's place in one step, so that nobody sees half of it.
bool moveOver(const QString &from, const QString &to)
{
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
QStringList argumentsFor(const Run &run)
{
    QStringList arguments{QStringLiteral("-config"), run.own("configuration")};
    for (const char *option : {"--input-encoding", "--output-encoding"})
        arguments << QString::fromLatin1(option) << QStringLiteral("utf8");
    arguments << QStringLiteral("--write-back") << QStringLiteral("no");
    arguments << QStringLiteral("--output-file") << run.own("output");
    arguments << QStringLiteral("--error-file") << run.own("report");
    return arguments << run.own("i.txt");
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

// What Tidy wrote, as the options mean it.
bool finished(const Run &run, const RunOptions &options)
{
    const bool xml = options.output == Output::Xml || options.output == Output::Xhtml;
    if (!xml && options.alphabet == Alphabet::Unicode)
        return true;
    QByteArray text = contentOf(run.own("output"));
    if (xml)
        text = wellFormed(text);
    text = withReferences(text, options.alphabet, options.namedReferences);
    return !text.isEmpty() && write(run.own("output"), text);
}

bool converted(const Run &run, const QString &programFolder, int bound)
{
    if (!run.scratch.isValid() || !run.held)
        return false;
    const QList<QByteArray> files{contentOf(run.shared("default.tidy")),
                                  contentOf(run.shared("default2.tidy"))};
    const RunOptions options = reconciledOptions(files, contentOf(run.own("i.txt")));
    return write(run.own("configuration"), options.configuration) && tidied(run, programFolder, bound)
        && finished(run, options);
}

void appendTo(QFile &to, const QString &path) { to.write(contentOf(path)); }

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
    const QString path = run.shared("d.txt");
    QFile::remove(path); // a link there would be followed
    QFile marker(path);
    return marker.open(QIODevice::WriteOnly | QIODevice::NewOnly);
}

} // namespace

bool runTidy(const QString &programFolder, int boundInMilliseconds)
{
    const Run run(QDir(programFolder).absolutePath());
    const bool done = converted(run, programFolder, boundInMilliseconds);
    QLockFile lock(run.shared("lock"));
    lock.tryLock(longestLockWait);
    if (run.superseded())
        return true;
    if (!done || !moveOver(run.own("output"), run.shared("o.txt")))
        leaveInput(run);
    leaveReport(run);
    return leaveMarker(run);
}

} // namespace launcher
