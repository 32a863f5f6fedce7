// The parts of the main window that need no window.
#include "app/commands.h"
#include "app/dependency_check.h"
#include "app/layout_rule.h"
#include "app/word_cycle.h"
#include "document/view_modes.h"
#include "platform/control/shortcut_table.h"
#include "platform/dialogs/theme_icon.h"

#include <QDir>
#include <QFile>
#include <QKeySequence>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using app::Command;
using app::commandTable;

namespace {

QString text(const char *constant) { return QString::fromLatin1(constant); }

void makeEntry(const QDir &folder, const QString &entry)
{
    const QString path = QString(entry).replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!path.contains(QLatin1Char('.'))) {
        QVERIFY(folder.mkpath(path));
        return;
    }
    QFile file(folder.filePath(path));
    QVERIFY(folder.mkpath(path.section(QLatin1Char('/'), 0, -2)) && file.open(QIODevice::WriteOnly));
}

} // namespace

class PartsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wordsStepInACircle()
    {
        QStringList words{QStringLiteral("XML")};
        for (int tick = 0; tick < 5; ++tick)
            words.append(app::nextWord(words.last()));
        QCOMPARE(words.join(QLatin1Char(' ')), QStringLiteral("XML XSL XSD XSLT FO XML"));
        QCOMPARE(app::nextWord(QStringLiteral("xml")), QStringLiteral("xml"));
    }

    void layoutRule_data()
    {
        QTest::addColumn<QSize>("window"); // outer width, inner height
        QTest::addColumn<QSize>("container");
        QTest::addColumn<QSize>("tabs");
        QTest::addColumn<QSize>("view");
        // 60 pixels of bars; 120 twips are 8 pixels, 35 about 2, 700 about 47
        QTest::newRow("usual") << QSize(1000, 700) << QSize(992, 640) << QSize(990, 632) << QSize(988, 585);
        QTest::newRow("no room for a view") << QSize(200, 100) << QSize(192, 40) << QSize(190, 32) << QSize();
        QTest::newRow("no room for the tabs") << QSize(200, 65) << QSize(192, 5) << QSize() << QSize();
        QTest::newRow("no room at all") << QSize(200, 50) << QSize() << QSize() << QSize();
        QTest::newRow("narrower than its border") << QSize(7, 700) << QSize() << QSize() << QSize();
    }

    void layoutRule()
    {
        QFETCH(QSize, window);
        using namespace app::layout_rule;
        const QSize container = containerSize({window.width(), window.height(), 25, 35}).value_or(QSize());
        QTEST(container, "container");
        const QSize tabs = container.isValid() ? tabStripSize(container).value_or(QSize()) : QSize();
        QTEST(tabs, "tabs");
        QTEST(tabs.isValid() ? viewSize(tabs).value_or(QSize()) : QSize(), "view");
    }

    void progressBarIsCentredByTheSizeItHad()
    {
        using app::layout_rule::progressBarPlace;
        QCOMPARE(progressBarPlace({800, 600}, {100, 20}), QRect(350, 290, 400, 20));
        QVERIFY(!progressBarPlace({80, 600}, {100, 20}));
    }

    void firstMissingEntryIsNamed_data()
    {
        QTest::addColumn<int>("missing");
        for (int entry = 0; entry < app::requiredEntries().size(); ++entry)
            QTest::newRow(qPrintable(app::requiredEntries()[entry])) << entry;
        QTest::newRow("none") << -1;
    }

    // All entries are there but the missing one; without its folder none is.
    void firstMissingEntryIsNamed()
    {
        QFETCH(int, missing);
        QTemporaryDir folder;
        const QStringList entries = app::requiredEntries();
        for (int entry = 0; entry < entries.size(); ++entry) {
            if (entry != missing && missing != 0)
                makeEntry(QDir(folder.path()), entries[entry]);
        }
        const QString expected = missing < 0
            ? QString()
            : QDir::toNativeSeparators(
                folder.filePath(QString(entries[missing]).replace(QLatin1Char('\\'), QLatin1Char('/'))));
        QCOMPARE(app::firstMissing(folder.path()), expected);
    }

    void missingEntryIsReported()
    {
        QCOMPARE(app::missingMessage(QStringLiteral("/opt/100%1/tdyex")),
                 QStringLiteral(
                     "This application has failed to start, because '/opt/100%1/tdyex' was not found.\r\n"
                     "Re-installing the application may fix the problem.\r\n"));
    }

    void namesAndPlacesAreUnique()
    {
        QSet<QString> names;
        QSet<QString> places;
        for (const Command &row : commandTable()) {
            const QString name = text(row.name);
            QVERIFY2(name.isEmpty() || !names.contains(name), row.name);
            names.insert(name);
            if (*row.toolbar == 0)
                continue;
            const QString place = text(row.toolbar) + QString::number(row.place);
            QVERIFY2(row.place > 0 && *row.key != 0 && !places.contains(place), row.name);
            places.insert(place);
        }
    }

    // Of the window's own shortcuts none is given twice, and none is taken by the editor before it gets here;
    // those of the tree never get to the editor.
    void shortcutsAreUnique()
    {
        const control::ShortcutTable editorKeys;
        QSet<QString> seen;
        for (const Command &row : commandTable()) {
            const QKeySequence keys(text(row.shortcut));
            if (keys.isEmpty())
                continue;
            QCOMPARE(keys.toString(QKeySequence::PortableText), text(row.shortcut));
            // Menus that the tree's mode hides have keys of their own.
            const bool hidden = QStringList{QStringLiteral("editcmx"), QStringLiteral("searchcmx"),
                                            QStringLiteral("mnumacro")}
                                    .contains(text(row.menu));
            const bool browsing = *row.menu == 0; // stands on the preview's tool bar alone
            const QString scope = hidden ? QStringLiteral("editor ")
                : browsing               ? QStringLiteral("browser ")
                                         : QString();
            QVERIFY2(!seen.contains(scope + keys.toString()), row.name);
            if (!app::actsOnTree(row) && !browsing) {
                QVERIFY2(editorKeys.command(keys) == 0, row.name);
                QVERIFY2(!editorKeys.beginsShortcut(keys), row.name);
            }
            seen.insert(scope + keys.toString());
        }
        QVERIFY(!seen.isEmpty());
    }

    // Every row stands in a menu of the bar, at whatever depth, or on a toolbar.
    void everyRowIsReachable()
    {
        QSet<QString> menus;
        for (const app::Menu &menu : app::menuTable())
            menus.insert(text(menu.name));
        for (const Command &row : commandTable()) {
            QVERIFY2(menus.contains(text(row.menu)) || (*row.menu == 0 && *row.toolbar != 0), row.name);
            if (row.submenu)
                menus.insert(text(row.name));
        }
    }

    void modeMenusExist()
    {
        QSet<QString> menus;
        for (const app::Menu &menu : app::menuTable())
            menus.insert(text(menu.name));
        for (const document::ModeMenu &menu : document::modeMenus())
            QVERIFY2(menus.contains(menu.name.toString()), qPrintable(menu.name.toString()));
    }

    // Where no icon theme is installed.
    void everyIconIsDrawn()
    {
        const QTemporaryDir nothing;
        for (const char *variable : {"XDG_DATA_DIRS", "XDG_DATA_HOME"})
            qputenv(variable, QFile::encodeName(nothing.path()));
        QIcon::setThemeSearchPaths({nothing.path()});
        QIcon::setThemeName(QStringLiteral("none"));
        QVERIFY(!QIcon::hasThemeIcon(QStringLiteral("document-new")));
        for (const Command &row : commandTable())
            QVERIFY2(*row.icon == 0 || !dialogs::themeIcon(text(row.icon)).isNull(), row.icon);
    }
};

QTEST_MAIN(PartsTest)
#include "parts_test.moc"
