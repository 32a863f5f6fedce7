// Convert in the real window with the real launcher and the real Tidy: broken pages become documents that
// Normal Mode takes, each by one edit that undo takes back.
#include "window_fixture.h"

#include "platform/files/text_file.h"
#include "tidy/frmconvrtr.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

using namespace app_test;
using namespace Qt::StringLiterals;

namespace {

// Starts what is asked for, so that a run takes place.
class RunningShell : public shell::Shell
{
public:
    platform::Result<void> open(const QString &) override { return {}; }
    shell::StartedHelper start(const QString &program, const QString &workingFolder) override
    {
        return shell::startHelper(program, workingFolder);
    }
    platform::Result<void> openWindow(const QString &) override { return {}; }
};

void layOutTidy(const Folders &folders)
{
    for (const char *name :
         {"proclltidy.exe", "tidy.exe", "transformer.exe", "default.tidy", "default2.tidy"}) {
        const QString file = u"tdyex/"_s + QLatin1String(name);
        QVERIFY(QFile::copy(QStringLiteral(XE_PROGRAM_FOLDER "/") + file, folders.program(file)));
    }
}

} // namespace

class TidyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        layOutTidy(folders_);
        settings_ = std::make_unique<settings::SettingsStore>(folders_.program(u"settings.ini"_s));
        userFolders_ = std::make_unique<files::UserFolders>(folders_.program(QString()));
        main_ = std::make_unique<app::mainfrm>(
            app::Outside{dialogs_, shell_, *settings_, *userFolders_, browser::warmUp()});
        main_->prelodr(QString());
        main_->show();
    }

    void cleanupTestCase() { main_.reset(); } // while there is still an application

    void pages()
    {
        const QDir pages(QStringLiteral(XE_PAGES));
        const QStringList names = pages.entryList({u"*.html"_s}, QDir::Files, QDir::Name);
        QVERIFY(!names.isEmpty());
        for (const QString &name : names) {
            const auto text = files::readTextFile(pages.filePath(name));
            QVERIFY2(text, qPrintable(name));
            choose("mnuxmlmode");
            editor().loadText(text->utf8);
            convert();
            const QByteArray converted = editor().text();
            QVERIFY2(converted != text->utf8, qPrintable(name));
            choose("mnunormalmod");
            QVERIFY2(main_->session().state().TabTag == document::NormalMode, qPrintable(name));
            QCOMPARE(main_->session().state().Document.xml(), converted);
            editor().undo();
            QCOMPARE(editor().text(), text->utf8);
            QCOMPARE(dialogs_.unanswered(), QStringList());
        }
    }

    // What Tidy makes of one document never gets into another.
    void anotherDocument()
    {
        choose("mnuxmlmode");
        editor().loadText("<p>former");
        startConversion(u"html"_s);
        QVERIFY(!runIsOver());
        dialogs_.answer(dialogs::Answer::No);
        choose("mnuNew");
        QVERIFY(runIsOver());
        QVERIFY2(note().contains(u"given up"_s), qPrintable(note()));
        QCOMPARE(messages().topLevelItemCount(), 0);
    }

    void normalModeMeanwhile()
    {
        for (const bool changed : {false, true}) {
            const QByteArray text = "<a><b>1</b><c/></a>";
            choose("mnuxmlmode");
            editor().replaceText(text);
            startConversion(u"xml"_s);
            choose("mnunormalmod");
            QVERIFY2(note().contains(u"at work"_s), qPrintable(note()));
            QTRY_VERIFY_WITH_TIMEOUT(runIsOver(), 60'000);
            QCOMPARE(main_->session().state().Document.xml(), text);
            if (changed)
                choose("mnuelement");
            choose("mnuxmlmode");
            QVERIFY2(editor().text().contains("<c />") == !changed, qPrintable(note()));
            QCOMPARE(editor().text().contains("<Element"), changed);
        }
    }

    // What a style sheet makes is a new document; the one it was made of comes back with its name, its
    // changes and its file as it was.
    void transformation()
    {
        const QString path = folders_.document(u"a.xml"_s);
        const QString sheet = folders_.document(u"a.xsl"_s);
        write(path, "<r>x</r>");
        write(
            sheet,
            "<html xsl:version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'><head><title>t</title>"
            "</head><body><xsl:message>said</xsl:message><p><xsl:value-of select='/r'/></p></body></html>");
        choose("mnuxmlmode");
        editor().loadText("<another/>");
        dialogs_.answer(dialogs::Answer::No);
        main_->session().life().openPath(path);
        choose("mnuxmlmode");
        editor().replaceText("<r>changed</r>");
        startTransformation(sheet);
        QTRY_VERIFY_WITH_TIMEOUT(main_->session().files().istmppath(), 60'000);
        QVERIFY(editor().text().contains("<p>changed</p>"));
        QVERIFY2(main_->windowTitle().startsWith(u"a.html"_s), qPrintable(main_->windowTitle()));
        QVERIFY2(note().contains(u"Undo leads back"_s), qPrintable(note()));
        QCOMPARE(messages().topLevelItem(0)->text(2), u"a.xsl, line 1: said"_s);
        const qsizetype asked = dialogs_.files().size();
        dialogs_.answerFile({});
        choose("mnuSave");
        QCOMPARE(dialogs_.files().size(), asked + 1);
        QCOMPARE(dialogs_.files().last().proposed, folders_.document(u"a.html"_s));
        choose("mnupreview");
        choose("mnunormalmod");
        QCOMPARE(main_->session().state().CurrentFilePath.contains(u"a.xml"_s), false);
        choose("mnuxmlmode");
        editor().undo();
        QCOMPARE(editor().text(), QByteArray("<r>changed</r>"));
        QCOMPARE(main_->session().state().CurrentFilePath, path);
        QVERIFY(main_->isWindowModified());
        QCOMPARE(contentOf(path), QByteArray("<r>x</r>"));
        editor().undo();
        QTRY_VERIFY(!main_->isWindowModified());
        QCOMPARE(dialogs_.left(), 0);
    }

    // The text is edited, or the wait is over, before Tidy is done.
    void whileItRuns()
    {
        auto *stop = main_->findChild<QToolButton *>(u"cmdcanceltidy"_s);
        auto *use = main_->findChild<QToolButton *>(u"cmdtidyresult"_s);
        choose("mnuxmlmode");
        editor().loadText("<a><b/></a>");
        QVERIFY(stop->isHidden() && use->isHidden());
        for (const bool key : {true, false}) {
            startConversion(u"xml"_s);
            QVERIFY(stop->isVisible());
            if (key)
                QTest::keyClick(&editor(), Qt::Key_Escape);
            else
                stop->click();
            QVERIFY(runIsOver() && stop->isHidden());
            QVERIFY2(note().contains(u"cancelled"_s), qPrintable(note()));
        }
        startConversion(u"xml"_s);
        editor().replaceText("<a>typed<b/></a>");
        QTRY_VERIFY_WITH_TIMEOUT(runIsOver(), 60'000);
        QCOMPARE(editor().text(), QByteArray("<a>typed<b/></a>"));
        QVERIFY(use->isVisible());
        use->click();
        QVERIFY2(editor().text().contains("<b />"), editor().text().constData());
        QVERIFY(use->isHidden());
    }

    // A message leads into the text that it is about, and into no other.
    void places()
    {
        choose("mnuxmlmode");
        editor().loadText("<title>t</title>\n<p>one\n\t\xC3\xA9<q></p>");
        convert();
        choose("mnutidymessages");
        QCOMPARE(main_->focusWidget(), &messages());
        const QList<QTreeWidgetItem *> found
            = messages().findItems(u"missing </q>"_s, Qt::MatchStartsWith, 2);
        QCOMPARE(found.size(), 1);
        messages().setCurrentItem(found.first());
        QTest::keyClick(&messages(), Qt::Key_Return);
        QVERIFY2(note().contains(u"Undo"_s), qPrintable(note()));
        editor().undo();
        QTest::keyClick(&messages(), Qt::Key_Return);
        QCOMPARE(editor().caretLine(), 2);
        QCOMPARE(editor().caretColumn(), 2);
    }

    void aRunThatFailsKeepsTheText()
    {
        QVERIFY(QFile::remove(folders_.program(u"tdyex/tidy.exe"_s)));
        choose("mnuxmlmode");
        editor().loadText("<p>kept");
        convert();
        QCOMPARE(editor().text(), QByteArray("<p>kept"));
        QCOMPARE(note(), u"Tidy cannot be started; the text stays as it is."_s);
        QCOMPARE(messages().topLevelItem(0)->text(0), u"Error"_s);
    }

private:
    void choose(const char *command) { main_->commands().action(QLatin1String(command))->trigger(); }

    // As a person does it: the menu item, the kind of the code, the button; then the run's end.
    void convert()
    {
        startConversion(u"html"_s);
        QTRY_VERIFY_WITH_TIMEOUT(runIsOver(), 60'000);
    }

    void startConversion(const QString &kind)
    {
        bool chosen = false;
        QTimer::singleShot(0, main_.get(), [&] {
            auto *box = main_->findChild<tidy::frmconvrtr *>();
            box->findChild<QRadioButton *>(u"optjob0"_s)->click();
            box->findChild<QComboBox *>(u"cmboutput"_s)->setCurrentIndex(0);
            auto *input = box->findChild<QComboBox *>(u"cmbinput"_s);
            input->setCurrentIndex(input->findText(kind, Qt::MatchFixedString));
            chosen = input->currentText().compare(kind, Qt::CaseInsensitive) == 0;
            box->findChild<QPushButton *>(u"OKButton"_s)->click();
        });
        choose("mnucleancod");
        QVERIFY(chosen);
    }

    void startTransformation(const QString &sheet)
    {
        QTimer::singleShot(0, main_.get(), [&] {
            auto *box = main_->findChild<tidy::frmconvrtr *>();
            box->findChild<QRadioButton *>(u"optjob1"_s)->click();
            box->findChild<QLineEdit *>(u"txtfile1"_s)->setText(sheet);
            box->findChild<QPushButton *>(u"OKButton"_s)->click();
        });
        choose("mnucleancod");
    }

    QTreeWidget &messages() { return *main_->findChild<QTreeWidget *>(u"lstmessages"_s); }
    QString note() const { return main_->findChild<QLabel *>(u"Note"_s)->text(); }
    control::CodeEditor &editor() { return *main_->findChild<control::CodeEditor *>(u"CodeMax1"_s); }
    bool runIsOver() const { return main_->findChild<QProgressBar *>(u"ProgressBar1"_s)->isHidden(); }

    Folders folders_;
    dialogs::ScriptedDialogs dialogs_;
    RunningShell shell_;
    std::unique_ptr<settings::SettingsStore> settings_;
    std::unique_ptr<files::UserFolders> userFolders_;
    std::unique_ptr<app::mainfrm> main_;
};

APP_TEST_MAIN(TidyTest)
#include "tidy_test.moc"
