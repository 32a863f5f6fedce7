// Runs of Tidy: the exchange files, the bar, what the editor gets, and two runs at once.
#include "platform/system/shell.h"
#include "tests/document/stand_ins.h"
#include "tests/tidy/exchange_folder.h"
#include "tidy/launcher/run_tidy.h"
#include "tidy/text_place.h"
#include "tidy/tidy_run.h"

#include <QSignalSpy>
#include <QTest>

#include <functional>

using namespace tidy;

namespace {

struct NotedBar : ProgressBar
{
    void showProgress(int value) override { values << value; }
    void hideProgress() override { values << hidden; }

    static constexpr int hidden = -1;
    QList<int> values;
};

struct NotedShell : shell::Shell
{
    platform::Result<void> open(const QString &) override { return {}; }
    platform::Result<void> openWindow(const QString &) override { return {}; }
    shell::StartedHelper start(const QString &program, const QString &folder) override
    {
        started << program + QLatin1Char(' ') + folder;
        return onStart(program, folder);
    }

    QStringList started;
    std::function<shell::StartedHelper(const QString &, const QString &)> onStart
        = [](const QString &, const QString &) { return shell::StartedHelper(nullptr); };
};

// A run in its surroundings.
struct Desk
{
    Desk() : run(exchange.path(), editor, bar, shell)
    {
        QObject::connect(&run, &TidyRun::note, [this](const QString &line) { notes << line; });
        editor.loadText("<p>before");
    }

    void waitForEnd()
    {
        QSignalSpy ended(&run, &TidyRun::finished);
        QVERIFY(!run.inProgress() || ended.wait(60'000));
    }

    ExchangeFolder exchange;
    document_test::PlainEditor editor;
    NotedBar bar;
    NotedShell shell;
    QStringList notes;
    TidyRun run;
};

} // namespace

class TestTidyRun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void start()
    {
        Desk desk;
        desk.exchange.write("d.txt", "left over");
        desk.shell.onStart = [&](const QString &, const QString &) {
            const bool ready
                = !desk.exchange.has("d.txt") && desk.exchange.content("i.txt") == "<p>\xC3\xA9\r\n";
            return ready ? shell::StartedHelper(nullptr) : platform::Failure{QStringLiteral("too early")};
        };
        desk.run.start("<p>\xC3\xA9");
        QCOMPARE(desk.notes, QStringList());
        QCOMPARE(desk.shell.started,
                 QStringList(desk.exchange.at("proclltidy.exe") + QLatin1Char(' ') + desk.exchange.path()));
        desk.run.tick();
        QVERIFY(desk.run.inProgress());
        QCOMPARE(desk.bar.values, (QList<int>{0, 1}));
    }

    void progress()
    {
        Desk desk;
        desk.run.start("<p>");
        for (int tick = 0; tick < 97; ++tick)
            desk.run.tick();
        QCOMPARE(desk.bar.values.sliced(94), (QList<int>{94, 95, 5, 6}));
        desk.exchange.write("o.txt", "<p/>\n");
        desk.exchange.write("d.txt", "");
        desk.run.tick();
        QCOMPARE(desk.bar.values.sliced(99), (QList<int>{100, NotedBar::hidden}));
        QVERIFY(!desk.run.inProgress());
    }

    void outputs()
    {
        const std::tuple<const char *, QByteArray, QByteArray> rows[] = {
            {"LF", "<a/>\n", "<a/>"},
            {"one line end is the file's", "<a/>\r\n\r\n", "<a/>\r\n"},
            {"CR", "<a/>\r", "<a/>"},
            {"mark", "\xEF\xBB\xBF<a/>", "<a/>"},
            {"UTF-8 whatever is declared", "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><a>\xC3\xA9</a>",
             "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><a>\xC3\xA9</a>"},
            {"no UTF-8", "<a>\xFF</a>", "<a>\xEF\xBF\xBD</a>"},
        };
        for (const auto &[name, output, text] : rows) {
            Desk desk;
            desk.run.start("<p>");
            desk.exchange.write("o.txt", output);
            desk.exchange.write("d.txt", "");
            desk.run.tick();
            QCOMPARE(desk.editor.text(), text);
            QVERIFY2(desk.exchange.has("d.txt"), name);
            desk.editor.undo();
            QCOMPARE(desk.editor.text(), "<p>before");
            QVERIFY(!desk.editor.canUndo());
        }
    }

