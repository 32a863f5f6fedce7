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
        QVERIFY(window.titleLine().startsWith(titleStart));
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
        // Which has no file to be saved to.
        const QString other = window.folders.document(u"b.xml"_s);
        window.dialogs.answerFile(other);
        window.choose("mnuSave");
        QCOMPARE(contentOf(other), newText + "\r\n");
        QCOMPARE(window.titleLine(), titleStart + other);
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

    // %1 is the folder.
    void commandLine()
    {
        const std::tuple<QStringList, QString, QString, int> rows[] = {
            {{u"%1/with two blanks.xml"_s}, u"with two blanks.xml"_s, u"named"_s, 0},
            {{u"\"%1/with two blanks.xml\""_s}, u"with two blanks.xml"_s, u"named"_s, 0},
            {{u"%1/with"_s, u"two"_s, u"blanks.xml"_s}, u"with two blanks.xml"_s, u"named"_s, 0},
            {{u"%1/faulty.xml"_s}, u"faulty.xml"_s, {}, 1},
            {{u"%1/missing.xml"_s}, u"missing.xml"_s, u"Element"_s, 0},
            {{u"%1"_s}, u"zelphedit.xml"_s, u"Element"_s, 1},
        };
        for (const auto &[given, name, root, reports] : rows) {
            const Folders folders;
            write(folders.document(u"with two blanks.xml"_s), "<named/>");
            write(folders.document(u"faulty.xml"_s), "<a>\n<b></a>");
            QStringList arguments = given;
            arguments.replaceInStrings(u"%1"_s, folders.document(u"."_s).chopped(2));
            Window window(folders, arguments, QList<Answer>(reports, Answer::Ok));
            QCOMPARE(window.treeRoot(), root);
            QCOMPARE(window.titleLine().section(u'/', -1), name);
            QCOMPARE(window.tabs()->currentIndex(), int(root.isEmpty()));
            if (name == u"zelphedit.xml")
                continue;
            if (root.isEmpty())
                QCOMPARE(window.editor()->text(), QByteArray("<a>\n<b></a>"));
            const QByteArray text = window.main->session().saving().currentText();
            window.choose("mnuSave");
            QVERIFY(contentOf(folders.document(name)).startsWith(text));
        }
    }

    void dropOpensAfterTheQuestion()
    {
        Window window;
        const QString path = window.folders.document(u"dropped.xml"_s);
        write(path, "<dropped/>");
        window.typeAt(0, 0, " ");
        QMimeData data;
        const QString second = window.folders.document(u"second.xml"_s);
        const QString folder = QFileInfo(path).path();
        data.setUrls({QUrl::fromLocalFile(folder), QUrl::fromLocalFile(path), QUrl::fromLocalFile(second)});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        window.dialogs.answer(Answer::No);
        QCoreApplication::sendEvent(window.editor()->viewport(), &enter);
        QVERIFY(enter.isAccepted());
        QCoreApplication::sendEvent(window.editor()->viewport(), &drop);
        QVERIFY(drop.isAccepted());
        QTRY_COMPARE(window.treeRoot(), u"dropped"_s);
        QCOMPARE(window.tabs()->currentIndex(), 0);
        QTRY_VERIFY(window.note().contains(folder));
        QCOMPARE(window.shell.opened, QStringList{u"window "_s + second});
    }

    // Whatever the size, a view lies within its page, below the toolbars, and uses nearly all of it.
    void viewsFillTheirPages()
    {
        Window window;
        for (const int tab : {0, 1, 2}) {
            window.tabs()->setCurrentIndex(tab);
            const QString names[] = {u"TreeView1"_s, u"CodeMax1"_s, u"WebBrowser1"_s};
            const auto *shown = window.main->findChild<QWidget *>(names[tab]);
            for (const QSize size : {QSize(1100, 760), QSize(640, 420)}) {
                window.main->resize(size);
                const QWidget *page = window.tabs()->currentWidget();
                QTRY_VERIFY(page->rect().contains(QRect(shown->mapTo(page, QPoint()), shown->size())));
                QVERIFY(shown->width() >= page->width() - 8);
                QVERIFY(shown->mapTo(page, QPoint(0, shown->height())).y() >= page->height() - 16);
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
            if (whole)
                QTest::keyClick(&splash, Qt::Key_Space); // who knows the program need not wait
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
