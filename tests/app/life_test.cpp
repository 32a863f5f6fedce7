// One document's life, driven through the real window as a user would.
#include "window_fixture.h"

#include "app/dependency_check.h"
#include "app/splash.h"

#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QSignalSpy>

using namespace app_test;
using dialogs::Answer;

namespace {

const QByteArray newText = "<?xml version=\"1.0\"?>\r\n<Element/>";

QString s(const char *text) { return QString::fromUtf8(text); }

} // namespace

class LifeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newDocumentAtStart()
    {
        const Folders folders;
        Window window(folders);
        QCOMPARE(window.treeRoot(), s("Element"));
        QVERIFY(window.titleLine().startsWith(s("Zelph XML Editor - "))
                && window.titleLine().endsWith(s("zelphedit.xml")));
        QVERIFY(!window.action("mnuSave")->isEnabled());
        window.main->close();
        QVERIFY(window.left);
    }

    void openEditSave()
    {
        const Folders folders;
        const QString path = folders.document(s("a.xml"));
        write(path, "<a>\n<b/>\n</a>\n");
        Window window(folders);
        window.dialogs.answerFile(path);
        window.choose("mnuOpen");
        QCOMPARE(window.treeRoot(), s("a"));
        QCOMPARE(window.titleLine(), s("Zelph XML Editor - ") + path);
        window.choose("mnuxmlmode");
        QCOMPARE(window.editor()->text(), QByteArray("<a>\n<b/>\n</a>"));
        window.editor()->placeCaret(1, 2);
        window.typeIntoEditor(s(" c='1'"));
        window.choose("mnunormalmod");
        window.choose("mnuSave");
        QCOMPARE(contentOf(path), QByteArray("<a>\n<b c='1'/>\n</a>\n"));
        window.choose("mnuNew"); // asks nothing: it was saved
        QCOMPARE(window.treeRoot(), s("Element"));
    }

    void faultyTextKeepsTheUserInXmlMode()
    {
        const Folders folders;
        Window window(folders);
        window.choose("mnuxmlmode");
        window.typeIntoEditor(s("<oops>"));
        window.dialogs.answer(Answer::Ok);
        window.choose("mnunormalmod");
        QCOMPARE(window.tabs()->currentIndex(), 1);
        QVERIFY(window.lastMessage().startsWith(s("Error!\r\n\r\nPossible Reason:  ")));
        QVERIFY(window.editor()->highlightedLine() >= 0);
        QCOMPARE(window.main->focusWidget(), window.editor());
        QVERIFY(!window.action("mnuxmlmode")->isEnabled() && window.action("mnunormalmod")->isEnabled());

        QTest::keyClick(window.editor(), Qt::Key_Home, Qt::ControlModifier);
        for (int sign = 0; sign < 6; ++sign)
            QTest::keyClick(window.editor(), Qt::Key_Delete);
        QCOMPARE(window.editor()->highlightedLine(), -1);
        window.choose("mnunormalmod");
        QCOMPARE(window.tabs()->currentIndex(), 0);
        QCOMPARE(window.main->session().state().Document.xml(), newText);
    }

    void previewAndBack()
    {
        const Folders folders;
        const QString path = folders.document(s("p.xml"));
        write(path, "<p/>\r\n");
        Window window(folders, {path});
        window.choose("mnupreview");
        QCOMPARE(contentOf(path + s("0")), QByteArray("<p/>\r\n"));
        QVERIFY(!window.action("mnupreview")->isEnabled());
        window.choose("mnuxmlmode");
        QCOMPARE(window.editor()->text(), QByteArray("<p/>"));
        window.choose("mnupreview");
        window.choose("mnunormalmod");
        QCOMPARE(window.treeRoot(), s("p"));
        window.main->close();
        QVERIFY(!QFileInfo::exists(path + s("0")) && QFileInfo::exists(path));
    }

    void saveAsAsksBeforeOverwriting()
    {
        const Folders folders;
        const QString taken = folders.document(s("taken.xml"));
        const QString free = folders.document(s("free.xml"));
        write(taken, "mine");
        Window window(folders);
        window.dialogs.answerFile(taken);
        window.dialogs.answer(Answer::No);
        window.dialogs.answerFile(free);
        window.choose("mnuSaveas");
        QCOMPARE(window.lastMessage(), s("taken.xml already exits, would you like to overwrite it?"));
        QCOMPARE(contentOf(taken), QByteArray("mine"));
        QCOMPARE(contentOf(free), newText + "\r\n");
        QCOMPARE(window.titleLine(), s("Zelph XML Editor - ") + free);
        window.dialogs.answerFile(taken);
        window.dialogs.answer(Answer::Yes);
        window.choose("mnuSaveas");
        QCOMPARE(contentOf(taken), newText + "\r\n");
    }

    void saveQuestion_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("left");
        QTest::addColumn<bool>("saved");
        QTest::newRow("Yes") << int(Answer::Yes) << true << true;
        QTest::newRow("No") << int(Answer::No) << true << false;
        QTest::newRow("Cancel") << int(Answer::Cancel) << false << false;
    }

    // Leaving clears up what is the program's own, staying touches nothing.
    void saveQuestion()
    {
        QFETCH(int, answer);
        QFETCH(bool, left);
        const Folders folders;
        const QString path = folders.document(s("q.xml"));
        write(path, "<q/>\r\n");
        Window window(folders, {path});
        window.choose("mnuxmlmode");
        window.editor()->placeCaret(0, 2);
        window.typeIntoEditor(s(" "));
        window.choose("mnupreview");
        const QStringList exchanged{s("tdyex/d.txt"), s("tdyex/o.txt"), s("tdyex/i.txt"), s("tdyex/f.txt")};
        for (const QString &name : exchanged)
            write(folders.program(name), "x");

        window.dialogs.answer(Answer(answer));
        window.main->close();
        QCOMPARE(window.lastMessage(), s("Save changes to q.xml?"));
        QCOMPARE(window.left, left);
        QCOMPARE(window.main->isVisible(), !left);
        QTEST(contentOf(path) == "<q />\r\n", "saved");
        for (const QString &name : exchanged)
            QCOMPARE(QFileInfo::exists(folders.program(name)), !left);
        QCOMPARE(QFileInfo::exists(path + s("0")), !left);
    }

    void newDocumentIsSavedAs()
    {
        const Folders folders;
        const QString path = folders.document(s("n.xml"));
        Window window(folders);
        window.choose("mnuxmlmode");
        window.typeIntoEditor(s("<!---->"));
        window.dialogs.answer(Answer::Yes);
        window.dialogs.answerFile(path);
        window.main->close();
        QCOMPARE(window.lastMessage(), s("Save changes to New Document?"));
        QCOMPARE(contentOf(path), "<!---->" + newText + "\r\n");
    }

    void commandLine_data()
    {
        QTest::addColumn<QStringList>("arguments"); // %1 is the folder
        QTest::addColumn<QString>("root");
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("reports");
        QTest::newRow("with blanks") << QStringList{s("%1/with two blanks.xml")} << "named" << 0 << 0;
        QTest::newRow("quoted") << QStringList{s("\"%1/with two blanks.xml\"")} << "named" << 0 << 0;
        QTest::newRow("split") << QStringList{s("%1/with"), s("two"), s("blanks.xml")} << "named" << 0 << 0;
        QTest::newRow("faulty") << QStringList{s("%1/faulty.xml")} << "Element" << 1 << 1;
        QTest::newRow("missing") << QStringList{s("%1/missing.xml")} << "Element" << 0 << 1;
    }

    void commandLine()
    {
        QFETCH(QStringList, arguments);
        const Folders folders;
        write(folders.document(s("with two blanks.xml")), "<named/>");
        write(folders.document(s("faulty.xml")), "<a>\n<b></a>");
        for (QString &argument : arguments)
            argument.replace(s("%1"), QFileInfo(folders.document(s("x"))).path());
        QFETCH(int, reports);
        const Window window(folders, arguments, QList<Answer>(reports, Answer::Ok));
        QTEST(window.treeRoot(), "root");
        QTEST(window.tabs()->currentIndex(), "tab");
        QCOMPARE(window.titleLine().endsWith(s("zelphedit.xml")), window.treeRoot() == s("Element"));
        if (window.tabs()->currentIndex() == 1)
            QCOMPARE(window.editor()->text(), QByteArray("<a>\n<b></a>"));
    }

    void dropOpensAfterTheQuestion()
    {
        const Folders folders;
        const QString path = folders.document(s("dropped.xml"));
        write(path, "<dropped/>");
        Window window(folders);
        window.choose("mnuxmlmode");
        window.typeIntoEditor(s(" "));
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        window.dialogs.answer(Answer::No);
        QCoreApplication::sendEvent(window.editor()->viewport(), &enter);
        QVERIFY(enter.isAccepted());
        QCoreApplication::sendEvent(window.editor()->viewport(), &drop);
        QVERIFY(drop.isAccepted());
        QTRY_COMPARE(window.treeRoot(), s("dropped"));
        QCOMPARE(window.tabs()->currentIndex(), 0);
    }

    void lineHistoryButtons()
    {
        const Folders folders;
        Window window(folders);
        window.choose("mnuxmlmode");
        QVERIFY(!window.action("searchcmxsub_13")->isEnabled()
                && !window.action("searchcmxsub_12")->isEnabled());
        window.editor()->setFocus();
        QTest::keyClick(window.editor(), Qt::Key_Down);
        QVERIFY(window.action("searchcmxsub_13")->isEnabled());
        window.choose("searchcmxsub_13");
        QCOMPARE(window.editor()->caretLine(), 0);
        QVERIFY(window.action("searchcmxsub_12")->isEnabled()
                && !window.action("searchcmxsub_13")->isEnabled());
        window.choose("searchcmxsub_12");
        QCOMPARE(window.editor()->caretLine(), 1);
    }

    void editorCommands()
    {
        const Folders folders;
        Window window(folders);
        window.choose("mnuxmlmode");
        QVERIFY(!window.action("editcmxsub_0")->isEnabled() && !window.action("editcmxsub_3")->isEnabled());
        window.choose("editcmxsub_7"); // select all
        QVERIFY(window.action("editcmxsub_3")->isEnabled());
        window.choose("mnuselced_0"); // upper case
        QCOMPARE(window.editor()->text(), newText.toUpper());
        window.choose("editcmxsub_0");
        QCOMPARE(window.editor()->text(), newText);
        QVERIFY(window.action("editcmxsub_1")->isEnabled());
        window.choose("editcmxsub_11");
        QVERIFY(window.editor()->whiteSpaceShown() && window.action("editcmxsub_11")->isChecked());
        window.choose("editcmxsub_11");
        QVERIFY(!window.editor()->whiteSpaceShown() && !window.action("editcmxsub_11")->isChecked());
    }

    void viewsFillTheirPages_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("view");
        QTest::newRow("normal") << 0 << "TreeView1";
        QTest::newRow("xml") << 1 << "CodeMax1";
        QTest::newRow("preview") << 2 << "WebBrowser1";
    }

    // Whatever the size, a view lies within its page, below the toolbars, and uses nearly all of it; the
    // views of the other tabs keep the size they had.
    void viewsFillTheirPages()
    {
        QFETCH(int, tab);
        QFETCH(QString, view);
        const Folders folders;
        Window window(folders);
        window.tabs()->setCurrentIndex(tab);
        const auto *shown = window.main->findChild<QWidget *>(view);
        const auto *other = window.main->findChild<QWidget *>(tab == 1 ? s("TreeView1") : s("CodeMax1"));
        const QSize before = other->size();
        for (const QSize size : {QSize(1100, 760), QSize(640, 420)}) {
            window.main->resize(size);
            const QWidget *page = window.tabs()->currentWidget();
            QTRY_VERIFY(page->rect().contains(QRect(shown->mapTo(page, QPoint()), shown->size())));
            QVERIFY(shown->width() >= page->width() - 8);
            QVERIFY(shown->mapTo(page, QPoint(0, shown->height())).y() >= page->height() - 16);
            QCOMPARE(other->size(), before);
        }
    }

    void placeIsRemembered()
    {
        const Folders folders;
        QSize chosen(800, 500);
        {
            Window window(folders);
            window.main->resize(chosen);
            window.main->close();
        }
        const Window again(folders);
        QCOMPARE(again.main->size(), chosen);
    }

    void splashHandsOverOnce()
    {
        const Folders folders;
        dialogs::ScriptedDialogs dialogs;
        int handed = 0;
        for (const QString &entry : app::requiredEntries().mid(1))
            write(folders.program(QString(entry).replace(QLatin1Char('\\'), QLatin1Char('/'))), {});
        app::frmSplash splash(dialogs, folders.program({}).chopped(1), [&] { ++handed; });
        splash.show();
        QCOMPARE(splash.size(), splash.findChild<QLabel *>(s("Picture1"))->size());
        QCOMPARE(splash.findChild<QListWidget *>(s("List1"))->count(), 5);
        QTRY_VERIFY(splash.findChild<QLabel *>(s("Label3"))->text() != s("XML"));
        QTRY_COMPARE_WITH_TIMEOUT(handed, 1, 20000);
        QVERIFY(!splash.isVisible());
    }

    void splashReportsWhatIsMissing()
    {
        const Folders folders;
        dialogs::ScriptedDialogs dialogs;
        dialogs.answer(Answer::Ok);
        bool handed = false;
        app::frmSplash splash(dialogs, folders.program({}).chopped(1), [&] { handed = true; });
        splash.show();
        QTRY_COMPARE_WITH_TIMEOUT(dialogs.messages().size(), 1, 20000);
        QVERIFY(dialogs.messages()[0].icon == dialogs::Icon::Critical
                && dialogs.messages()[0].buttons == dialogs::Buttons::Ok);
        QCOMPARE(dialogs.messages()[0].text, app::missingMessage(folders.program(s("tdyex/default2.tidy"))));
        QVERIFY(!handed && !splash.isVisible());
    }
};

int main(int argc, char *argv[])
{
    LifeTest tests;
    return runWindowTests(argc, argv, tests);
}
#include "life_test.moc"
