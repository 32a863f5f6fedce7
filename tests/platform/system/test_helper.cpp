// Helpers: started where they should be, and gone when they should be.
#include "platform/system/shell.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

bool isRunning(qint64 process)
{
    QFile state(u"/proc/%1/stat"_s.arg(process));
    return state.open(QIODevice::ReadOnly) && !state.readAll().contains(") Z ");
}

} // namespace

class TestHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runsInItsFolder()
    {
        const auto helper
            = shell::startHelper(script("echo $# >made.part\nmv made.part made\n"), folder_.path());
        QVERIFY(helper.ok());
        QFile made(folder_.filePath(u"made"_s));
        QTRY_VERIFY(made.exists());
        QVERIFY(made.open(QIODevice::ReadOnly));
        QCOMPARE(made.readAll(), QByteArray("0\n"));
        QTRY_VERIFY((*helper)->hasEnded());
    }

    void failures()
    {
        const QString none = folder_.filePath(u"none"_s);
        const QString helper = script("");
        QVERIFY(!shell::startHelper(none, folder_.path()).ok());
        QVERIFY(!shell::startHelper(folder_.path(), folder_.path()).ok());
        QVERIFY(!shell::startHelper(helper, none).ok());
        QVERIFY(QFile::setPermissions(helper, QFile::ReadOwner));
        QVERIFY(!shell::startHelper(helper, folder_.path()).ok());
    }

    // What it started goes with it.
    void endsWithItsObject()
    {
        auto helper = shell::startHelper(
            script("sleep 1000 &\necho $$ $! >ids.part\nmv ids.part ids\nwait\n"), folder_.path());
        QVERIFY(helper.ok());
        const QList<qint64> processes = idsIn(u"ids"_s);
        QCOMPARE(processes.size(), 2);
        QVERIFY(!(*helper)->hasEnded() && isRunning(processes[0]) && isRunning(processes[1]));
        (*helper).reset();
        for (const qint64 process : processes)
            QTRY_VERIFY(!isRunning(process));
    }

    // This very test is started once more, to start a helper and be killed.
    void endsWithAProgramThatIsKilled()
    {
        QVERIFY(!script("echo $$ >orphan.part\nmv orphan.part orphan\nexec sleep 1000\n").isEmpty());
        QProcess program;
        program.setWorkingDirectory(folder_.path());
        program.start(QCoreApplication::applicationFilePath(), {u"--start-and-wait"_s});
        QVERIFY(program.waitForStarted());
        const QList<qint64> processes = idsIn(u"orphan"_s);
        QCOMPARE(processes.size(), 1);
        QVERIFY(isRunning(processes[0]));
        program.kill();
        QVERIFY(program.waitForFinished());
        QTRY_VERIFY(!isRunning(processes[0]));
    }

private:
    QString script(const QByteArray &text)
    {
        QFile file(folder_.filePath(u"helper one.exe"_s));
        const QByteArray whole = "#!/bin/sh\n" + text;
        if (!file.open(QIODevice::WriteOnly) || file.write(whole) != whole.size())
            return {};
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return file.fileName();
    }

    QList<qint64> idsIn(const QString &name)
    {
        QFile file(folder_.filePath(name));
        QList<qint64> ids;
        if (!QTest::qWaitFor([&] { return file.exists(); }, 60'000) || !file.open(QIODevice::ReadOnly))
            return ids;
        for (const QByteArray &id : file.readAll().simplified().split(' '))
            ids << id.toLongLong();
        return ids;
    }

    QTemporaryDir folder_;
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (QCoreApplication::arguments().contains(u"--start-and-wait"_s)) {
        const auto helper = shell::startHelper(u"helper one.exe"_s, u"."_s);
        return helper ? QCoreApplication::exec() : 1;
    }
    TestHelper test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_helper.moc"
