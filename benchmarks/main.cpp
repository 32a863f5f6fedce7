// xe_bench [megabytes ...]: what each step costs on documents of these sizes (1, 10 and 100 when none is
// given).
//
// The yardsticks of a size and the window's steps run in processes of their own, so that what one leaves in
// memory does not lighten the next one's figures.
#include "benchmarks/document_maker.h"
#include "benchmarks/measure.h"
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

namespace {

const QString documentName = QStringLiteral("document.xml");
const QString yardstickName = QStringLiteral("yardsticks");

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

int prepare(int argc, char **argv, const QDir &folder, int megabytes)
{
    const QApplication application(argc, argv);
    const QByteArray text = bench::makeCatalogue(qsizetype(megabytes) * 1'000'000);
    const bench::Yardsticks yardsticks
        = bench::measureYardsticks(text, folder.filePath(QStringLiteral("scratch")));
    std::printf("%d MB\n", megabytes);
    bench::printYardsticks(yardsticks);
    return write(folder.filePath(documentName), text)
            && write(folder.filePath(yardstickName), bench::toBytes(yardsticks))
        ? 0
        : 1;
}

int takeSteps(int argc, char **argv, const QDir &folder)
{
    qputenv("TMPDIR", folder.path().toUtf8());
    browser::prepareProcess();
    const QApplication application(argc, argv);
    QFile file(folder.filePath(yardstickName));
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    bench::measureWindow(folder.filePath(documentName), bench::yardsticksFrom(file.readAll()));
    return 0;
}

int takeTextSteps(int argc, char **argv, const QDir &folder)
{
    const QApplication application(argc, argv);
    QFile file(folder.filePath(yardstickName));
    QFile document(folder.filePath(documentName));
    if (!file.open(QIODevice::ReadOnly) || !document.open(QIODevice::ReadOnly))
        return 1;
    bench::measureText(document.readAll(), bench::yardsticksFrom(file.readAll()));
    return 0;
}

int convertPage(int argc, char **argv, const QDir &folder, int megabytes)
{
    const QApplication application(argc, argv);
    bench::measureTidy(folder, megabytes);
    return 0;
}

int measureOneSize(const QString &self, const QString &megabytes)
{
    const QTemporaryDir folder;
    const int prepared = QProcess::execute(self, {QStringLiteral("--prepare"), folder.path(), megabytes});
    const int stepped = QProcess::execute(self, {QStringLiteral("--steps"), folder.path()});
    const int edited = QProcess::execute(self, {QStringLiteral("--text"), folder.path()});
    // Tidy takes its time; what holds for ten megabytes holds for more.
    const int converted = megabytes.toInt() > 10
        ? 0
        : QProcess::execute(self, {QStringLiteral("--convert"), folder.path(), megabytes});
    return qAbs(prepared) + qAbs(stepped) + qAbs(edited) + qAbs(converted);
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    if (arguments.value(0) == QStringLiteral("--prepare"))
        return prepare(argc, argv, QDir(arguments.value(1)), arguments.value(2).toInt());
    if (arguments.value(0) == QStringLiteral("--steps"))
        return takeSteps(argc, argv, QDir(arguments.value(1)));
    if (arguments.value(0) == QStringLiteral("--text"))
        return takeTextSteps(argc, argv, QDir(arguments.value(1)));
    if (arguments.value(0) == QStringLiteral("--convert"))
        return convertPage(argc, argv, QDir(arguments.value(1)), arguments.value(2).toInt());
    if (arguments.isEmpty())
        arguments = {QStringLiteral("1"), QStringLiteral("10"), QStringLiteral("100")};
    int failed = 0;
    for (const QString &size : arguments)
        failed += measureOneSize(QString::fromLocal8Bit(argv[0]), size) != 0;
    return failed;
}
