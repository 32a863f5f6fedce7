// Unsaved work outlives the window: however it ends, and whatever the user let go of.
#include "window_fixture.h"

#include "app/recovery.h"
#include "platform/browser/browser_process.h"
#include "platform/dom/verdict.h"
#include "platform/files/file_helpers.h"

#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QProcess>
#include <QRandomGenerator>

#include <cstdio>
#include <filesystem>

using namespace app_test;
using dialogs::Answer;

namespace {

constexpr app::Recovery::Pace atOnce{5, 5, 10};

QString folderOf(const Folders &folders) { return folders.program(QStringLiteral("recovery")); }

qsizetype count(const Folders &folders, const char *suffix)
{
    return QDir(folderOf(folders)).entryList({QLatin1Char('*') + QLatin1String(suffix)}).size();
}

QStringList items(const Window &window)
{
    auto *menu = window.main->findChild<QMenu *>(QStringLiteral("mnurecover"));
    Q_EMIT menu->aboutToShow();
    QStringList lines;
    for (const QAction *action : menu->actions())
        if (action->isEnabled() && !action->isSeparator())
            lines.append(action->text().section(QLatin1Char(' '), 0, 2));
    return lines;
}

void chooseFirst(const Window &window)
{
    window.main->findChild<QMenu *>(QStringLiteral("mnurecover"))->actions().first()->trigger();
}

QByteArray textOf(Window &window) { return window.main->session().saving().currentText(); }

// A window that is gone without having been closed leaves the same behind as a process that was killed.
void editAndVanish(const Folders &folders, const QString &path, const std::function<void(Window &)> &edit)
{
    const qsizetype before = count(folders, ".live");
    Window window(folders, {path});
    window.main->recovery().setPace(atOnce);
    edit(window);
    QTRY_COMPARE(count(folders, ".live"), before + 1);
}

void typeInXmlMode(Window &window, const QString &text) { window.typeAt(0, 3, qPrintable(text)); }

// The process to be killed: types and saves for ever.
int editUntilKilled(int argc, char *argv[])
{
    browser::prepareProcess();
    QApplication application(argc, argv);
    dialogs::ScriptedDialogs dialogs;
    NotedShell shell;
    const QString home = files::programFolder();
    settings::SettingsStore settings(home + QStringLiteral("/settings.ini"));
    const files::UserFolders folders(home);
    app::mainfrm window(app::Outside{dialogs, shell, settings, folders, browser::warmUp()});
    window.recovery().setPace(atOnce);
    window.prelodr(QString::fromLocal8Bit(argv[2]));
    window.show();
    const auto run = [&](const char *name) { window.commands().action(QLatin1String(name))->trigger(); };
    run("mnuxmlmode");
    auto *editor = window.findChild<control::CodeEditor *>(QStringLiteral("CodeMax1"));
    editor->placeCaret(0, 3);
    std::puts("typing");
    std::fflush(stdout);
    for (;;) {
        QTest::keyClicks(editor, QStringLiteral("xyz"));
        QTest::qWait(QRandomGenerator::global()->bounded(12));
        if (QRandomGenerator::global()->bounded(3) == 0)
            run("mnuSave");
    }
}

} // namespace

class RecoveryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The folders of one test are not to be made within those of the one before.
    void init()
    {
        folders_.reset();
        qputenv("TMPDIR", temporary_);
        folders_ = std::make_unique<Folders>();
        // Beside a file of nearly the same path.
        path_ = folders_->document(QStringLiteral("a\\b.xml"));
        write(path_, "<a></a>\n");
        QVERIFY(QDir().mkdir(folders_->document(QStringLiteral("a"))));
        write(folders_->document(QStringLiteral("a/b.xml")), "<other/>");
    }

    void isOfferedAfterACrash_data()
    {
        QTest::addColumn<QString>("typed"); // empty for an edit of the tree
        QTest::addColumn<bool>("isNew");
        QTest::addColumn<int>("tab");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("text") << "x" << false << 1 << QByteArray("<a>x</a>");
        QTest::newRow("faulty text") << "x&" << false << 1 << QByteArray("<a>x&</a>");
        QTest::newRow("tree") << "" << false << 0 << QByteArray("<a><Element/></a>");
        QTest::newRow("new document") << "" << true << 0 << QByteArray();
    }

    void isOfferedAfterACrash()
    {
        QFETCH(QString, typed);
        QFETCH(bool, isNew);
        QFETCH(QByteArray, text);
        editAndVanish(*folders_, isNew ? QString() : path_, [&](Window &window) {
            if (typed.isEmpty())
                window.choose("mnuelement");
            else
                typeInXmlMode(window, typed);
            if (isNew)
                text = textOf(window);
        });
        Window window(*folders_, {}, {Answer::Yes});
        window.main->offerRecovery();
        QVERIFY(window.lastMessage().contains(isNew ? QStringLiteral("New Document") : path_));
        QCOMPARE(window.dialogs.messages().size(), 1);
        QCOMPARE(textOf(window), text);
        QTEST(window.tabs()->currentIndex(), "tab");
        QVERIFY(window.main->isWindowModified());
        QCOMPARE(count(*folders_, ".live"), 1);
        if (isNew)
            return;
        window.choose("mnuSave");
        QCOMPARE(contentOf(path_), text + "\n");
        QTRY_COMPARE(count(*folders_, ".live"), 0);
    }

    void nothingIsLeftWithoutNeed_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<qsizetype>("kept");
        QTest::newRow("saved") << "mnuSave" << Answer::No << false << qsizetype(0);
        QTest::newRow("undone") << "editcmxsub_0" << Answer::No << false << qsizetype(0);
        QTest::newRow("new, saved") << "mnuNew" << Answer::Yes << true << qsizetype(0);
        QTest::newRow("new, given up") << "mnuNew" << Answer::No << true << qsizetype(1);
        QTest::newRow("end, given up") << "mnuexit" << Answer::No << true << qsizetype(1);
    }

    void nothingIsLeftWithoutNeed()
    {
        QFETCH(QString, command);
        QFETCH(Answer, answer);
        QFETCH(bool, asked);
        QFETCH(qsizetype, kept);
        Window window(*folders_, {path_});
        window.main->recovery().setPace(atOnce);
        typeInXmlMode(window, QStringLiteral("x"));
        QTRY_COMPARE(count(*folders_, ".live"), 1);
        if (asked)
            window.dialogs.answer(answer);
        window.choose(qPrintable(command));
        QTRY_COMPARE(count(*folders_, ".live"), 0);
        QTRY_COMPARE(count(*folders_, ".kept"), kept);
    }

    // The system does not wait for answers: what is unsaved is offered at the next start.
    void endedBySystem()
    {
        {
            Window window(*folders_, {path_});
            typeInXmlMode(window, QStringLiteral("x"));
            window.choose("mnupreview");
            QVERIFY(QFile::exists(path_ + u'0'));
            window.main->endAtOnce();
            QVERIFY(window.left);
        }
        QVERIFY(!QFile::exists(path_ + u'0'));
        Window window(*folders_);
        window.dialogs.answer(Answer::Yes);
        window.main->offerRecovery();
        QCOMPARE(textOf(window), "<a>x</a>");
    }

    void whatWasGivenUpComesBack()
    {
        Window window(*folders_, {path_});
        QVERIFY(items(window).isEmpty());
        typeInXmlMode(window, QStringLiteral("x"));
        window.dialogs.answer(Answer::No);
        window.choose("mnuNew");
        QCOMPARE(items(window),
                 (QStringList{QStringLiteral("&1  a\\b.xml"), QStringLiteral("&Delete Kept Texts")}));
        chooseFirst(window);
        QCOMPARE(textOf(window), "<a>x</a>");
        QVERIFY(window.main->isWindowModified());
        QVERIFY(items(window).isEmpty());
        // Given up by another program's change, too.
        write(path_, "<other/>");
        window.main->session().life().reload();
        QCOMPARE(textOf(window), "<other/>");
        QCOMPARE(items(window).size(), 2);
        window.dialogs.answer(Answer::Yes);
        window.main->findChild<QMenu *>(QStringLiteral("mnurecover"))->actions().last()->trigger();
        QVERIFY(items(window).isEmpty());
    }

    void aDismissedSaveAsKeepsTheText()
    {
        Window window(*folders_);
        window.choose("mnuelement");
        window.dialogs.answer(Answer::Yes);
        window.dialogs.answerFile({});
        window.choose("mnuNew");
        QVERIFY(items(window).first().startsWith(QStringLiteral("&1  New")));
    }

    void anAnswerIsAskedForOnce()
    {
        for (const char *name : {"b.xml", "c.xml"}) {
            const QString path = folders_->document(QLatin1String(name));
            write(path, "<a></a>");
            editAndVanish(*folders_, path,
                          [](Window &window) { typeInXmlMode(window, QStringLiteral("y")); });
        }
        QVERIFY(QFile::remove(folders_->document(QStringLiteral("c.xml"))));
        {
            Window window(*folders_, {}, {Answer::Yes});
            window.main->offerRecovery(); // the latest; one document can be open
            QVERIFY(window.lastMessage().contains(QStringLiteral("The file itself is not there.")));
            QCOMPARE(textOf(window), "<a>y</a>");
            window.dialogs.answer(Answer::No);
            QVERIFY(window.main->close());
        }
        {
            Window window(*folders_, {}, {Answer::No});
            window.main->offerRecovery();
            QVERIFY(window.lastMessage().contains(QStringLiteral("b.xml")));
        }
        Window window(*folders_);
        window.main->offerRecovery();
        QCOMPARE(items(window).size(), 3);
    }

    void damagedTextIsNoOffer_data()
    {
        QTest::addColumn<qint64>("size"); // of its file; below 0 what is cut off
        QTest::newRow("cut") << qint64(-2);
        QTest::newRow("blown up") << qint64(5'000'000'000); // which is not read
    }

    void damagedTextIsNoOffer()
    {
        editAndVanish(*folders_, path_, [](Window &window) { typeInXmlMode(window, QStringLiteral("x")); });
        const QDir folder(folderOf(*folders_));
        QFile file(folder.filePath(folder.entryList({QStringLiteral("*.live")}).value(0)));
        QFETCH(qint64, size);
        QVERIFY(file.resize(size < 0 ? file.size() + size : size));
        Window window(*folders_);
        window.main->offerRecovery();
        QVERIFY(window.note().contains(QStringLiteral("damaged")));
        QCOMPARE(items(window).first(), QStringLiteral("&1  (damaged)"));
        if (size > 0)
            return;
        chooseFirst(window);
        QCOMPARE(window.editor()->text(), "<a>x</");
        QVERIFY(window.titleLine().endsWith(QStringLiteral("zelphedit.xml"))); // not to be saved over a.xml
    }

    void killedAnywhere_data()
    {
        QTest::addColumn<bool>("over"); // the file has a second name, and so is written over
        QTest::newRow("replaced") << false;
        QTest::newRow("written over") << true;
    }

    // Killed at any moment: the file is one that was saved, whole, unless it was being written over, which
    // leaves a copy; the copy is whole, if there is one, and at last there was one. XMLEDITOR_KILLS says how
    // often.
    void killedAnywhere()
    {
        QFETCH(bool, over);
        bool given = false;
        const int asked = qEnvironmentVariableIntValue("XMLEDITOR_KILLS", &given);
        const QByteArray filler = QByteArray("<b>text</b>\r\n").repeated(20'000);
        const QByteArray first = "<a>" + filler + "</a>\r\n";
        write(path_, first);
        if (over)
            std::filesystem::create_hard_link(path_.toStdString(), path_.toStdString() + "2");
        const document::RecoveryStore store(folderOf(*folders_));
        int copies = 0;
        int halves = 0;
        qsizetype longest = 0;
        for (int kill = 0; kill < (given ? asked : 8) || (copies == 0 && kill < 100); ++kill) {
            QProcess process;
            process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--edit"), path_});
            QVERIFY(process.waitForReadyRead(60'000));
            QTest::qSleep(QRandomGenerator::global()->bounded(250));
            process.kill();
            QVERIFY(process.waitForFinished());
            QCOMPARE(process.exitStatus(), QProcess::CrashExit);
            const QByteArray saved = contentOf(path_);
            const qsizetype typed = saved.indexOf(filler);
            const bool whole = saved.startsWith("<a>") && saved.endsWith(filler + "</a>\r\n");
            const auto waiting = store.waiting();
            QVERIFY(whole ? typed >= longest && !dom::checkWellFormed(saved) : over && !waiting.isEmpty());
            for (const document::WaitingText &text : waiting) {
                const auto opened = store.open(text);
                QVERIFY(opened && opened->whole && text.abandoned);
                QCOMPARE(opened->copy.head.path, path_);
                QVERIFY(opened->copy.text.endsWith(filler + "</a>")
                        && !dom::checkWellFormed(opened->copy.text));
                QVERIFY(QFile::remove(text.file));
                ++copies;
            }
            halves += int(!whole);
            if (!whole)
                write(path_, first);
            longest = whole ? typed : 0;
        }
        qInfo("%d copies were left behind, %d files half written", copies, halves);
        QVERIFY(copies > 0);
        Window window(*folders_, {path_}); // tidies up
        QCOMPARE(QDir(folderOf(*folders_)).entryList(QDir::Files), QStringList());
        window.choose("mnuSave");
        QCOMPARE(QDir(QFileInfo(path_).path()).entryList(QDir::Files | QDir::Hidden).size(), over ? 2 : 1);
    }

private:
    const QByteArray temporary_ = QFile::encodeName(QDir::tempPath());
    std::unique_ptr<Folders> folders_;
    QString path_;
};

int main(int argc, char *argv[])
{
    if (argc > 2 && qstrcmp(argv[1], "--edit") == 0)
        return editUntilKilled(argc, argv);
    RecoveryTest tests;
    return runWindowTests(argc, argv, tests);
}
#include "recovery_test.moc"
