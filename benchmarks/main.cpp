// xe_bench [--shape name] [megabytes ...]: what each step costs on documents of that shape, or of all, and of
// these sizes (1, 10 and 100 when none is given).
//
// The yardsticks of a document and the steps run in processes of their own, so that what one leaves in memory
// does not lighten the next one's figures.
#include "benchmarks/document_maker.h"
#include "benchmarks/proportions.h"
#include "benchmarks/report.h"
#include "benchmarks/text_steps.h"
#include "benchmarks/tidy_steps.h"
#include "benchmarks/window_steps.h"
#include "benchmarks/yardsticks.h"

#include "platform/browser/browser_process.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#ifdef __unix__
#include <sys/resource.h>
#endif

namespace {

const QString documentName = QStringLiteral("document.xml");
const QString yardstickName = QStringLiteral("yardsticks");
constexpr int mostTidied = 10; // megabytes: Tidy takes its time, and what holds for them holds for more
constexpr int largest = 100; // megabytes, by default

// What a part of a measurement is about.
struct Task
{
    QDir folder;
    const bench::Shape *shape;
    int megabytes;

    bench::Report report() const { return bench::Report(folder); }
    bench::Yardsticks yardsticks() const
    {
        QFile file(folder.filePath(yardstickName));
        return bench::yardsticksFrom(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    }
};

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

int prepare(const Task &task)
{
    const QByteArray text = task.shape->make(qsizetype(task.megabytes) * 1'000'000);
    const bench::Yardsticks yardsticks
        = bench::measureYardsticks(text, task.folder.filePath(QStringLiteral("scratch")));
    bench::printYardsticks(yardsticks, task.report());
    return write(task.folder.filePath(documentName), text)
            && write(task.folder.filePath(yardstickName), bench::toBytes(yardsticks))
        ? 0
        : 1;
}

int takeSteps(const Task &task)
{
    bench::measureWindow(task.folder, *task.shape, task.megabytes, task.yardsticks(), task.report());
    return 0;
}

int takeTextSteps(const Task &task)
{
    bench::measureText(*task.shape, task.megabytes, task.yardsticks(), task.report());
    return 0;
}

int convertPage(const Task &task)
{
    bench::measureTidy(task.folder, task.megabytes);
    return 0;
}

int startUp(const Task &task)
{
    bench::measureStart(task.folder, task.report());
    return 0;
}

struct Part
{
    const char *name;
    int (*run)(const Task &task);
    bool browser; // shows the whole window
};

constexpr Part parts[] = {
    {"--start", startUp, true},       {"--prepare", prepare, false},     {"--steps", takeSteps, true},
    {"--text", takeTextSteps, false}, {"--convert", convertPage, false},
};

// What the system's parts say of a desktop that is not there is no part of the table.
void keepQuiet(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

int longest(int megabytes) { return 60 + megabytes / 2; } // seconds of work for a part

// What takes unbearably long is stopped, so that the rest is still measured.
void limitTime(int megabytes)
{
#ifdef __unix__
    const rlimit limit{rlim_t(longest(megabytes)), rlim_t(longest(megabytes))};
    setrlimit(RLIMIT_CPU, &limit);
#else
    Q_UNUSED(megabytes);
#endif
}

int runPart(const Part &part, int argc, char **argv)
{
    qInstallMessageHandler(keepQuiet);
    const Task task{QDir(QString::fromLocal8Bit(argv[2])), bench::shapeNamed(QString::fromLocal8Bit(argv[3])),
                    QByteArray(argv[4]).toInt()};
    limitTime(task.megabytes);
    qputenv("TMPDIR", task.folder.path().toUtf8());
    if (part.browser)
        browser::prepareProcess();
    const QApplication application(argc, argv);
    return part.run(task);
}

// In a process of its own.
int measurePart(const char *name, const Task &task)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {QString::fromLatin1(name), task.folder.path(), QLatin1StringView(task.shape->name),
                   QString::number(task.megabytes)});
    process.waitForFinished(-1);
    if (process.exitStatus() != QProcess::NormalExit)
        task.report().note(QStringLiteral("%1 crashed, or was stopped after %2 s of work")
                               .arg(QLatin1StringView(name))
                               .arg(longest(task.megabytes)));
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 ? 0 : 1;
}

// The rows of several measurements that are above their aims.
class Run
{
public:
    int start()
    {
        const QTemporaryDir folder;
        const Task task{QDir(folder.path()), bench::shapes().data(), 0};
        std::printf("start\n");
        std::fflush(stdout);
        const int failed = measurePart("--start", task);
        keep(QStringLiteral("start"), task.report().missed());
        return failed;
    }

    int measure(const bench::Shape &shape, const QList<int> &sizes)
    {
        int failed = 0;
        QMap<int, QMap<QString, double>> figures;
        for (const int megabytes : sizes)
            failed += measureSize(shape, megabytes, figures[megabytes]);
        keep(QLatin1StringView(shape.name), bench::printProportions(figures));
        return failed;
    }

    void printMissed() const
    {
        std::printf("\n%s\n", missed_.isEmpty() ? "All aims are met." : "Above their aims:");
        for (const QString &line : missed_)
            std::printf("! %s\n", qPrintable(line));
    }

private:
    int measureSize(const bench::Shape &shape, int megabytes, QMap<QString, double> &figures)
    {
        const QTemporaryDir folder;
        const Task task{QDir(folder.path()), &shape, megabytes};
        std::printf("\n%s, %d MB: %s\n", shape.name, megabytes, shape.what);
        std::fflush(stdout);
        int failed = 0;
        for (const char *name : {"--prepare", "--steps", "--text"})
            failed += measurePart(name, task);
        if (&shape == bench::shapes().data() && megabytes <= mostTidied)
            failed += measurePart("--convert", task);
        figures = task.report().figures();
        keep(QStringLiteral("%1 %2 MB").arg(QLatin1StringView(shape.name)).arg(megabytes),
             task.report().missed());
        return failed;
    }

    void keep(const QString &where, const QStringList &lines)
    {
        for (const QString &line : lines)
            missed_ += QStringLiteral("%1 %2").arg(where, -18).arg(line);
    }

    QStringList missed_;
};

QList<int> sizesOf(const bench::Shape &shape)
{
    QList<int> sizes;
    for (int size = shape.smallest; size <= largest; size *= 10)
        sizes += size;
    return sizes;
}

} // namespace

int main(int argc, char *argv[])
{
    for (const Part &part : parts)
        if (argc == 5 && QByteArrayView(part.name) == argv[1])
            return runPart(part, argc, argv);
    const QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bench::Shape *only = nullptr;
    if (arguments.value(0) == QStringLiteral("--shape")) {
        only = bench::shapeNamed(arguments.value(1));
        if (only == nullptr)
            return std::fprintf(stderr, "The shapes are catalogue, one-line, long-lines, deep and wide.\n"),
                   2;
        arguments = arguments.mid(2);
    }
    QList<int> sizes;
    for (const QString &size : arguments)
        sizes += size.toInt();
    Run run;
    int failed = run.start();
    for (const bench::Shape &shape : bench::shapes())
        if (only == nullptr || only == &shape)
            failed += run.measure(shape, sizes.isEmpty() ? sizesOf(shape) : sizes);
    run.printMissed();
    return failed == 0 ? 0 : 1;
}
