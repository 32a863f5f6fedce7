// One document's life, driven through the real window as a user would.
#include "window_fixture.h"

#include "app/dependency_check.h"
#include "app/splash.h"

#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>

using namespace app_test;
using dialogs::Answer;
using namespace Qt::StringLiterals;

namespace {

const QByteArray newText = "<?xml version=\"1.0\"?>\r\n<Element/>";

const QString titleStart = u"Zelph XML Editor - "_s;

} // namespace

class LifeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void openEditSave()
    {
        Window window;
        QVERIFY(window.titleLine().startsWith(titleStart) && !window.action("mnuSave")->isEnabled());
        const QString path = window.folders.document(u"a.xml"_s);
        write(path, "<a>\n<b/>\n</a>\n");
        window.dialogs.answerFile(path);
        window.choose("mnuOpen");
        QCOMPARE(window.treeRoot(), u"a"_s);
        QCOMPARE(window.titleLine(), titleStart + path);
        window.choose("mnuxmlmode");
        QCOMPARE(window.editor()->text(), QByteArray("<a>\n<b/>\n</a>"));
        window.typeAt(1, 2, " c='1'");
        window.choose("mnunormalmod");
        window.choose("mnuSave");
        QCOMPARE(contentOf(path), QByteArray("<a>\n<b c='1'/>\n</a>\n"));
        window.choose("mnuNew"); // asks nothing: it was saved
        QCOMPARE(window.treeRoot(), u"Element"_s);
    }

    void faultyTextKeepsTheUserInXmlMode()
    {
        Window window;
        window.typeAt(0, 0, "<oops>");
        window.dialogs.answer(Answer::Ok);
        window.choose("mnunormalmod");
        QCOMPARE(window.tabs()->currentIndex(), 1);
        QVERIFY(window.lastMessage().startsWith(u"Error!\r\n\r\nPossible Reason:  "_s));
        QVERIFY(window.editor()->highlightedLine() >= 0);
        QCOMPARE(window.main->focusWidget(), window.editor());
        QVERIFY(!window.action("mnuxmlmode")->isEnabled() && window.action("mnunormalmod")->isEnabled());

        window.editor()->placeCaret(0, 0);
        for (int sign = 0; sign < 6; ++sign)
            QTest::keyClick(window.editor(), Qt::Key_Delete);
        QCOMPARE(window.editor()->highlightedLine(), -1);
        window.choose("mnunormalmod");
        QCOMPARE(window.tabs()->currentIndex(), 0);
        QCOMPARE(window.main->session().state().Document.xml(), newText);
    }

    void previewAndBack()
    {
        Window window("p.xml", "<p/>\r\n");
        window.choose("mnupreview");
        QCOMPARE(contentOf(window.path + u'0'), QByteArray("<p/>\r\n"));
        QVERIFY(!window.action("mnupreview")->isEnabled());
        window.choose("mnuxmlmode");
        QCOMPARE(window.editor()->text(), QByteArray("<p/>"));
        window.choose("mnupreview");
        window.choose("mnunormalmod");
        QCOMPARE(window.treeRoot(), u"p"_s);
        window.main->close();
        QVERIFY(!QFileInfo::exists(window.path + u'0') && QFileInfo::exists(window.path));
    }

    void saveAsAsksBeforeOverwriting()
    {
        Window window;
        const QString taken = window.folders.document(u"taken.xml"_s);
        const QString free = window.folders.document(u"free.xml"_s);
        write(taken, "mine");
        window.dialogs.answerFile(taken);
        window.dialogs.answer(Answer::No);
        window.dialogs.answerFile(free);
        window.choose("mnuSaveas");
        QCOMPARE(window.lastMessage(), u"taken.xml already exits, would you like to overwrite it?"_s);
        QCOMPARE(contentOf(taken), QByteArray("mine"));
        QCOMPARE(contentOf(free), newText + "\r\n");
        QCOMPARE(window.titleLine(), titleStart + free);
        window.dialogs.answerFile(taken);
        window.dialogs.answer(Answer::Yes);
        window.choose("mnuSaveas");
        QCOMPARE(contentOf(taken), newText + "\r\n");
    }

    // Leaving clears up what is the program's own, staying touches nothing.
    void saveQuestion()
    {
        for (const Answer answer : {Answer::Yes, Answer::No, Answer::Cancel}) {
            Window window("q.xml", "<q/>\r\n");
            window.typeAt(0, 2, " ");
            window.choose("mnupreview");
            QStringList own{window.path + u'0'};
            for (const char *name : {"tdyex/d.txt", "tdyex/o.txt", "tdyex/i.txt", "tdyex/f.txt"})
                own.append(window.folders.program(QLatin1String(name)));
            for (const QString &file : own)
                write(file, "x");

            const bool left = answer != Answer::Cancel;
            window.dialogs.answer(answer);
            window.main->close();
            QCOMPARE(window.lastMessage(), u"Save changes to q.xml?"_s);
            QCOMPARE(window.left, left);
            QCOMPARE(window.main->isVisible(), !left);
            QCOMPARE(contentOf(window.path), QByteArray(answer == Answer::Yes ? "<q />\r\n" : "<q/>\r\n"));
            for (const QString &file : own)
                QCOMPARE(QFileInfo::exists(file), !left);
        }
    }

    void newDocumentIsSavedAs()
    {
        Window window;
        const QString path = window.folders.document(u"n.xml"_s);
        window.typeAt(0, 0, "<!---->");
        window.dialogs.answer(Answer::Yes);
        window.dialogs.answerFile(path);
        window.main->close();
        QCOMPARE(window.lastMessage(), u"Save changes to New Document?"_s);
        QCOMPARE(contentOf(path), "<!---->" + newText + "\r\n");
    }

    // %1 is the folder.
    void commandLine()
    {
        const std::tuple<QStringList, QString, int, int> rows[] = {
            {{u"%1/with two blanks.xml"_s}, u"named"_s, 0, 0},
            {{u"\"%1/with two blanks.xml\""_s}, u"named"_s, 0, 0},
            {{u"%1/with"_s, u"two"_s, u"blanks.xml"_s}, u"named"_s, 0, 0},
            {{u"%1/faulty.xml"_s}, u"Element"_s, 1, 1},
            {{u"%1/missing.xml"_s}, u"Element"_s, 0, 1},
        };
        for (const auto &[given, root, tab, reports] : rows) {
            const Folders folders;
            write(folders.document(u"with two blanks.xml"_s), "<named/>");
            write(folders.document(u"faulty.xml"_s), "<a>\n<b></a>");
            QStringList arguments = given;
            arguments.replaceInStrings(u"%1"_s, folders.document(u"."_s).chopped(2));
            const Window window(folders, arguments, QList<Answer>(reports, Answer::Ok));
            QCOMPARE(window.treeRoot(), root);
            QCOMPARE(window.tabs()->currentIndex(), tab);
            QCOMPARE(window.titleLine().endsWith(u"zelphedit.xml"_s), root == u"Element");
            if (tab == 1)
                QCOMPARE(window.editor()->text(), QByteArray("<a>\n<b></a>"));
        }
    }

    void dropOpensAfterTheQuestion()
    {
        Window window;
        const QString path = window.folders.document(u"dropped.xml"_s);
        write(path, "<dropped/>");
        window.typeAt(0, 0, " ");
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        window.dialogs.answer(Answer::No);
        QCoreApplication::sendEvent(window.editor()->viewport(), &enter);
        QVERIFY(enter.isAccepted());
        QCoreApplication::sendEvent(window.editor()->viewport(), &drop);
        QVERIFY(drop.isAccepted());
        QTRY_COMPARE(window.treeRoot(), u"dropped"_s);
        QCOMPARE(window.tabs()->currentIndex(), 0);
    }

    void lineHistoryButtons()
    {
        Window window;
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
        Window window;
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

    // Whatever the size, a view lies within its page, below the toolbars, and uses nearly all of it; the
    // views of the other tabs keep the size they had.
    void viewsFillTheirPages()
    {
        Window window;
        const auto viewOf = [&window](int tab) {
            const QString names[] = {u"TreeView1"_s, u"CodeMax1"_s, u"WebBrowser1"_s};
            return window.main->findChild<QWidget *>(names[tab]);
        };
        for (const int tab : {0, 1, 2}) {
            window.main->resize(900, 700);
            window.tabs()->setCurrentIndex(tab);
            const QWidget *shown = viewOf(tab);
            const QWidget *other = viewOf(tab == 1 ? 0 : 1);
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

    void splashHandsOverOnceAndOnlyAWholeProgram()
    {
        const Folders folders;
        for (const bool whole : {false, true}) {
            if (whole)
                for (QString entry : app::requiredEntries().mid(1))
                    write(folders.program(entry.replace(u'\\', u'/')), {});
            dialogs::ScriptedDialogs dialogs;
            dialogs.answer(Answer::Ok);
            int handed = 0;
            app::frmSplash splash(dialogs, folders.program({}).chopped(1), [&] { ++handed; });
            splash.show();
            QCOMPARE(splash.findChild<QListWidget *>(u"List1"_s)->count(), 5);
            QTRY_VERIFY(splash.findChild<QLabel *>(u"Label3"_s)->text() != u"XML"_s);
            QTRY_COMPARE_WITH_TIMEOUT(handed + dialogs.messages().size(), 1, 20000);
            QCOMPARE(handed, int(whole));
            QVERIFY(!splash.isVisible());
            if (!whole)
                QCOMPARE(dialogs.messages()[0].text,
                         app::missingMessage(folders.program(u"tdyex/default2.tidy"_s)));
        }
    }
};

APP_TEST_MAIN(LifeTest)
#include "life_test.moc"
