// Where the program writes for itself: who may write where, what is put there at first, and windows side by
// side.
#include "platform/files/user_folders.h"
#include "tests/platform/files/file_content.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

// A program folder with the mark of an installed one, or without, and a user's data folder of its own.
struct Place
{
    explicit Place(bool installed)
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(whole.filePath(QStringLiteral("user"))));
        QDir(whole.path()).mkpath(QStringLiteral("program/tdyex"));
        for (const char *name : {"default.tidy", "default2.tidy", "tidy.exe", "proclltidy.exe"})
            write(program() + QStringLiteral("/tdyex/") + QLatin1String(name), name);
        if (installed)
            write(program() + QStringLiteral("/installed"), {});
    }

    QString program() const { return whole.filePath(QStringLiteral("program")); }
    QString user() const { return whole.filePath(QStringLiteral("user/Zelph/Zelph XML Editor")); }

    QTemporaryDir whole;
};

} // namespace

class TestUserFolders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void besideTheProgram()
    {
        const Place place(false);
        const files::UserFolders folders(place.program());
        QCOMPARE(folders.data(), place.program());
        QCOMPARE(folders.exchange(), place.program());
        QVERIFY(!QFileInfo::exists(place.user()));
    }

    void installedForEverybody()
    {
        const Place place(true);
        const QString options = place.user() + QStringLiteral("/tdyex/default.tidy");
        {
            const files::UserFolders folders(place.program());
            QCOMPARE(folders.data(), place.user());
            QVERIFY2(folders.notes().isEmpty(), qPrintable(folders.notes().join(u' ')));
            QCOMPARE(contentOf(options), "default.tidy");
            write(options, "mine");
        }
        // An upgrade moves the programs; the user's options stay.
        write(place.program() + QStringLiteral("/tdyex/tidy.exe"), "newer");
        const files::UserFolders folders(place.program());
        QCOMPARE(contentOf(options), "mine");
        QCOMPARE(contentOf(place.user() + QStringLiteral("/tdyex/tidy.exe")), "newer");
        QCOMPARE(contentOf(place.program() + QStringLiteral("/tdyex/default.tidy")), "default.tidy");
    }

    void everyWindowItsOwnExchange()
    {
        const Place place(true);
        const files::UserFolders first(place.program());
        auto second = std::make_unique<files::UserFolders>(place.program());
        const files::UserFolders third(place.program());
        QCOMPARE(first.exchange(), place.user());
        for (const files::UserFolders *window : {&std::as_const(*second), &third}) {
            QCOMPARE(window->data(), first.data());
            QCOMPARE(contentOf(window->exchange() + QStringLiteral("/tdyex/tidy.exe")), "tidy.exe");
        }
        const QString left = second->exchange();
        QVERIFY(left != first.exchange() && left != third.exchange());
        second.reset();
        QCOMPARE(files::UserFolders(place.program()).exchange(), left);
    }

    void withoutOriginals()
    {
        const Place place(true);
        QDir(place.program() + QStringLiteral("/tdyex")).removeRecursively();
        QVERIFY(!files::UserFolders(place.program()).notes().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestUserFolders)
#include "test_user_folders.moc"
