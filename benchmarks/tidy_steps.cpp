#include "benchmarks/tidy_steps.h"

#include "benchmarks/measure.h"
#include "benchmarks/report.h"

#include "platform/control/code_editor.h"
#include "platform/system/shell.h"
#include "tidy/config_files.h"
#include "tidy/tidy_run.h"

#include <QFile>
#include <QProcess>
#include <QTest>

namespace bench {

namespace {

constexpr double pollingInterval = 100; // milliseconds between two looks for the end of a run

class HelperShell : public shell::Shell
{
public:
    platform::Result<void> open(const QString &) override { return {}; }
    platform::Result<void> openWindow(const QString &) override { return {}; }
    shell::StartedHelper start(const QString &program, const QString &workingFolder) override
    {
        return shell::startHelper(program, workingFolder);
    }
};

class NoBar : public tidy::ProgressBar
{
public:
    void showProgress(int) override { }
    void hideProgress() override { }
};

QByteArray makePage(qsizetype bytes)
{
    QByteArray page = "<html><head><title>Page</title>\n<body bgcolor=white>\n";
    for (int i = 1; page.size() < bytes; ++i)
        page += "<p>Paragraph " + QByteArray::number(i)
            + " of <b>many<i> & more</b></i>\n<ul><li>one<li>two &eacute;</ul>\n";
    return page;
}

// A program folder of the benchmark's own, with the launcher and Tidy in it.
bool layOut(const QDir &folder)
{
    folder.mkpath(QStringLiteral("tdyex"));
    for (const char *name : {"proclltidy.exe", "tidy.exe", "default.tidy"}) {
        const QString file = QStringLiteral("tdyex/") + QLatin1StringView(name);
        if (!QFile::copy(QStringLiteral(XE_PROGRAM_FOLDER "/") + file, folder.filePath(file)))
            return false;
    }
    return bool(tidy::writeConversionOptions(folder.path(), tidy::InputKind::Html, tidy::OutputKind::Xml));
}

double bareTidy(const QDir &folder, const QByteArray &page)
{
    const QString input = folder.filePath(QStringLiteral("page.html"));
    QFile file(input);
    if (!file.open(QIODevice::WriteOnly) || file.write(page) != page.size())
        return 0;
    file.close();
    const QString output = folder.filePath(QStringLiteral("page.xml"));
    const QString messages = folder.filePath(QStringLiteral("page.txt"));
    return milliseconds([&] {
        QProcess::execute(folder.filePath(QStringLiteral("tdyex/tidy.exe")),
                          {QStringLiteral("-utf8"), QStringLiteral("-config"),
                           folder.filePath(QStringLiteral("tdyex/default.tidy")), QStringLiteral("-config"),
                           folder.filePath(QStringLiteral("tdyex/default2.tidy")), QStringLiteral("-f"),
                           messages, QStringLiteral("-o"), output, input});
    });
}

} // namespace

void measureTidy(const QDir &folder, int megabytes)
{
    const Report report(folder);
    if (!layOut(folder))
        return report.note(QStringLiteral("Tidy is not laid out"));
    const QByteArray page = makePage(qsizetype(megabytes) * 1'000'000);
    const double bare = bareTidy(folder, page);
    control::CodeEditor editor;
    editor.loadText(page);
    HelperShell shell;
    NoBar bar;
    tidy::TidyRun run(folder.path(), editor, bar, shell);
    const double time = milliseconds([&] {
        run.start(editor.text());
        while (run.inProgress())
            QTest::qWait(1);
    });
    report.row(QStringLiteral("yardstick: bare tidy, HTML to XML"), bare, "ms");
    report.row(QStringLiteral("convert HTML to XML until the text is shown"), time, "ms",
               {{bare, "bare tidy"}, {bare + pollingInterval, "bare tidy and a polling interval"}});
}

} // namespace bench
