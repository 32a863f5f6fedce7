// The launcher over the exchange files: Tidy's good days, its bad days, and the order of what is left.
#include "tidy/launcher/run_tidy.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

const QByteArray input = "<p>one<br>two\r\n";

} // namespace

class TestLauncher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void badDays_data();
    void badDays();
    void arguments();
    void hangs();
    void realTidy_data();
    void realTidy();
    void missingFiles();

private:
    QString at(const char *name) const
    {
        return program_->filePath(QStringLiteral("tdyex/") + QString::fromLatin1(name));
    }
    QByteArray content(const char *name) const
    {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }
    void write(const char *name, const QByteArray &text) const
    {
        QFile file(at(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    // A Tidy of our own: a script that finds the names of its output and messages in $out and $err.
    void fake(const QByteArray &script) const
    {
        write("tidy.exe",
              "#!/bin/sh\nwhile [ $# -gt 1 ]; do case $1 in --output-file) out=$2;; --error-file) err=$2;; "
              "esac; "
              "shift; done\nexec </dev/null\n"
                  + script);
    }
    int launch() const
    {
        QProcess launcher;
        launcher.setWorkingDirectory(program_->path());
        launcher.start(QStringLiteral(XE_LAUNCHER), {});
        return launcher.waitForFinished(-1) ? launcher.exitCode() : -1;
    }

    std::unique_ptr<QTemporaryDir> program_;
};

void TestLauncher::init()
{
    program_ = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(program_->path()).mkdir(QStringLiteral("tdyex")));
    write("i.txt", input);
    write("o.txt", "left by an earlier run");
}

void TestLauncher::badDays_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QByteArray>("output"); // empty: the input
    const auto row = [](const char *name, const char *script, const char *output) {
        QTest::newRow(name) << QByteArray(script) << QByteArray(output);
    };
    row("no fault", "echo good >\"$out\"; echo said >\"$err\"", "good\n");
    row("warnings", "echo good >\"$out\"; exit 1", "good\n");
    row("errors, forced output", "echo forced >\"$out\"; exit 2", "forced\n");
    row("errors, no output", "exit 2", "");
    row("nothing written", ": >\"$out\"", "");
    row("strange code", "echo bad >\"$out\"; exit 127", "");
    row("crash in mid-line", "printf '<p>ha' >\"$out\"; kill -SEGV $$", "");
    row("output taken away", "mkdir \"$out\"", "");
    row("killed when done", "echo good >\"$out\"; kill -9 $$", "");
}

void TestLauncher::badDays()
{
    QFETCH(QByteArray, script);
    QFETCH(QByteArray, output);
    fake(script);
    QCOMPARE(launch(), 0);
    QCOMPARE(content("o.txt"), output.isEmpty() ? input : output);
    QVERIFY(QFile::exists(at("d.txt")));
    QCOMPARE(content("i.txt"), input);
    const QStringList left{QStringLiteral("d.txt"), QStringLiteral("f.txt"), QStringLiteral("i.txt"),
                           QStringLiteral("o.txt"), QStringLiteral("tidy.exe")};
    QCOMPARE(
        QDir(program_->filePath(QStringLiteral("tdyex"))).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
        left);
}

// Both files come to Tidy as one, what was said is kept in order.
void TestLauncher::arguments()
{
    write("tidy.exe", "#!/bin/sh\npwd >&2\ncat \"$2\" >&2\necho \"$@\" >&2\n");
    write("default2.tidy", "wrap: 2");
    write("default.tidy", "wrap: 1\r\ntab-size: 1\r\nwrite-back: yes\r\n");
    QCOMPARE(launch(), 0);
    const QByteArray said = content("f.txt");
    QVERIFY(said.startsWith(QFile::encodeName(program_->path())
                            + "\ntab-size: 1\nwrap: 2\nforce-output: yes\n-config "));
    for (const char *always : {"--input-encoding utf8", "--output-encoding utf8", "--write-back no"})
        QVERIFY(said.contains(always));
    QVERIFY(said.endsWith("/i.txt\n"));
}

void TestLauncher::hangs()
{
    fake("echo half >\"$out\"; exec sleep 1000");
    QVERIFY(launcher::runTidy(program_->path(), 500));
    QCOMPARE(content("o.txt"), input);
    QVERIFY(QFile::exists(at("d.txt")));
}

void TestLauncher::realTidy_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("perRun"); // empty: the one shipped
    QTest::addColumn<QByteArray>("has");
    QTest::newRow("XML as shipped") << QByteArray("<a><b>1</b><c/></a>\r\n") << QByteArray()
                                    << QByteArray("<a>\n     <b>1</b>\n     <c />\n</a>\n");
    QTest::newRow("XHTML") << input << QByteArray("input-xml: no\r\noutput-xhtml: yes\r\n")
                           << QByteArray("<br />");
    QTest::newRow("HTML") << input << QByteArray("input-xml: no\r\noutput-html: yes\r\n")
                          << QByteArray("<br>");
    QTest::newRow("not Latin-1") << QByteArray("<a>\xE6\x97\xA5</a>\r\n") << QByteArray()
                                 << QByteArray("<a>\xE6\x97\xA5</a>");
    QTest::newRow("names other files")
        << input
        << QByteArray("input-xml: no\noutput-file: x\nerror-file: x\ngnu-emacs-file: x\nwrite-back: yes\n")
        << QByteArray("<br>");
    QTest::newRow("unknown option") << input << QByteArray("input-xml: no\nno-such-thing: 1\n")
                                    << QByteArray("<br>");
}

void TestLauncher::realTidy()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, perRun);
    QFETCH(QByteArray, has);
    QVERIFY(QFile::copy(QStringLiteral(XE_TIDY), at("tidy.exe")));
    QVERIFY(QFile::copy(QStringLiteral(XE_SHARE "/default.tidy"), at("default.tidy")));
    QVERIFY(QFile::copy(QStringLiteral(XE_SHARE "/default2.tidy"), at("default2.tidy")));
    write("i.txt", text);
    if (!perRun.isEmpty())
        write("default2.tidy", perRun);
    QCOMPARE(launch(), 0);
    QVERIFY2(content("o.txt").contains(has), content("o.txt").constData());
    QVERIFY(!content("o.txt").contains("generator"));
    QVERIFY(!QFile::exists(program_->filePath(QStringLiteral("x"))));
    QCOMPARE(content("f.txt").contains("unknown option"), perRun.contains("no-such-thing"));
    QCOMPARE(content("i.txt"), text);
}

// Without a Tidy and without any file but the input the marker is made all the same.
void TestLauncher::missingFiles()
{
    QVERIFY(QFile::remove(at("o.txt")));
    QCOMPARE(launch(), 0);
    QCOMPARE(content("o.txt"), input);
    QVERIFY(QFile::exists(at("d.txt")));
    QVERIFY(QFile::remove(at("i.txt")));
    QVERIFY(QFile::remove(at("d.txt")));
    QCOMPARE(launch(), 0);
    QVERIFY(QFile::exists(at("d.txt")));
}

QTEST_GUILESS_MAIN(TestLauncher)
#include "test_launcher.moc"
