// Convert in the real window with the real launcher and the real Tidy: broken pages become documents that
// Normal Mode takes, each by one edit that undo takes back.
#include "window_fixture.h"

#include "platform/files/text_file.h"
#include "tidy/frmconvrtr.h"

#include <QComboBox>
#include <QDir>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

using namespace app_test;

namespace {

// Starts what is asked for, so that a run takes place.
class RunningShell : public shell::Shell
{
public:
    platform::Result<void> open(const QString &) override { return {}; }
    platform::Result<void> start(const QString &program, const QString &workingFolder) override
    {
        return shell::startDetached(program, workingFolder);
    }
};

void layOutTidy(const Folders &folders)
{
    for (const char *name : {"proclltidy.exe", "tidy.exe", "default.tidy", "default2.tidy"}) {
        const QString file = QStringLiteral("tdyex/") + QLatin1String(name);
        QVERIFY(QFile::copy(QStringLiteral(XE_PROGRAM_FOLDER "/") + file, folders.program(file)));
    }
}

} // namespace

class TidyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { main_.reset(); } // while there is still an application
    void pages_data();
    void pages();
    void aRunThatFailsKeepsTheText();

private:
    void convert(const QString &from);
    control::CodeEditor &editor()
    {
        return *main_->findChild<control::CodeEditor *>(QStringLiteral("CodeMax1"));
    }
    bool runIsOver() const
    {
        return main_->findChild<QProgressBar *>(QStringLiteral("ProgressBar1"))->isHidden();
    }

    Folders folders_;
    dialogs::ScriptedDialogs dialogs_;
    RunningShell shell_;
    std::unique_ptr<settings::SettingsStore> settings_;
    std::unique_ptr<files::UserFolders> userFolders_;
    std::unique_ptr<app::mainfrm> main_;
};

void TidyTest::initTestCase()
{
    layOutTidy(folders_);
    settings_ = std::make_unique<settings::SettingsStore>(folders_.program(QStringLiteral("settings.ini")));
    userFolders_ = std::make_unique<files::UserFolders>(folders_.program(QString()));
    main_ = std::make_unique<app::mainfrm>(
        app::Outside{dialogs_, shell_, *settings_, *userFolders_, browser::warmUp()});
    main_->prelodr({});
    main_->show();
}

// As a person does it: the menu item, the kind of the code, the button; then the run's end.
void TidyTest::convert(const QString &from)
{
    bool chosen = false;
    QTimer::singleShot(0, main_.get(), [&] {
        auto *box = main_->findChild<tidy::frmconvrtr *>();
        auto *input = box->findChild<QComboBox *>(QStringLiteral("cmbinput"));
        input->setCurrentIndex(input->findText(from, Qt::MatchFixedString));
        chosen = input->currentText().compare(from, Qt::CaseInsensitive) == 0;
        box->findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
    });
    main_->commands().action(QStringLiteral("mnucleancod"))->trigger();
    QVERIFY(chosen);
    QTRY_VERIFY_WITH_TIMEOUT(runIsOver(), 60'000);
}

void TidyTest::pages_data()
{
    QTest::addColumn<QString>("page");
    const QDir pages(QStringLiteral(XE_PAGES));
    for (const QString &name : pages.entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name))
        QTest::newRow(qPrintable(name)) << pages.filePath(name);
}

void TidyTest::pages()
{
    QFETCH(QString, page);
    const auto text = files::readTextFile(page);
    QVERIFY(text);
    main_->commands().action(QStringLiteral("mnuxmlmode"))->trigger();
    editor().loadText(text->utf8);
    convert(QStringLiteral("html"));
    const QByteArray converted = editor().text();
    QVERIFY(converted != text->utf8);
    main_->commands().action(QStringLiteral("mnunormalmod"))->trigger();
    QCOMPARE(main_->session().state().TabTag, document::NormalMode);
    QCOMPARE(main_->session().state().Document.xml(), converted);
    editor().undo();
    QCOMPARE(editor().text(), text->utf8);
    QCOMPARE(dialogs_.unanswered(), QStringList());
}

void TidyTest::aRunThatFailsKeepsTheText()
{
    const QString program = folders_.program(QStringLiteral("tdyex/tidy.exe"));
    QVERIFY(QFile::remove(program));
    main_->commands().action(QStringLiteral("mnuxmlmode"))->trigger();
    editor().loadText("<p>kept");
    convert(QStringLiteral("html"));
    QCOMPARE(editor().text(), QByteArray("<p>kept"));
}

int main(int argc, char *argv[])
{
    TidyTest tests;
    return runWindowTests(argc, argv, tests);
}

#include "tidy_test.moc"
