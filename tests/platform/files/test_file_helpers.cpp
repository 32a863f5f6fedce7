#include "platform/files/file_helpers.h"
#include "platform/files/text_file.h"
#include "tests/platform/files/file_content.h"

#include <QDir>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

using namespace files;

class TestFileHelpers : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { qputenv("TMPDIR", tempFolder_); }

    void names_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QString>("parent");
        const auto row = [](const char *path, const char *name, const char *extension, const char *parent) {
            QTest::newRow(path) << QString::fromLatin1(path) << QString::fromLatin1(name)
                                << QString::fromLatin1(extension) << QString::fromLatin1(parent);
        };
        row("/x/a.tar.gz", "a.tar.gz", "gz", "/x");
        row("/x.y\\a.b\\c", "x.y\\a.b\\c", "b\\c", "/");
        row("/x.y/tdyex", "tdyex", "", "/x.y");
        row("/x/a.", "a.", "", "/x");
        row("/x/.b", ".b", "b", "/x");
        row("/x/y/", "y", "", "/x");
        row("/a", "a", "", "/");
        row("a.b", "a.b", "b", "");
        row("/", "", "", "");
        row("", "", "", "");
    }

    void names()
    {
        QFETCH(QString, path);
        QTEST(fileNameOf(path), "name");
        QTEST(extensionOf(path), "extension");
        QTEST(parentFolderOf(path), "parent");
    }

    void exists()
    {
        const QTemporaryDir folder;
        write(folder.filePath(QStringLiteral("a")), {});
        const QString file = joinPath(folder.path(), QStringLiteral("\\a"));
        QCOMPARE(file, folder.path() + QStringLiteral("/a"));
        QVERIFY(!fileExists(folder.path()) && folderExists(folder.path()) && !folderExists(file));
        QVERIFY(deleteIfExists(file) && deleteIfExists(file));
        QVERIFY(!fileExists(file));
    }

    // Here a backslash may be part of a name, whether such a file is there or not. Only suffixes are turned.
    void backslashInName()
    {
        const QTemporaryDir folder;
        const QString other = folder.filePath(QStringLiteral("a/b.c"));
        const QString file = folder.filePath(QStringLiteral("a\\b.c"));
        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("a")));
        write(other, "other");
        QVERIFY(!fileExists(file) && !readTextFile(file) && deleteIfExists(file));
        QCOMPARE(firstFreeNumber(other.chopped(1)), 0);
        QVERIFY(writeTextFile(file, "mine"));
        QCOMPARE(contentOf(other), QByteArray("other"));
        QCOMPARE(contentOf(file), QByteArray("mine\r\n"));
        QVERIFY(createFolder(file + QStringLiteral("\\d")).ok());
        QCOMPARE(QDir(folder.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 2);
        QCOMPARE(joinPath(file, QStringLiteral("\\d\\e")), file + QStringLiteral("/d/e"));
    }

    // Links before ".." are followed, as the system has it.
    void fullPaths()
    {
        const QTemporaryDir folder;
        const QString top = QDir(folder.path()).canonicalPath();
        QVERIFY(QDir(top).mkpath(QStringLiteral("far/away")));
        QVERIFY(QFile::link(QStringLiteral("far/away"), top + QStringLiteral("/l")));
        const auto full
            = [&](const char *path) { return fullPath(top + QLatin1String(path)).mid(top.size()); };
        QCOMPARE(full("/l/../a\\b"), QStringLiteral("/far/a\\b"));
        QCOMPARE(full("/far/../a"), QStringLiteral("/a"));
        QCOMPARE(full("/none/../a"), QStringLiteral("/a"));
        QCOMPARE(full("/l/a"), QStringLiteral("/l/a"));
        QCOMPARE(fullPath(QStringLiteral("a")), QDir::current().filePath(QStringLiteral("a")));
    }

    void nonEmptyLinesOfAnyEnd()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("a"));
        write(file, "one\r\n\r\n two\nthr\xC3\xA4\r\r ");
        const QStringList expected{QStringLiteral("one"), QStringLiteral(" two"), QStringLiteral("thrä"),
                                   QStringLiteral(" ")};
        QCOMPARE(nonEmptyLines(file), expected);
        QCOMPARE(nonEmptyLines(folder.path()), QStringList());
    }

    // Lines are no document: what looks like the beginning of one does not change how they are read.
    void nonEmptyLinesOfAnyBytes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        const QString marked = QString::fromUtf16(u"ä: 1");
        QTest::newRow("wide, marked") << QByteArray("\xFE\xFF\0\xE4\0:\0 \0001", 10) << QStringList{marked};
        QTest::newRow("marked twice")
            << QByteArray("\xEF\xBB\xBF\n\xEF\xBB\xBF\xC3\xA4: 1") << QStringList{marked};
        QTest::newRow("one byte a character") << QByteArray("\xE4: 1") << QStringList{marked};
        QTest::newRow("like wide markup")
            << QByteArray("\0<\0?a", 5) << QStringList{QString::fromUtf16(u"\0<\0?a", 5)};
        const QByteArray declaring("<?xml version='1.0' encoding='ISO-8859-5'?>\xC3\xA4");
        QTest::newRow("declaring") << declaring << QStringList{QString::fromUtf8(declaring)};
    }
    void nonEmptyLinesOfAnyBytes()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("a"));
        QFETCH(QByteArray, bytes);
        write(file, bytes);
        QTEST(nonEmptyLines(file), "lines");
    }

    void firstFreeNumberSkipsFiles()
    {
        const QTemporaryDir folder;
        const QString document = folder.filePath(QStringLiteral("doc.xml"));
        QCOMPARE(firstFreeNumber(document), 0);
        write(document + QStringLiteral("0"), {});
        QVERIFY(QFile::link(QStringLiteral("nowhere"), document + QStringLiteral("1")));
        QVERIFY(QDir().mkdir(document + QStringLiteral("2")));
        write(document + QStringLiteral("4"), {});
        QCOMPARE(firstFreeNumber(document), 3);
    }

    void folders()
    {
        const QTemporaryDir folder;
        const QString made = folder.filePath(QStringLiteral("new"));
        const auto first = createFolder(made + QLatin1Char('/'));
        QVERIFY(first.ok());
        QCOMPARE(*first, made);
        QVERIFY(!createFolder(made).ok());
        QVERIFY(!createFolder(folder.filePath(QStringLiteral("none/new"))).ok());
    }

    void programFolderNamed()
    {
        QCOMPARE(programFolder(), QCoreApplication::applicationDirPath());
        const QTemporaryDir folder;
        qputenv("XMLEDITOR_PROGRAM_FOLDER", QFile::encodeName(folder.path() + QStringLiteral("//")));
        QCOMPARE(programFolder(), folder.path());
        qunsetenv("XMLEDITOR_PROGRAM_FOLDER");
    }

    // Nothing is put into the root of all files for want of the folder that is named.
    void temporaryFolderIsMissing()
    {
        const QTemporaryDir place;
        const QString missing = place.filePath(QStringLiteral("none"));
        const QString file = place.filePath(QStringLiteral("file"));
        write(file, {});
        for (const QString &named : {missing, file}) {
            qputenv("TMPDIR", QFile::encodeName(named));
            const TemporaryFolder found = temporaryFolder();
            QVERIFY(QFileInfo(found.path).isDir() && !QFileInfo(found.path).isRoot());
            QVERIFY(found.note.contains(named) && found.note.contains(found.path));
            QVERIFY(!QFileInfo::exists(missing));
        }
        qputenv("TMPDIR", QFile::encodeName(place.path()));
        QCOMPARE(temporaryFolder().path, QDir(place.path()).canonicalPath());
        QVERIFY(temporaryFolder().note.isEmpty());
    }

    void privateFolder()
    {
        const QTemporaryDir temporary;
        qputenv("TMPDIR", QFile::encodeName(temporary.path()));
        for (int round = 0; round < 2; ++round) {
            const auto folder = privateTempFolder();
            QVERIFY2(folder.ok(), qPrintable(folder.reason()));
            const QByteArray name = QFile::encodeName(*folder);
            struct stat status = {};
            QVERIFY(lstat(name.constData(), &status) == 0);
            QCOMPARE(status.st_mode & 0777, mode_t(0700));
            QVERIFY(chmod(name.constData(), 0777) == 0);
        }
    }

    // Somebody else was there first: a link to a folder, a file, a folder of theirs.
    void privateFolderTaken()
    {
        const QTemporaryDir temporary;
        qputenv("TMPDIR", QFile::encodeName(temporary.path()));
        const QString path = temporary.filePath(QStringLiteral("xmleditor-%1").arg(geteuid()));
        const QByteArray name = QFile::encodeName(path);
        QVERIFY(QFile::link(temporary.path(), path));
        QVERIFY(!privateTempFolder().ok());
        QVERIFY(QFile::remove(path));
        write(path, {});
        QVERIFY(!privateTempFolder().ok());
        QVERIFY(QFile::remove(path));
        if (geteuid() != 0)
            QSKIP("another's folder cannot be made");
        QVERIFY(mkdir(name.constData(), 0700) == 0 && chown(name.constData(), 65534, 65534) == 0);
        const auto folder = privateTempFolder();
        QVERIFY(folder.reason().contains(QLatin1String("belongs to somebody else")));
    }

private:
    const QByteArray tempFolder_ = QFile::encodeName(QDir::tempPath());
};

QTEST_GUILESS_MAIN(TestFileHelpers)
#include "test_file_helpers.moc"
