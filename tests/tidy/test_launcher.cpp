// The launcher over the exchange files: Tidy's good days, its bad days, and the order of what is left.
#include "tests/tidy/exchange_folder.h"
#include "tidy/launcher/run_tidy.h"

#include <QProcess>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QByteArray input = "<p>one<br>two\r\n";
const QByteArray good = "<p>one<br>two</p>\n"; // what is read is the same

} // namespace

class TestLauncher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        desk_ = std::make_unique<ExchangeFolder>();
        desk_->write("i.txt", input);
        desk_->write("o.txt", "left by an earlier run");
    }

    void badDays()
    {
        const std::tuple<const char *, QByteArray, QByteArray> rows[] = {
            {"no fault", "cat $good >\"$out\"; echo said >\"$err\"", good},
            {"warnings", "cat $good >\"$out\"; exit 1", good},
            {"errors, forced output", "cat $good >\"$out\"; exit 2", good},
            {"errors, no output", "exit 2", ""},
            {"nothing written", ": >\"$out\"", ""},
            {"strange code", "echo bad >\"$out\"; exit 127", ""},
            {"crash in mid-line", "printf '<p>ha' >\"$out\"; kill -SEGV $$", ""},
            {"output taken away", "mkdir \"$out\"", ""},
            {"killed when done", "cat $good >\"$out\"; kill -9 $$", ""},
            {"a word gone", "echo '<p>one' >\"$out\"", ""},
            {"a word parted", "echo '<p>one<br>t wo' >\"$out\"", "<p>one<br>two"},
            {"another word", "echo '<p>one<br>two<br>three' >\"$out\"", ""},
            {"nothing but blanks", "printf ' \\r\\n' >\"$out\"; exit 1", ""},
        };
        for (const auto &[name, script, output] : rows) {
            init();
            desk_->write("good", good);
            QStringList left = entries();
            desk_->fake("good='" + desk_->at("good").toUtf8() + "'\n" + script);
            launch();
            QCOMPARE(desk_->content("o.txt"), output.isEmpty() ? input : output);
            QVERIFY2(desk_->content("i.txt") == input, name);
            QCOMPARE(desk_->content("f.txt").startsWith("Error: "), output.isEmpty());
            QVERIFY(!(QFile::permissions(desk_->at("o.txt")) & (QFile::ReadGroup | QFile::ReadOther)));
            left << u"d.txt"_s << u"f.txt"_s;
            left.sort();
            QCOMPARE(entries(), left);
        }
    }

    // Where links stand at the names of what is left, they go, and what they lead to stays.
    void plantedLinks()
    {
        desk_->write("victim", "mine");
        for (const char *name : {"o.txt", "f.txt"}) {
            QFile::remove(desk_->at(name));
            QVERIFY(QFile::link(desk_->at("victim"), desk_->at(name)));
        }
        launch();
        QCOMPARE(desk_->content("victim"), QByteArray("mine"));
        QVERIFY(desk_->content("o.txt").contains("<br"));
    }

    // Both files come to Tidy as one, what was said is kept in order.
    void arguments()
    {
        desk_->fake({});
        desk_->write("tidy.exe", "#!/bin/sh\npwd >&2\ncat \"$2\" >&2\necho \"$@\" >&2\n");
        desk_->write("default2.tidy", "wrap: 2");
        desk_->write("default.tidy", "wrap: 1\r\ntab-size: 1\r\nwrite-back: yes\r\n");
        launch();
        QByteArray said = desk_->content("f.txt");
        said.remove(0, said.indexOf('\n') + 1); // that there is no output
        QVERIFY(said.startsWith(QFile::encodeName(desk_->path())
                                + "\ntab-size: 1\nwrap: 2\nforce-output: yes\nindent-spaces: 2\n"
                                  "literal-attributes: yes\ndrop-empty-elements: no\n"
                                  "repeated-attributes: keep-first\n-config "));
        for (const char *always : {"--input-encoding utf8", "--output-encoding utf8", "--write-back no"})
            QVERIFY(said.contains(always));
        QVERIFY(said.endsWith("/i.txt\n"));
    }

    void hangs()
    {
        desk_->fake("echo half >\"$out\"; exec sleep 1000");
        QVERIFY(launcher::runTidy(desk_->path(), 500));
        QCOMPARE(desk_->content("o.txt"), input);
        QVERIFY(desk_->has("d.txt"));
    }

    void realTidy()
    {
        const std::tuple<const char *, QByteArray, QByteArray, QByteArray> rows[] = {
            {"XML as shipped", "<a><b>1</b><c/></a>\r\n", {}, "<a>\n     <b>1</b>\n     <c />\n</a>\n"},
            {"faulty XML",
             "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a><b></a>\r\n",
             {},
             "encoding=\"UTF-8\"?>"},
            {"XHTML",
             "<?xml version=\"1.0\" encoding='UTF-8'?>\n<html xmlns=\"http://www.w3.org/1999/xhtml\">"
             "<head><title>t</title></head><body><p>x</p></body></html>\r\n",
             "input-xml: no\noutput-xhtml: yes\n", "encoding='UTF-8'?>"},
            {"no markup", "plain text\r\n", {}, "plain text\r\n"},
            {"names other files", input,
             "input-xml: no\noutput-file: x\nerror-file: x\ngnu-emacs-file: x\nwrite-back: yes\n", "<br>"},
            {"unknown option", input, "input-xml: no\nno-such-thing: 1\n", "<br>"},
        };
        for (const auto &[name, text, perRun, has] : rows) {
            init();
            desk_->write("i.txt", text);
            if (!perRun.isEmpty())
                desk_->write("default2.tidy", perRun);
            launch();
            QVERIFY2(desk_->content("o.txt").contains(has), desk_->content("o.txt").constData());
            QVERIFY2(!desk_->content("o.txt").contains("generator"), name);
            QVERIFY(!QFile::exists(desk_->path() + u"/x"_s));
            QCOMPARE(desk_->content("f.txt").contains("unknown option"), perRun.contains("no-such-thing"));
            QCOMPARE(desk_->content("i.txt"), text);
        }
    }

    // Without a Tidy and without any file but the input the marker is made all the same.
    void missingFiles()
    {
        for (const char *name : {"tidy.exe", "default.tidy", "default2.tidy", "o.txt"})
            QVERIFY(QFile::remove(desk_->at(name)));
        launch();
        QCOMPARE(desk_->content("o.txt"), input);
    }

    // Options may keep every fault from being listed; that there are some is said all the same.
    void hiddenErrors()
    {
        for (const char *options : {"show-errors: 0\n", "show-errors: 0\nquiet: yes\n"}) {
            init();
            desk_->write("i.txt", "<a><b></a>\r\n");
            desk_->write("default.tidy", options);
            launch();
            QVERIFY2(desk_->content("f.txt").contains("Tidy found 0 warnings and 1 error"), options);
            QVERIFY(!desk_->content("f.txt").contains(" - Error"));
        }
    }

    // A launcher that comes late must not pass its failure off as the answer to the next input.
    void noInput()
    {
        QVERIFY(QFile::remove(desk_->at("i.txt")));
        const QStringList before = entries();
        QVERIFY(launcher::runTidy(desk_->path(), 60'000));
        QCOMPARE(entries(), before);
        QCOMPARE(desk_->content("o.txt"), QByteArray("left by an earlier run"));
    }

private:
    QStringList entries() const
    {
        return QDir(desk_->at("")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
    void launch() const
    {
        QProcess launcher;
        launcher.setWorkingDirectory(desk_->path());
        launcher.start(QStringLiteral(XE_LAUNCHER), {});
        QVERIFY(launcher.waitForFinished(-1));
        QCOMPARE(launcher.exitCode(), 0);
        QVERIFY(desk_->has("d.txt"));
    }

    std::unique_ptr<ExchangeFolder> desk_;
};

QTEST_GUILESS_MAIN(TestLauncher)
#include "test_launcher.moc"
