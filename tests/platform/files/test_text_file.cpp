// Whole files: how they end, what keeps them from being read, and that writing never leaves half a file.
#include "platform/files/atomic_write.h"
#include "platform/files/text_file.h"
#include "tests/platform/files/file_content.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace files;

namespace {

struct stat statusOf(const QString &path)
{
    struct stat status = {};
    lstat(QFile::encodeName(path).constData(), &status);
    return status;
}

QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

// Acts as a user without special rights for a while, where the tests run with them.
class OrdinaryUser
{
public:
    OrdinaryUser() : changed_(geteuid() == 0 && seteuid(nobody) == 0) { }
    ~OrdinaryUser()
    {
        if (changed_ && seteuid(0) != 0)
            qFatal("cannot become the former user again");
    }

    static constexpr uid_t nobody = 65534;

private:
    bool changed_;
};

} // namespace

class TestTextFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(folder_->isValid());
        // The ordinary user must be able to get into the folder.
        QVERIFY(chmod(QFile::encodeName(folder_->path()).constData(), 0777) == 0);
    }

    void endings_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("text");
        const auto stable = [](const char *name, const char *bytes, const char *text) {
            QTest::newRow(name) << QByteArray(bytes) << QByteArray(text);
        };
        stable("CR LF", "a\r\nb\r\n", "a\r\nb");
        stable("LF", "a\nb\n", "a\nb");
        stable("LF in CR LF text", "a\r\nb\n", "a\r\nb");
        stable("CR LF in LF text", "a\nb\r\n", "a\nb");
        stable("empty lines at the end", "a\n\n\n", "a\n\n");
        stable("line ends only", "\r\n\r\n", "\r\n");
        stable("no end", "a", "a");
        stable("no end, LF", "a\nb", "a\nb");
        stable("CR", "a\rb\r", "a\rb");
        stable("LF, then CR", "a\nb\r", "a\nb");
        stable("empty", "", "");
        const QByteArray wide("\xFE\xFF\0<\0a\0/\0>\0\r\0\n", 14);
        QTest::newRow("UTF-16") << wide << QByteArray("<a/>");
    }

    void endings()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, text);
        write(at("a.xml"), bytes);
        const auto loaded = readTextFile(at("a.xml"));
        QVERIFY2(loaded.ok(), qPrintable(loaded.reason()));
        QCOMPARE(loaded->utf8, text);
        const auto written = writeDocumentFile(at("a.xml"), loaded->utf8, loaded->form);
        QVERIFY2(written.ok(), qPrintable(written.reason()));
        QCOMPARE(written->form, loaded->form);
        QCOMPARE(contentOf(at("a.xml")), bytes);
    }

    void unreadable_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << QStringLiteral("none") << QStringLiteral("there is no such file");
        QTest::newRow("folder") << QStringLiteral("folder") << QStringLiteral("it is a folder");
        QTest::newRow("pipe") << QStringLiteral("pipe") << QStringLiteral("it is not a file");
        QTest::newRow("too large") << QStringLiteral("large") << QStringLiteral("it is larger than 2 GiB");
        QTest::newRow("closed") << QStringLiteral("closed") << QStringLiteral("Permission denied");
        QTest::newRow("closed folder") << QStringLiteral("shut/x") << QStringLiteral("Permission denied");
    }

    void unreadable()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("folder")));
        QVERIFY(mkfifo(QFile::encodeName(at("pipe")).constData(), 0666) == 0);
        write(at("large"), "x");
        QVERIFY(QFile::resize(at("large"), (Q_INT64_C(1) << 31)));
        write(at("closed"), "x");
        QVERIFY(chmod(QFile::encodeName(at("closed")).constData(), 0) == 0);
        QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("shut")));
        write(at("shut/x"), "x");
        QVERIFY(chmod(QFile::encodeName(at("shut")).constData(), 0) == 0);
        const OrdinaryUser user;
        const auto loaded = readTextFile(folder_->filePath(name));
        QCOMPARE(loaded.reason(),
                 QStringLiteral("%1 cannot be read: %2.").arg(folder_->filePath(name), reason));
    }

    void lackingCharacterLeavesFile()
    {
        write(at("a.xml"), "old");
        const FileForm form{{"ISO-8859-1", false}, FileEnd::Lf};
        QVERIFY(!writeDocumentFile(at("a.xml"), "<!-- \xE2\x82\xAC -->", form).ok());
        QCOMPARE(contentOf(at("a.xml")), QByteArray("old"));
        QVERIFY(writeTextFile(at("a.xml"), "\xC3\xA4").ok());
        QCOMPARE(contentOf(at("a.xml")), QByteArray("\xC3\xA4\r\n"));
    }

    void replacesKeepingWhatItHad()
    {
        write(at("a.xml"), "old");
        const QByteArray name = QFile::encodeName(at("a.xml"));
        QVERIFY(chmod(name.constData(), 0640) == 0);
        const bool attributes = setxattr(name.constData(), "user.note", "kept", 4, 0) == 0;
        if (geteuid() == 0)
            QVERIFY(chown(name.constData(), OrdinaryUser::nobody, 7) == 0);
        const struct stat before = statusOf(at("a.xml"));
        QVERIFY(writeAtomically(at("a.xml"), "new").ok());
        const struct stat after = statusOf(at("a.xml"));
        QCOMPARE(contentOf(at("a.xml")), QByteArray("new"));
        QVERIFY(after.st_ino != before.st_ino);
        QCOMPARE(after.st_mode, before.st_mode);
        QCOMPARE(after.st_uid, before.st_uid);
        QCOMPARE(after.st_gid, before.st_gid);
        char value[8] = {};
        if (attributes)
            QCOMPARE(getxattr(name.constData(), "user.note", value, sizeof value), ssize_t(4));
        QCOMPARE(namesIn(folder_->path()).size(), 1);
    }

    void newFileFollowsUmask()
    {
        const mode_t former = umask(027);
        const bool written = writeAtomically(at("new"), "x").ok();
        umask(former);
        QVERIFY(written);
        QCOMPARE(statusOf(at("new")).st_mode & 07777, mode_t(0640));
    }

    void followsLinks()
    {
        QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("sub")));
        write(at("sub/real"), "old");
        QVERIFY(QFile::link(QStringLiteral("sub/second"), at("first")));
        QVERIFY(QFile::link(QStringLiteral("real"), at("sub/second")));
        QVERIFY(writeAtomically(at("first"), "new").ok());
        QCOMPARE(contentOf(at("sub/real")), QByteArray("new"));
        QVERIFY(QFile::link(QStringLiteral("sub/fresh"), at("nowhere")));
        QVERIFY(writeAtomically(at("nowhere"), "made").ok());
        QCOMPARE(contentOf(at("sub/fresh")), QByteArray("made"));
        QVERIFY(QFile::link(QStringLiteral("loop"), at("loop")));
        QVERIFY(!writeAtomically(at("loop"), "x").ok());
        for (const char *link : {"first", "sub/second", "nowhere", "loop"})
            QVERIFY2(S_ISLNK(statusOf(at(link)).st_mode), link);
    }

    // What a killed process left goes with the next save; what is another document's or a living one's stays.
    void clearsWhatWasCutShort()
    {
        for (const char *name : {"a", ".xmleditor-0-old-a", ".xmleditor-1-old-a", ".xmleditor-0-new-a",
                                 ".xmleditor-0-old-b", ".xmleditor-2-old-a"})
            write(at(name), "old");
        QFile living(at(".xmleditor-1-old-a"));
        QVERIFY(living.open(QIODevice::ReadOnly) && flock(living.handle(), LOCK_EX) == 0);
        QCOMPARE(leftOfCutShort(at("a")), at(".xmleditor-0-old-a"));
        QVERIFY(writeAtomically(at("a"), "new").ok());
        QCOMPARE(leftOfCutShort(at("a")), QString());
        QCOMPARE(namesIn(folder_->path()),
                 (QStringList{QStringLiteral(".xmleditor-0-old-b"), QStringLiteral(".xmleditor-1-old-a"),
                              QStringLiteral("a")}));
    }

    void anothersFile_data()
    {
        QTest::addColumn<uint>("folderMode");
        QTest::newRow("folder takes no new file") << 0555U;
        QTest::newRow("new file would change the owner") << 0777U;
    }

    // Somebody else's file that may be written, but not replaced, is written over.
    void anothersFile()
    {
        QFETCH(uint, folderMode);
        write(at("a"), "old");
        const struct stat before = statusOf(at("a"));
        QVERIFY(chmod(QFile::encodeName(at("a")).constData(), 0666) == 0);
        QVERIFY(chmod(QFile::encodeName(folder_->path()).constData(), folderMode) == 0);
        {
            const OrdinaryUser user;
            const auto written = writeAtomically(at("a"), "new");
            QVERIFY2(written.ok(), qPrintable(written.reason()));
            QCOMPARE(writeAtomically(at("b"), "new").ok(), folderMode == 0777);
        }
        QVERIFY(chmod(QFile::encodeName(folder_->path()).constData(), 0777) == 0);
        QCOMPARE(contentOf(at("a")), QByteArray("new"));
        QCOMPARE(statusOf(at("a")).st_uid, before.st_uid);
        QCOMPARE(namesIn(folder_->path()).size(), folderMode == 0777 ? 2 : 1);
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("device") << QStringLiteral("/dev/full");
        QTest::newRow("folder") << QStringLiteral("folder");
        QTest::newRow("no folder") << QStringLiteral("none/a");
        QTest::newRow("protected") << QStringLiteral("protected");
        QTest::newRow("nothing") << QString();
    }

    void refuses()
    {
        QFETCH(QString, path);
        QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("folder")));
        write(at("protected"), "old");
        QVERIFY(chmod(QFile::encodeName(at("protected")).constData(), 0444) == 0);
        const OrdinaryUser user;
        const auto written
            = writeAtomically(path.isEmpty() ? path : QDir(folder_->path()).filePath(path), "new");
        QVERIFY(!written.ok());
        QVERIFY2(written.reason().contains(QLatin1String(" cannot be written: ")),
                 qPrintable(written.reason()));
        QCOMPARE(contentOf(at("protected")), QByteArray("old"));
        QCOMPARE(namesIn(folder_->path()).size(), 2);
    }

private:
    QString at(const char *name) const { return folder_->filePath(QString::fromLatin1(name)); }

    std::unique_ptr<QTemporaryDir> folder_;
};

QTEST_GUILESS_MAIN(TestTextFile)
#include "test_text_file.moc"
