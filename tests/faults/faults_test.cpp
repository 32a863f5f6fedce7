// A bad disk under the real window: whatever it refuses, the file is a whole old or a whole new version, the
// unsaved text is kept, and the user is told.
#include "tests/app/window_fixture.h"

#include "app/file_watch.h"
#include "app/recovery.h"

#include <QDir>
#include <QMenu>

#include <sys/file.h>
#include <unistd.h>

using namespace app_test;
using dialogs::Answer;

namespace {

constexpr app::Recovery::Pace never{3'600'000, 3'600'000, 3'600'000};
constexpr app::Recovery::Pace atOnce{5, 5, 10};

const QByteArray before = "<a>" + QByteArray("old ").repeated(20'000) + "</a>\r\n";
const QByteArray after = "<a>x" + before.mid(3);

QString rulesFile() { return qEnvironmentVariable("XE_FAULTS"); }
QString heldFile() { return rulesFile() + QStringLiteral(".held"); }

QStringList namesIn(const QString &folder) { return QDir(folder).entryList(QDir::Files | QDir::Hidden); }

} // namespace

class FaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        setRules({});
        qputenv("TMPDIR", temporary_);
        folders_ = std::make_unique<Folders>();
        path_ = folders_->document(QStringLiteral("a.xml"));
        write(path_, before);
    }
    void cleanup() { setRules({}); }

    void saving_data()
    {
        QTest::addColumn<QByteArray>("rules");
        QTest::addColumn<bool>("over"); // the file has a second name, and so is written over
        QTest::addColumn<QString>("told"); // empty where the save succeeds all the same
        bool isOver = false;
        const auto row = [&isOver](const char *name, const char *rules, const char *told) {
            QTest::newRow(name) << QByteArray(rules) << isOver << QString::fromLatin1(told);
        };
        constexpr const char *full = "No space left on device";
        row("disk full", "write 0 999 28", full);
        row("disk full at the last write", "write 1 999 28", full);
        row("disk full at the flush", "flush 0 999 28", full);
        row("disk full at the rename", "rename 0 999 28", full);
        row("disk full at the name", "create 0 999 28", full);
        row("quota", "write 0 999 122", "Disk quota exceeded");
        row("disk is read-only now", "create 0 999 30\nopen 0 999 30\nrename 0 999 30", "Read-only");
        row("file system is read-only", "stat 1 999 30", "Read-only");
        row("folder takes no new name", "create 0 999 13", "");
        row("folder takes no rename", "rename 0 999 13", "");
        row("neither folder nor file", "create 0 999 13\nopen 0 999 13", "Permission denied");
        row("short writes", "write 0 9 short", "");
        row("interrupted", "create 0 3 4\nopen 0 3 4\nwrite 0 3 4\nflush 0 3 4", "");
        row("no flush there", "flush 0 999 22", "");
        row("no nameless files there", "create 0 1 95", "");
        row("fails at the flush", "flush 0 999 5", "Input/output error");
        row("folder cannot be flushed", "flush 1 999 5", "");
        row("mount has gone", "* 0 9999 116", "Stale file handle");
        row("mount goes while it is written", "write 1 999 19\nflush 0 999 19\nremove 0 999 19",
            "No such device");
        isOver = true;
        row("written over", "", "");
        row("disk full before", "create 0 9 28\nwrite 0 1 28", full);
        row("disk full between", "write 1 1 short\nwrite 2 1 28", full);
        row("fails at the flush, written over", "flush 2 1 5", "Input/output error");
        row("fails at the cut", "truncate 0 1 5", "Input/output error");
        row("interrupted, written over", "write 0 3 4\nread 0 3 4\nflush 0 3 4", "");
    }

    void saving()
    {
        QFETCH(QByteArray, rules);
        QFETCH(bool, over);
        QFETCH(QString, told);
        const QString other = folders_->document(QStringLiteral("b.xml"));
        if (over)
            QCOMPARE(link(QFile::encodeName(path_).constData(), QFile::encodeName(other).constData()), 0);
        Window window(*folders_, {path_});
        window.main->recovery().setPace(never);
        typeOne(window);
        setRules(rules);
        if (!told.isEmpty())
            window.dialogs.answer(Answer::No); // to another place
        window.choose("mnuSave");
        window.choose("searchcmxsub_7");
        const QString note = window.note();
        setRules({});
        for (const QString &text : {note, window.lastMessage()})
            QVERIFY2(told.isEmpty() ? text.isEmpty() : text.contains(path_) && text.contains(told),
                     qPrintable(text));
        QCOMPARE(contentOf(path_), told.isEmpty() ? after : before);
        QCOMPARE(window.main->isWindowModified(), !told.isEmpty());
        QCOMPARE(namesIn(folder()).size(), over ? 2 : 1);
        if (over)
            QCOMPARE(contentOf(other), contentOf(path_));
        if (!told.isEmpty())
            QCOMPARE(keptText(), after.chopped(2));
        // The window lives, and the next save comes through.
        window.choose("editcmxsub_7");
        window.typeIntoEditor(QStringLiteral("y"));
        window.choose("mnuSave");
        QCOMPARE(contentOf(path_).count('y'), 1);
        QTRY_VERIFY(namesIn(recovery()).filter(QStringLiteral(".live")).isEmpty());
    }

    void savedElsewhere_data()
    {
        QTest::addColumn<bool>("leaving");
        QTest::addColumn<bool>("chosen"); // another file, when one was asked for
        QTest::newRow("another file") << false << true;
        QTest::newRow("dismissed") << false << false;
        QTest::newRow("another file, then the end") << true << true;
        QTest::newRow("dismissed, and no end") << true << false;
    }

    // The full disk is not the only one.
    void savedElsewhere()
    {
        QFETCH(bool, leaving);
        QFETCH(bool, chosen);
        const QString other = folders_->program(QStringLiteral("b.xml"));
        Window window(*folders_, {path_});
        typeOne(window);
        setRules("write 0 9999 28");
        if (leaving)
            window.dialogs.answer(Answer::Yes); // save changes?
        window.dialogs.answer(Answer::Yes); // elsewhere?
        window.dialogs.answerFile(chosen ? other : QString());
        window.choose(leaving ? "mnuexit" : "mnuSave");
        QCOMPARE(window.dialogs.messages().last().icon, dialogs::Icon::Exclamation);
        QCOMPARE(window.left, leaving && chosen);
        QCOMPARE(window.main->isWindowModified(), !chosen);
        QCOMPARE(window.titleLine().endsWith(other), chosen);
        QCOMPARE(window.note().isEmpty(), chosen);
        QCOMPARE(QFile::exists(other), chosen);
        if (chosen)
            QCOMPARE(contentOf(other), after);
        QCOMPARE(contentOf(path_), before);
    }

    void opening_data()
    {
        QTest::addColumn<QByteArray>("rules");
        QTest::addColumn<QString>("told");
        QTest::newRow("cannot be read") << QByteArray("read 0 999 5") << "Input/output error";
        QTest::newRow("ends while it is read")
            << QByteArray("read 0 1 short\nread 0 999 116") << "Stale file handle";
        QTest::newRow("may not be opened") << QByteArray("open 0 999 13") << "Permission denied";
        QTest::newRow("interrupted") << QByteArray("open 0 1 4\nread 0 1 4") << "";
    }

    void opening()
    {
        QFETCH(QByteArray, rules);
        QFETCH(QString, told);
        Window window(*folders_);
        window.choose("mnuelement");
        window.dialogs.answer(Answer::No);
        if (!told.isEmpty())
            window.dialogs.answer(Answer::Ok);
        setRules(rules);
        window.main->session().life().openPath(path_);
        setRules({});
        QVERIFY2(window.lastMessage().contains(told), qPrintable(window.lastMessage()));
        QCOMPARE(window.titleLine().endsWith(QStringLiteral("a.xml")), told.isEmpty());
        QCOMPARE(window.main->isWindowModified(), !told.isEmpty());
    }

    // A look at a file that does not answer keeps nobody from typing.
    void watching()
    {
        Window window(*folders_, {path_});
        QVERIFY(QTest::qWaitForWindowActive(window.main.get()));
        window.dialogs.answer(Answer::No);
        {
            const Held held(*this, "stat 0 9999 hold", folder());
            QCOMPARE(::truncate(QFile::encodeName(path_).constData(), 0), 0);
            QTRY_VERIFY(contentOf(heldFile()).startsWith('o'));
            typeOne(window);
            QVERIFY(!contentOf(heldFile()).contains('w'));
        }
        QTRY_COMPARE(window.dialogs.messages().size(), 1);
    }

    // What cannot be reached is not taken for removed.
    void outOfReach()
    {
        app::FileWatch watch;
        watch.watch(path_, files::stampOf(path_).value());
        setRules("* 0 9999 116");
        QCOMPARE(watch.checkNow(), app::FileWatch::Found::AsKnown);
        setRules({});
        QVERIFY(QFile::remove(path_));
        QCOMPARE(watch.checkNow(), app::FileWatch::Found::Gone);
    }

    // A text on its way to a slow disk does not keep the menu closed.
    void slowRecovery()
    {
        Window window(*folders_, {path_});
        window.main->recovery().setPace(atOnce);
        {
            const Held held(*this, "flush 0 1 hold", recovery());
            typeOne(window);
            QTRY_COMPARE(contentOf(heldFile()), "o");
            Q_EMIT window.main->findChild<QMenu *>(QStringLiteral("mnurecover"))->aboutToShow();
            QCOMPARE(keptText(), QByteArray());
        }
        QTRY_COMPARE(keptText(), after.chopped(2));
    }

    void fullRecovery_data()
    {
        QTest::addColumn<QByteArray>("call");
        for (const char *call : {"create", "write", "flush", "rename"})
            QTest::newRow(call) << QByteArray(call);
    }

    // The former copy stands where a new one cannot be written, and the next one that can takes its place.
    void fullRecovery()
    {
        QFETCH(QByteArray, call);
        Window window(*folders_, {path_});
        window.main->recovery().setPace(atOnce);
        typeOne(window);
        QTRY_COMPARE(keptText(), after.chopped(2));
        setRules(call + " 0 9999 28", recovery());
        window.typeIntoEditor(QStringLiteral("y"));
        QTRY_VERIFY(window.note().contains(QStringLiteral("No space left on device")));
        setRules({});
        QCOMPARE(keptText(), after.chopped(2));
        QVERIFY(namesIn(recovery()).filter(QStringLiteral(".part")).isEmpty());
        window.typeIntoEditor(QStringLiteral("z"));
        QTRY_VERIFY(keptText().startsWith("<a>xyz"));
    }

