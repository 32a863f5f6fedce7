// The main window as it is offered: menus, toolbars, shortcuts. What each is called the help tells as well.
#include "window_fixture.h"

#include "app/appearance.h"
#include "app/command_list.h"
#include "app/command_set.h"
#include "app/commands.h"
#include "app/help_window.h"
#include "platform/control/editor_commands.h"

#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>

using namespace app_test;
using namespace Qt::StringLiterals;

namespace {

QStringList shownMenus(const Window &window)
{
    QStringList shown;
    QStringList mnemonics;
    const QList<QAction *> bar = window.main->menuBar()->actions();
    for (const QAction *top : bar) {
        shown.append(top->menu()->objectName());
        mnemonics.append(QKeySequence::mnemonic(top->text()).toString());
    }
    if (mnemonics.removeDuplicates() != 0)
        QTest::qFail("two menus open at one key", __FILE__, __LINE__);
    return shown;
}

// The items of a menu: of a submenu its name, of a separator nothing.
QStringList itemsOf(const QMenu &menu)
{
    QStringList items;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions)
        items.append(action->isSeparator() ? QString()
                         : action->menu()  ? action->menu()->objectName()
                                           : action->objectName());
    return items;
}

} // namespace

class MenusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Every item once, in the menu of its row and in the order of the rows.
    void menusAreTheTable()
    {
        const Window window;
        QMap<QString, QStringList> expected;
        for (const app::Command &row : app::commandTable()) {
            const bool separates = qstrcmp(row.caption, "-") == 0;
            expected[QLatin1String(row.menu)].append(separates ? QString() : QLatin1String(row.name));
        }
        expected.remove({}); // of toolbars alone
        expected[u"mnueditnod1"_s] += // at the pointer
            u" mnuundotag mnuredotag  mnucut mnucopytag mnupastetag mnudeletetag  mnuinsert mnumovetag  "
            u"mnuconverttoattribute  mnuexpand mnucontract mnutagselectedonly"_s.split(u' ');
        for (const auto &[name, items] : expected.asKeyValueRange()) {
            const auto *menu = window.main->findChild<QMenu *>(name);
            QVERIFY2(menu != nullptr, qPrintable(name));
            QVERIFY2(itemsOf(*menu) == items, qPrintable(name + u": "_s + itemsOf(*menu).join(u' ')));
        }
    }

    void menusFollowTheMode()
    {
        Window window;
        QCOMPARE(shownMenus(window).join(u' '), u"mnuFile mnuedittag mnuview mnuinsert mnuhelp"_s);
        QCOMPARE(window.action("mnucomment")->shortcut(), QKeySequence(u"Ctrl+Shift+M"_s));
        window.choose("mnuxmlmode");
        QVERIFY(window.action("mnucomment")->shortcut().isEmpty()); // the editor's own there
        QCOMPARE(shownMenus(window).join(u' '),
                 u"mnuFile editcmx searchcmx mnumacro mnuview mnuinsert mnuhelp"_s);
        window.choose("mnupreview");
        QCOMPARE(shownMenus(window).join(u' '), u"mnuFile mnuview mnuhelp"_s);
    }

    void buttonsShowAndFollowTheirItems()
    {
        const Window window;
        QMap<QString, QMap<int, QString>> expected; // by their places
        for (const app::Command &row : app::commandTable()) {
            if (*row.toolbar == 0)
                continue;
            expected[QLatin1String(row.toolbar)].insert(row.place, QLatin1String(row.key));
            const auto *bar = window.main->findChild<QToolBar *>(QLatin1String(row.toolbar));
            const auto *button = bar->findChild<QToolButton *>(QLatin1String(row.key));
            QVERIFY2(button && !button->toolTip().isEmpty() && !button->icon().isNull(), row.key);
            QAction *item = window.main->commands().action(row);
            QVERIFY2(button->isEnabled() == item->isEnabled(), row.key);
            item->setEnabled(!item->isEnabled());
            QVERIFY2(button->isEnabled() == item->isEnabled(), row.key);
        }
        for (const auto &[name, keys] : expected.asKeyValueRange()) {
            const auto *bar = window.main->findChild<QToolBar *>(name);
            QStringList found;
            for (QAction *action : bar->actions()) {
                if (!action->isSeparator())
                    found.append(bar->widgetForAction(action)->objectName());
            }
            QCOMPARE(found, keys.values());
        }
    }

    void viewsStandOnTheirTabs()
    {
        const Window window;
        QCOMPARE(window.main->windowTitle(), u"New Document[*] - Zelph XML Editor"_s);
        QVERIFY(window.main->findChild<QProgressBar *>()->isHidden());
        int tab = 0;
        for (const QString &view : {u"TreeView1"_s, u"CodeMax1"_s, u"WebBrowser1"_s})
            QVERIFY(window.tabs()->widget(tab++)->isAncestorOf(window.main->findChild<QWidget *>(view)));
    }

    void keysRunTheirCommands()
    {
        Window window;
        QVERIFY(QTest::qWaitForWindowActive(window.main.get()));
        for (const auto &[key, tab] : {std::pair(Qt::Key_F6, 1), {Qt::Key_F7, 2}, {Qt::Key_F5, 0}}) {
            window.tabs()->tabBar()->setFocus();
            QTest::keyClick(window.main.get(), key);
            QCOMPARE(window.tabs()->currentIndex(), tab);
            QVERIFY(!window.tabs()->tabBar()->hasFocus()); // one goes there to work
        }
        window.choose("mnuxmlmode");
        QTest::keyClick(window.editor(), Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(window.left);
    }

    void everyCommandDoesSomething()
    {
        const Window window;
        // A heading above the commands for a selection, not a command.
        QCOMPARE(window.main->findChild<app::CommandSet *>()->unbound(), QStringList{u"editcmxsub_12"_s});
    }

    // By words of its name, whether or not it stands in a menu.
    void everyCommandIsListedAndRuns()
    {
        Window window;
        window.choose("mnuxmlmode");
        window.editor()->loadText("b\na\nc");
        window.editor()->execute(137);
        QSet<QString> listed;
        QTimer::singleShot(0, window.main.get(), [&] {
            auto *list = qobject_cast<app::CommandList *>(QApplication::activeModalWidget());
            auto *rows = list->findChild<QTreeWidget *>();
            for (int row = 0; row < rows->topLevelItemCount(); ++row)
                listed.insert(rows->topLevelItem(row)->text(0) + u'/' + rows->topLevelItem(row)->text(1));
            QCOMPARE(listed.size(), rows->topLevelItemCount()); // and none twice
            QTest::keyClicks(list->findChild<QLineEdit *>(), u"descend sort"_s);
            QTest::keyClick(list->findChild<QLineEdit *>(), Qt::Key_Return);
        });
        window.choose("mnucommands");
        QCOMPARE(window.editor()->text(), QByteArray("c\nb\na"));
        for (const control::EditorCommand &command : control::editorCommands()) {
            const bool inMenu
                = std::any_of(app::commandTable().begin(), app::commandTable().end(),
                              [&](const auto &row) { return row.editorCommand == command.number; });
            QVERIFY2(inMenu || listed.contains(QLatin1String(command.name) + u"/Text in XML Mode"_s),
                     command.name);
        }
    }

    void coloursAreChosenAndKept()
    {
        const Folders folders;
        const auto ground = [] { return QApplication::palette().color(QPalette::Window).lightness(); };
        for (const auto &[item, isDark] : {std::pair("mnudark", true), {"mnulight", false}}) {
            Window window(folders);
            window.choose(item);
            QCOMPARE(ground() < 128, isDark);
            QVERIFY(window.action(item)->isChecked() && !window.action("mnudesktopcolours")->isChecked());
            QCOMPARE(app::chosenAppearance(window.settings).command, item);
        }
        Window window(folders);
        QVERIFY(window.action("mnulight")->isChecked());
        window.choose("mnudesktopcolours");
    }

    void helpHasAWindowOfItsOwn()
    {
        Window window;
        const auto page
            = [&](const QString &name) { return window.folders.program(u"Help/Zelph/"_s + name); };
        window.choose("mnuindex"); // before there are any pages
        QVERIFY(window.note().startsWith(page(u"opens_index_first.htm"_s)));

        const QString pages[] = {u"Zelph.htm"_s, u"opens_index_first.htm"_s, u"opens_search_first.htm"_s};
        QVERIFY(QDir().mkpath(window.folders.program(u"Help/Zelph"_s)));
        for (const QString &name : pages)
            write(page(name), "<title>" + name.toUtf8() + "</title><a href='https://a.example/b'>out</a>");
        const QAction *const items[]
            = {window.action("mnucontenets"), window.action("mnuindex"), window.action("mnuSearch")};
        for (int i = 0; i < 3; ++i) {
            window.choose(items[i]->objectName().toUtf8().constData());
            auto *help = window.main->findChild<app::frmHelp *>();
            QVERIFY(help != nullptr && help->isVisible());
            QTRY_COMPARE_WITH_TIMEOUT(help->windowTitle(), pages[i], 30000);
            QCOMPARE(QFileInfo(help->shownPage()).canonicalFilePath(),
                     QFileInfo(page(pages[i])).canonicalFilePath());
        }
        QVERIFY(window.shell.opened.isEmpty());
        auto *help = window.main->findChild<app::frmHelp *>();
        Q_EMIT help->leftBy(u"https://a.example/b"_s);
        QCOMPARE(window.shell.opened, QStringList{u"https://a.example/b"_s});
        help->findChild<QAction *>(u"helpClose"_s)->trigger();
        QVERIFY(!help->isVisible());
    }
};

APP_TEST_MAIN(MenusTest)
#include "menus_test.moc"
