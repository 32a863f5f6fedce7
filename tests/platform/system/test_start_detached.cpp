#include "platform/system/shell.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestStartDetached : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runsInItsFolder()
    {
        const QString helper = script("#!/bin/sh\necho $# >made.part\nmv made.part made\n");
        QVERIFY(shell::startDetached(helper, folder_.path()).ok());
        QFile made(folder_.filePath(QStringLiteral("made")));
        QTRY_VERIFY(made.exists());
        QVERIFY(made.open(QIODevice::ReadOnly));
        QCOMPARE(made.readAll(), QByteArray("0\n"));
    }

    void failures()
    {
        const QString none = folder_.filePath(QStringLiteral("none"));
        const QString helper = script("#!/bin/sh\n");
        QVERIFY(!shell::startDetached(none, folder_.path()).ok());
        QVERIFY(!shell::startDetached(folder_.path(), folder_.path()).ok());
        QVERIFY(!shell::startDetached(helper, none).ok());
        QVERIFY(QFile::setPermissions(helper, QFile::ReadOwner));
        QVERIFY(!shell::startDetached(helper, folder_.path()).ok());
    }

private:
    QString script(const QByteArray &text)
    {
        QFile file(folder_.filePath(QStringLiteral("helper one.exe")));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            return {};
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return file.fileName();
    }

    QTemporaryDir folder_;
};

QTEST_GUILESS_MAIN(TestStartDetached)
#include "test_start_detached.moc"