private:
    QString folder() const { return QFileInfo(path_).path(); }
    QString recovery() const { return folders_->program(QStringLiteral("recovery")); }

    void setRules(const QByteArray &rules, const QString &where = {}) const
    {
        QFile::remove(heldFile());
        if (rules.isEmpty())
            QFile::remove(rulesFile());
        else
            write(rulesFile(), QFile::encodeName(where.isEmpty() ? folder() : where) + '\n' + rules + '\n');
    }

    // Calls that meet these rules wait for as long as this lives.
    class Held
    {
    public:
        Held(const FaultsTest &test, const QByteArray &rules, const QString &where)
            : test_(test), file_(rulesFile())
        {
            test_.setRules(rules, where);
            QVERIFY(file_.open(QIODevice::ReadOnly) && flock(file_.handle(), LOCK_EX) == 0);
        }
        ~Held() { test_.setRules({}); }

    private:
        const FaultsTest &test_;
        QFile file_;
    };

    static void typeOne(Window &window) { window.typeAt(0, 3, "x"); }

    QByteArray keptText() const
    {
        const QDir files(recovery());
        const QString name = files.entryList({QStringLiteral("*.live")}).value(0);
        const document::OpenedCopy opened = document::openCopy(contentOf(files.filePath(name)));
        return opened.whole ? opened.copy.text : QByteArray();
    }

    const QByteArray temporary_ = QFile::encodeName(QDir::tempPath());
    std::unique_ptr<Folders> folders_;
    QString path_;
};

// Started again with the bad disk before everything else.
int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("XE_FAULTS")) {
        const QString rules = QDir::temp().filePath(QStringLiteral("xe-faults-%1").arg(getpid()));
        qputenv("XE_FAULTS", QFile::encodeName(rules));
        qputenv("LD_PRELOAD", XE_FAULTS_LIBRARY);
        execv("/proc/self/exe", argv);
        return 1;
    }
    FaultsTest tests;
    return runWindowTests(argc, argv, tests);
}
#include "faults_test.moc"