    void noOutput()
    {
        Desk desk;
        desk.run.start("<p>");
        desk.exchange.write("d.txt", "");
        desk.run.tick();
        QVERIFY(desk.editor.text() == "<p>before" && !desk.editor.canUndo());
        QCOMPARE(desk.notes.size(), 1);
    }

    // While the editor is not shown its text is left alone; then the output comes, unless the text is
    // another.
    void keptOutput()
    {
        for (const bool changed : {false, true}) {
            Desk desk;
            desk.run.start("<p>");
            desk.run.setEditorShown(false);
            QCOMPARE(desk.notes.size(), 1);
            desk.exchange.write("o.txt", "<a/>\n");
            desk.exchange.write("d.txt", "");
            desk.run.tick();
            QVERIFY(desk.editor.text() == "<p>before" && desk.run.keepsOutput());
            if (changed)
                desk.editor.replaceText("<p>changed");
            desk.run.setEditorShown(true);
            QCOMPARE(desk.editor.text(), changed ? "<p>changed" : "<a/>");
            QCOMPARE(desk.notes.size(), 2);
            QVERIFY(desk.notes.last().contains(QLatin1String(changed ? "stays" : "put in")));
            QVERIFY(!desk.run.keepsOutput() && desk.run.offersOutput() == changed);
        }
    }

    // What was typed during a run stays, until its writer prefers the result.
    void editedMeanwhile()
    {
        for (const bool wanted : {true, false}) {
            Desk desk;
            QSignalSpy offers(&desk.run, &TidyRun::offerChanged);
            desk.run.start("<p>before");
            desk.editor.replaceText("<p>typed");
            desk.exchange.write("o.txt", "<a/>\n");
            desk.exchange.write("d.txt", "");
            desk.run.tick();
            QCOMPARE(desk.editor.text(), "<p>typed");
            QVERIFY(desk.run.offersOutput() && offers.size() == 1);
            if (wanted) {
                desk.run.takeOffer();
                QCOMPARE(desk.editor.text(), "<a/>");
                desk.editor.undo();
            } else {
                desk.run.start("<p>typed");
            }
            QCOMPARE(desk.editor.text(), "<p>typed");
            QVERIFY(!desk.run.offersOutput() && offers.size() == 2);
        }
    }

    // What a launcher left that was killed goes with the next window.
    void leftOver()
    {
        Desk desk;
        QVERIFY(QDir(desk.exchange.path()).mkpath(desk.exchange.at("run-abc/output")));
        const TidyRun next(desk.exchange.path(), desk.editor, desk.bar, desk.shell);
        QVERIFY(!desk.exchange.has("run-abc"));
    }

