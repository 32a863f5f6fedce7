// What people expect of the window around a document: the mark of a change, the documents opened last, a file
// that another program changes, and where the caret is.
#include "window_fixture.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>

using namespace app_test;
using dialogs::Answer;

namespace {

QString panel(const Window &window, const char *name)
{
    const auto *shown = window.main->findChild<QWidget *>(QString::fromLatin1(name));
    return shown->isHidden() ? QString() : shown->property("text").toString();
}

QStringList recentItems(const Window &window)
{
    QStringList items;
    const auto *menu = window.main->findChild<QMenu *>(QStringLiteral("mnurecent"));
    for (const QAction *action : menu->actions())
        if (!action->isSeparator())
            items.append(action->text().section(QLatin1Char(' '), 0, 2));
    return items;
}

// A file is told from its former self by its time too, which some file systems keep by the second.
void replaceBehindTheBack(const QString &path, const QByteArray &content)
{
    write(path, content);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime));
}

} // namespace

class DocumentHabitsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changesAreMarked()
    {
        Window window("a.xml", "<a>\r\n<b/></a>\r\n");
        QCOMPARE(window.main->windowTitle(), QStringLiteral("a.xml[*] - Zelph XML Editor"));
        QVERIFY(!window.main->isWindowModified());
        window.choose("mnuxmlmode");
        QVERIFY(!window.main->isWindowModified());
        window.typeAt(0, 3, "x");
        QVERIFY(window.main->isWindowModified());
        window.choose("editcmxsub_0");
        QTRY_VERIFY(!window.main->isWindowModified());
        window.typeIntoEditor(QStringLiteral("y"));
        window.choose("mnuSave");
        QVERIFY(!window.main->isWindowModified());
    }

    void placeAndFormAreShown()
    {
        Window window("a.xml", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<a/>\n");
        QCOMPARE(panel(window, "CaretPlace"), QString());
        window.choose("mnuxmlmode");
        window.editor()->placeCaret(1, 2);
        QTRY_COMPARE(panel(window, "CaretPlace"), QStringLiteral("Line 2, column 3"));
        QCOMPARE(panel(window, "Encoding"), QStringLiteral("ISO-8859-1"));
        QCOMPARE(panel(window, "LineEnd"), QStringLiteral("LF"));
        for (const auto &[declaration, shown] : {std::pair("encoding='utf-16'", "UTF-16LE with mark"),
                                                 {"", "UTF-8"},
                                                 {"encoding='none'", "none (unknown)"}}) {
            window.editor()->replaceText(QByteArray("<?xml version='1.0' ") + declaration + "?>\n<a/>");
            QTRY_COMPARE(panel(window, "Encoding"), QString::fromLatin1(shown));
        }
    }

    // What is chosen at the encoding happens to the document and its file.
    void encodingIsChosen()
    {
        Window window("a.xml", "<?xml version='1.0' encoding='ISO-8859-5'?>\n<a>\xC1</a>\n");
        const auto choose = [&](const char *menu, const char *encoding) {
            auto *shown = window.main->findChild<QMenu *>(QString::fromLatin1(menu));
            Q_EMIT shown->aboutToShow();
            const QList<QAction *> items = shown->findChildren<QAction *>();
            for (QAction *item : items)
                if (item->text() == QLatin1String(encoding))
                    item->trigger();
        };
        choose("mnusavewith", "UTF-8 with mark");
        QCOMPARE(panel(window, "Encoding"), QStringLiteral("UTF-8 with mark"));
        QCOMPARE(contentOf(window.path),
                 QByteArray("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?>\n<a>\xD0\xA1</a>\n"));
        window.dialogs.answer(Answer::Ok);
        choose("mnureopenwith", "KOI8-R");
        QCOMPARE(panel(window, "Encoding"), QStringLiteral("KOI8-R"));
        QVERIFY(window.lastMessage().startsWith(QStringLiteral("Error!")));
        QTest::mouseClick(window.main->findChild<QToolButton *>(QStringLiteral("Encoding")), Qt::LeftButton);
        QCOMPARE(QApplication::activePopupWidget()->actions().size(), 2);
        QApplication::activePopupWidget()->close();
    }

    // One that was only named has nothing to be opened yet.
    void firstSavingMakesADocument()
    {
        const Folders folders;
        Window window(folders, {folders.document(QStringLiteral("new.xml"))});
        QCOMPARE(recentItems(window), QStringList{QStringLiteral("&Clear List")});
        QVERIFY(!window.main->isWindowModified());
        window.choose("mnuSave");
        QCOMPARE(recentItems(window).first(), QStringLiteral("&1  new.xml"));
    }

    void lastDocumentsAreOffered()
    {
        const Folders folders;
        for (const char *name : {"one&two.xml", "b\\c.xml"})
            write(folders.document(QString::fromLatin1(name)), "<a/>");
        {
            Window first(folders, {folders.document(QStringLiteral("one&two.xml"))});
            first.main->session().life().openPath(folders.document(QStringLiteral("b\\c.xml")));
            QVERIFY(first.settings.flush());
        }
        Window second(folders);
        QCOMPARE(recentItems(second),
                 (QStringList{QStringLiteral("&1  b\\c.xml"), QStringLiteral("&2  one&&two.xml"),
                              QStringLiteral("&Clear List")}));
        auto *menu = second.main->findChild<QMenu *>(QStringLiteral("mnurecent"));
        menu->actions().at(1)->trigger();
        QVERIFY(second.titleLine().endsWith(QStringLiteral("one&two.xml")));
        QVERIFY(recentItems(second).first().startsWith(QStringLiteral("&1  one&&two.xml")));
        menu->actions().at(1)->trigger();
        QVERIFY(second.titleLine().endsWith(QStringLiteral("/b\\c.xml")));
        menu->actions().last()->trigger();
        Q_EMIT menu->aboutToShow();
        QCOMPARE(recentItems(second), QStringList{QStringLiteral("&Clear List")});
    }

    void otherProgramsAreNoticed_data()
    {
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<QString>("command"); // that comes before the watch does
        QTest::addColumn<QByteArray>("root"); // shown afterwards
        QTest::addColumn<bool>("marked");
        QTest::newRow("loaded again") << Answer::Yes << "" << QByteArray("other") << false;
        QTest::newRow("kept") << Answer::No << "" << QByteArray("mine") << true;
        QTest::newRow("not saved") << Answer::Yes << "mnuSave" << QByteArray("other") << false;
        QTest::newRow("saved over") << Answer::No << "mnuSave" << QByteArray("mine") << false;
        QTest::newRow("not ended") << Answer::Yes << "mnuexit" << QByteArray("other") << false;
    }

    void otherProgramsAreNoticed()
    {
        QFETCH(Answer, answer);
        QFETCH(QString, command);
        QFETCH(QByteArray, root);
        Window window("a.xml", "<mine/>");
        QVERIFY(QTest::qWaitForWindowActive(window.main.get()));
        const bool ends = command == QStringLiteral("mnuexit");
        if (ends) {
            window.choose("mnuelement");
            window.dialogs.answer(Answer::Yes); // save?
        }
        window.dialogs.answer(answer);
        replaceBehindTheBack(window.path, "<other/>");
        if (!command.isEmpty())
            window.choose(qPrintable(command));
        QTRY_COMPARE(window.dialogs.messages().size(), ends ? 2 : 1);
        QVERIFY(
            window.lastMessage().startsWith(QStringLiteral("a.xml has been changed by another program.")));
        QVERIFY(!window.left);
        QCOMPARE(window.treeRoot().toUtf8().replace('<', "").replace('>', ""), root);
        QTEST(window.main->isWindowModified(), "marked");
        // Nobody else changed it since, so that nothing is asked.
        window.choose("mnuSave");
        QCOMPARE(contentOf(window.path), '<' + root + "/>");
        QVERIFY(window.main->close());
    }

    // Written anew with the same content is not changed.
    void theSameContentIsNotAskedAbout()
    {
        Window window("a.xml", "<mine/>\r\n");
        QVERIFY(QTest::qWaitForWindowActive(window.main.get()));
        window.choose("mnuelement");
        replaceBehindTheBack(window.path, "<mine/>\r\n");
        window.choose("mnuSave");
        QCOMPARE(contentOf(window.path), "<mine><Element/></mine>\r\n");
        QVERIFY(window.dialogs.messages().isEmpty());
    }

    void aVanishedFileIsTold()
    {
        Window window("a.xml", "<mine/>");
        QVERIFY(QTest::qWaitForWindowActive(window.main.get()));
        QVERIFY(QFile::remove(window.path));
        QTRY_VERIFY(window.note().contains(QStringLiteral("no longer there")));
        QVERIFY(window.main->isWindowModified());
        window.choose("mnuSave");
        QCOMPARE(contentOf(window.path), "<mine/>");
        QVERIFY(QFile::remove(window.path));
        window.choose("mnuSave");
        QVERIFY(window.note().contains(QStringLiteral("was written anew")));
        QCOMPARE(contentOf(window.path), "<mine/>");
    }

    void aRenamedFileIsFollowed()
    {
        Window window("a.xml", "<mine/>");
        QVERIFY(QTest::qWaitForWindowActive(window.main.get()));
        window.choose("mnuelement");
        const QString renamed = window.folders.document(QStringLiteral("b.xml"));
        write(window.folders.document(QStringLiteral("copy.xml")), "<mine/>");
        window.dialogs.answer(dialogs::Answer::Yes);
        QVERIFY(QFile::rename(window.path, renamed));
        QTRY_VERIFY(window.titleLine().endsWith(renamed));
        QVERIFY(window.main->isWindowModified());
        window.choose("mnuSave");
        QCOMPARE(contentOf(renamed), "<mine><Element/></mine>");
        QVERIFY(!QFile::exists(window.path));
    }

    // Its folder is not made anew: the document goes elsewhere.
    void aVanishedFolderIsTold()
    {
        const Folders folders;
        const QString folder = folders.document(QStringLiteral("d"));
        QVERIFY(QDir().mkdir(folder));
        const QString path = folder + QStringLiteral("/a.xml");
        write(path, "<mine/>");
        Window window(folders, {path});
        QVERIFY(QTest::qWaitForWindowActive(window.main.get()));
        QVERIFY(QDir(folder).removeRecursively());
        QTRY_VERIFY(window.note().contains(QStringLiteral("nor is its folder")));
        window.choose("mnuelement"); // the note is not for this command to take away
        QVERIFY(window.note().contains(QStringLiteral("nor is its folder")));
        window.dialogs.answer(Answer::No);
        window.choose("mnuSave");
        QVERIFY(window.lastMessage().contains(QStringLiteral("its folder does not exist")));
        QCOMPARE(window.dialogs.messages().last().icon, dialogs::Icon::Exclamation);
        QVERIFY(window.main->isWindowModified() && window.note().startsWith(QStringLiteral("Not saved: ")));
        const QString other = folders.document(QStringLiteral("b.xml"));
        window.dialogs.answer(Answer::Yes);
        window.dialogs.answerFile(other);
        window.choose("mnuSave");
        QCOMPARE(contentOf(other), "<mine><Element/></mine>");
        QVERIFY(!window.main->isWindowModified() && window.note().isEmpty());
    }
};

APP_TEST_MAIN(DocumentHabitsTest)
#include "document_habits_test.moc"
