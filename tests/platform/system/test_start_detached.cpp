#include "platform/system/shell.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestStartDetached : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runsInItsFolder();
    void failures();

private:
    QString script(const QByteArray &text)
    {
        QString path = folder_.filePath(QStringLiteral("helper one.exe"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return {};
        file.write(text);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }

    QTemporaryDir folder_;
};

void TestStartDetached::runsInItsFolder()
{
    const QString helper = script("#!/bin/sh\necho $# >made.part\nmv made.part made\n");
    const auto started = shell::startDetached(helper, folder_.path());
    QVERIFY2(started.ok(), qPrintable(started.reason()));
    QTRY_VERIFY(QFile::exists(folder_.filePath(QStringLiteral("made"))));
    QFile made(folder_.filePath(QStringLiteral("made")));
    QVERIFY(made.open(QIODevice::ReadOnly));
    QCOMPARE(made.readAll(), QByteArray("0\n"));
}

void TestStartDetached::failures()
{
    QVERIFY(!shell::startDetached(folder_.filePath(QStringLiteral("none")), folder_.path()).ok());
    QVERIFY(!shell::startDetached(folder_.path(), folder_.path()).ok());
    const QString helper = script("#!/bin/sh\n");
    QVERIFY(!shell::startDetached(helper, folder_.filePath(QStringLiteral("none"))).ok());
    QVERIFY(QFile::setPermissions(helper, QFile::ReadOwner));
    QVERIFY(!shell::startDetached(helper, folder_.path()).ok());
}

QTEST_GUILESS_MAIN(TestStartDetached)
#include "test_start_detached.moc"
