// The main window as it is offered: menus, toolbars, names, shortcuts.
#include "window_fixture.h"

#include "app/commands.h"

#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

using namespace app_test;

namespace {

// One line an item: name, caption; indented by depth.
void describe(const QMenu &menu, const QString &indent, QStringList &lines)
{
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions) {
        const QString name = action->menu() ? action->menu()->objectName() : action->objectName();
        const QString caption = action->isSeparator() ? QStringLiteral("-") : action->text();
        lines.append(QStringLiteral("%1%2 %3").arg(indent, name, caption).trimmed());
        lines.last().prepend(indent);
        if (action->menu())
            describe(*action->menu(), indent + QStringLiteral("  "), lines);
    }
}

const char *const wholeTree = R"(mnuFile &File
  mnuNew &New
  mnuOpen &Open...
  -
  mnuSave &Save
  mnuSaveas Save &As...
  -
  mnuexit E&xit
  -
  mnurecent &Recent Documents
    &Clear List
  mnurecover Recover &Text
    &Delete Kept Texts
mnueditnod1 &Edit Node
  mnueditnod &Edit Node
  -
  mnucopytag &Copy
  mnupastetag &Paste
  mnudeletetag &Delete
  -
  mnuinsert &Insert
    mnuelement Element
    mnutext Text
    -
    mnucdata CDATA
    mnucomment Comment
    mnupi Processing Instruction
    -
    mnuQuicktag Quick Tags
  mnumovetag Move Tag...
    mnumoveup Move Up
    mnumovedown Move Down
    mnumoveleft Move Left
    mnumoveright Move Right
  -
  mnuconverttoattribute Convert to Attribute
mnuedittag &Edit
  mnueditnod4 &Edit Node
  -
  mnucopytag &Copy
  mnupastetag &Paste
  mnudeletetag &Delete
  -
  mnuexpand Expand
  mnucontract Collapse
  mnutagselectedonly Smart Select
  -
  mnumovetag Move Tag...
    mnumoveup Move Up
    mnumovedown Move Down
    mnumoveleft Move Left
    mnumoveright Move Right
  -
  mnuconverttoattribute Convert to Attribute
  -
  mnuundotag &Undo
  mnuredotag &Redo
editcmx &Edit
  editcmxsub_0 &Undo
  editcmxsub_1 &Redo
  editcmxsub_2 -
  editcmxsub_3 &Cut
  editcmxsub_4 C&opy
  editcmxsub_5 &Paste
  editcmxsub_6 &Delete
  editcmxsub_7 &Select All
  editcmxsub_8 -
  editcmxsub_9 Increase Indent
  editcmxsub_10 Decrease Indent
  editcmxsub_11 Show &White Spaces
  editcmxsub_12 Format Selection
  mnuselced_0 Upper Case Selection
  mnuselced_1 Lower Case Selection
  mnuselced_2 -
  mnuselced_3  Replaces tabs with spaces
  mnuselced_4  Replace spaces with tabs
  editcmxsub_13 -
  editcmxsub_14 &Editor Options
searchcmx &Search
  searchcmxsub_0 &Find
  searchcmxsub_1 Find &Next
  searchcmxsub_2 Find &Previous
  searchcmxsub_3 &Replace
  searchcmxsub_4 -
  searchcmxsub_5 &Goto Line...
  searchcmxsub_6 -
  searchcmxsub_7 &Toggle Bookmark
  searchcmxsub_8 &Next Bookmark
  searchcmxsub_9 &Previous Bookmark
  searchcmxsub_10 &Clear Bookmarks
  searchcmxsub_11 -
  searchcmxsub_12 Next &Line
  searchcmxsub_13 Previous L&ine
  searchcmxsub_14 -
  searchcmxsub_15 Count &All
mnumacro &Tools
  mnuchlxmler Check for Errors
  -
  mnucleancod Convert and Tidy
  mnuCleaningOptions Convert and Tidy Options
  -
  mnumacrop Macro
    createmac Create Macro
    savmac &Save Macro's
    runmac Run Macro
      mac_1 Macro 1
      mac_2 Macro 2
      mac_3 Macro 3
      mac_4 Macro 4
      mac_5 Macro 5
      mac_6 Macro 6
      mac_7 Macro 7
      mac_8 Macro 8
      mac_9 Macro 9
      mac_10 Macro 10
    -
    mnuRepeatCount Repeat Count
  -
  mnutidymessages Tidy Messages
mnuview &View
  mnunormalmod Normal Mode
  mnuxmlmode XML Mode
  mnupreview Preview
  -
  mnuAssignedfilePre Assigned file Preview
mnuinsert &Insert
  mnuelement Element
  mnutext Text
  -
  mnucdata CDATA
  mnucomment Comment
  mnupi Processing Instruction
  -
  mnuQuicktag Quick Tags
mnuhelp &Help
  mnucontenets &Contents...
  mnuindex &Index...
  mnuSearch Search...
  -
  mnuabout &About - Zelph XML Editor...)";

} // namespace

class MenusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void menuTree()
    {
        const Folders folders;
        const Window window(folders);
        QStringList lines;
        const QList<QAction *> bar = window.main->menuBar()->actions();
        for (const QAction *top : bar) {
            lines.append(QStringLiteral("%1 %2").arg(top->menu()->objectName(), top->text()));
            describe(*top->menu(), QStringLiteral("  "), lines);
        }
        QCOMPARE(lines, QString::fromUtf8(wholeTree).split(QLatin1Char('\n')));
    }

    void menusFollowTheMode_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("shown");
        QTest::newRow("normal") << QString() << "mnuFile mnuedittag mnuview mnuinsert mnuhelp";
        QTest::newRow("xml") << "mnuxmlmode"
                             << "mnuFile editcmx searchcmx mnumacro mnuview mnuinsert mnuhelp";
        QTest::newRow("preview") << "mnupreview"
                                 << "mnuFile mnuview mnuhelp";
    }

    void menusFollowTheMode()
    {
        QFETCH(QString, command);
        const Folders folders;
        Window window(folders);
        if (!command.isEmpty())
            window.choose(qPrintable(command));
        QStringList shown;
        const QList<QAction *> bar = window.main->menuBar()->actions();
        for (const QAction *top : bar) {
            if (top->isVisible())
                shown.append(top->menu()->objectName());
        }
        QTEST(shown.join(QLatin1Char(' ')), "shown");
    }

    void toolbars_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::newRow("Toolbar1") << "New1 Open1 Save1 | normal xnlm preview asign";
        QTest::newRow("Toolbar2")
            << "expand contract smartselect | up down left right | copy paste Delete1 |";
        QTest::newRow("Toolbar5") << "element text comment cdata pi | elementtoattribute | tooleditnode";
        QTest::newRow("tBar") << "undo redo | cut copy paste delete | tabl tabr | find findnext findprev | "
                                 "tbmark nbmark pbmark cbmark | pline nline | prop";
        QTest::newRow("Toolbar3") << "back forward refreash";
    }

    void toolbars()
    {
        const Folders folders;
        const Window window(folders);
        const auto *bar = window.main->findChild<QToolBar *>(QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(bar);
        QStringList keys;
        const QList<QAction *> actions = bar->actions();
        for (QAction *action : actions) {
            const QWidget *button = bar->widgetForAction(action);
            keys.append(action->isSeparator() ? QStringLiteral("|") : button->objectName());
            if (!action->isSeparator())
                QVERIFY2(!action->toolTip().isEmpty() && !action->icon().isNull(), qPrintable(keys.last()));
        }
        QTEST(keys.join(QLatin1Char(' ')), "keys");
    }

    void buttonsShareTheirItemsState()
    {
        const Folders folders;
        const Window window(folders);
        const auto enabled = [&](const char *key) {
            return window.main->findChild<QToolButton *>(QString::fromLatin1(key))->isEnabled();
        };
        QVERIFY(!enabled("Save1") && !enabled("normal") && enabled("xnlm") && enabled("preview"));
        window.action("mnuSave")->setEnabled(true);
        QVERIFY(enabled("Save1"));
    }

    void controlsAreNamed()
    {
        const Folders folders;
        const Window window(folders);
        QCOMPARE(window.main->windowTitle(), QStringLiteral("New Document[*] - Zelph XML Editor"));
        QCOMPARE(window.main->objectName(), QStringLiteral("mainfrm"));
        for (const char *name :
             {"Picture1", "SSTab1", "TreeView1", "CodeMax1", "WebBrowser1", "StatusBar1", "ProgressBar1"})
            QVERIFY2(window.main->findChild<QWidget *>(QString::fromLatin1(name)), name);
        QVERIFY(window.main->findChild<QProgressBar *>()->isHidden());
        for (int tab = 0; tab < 3; ++tab)
            QVERIFY(window.tabs()->widget(tab)->isAncestorOf(window.main->findChild<QWidget *>(
                QStringList{QStringLiteral("TreeView1"), QStringLiteral("CodeMax1"),
                            QStringLiteral("WebBrowser1")}[tab])));
    }

    // A menu offers nothing that does nothing: what cannot be run is disabled, what can be is not.
    void keysRunTheirCommands_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("tab");
        QTest::newRow("F6") << int(Qt::Key_F6) << 1;
        QTest::newRow("F7") << int(Qt::Key_F7) << 2;
        QTest::newRow("F5") << int(Qt::Key_F5) << 0;
    }

    void keysRunTheirCommands()
    {
        QFETCH(int, key);
        const Folders folders;
        Window window(folders);
        QVERIFY(QTest::qWaitForWindowActive(window.main.get()));
        QTest::keyClick(window.main.get(), Qt::Key(key));
        QTEST(window.tabs()->currentIndex(), "tab");
    }

    void quitKeyCloses()
    {
        const Folders folders;
        Window window(folders);
        QVERIFY(QTest::qWaitForWindowActive(window.main.get()));
        window.choose("mnuxmlmode");
        QTest::keyClick(window.editor(), Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(window.left);
    }

    void helpGoesThroughTheShell()
    {
        const Folders folders;
        Window window(folders);
        window.shell.refusal = QStringLiteral("There is no such page.");
        for (const char *item : {"mnucontenets", "mnuindex", "mnuSearch"})
            window.choose(item);
        QCOMPARE(window.shell.opened,
                 (QStringList{folders.program(QStringLiteral("Help/Zelph/Zelph.htm")),
                              folders.program(QStringLiteral("Help/Zelph/opens_index_first.htm")),
                              folders.program(QStringLiteral("Help/Zelph/opens_search_first.htm"))}));
        QCOMPARE(window.note(), window.shell.refusal);
        window.choose("mnuxmlmode");
        QCOMPARE(window.note(), QString());
    }
};

int main(int argc, char *argv[])
{
    MenusTest tests;
    return runWindowTests(argc, argv, tests);
}
#include "menus_test.moc"