    // Nothing of a cancelled run is left: neither Tidy nor what it wrote.
    void cancelled()
    {
        Desk desk;
        desk.run.cancel();
        QVERIFY(desk.notes.isEmpty());
        desk.shell.onStart = shell::startHelper;
        desk.exchange.fake("echo $$ >'" + desk.exchange.at("begun").toUtf8() + "'\nexec sleep 1000\n");
        desk.run.start("<p>before");
        QTRY_VERIFY_WITH_TIMEOUT(desk.exchange.content("begun").endsWith('\n'), 60'000);
        desk.run.cancel();
        QVERIFY(!desk.run.inProgress() && desk.notes.last().contains(QLatin1StringView("cancelled")));
        QCOMPARE(desk.bar.values.last(), NotedBar::hidden);
        QCOMPARE(desk.editor.text(), "<p>before");
        QVERIFY(QDir(desk.exchange.at("")).entryList({QStringLiteral("run-*")}, QDir::Dirs).isEmpty());
        QVERIFY(!desk.exchange.has("i.txt") && !desk.exchange.has("d.txt"));
        QFile state(QStringLiteral("/proc/%1/stat").arg(desk.exchange.content("begun").toInt()));
        QTRY_VERIFY(!state.exists() || (state.open(QIODevice::ReadOnly) && state.readAll().contains(") Z ")));
    }

    void launcherDies()
    {
        Desk desk;
        desk.shell.onStart = shell::startHelper;
        QVERIFY(QFile::remove(desk.exchange.at("proclltidy.exe")));
        desk.exchange.write("proclltidy.exe", "#!/bin/sh\nexit 1\n");
        QFile::setPermissions(desk.exchange.at("proclltidy.exe"), QFile::ReadOwner | QFile::ExeOwner);
        desk.run.start("<p>before");
        desk.waitForEnd();
        QVERIFY(!desk.run.inProgress() && saysFailure(desk.run.messages()));
        QCOMPARE(desk.notes.size(), 1);
        QCOMPARE(desk.editor.text(), "<p>before");
    }

    void abandoned()
    {
        for (const bool over : {false, true}) {
            Desk desk;
            desk.run.abandon();
            QVERIFY(desk.notes.isEmpty());
            desk.run.start("<p>");
            desk.run.setEditorShown(!over);
            desk.exchange.write("o.txt", "<a/>\n");
            desk.exchange.write("d.txt", "");
            if (over)
                desk.run.tick();
            desk.run.abandon();
            QVERIFY(!desk.run.inProgress() && !desk.run.keepsOutput());
            QCOMPARE(desk.exchange.has("i.txt"), over); // a launcher at work is told by its absence
            QCOMPARE(desk.bar.values.last(), NotedBar::hidden);
            desk.run.setEditorShown(true);
            QCOMPARE(desk.editor.text(), "<p>before");
            QVERIFY(desk.notes.last().contains(QLatin1StringView("given up")));
        }
    }

    // The text may have been edited since: it stays, whatever stands in for the output.
    void failedRun()
    {
        Desk desk;
        desk.run.start("<p>");
        desk.exchange.write("o.txt", "<p>\n");
        desk.exchange.write("f.txt", "Error: Tidy crashed; the text stays as it is.\n");
        desk.exchange.write("d.txt", "");
        desk.run.tick();
        QVERIFY(desk.editor.text() == "<p>before" && saysFailure(desk.run.messages()));
        QCOMPARE(desk.notes, QStringList(u"Tidy crashed; the text stays as it is."_qs));
    }

    // A folder stands where a file should: nothing may pass for this run's output.
    void cannotPrepare()
    {
        for (const char *name : {"i.txt", "d.txt"}) {
            Desk desk;
            QVERIFY(QDir(desk.exchange.path()).mkpath(desk.exchange.at(name) + QStringLiteral("/full")));
            desk.run.start("<p>");
            QCOMPARE(desk.notes.size(), 1);
            QVERIFY(!desk.run.inProgress() && desk.shell.started.isEmpty() && desk.bar.values.isEmpty());
        }
    }

    void cannotStart()
    {
        Desk desk;
        desk.shell.onStart = shell::startHelper;
        QVERIFY(QFile::remove(desk.exchange.at("proclltidy.exe")));
        desk.run.start("<p>");
        QCOMPARE(desk.notes.size(), 1);
        QVERIFY(desk.run.inProgress());
    }

    // The first launcher's Tidy is still at work when the second run starts, and done only after that one.
    void secondRun()
    {
        Desk desk;
        desk.shell.onStart = shell::startHelper;
        desk.exchange.fake("if grep -q first \"$1\"; then touch '" + desk.exchange.at("begun").toUtf8()
                           + "'; while [ ! -e '" + desk.exchange.at("go").toUtf8()
                           + "' ]; do sleep 0.02; done; fi\ncat \"$1\" >\"$out\"\n");
        desk.run.start("<p>first");
        QTRY_VERIFY_WITH_TIMEOUT(desk.exchange.has("begun"), 60'000);
        desk.run.start("<p>second");
        desk.waitForEnd();
        QCOMPARE(desk.editor.text(), "<p>second");
        QVERIFY(QFile::remove(desk.exchange.at("o.txt")));
        desk.exchange.write("go", "");
        const auto atWork = [&] {
            return !QDir(desk.exchange.at("")).entryList({QStringLiteral("run-*")}, QDir::Dirs).isEmpty();
        };
        QTRY_VERIFY_WITH_TIMEOUT(!atWork(), 60'000);
        QVERIFY(!desk.exchange.has("o.txt"));
        desk.editor.undo();
        QVERIFY(!desk.editor.canUndo());
    }

    void lateLauncher()
    {
        const std::tuple<const char *, QByteArray, bool> rows[] = {
            {"nothing", ":", true},
            {"the program ended", "rm \"$dir/i.txt\"", false},
            {"another input", "rm \"$dir/i.txt\"; echo other >\"$dir/i.txt\"", false},
            {"another input in its place", "echo other >\"$dir/new\"; mv \"$dir/new\" \"$dir/i.txt\"", false},
        };
        for (const auto &[name, meanwhile, left] : rows) {
            const ExchangeFolder exchange;
            exchange.write("i.txt", "<p>\r\n");
            exchange.fake("dir='" + exchange.at("").toUtf8() + "'\necho out >\"$out\"\n" + meanwhile + '\n');
            QVERIFY(launcher::runTidy(exchange.path(), 60'000));
            for (const char *file : {"o.txt", "d.txt", "f.txt"})
                QVERIFY2(exchange.has(file) == left, name);
        }
    }

    void messages()
    {
        const std::pair<const char *, Message> rows[] = {
            {"line 1 column 241 - Error: <o:p> is unknown!",
             {1, 241, Severity::Error, u"<o:p> is unknown!"_qs}},
            {"line 12 column 1 - Warning: missing </p> - odd: yes\r",
             {12, 1, Severity::Warning, u"missing </p> - odd: yes"_qs}},
            {"/a: b/i.txt:8:19: Warning: <td> attribute", {8, 19, Severity::Warning, u"<td> attribute"_qs}},
            {"line 0 column 2 - Error: nowhere", {0, 0, Severity::Error, u"nowhere"_qs}},
            {"line 1 column 1 - Info: value", {1, 1, Severity::Information, u"value"_qs}},
            {"Error: Tidy crashed", {0, 0, Severity::Error, u"Tidy crashed"_qs}},
            {"Config: unknown option: foo",
             {0, 0, Severity::Information, u"Config: unknown option: foo"_qs}}};
        for (const auto &[line, message] : rows) {
            for (const char *end : {"\n", "\r\n", "\r"}) {
                const QByteArray report
                    = QByteArray(end) + line + end + end + "About HTML Tidy: x" + end + "more";
                QVERIFY2(messagesIn(report) == std::vector{message}, line);
            }
        }
    }

    void places()
    {
        const std::tuple<const char *, int, int, int, int> rows[] = {
            {"a\r\n\t \xC3\xA9x", 2, 11, 8, 3},
            {"a\r\tx", 2, 9, 8, 1},
            {"\n\n a\tx", 3, 5, 4, 3},
            {"abc\nd", 1, 9, 8, 3},
            {"a\n", 7, 2, 8, 0},
            {"\t\tx", 1, 3, 0, 2},
        };
        for (const auto &[text, line, column, tabSize, character] : rows)
            QCOMPARE(characterAt(text, line, column, tabSize), character);
    }

    void manyMessages()
    {
        const std::vector<Message> found
            = messagesIn(QByteArray("line 1 column 2 - Error: x\n").repeated(mostMessages + 3));
        QCOMPARE(found.size(), size_t(mostMessages + 1));
        QVERIFY(found.back().text.startsWith(QLatin1StringView("3 lines")));
        const QByteArray warnings = QByteArray("line 1 column 2 - Warning: y\n").repeated(mostMessages);
        const std::vector<Message> mixed = messagesIn(warnings + "line 3 column 4 - Error: x\n");
        QCOMPARE(mixed.size(), size_t(mostMessages + 1));
        QCOMPARE(mixed[mostMessages - 1].severity, Severity::Error);
    }

    // No fault is denied because it is not shown.
    void counts()
    {
        const QByteArray warnings = QByteArray("line 1 column 2 - Warning: y\n").repeated(mostMessages + 5);
        const std::tuple<QByteArray, int, int> rows[] = {
            {"No warnings or errors were found.\n", 0, 0},
            {warnings + "line 3 column 4 - Error: x\n", 1, mostMessages + 5},
            {"Tidy found 0 warnings and 1 error! Not all warnings/errors were shown.\r\n", 1, 0},
            {"line 1 column 1 - Warning: x\nTidy found 12 warnings and 3 errors!\n", 3, 12},
            {"line 1 column 1 - Warning: of the launcher's\nTidy found 0 warnings and 1 error!\n", 1, 1},
        };
        for (const auto &[report, errors, warned] : rows) {
            const Counts found = countsIn(report);
            QCOMPARE(std::pair(found.errors, found.warnings), std::pair(errors, warned));
        }
    }
};

QTEST_GUILESS_MAIN(TestTidyRun)
#include "test_tidy_run.moc"
