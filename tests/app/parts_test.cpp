// The parts of the main window that need no window.
#include "app/check_progress.h"
#include "app/command_line.h"
#include "app/commands.h"
#include "app/dependency_check.h"
#include "app/fitted_line.h"
#include "app/layout_rule.h"
#include "app/word_cycle.h"
#include "platform/control/shortcut_table.h"
#include "platform/dialogs/theme_icon.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using app::Command;
using app::commandTable;
using namespace Qt::StringLiterals;

namespace {

QString text(const char *constant) { return QString::fromLatin1(constant); }

} // namespace

class PartsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wordsStepInACircle()
    {
        QStringList words{u"XML"_s};
        for (int tick = 0; tick < 5; ++tick)
            words.append(app::nextWord(words.last()));
        QCOMPARE(words.join(QLatin1Char(' ')), u"XML XSL XSD XSLT FO XML"_s);
        QCOMPARE(app::nextWord(u"xml"_s), u"xml"_s);
    }

    // Of the outer width and inner height come the container, the tabs, the view. 60 pixels of bars; 120
    // twips are 8 pixels, 35 about 2, 700 about 47
    void layoutRule()
    {
        const std::tuple<QSize, QSize, QSize, QSize> rows[] = {
            {{1000, 700}, {992, 640}, {990, 632}, {988, 585}},
            {{200, 100}, {192, 40}, {190, 32}, {}}, // no room for a view
            {{200, 65}, {192, 5}, {}, {}},
            {{200, 50}, {}, {}, {}},
            {{7, 700}, {}, {}, {}},
        };
        using namespace app::layout_rule;
        for (const auto &[window, expectedContainer, expectedTabs, expectedView] : rows) {
            const QSize container
                = containerSize({window.width(), window.height(), 25, 35}).value_or(QSize());
            const QSize tabs = container.isValid() ? tabStripSize(container).value_or(QSize()) : QSize();
            QCOMPARE(container, expectedContainer);
            QCOMPARE(tabs, expectedTabs);
            QCOMPARE(tabs.isValid() ? viewSize(tabs).value_or(QSize()) : QSize(), expectedView);
        }
    }

    void progressBarIsCentredByTheSizeItHad()
    {
        using app::layout_rule::progressBarPlace;
        QCOMPARE(progressBarPlace({800, 600}, {100, 20}), QRect(350, 290, 400, 20));
        QVERIFY(!progressBarPlace({80, 600}, {100, 20}));
    }

    // The entries come one after the other, the folder first.
    void firstMissingEntryIsNamed()
    {
        const QTemporaryDir folder;
        for (QString entry : app::requiredEntries()) {
            const QString path = folder.filePath(entry.replace(u'\\', u'/'));
            QCOMPARE(app::firstMissing(folder.path()), QDir::toNativeSeparators(path));
            QFile file(path);
            QVERIFY(entry.contains(u'.')
                        ? QFileInfo(path).dir().mkpath(u"."_s) && file.open(QIODevice::WriteOnly)
                        : QDir().mkpath(path));
        }
        QCOMPARE(app::firstMissing(folder.path()), QString());
        QVERIFY(app::missingMessage(u"/opt/100%1/tdyex"_s).contains(u"'/opt/100%1/tdyex' was not found."));
    }

    // As narrow as what is expected: the words stay, the folders go, and then the middle of a long name.
    void longLinesKeepTheirWords()
    {
        const QFontMetrics metrics{QFont()};
        const std::pair<QString, QString> rows[] = {
            {u"Not saved: /home/me/my work/a b.xml cannot be written: No space left on device."_s,
             u"Not saved: \u2026/a b.xml cannot be written: No space left on device."_s},
            {u"/x/y/a.xml cannot be written: it fails; its old content is in /x/y/old-a.xml."_s,
             u"\u2026/a.xml cannot be written: it fails; its old content is in \u2026/old-a.xml."_s},
            {u"/x/y/a.xml was put into /x/z/b.xml."_s, u"\u2026/a.xml was put into \u2026/b.xml."_s},
            {u"and/or\n/not"_s, u"and/or /not"_s},
        };
        for (const auto &[line, expected] : rows) {
            QCOMPARE(app::fittedLine(line, metrics, metrics.horizontalAdvance(expected) + 1), expected);
            const QString whole = QString(line).replace(u'\n', u' ');
            QCOMPARE(app::fittedLine(line, metrics, metrics.horizontalAdvance(whole) + 1), whole);
        }
        const QString name = u"/x/"_s + QString(200, u'n') + u".xml"_s;
        const QString shown = app::fittedLine(name + u" cannot be written: Disk full."_s, metrics,
                                              metrics.averageCharWidth() * 60);
        QVERIFY2(shown.contains(u".xml cannot be written: Disk full."_s), qPrintable(shown));
    }

    void namesAreUnique()
    {
        QSet<QString> names;
        for (const Command &row : commandTable()) {
            QVERIFY2(*row.name == 0 || !names.contains(text(row.name)), row.name);
            names.insert(text(row.name));
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
            const bool hidden
                = QStringList{u"editcmx"_s, u"searchcmx"_s, u"mnumacro"_s}.contains(text(row.menu));
            const bool browsing = *row.menu == 0; // stands on the preview's tool bar alone
            const QString scope = hidden ? u"editor "_s : browsing ? u"browser "_s : QString();
            QVERIFY2(!seen.contains(scope + keys.toString()), row.name);
            if (!app::actsOnTree(row) && !browsing) {
                QVERIFY2(editorKeys.command(keys) == 0 && !editorKeys.beginsShortcut(keys), row.name);
            }
            seen.insert(scope + keys.toString());
        }
        QVERIFY(!seen.isEmpty());
    }

    void theCommandLineIsUnderstood()
    {
        const QTemporaryDir folder;
        const auto file = [&](const QString &name) {
            const QString path = folder.filePath(name);
            QFile made(path);
            return made.open(QIODevice::WriteOnly) ? path : QString();
        };
        const QString plain = file(u"a.xml"_s);
        const QString blank = file(u"a b.xml"_s);
        const QString hash = file(u"a#1%20.xml"_s);
        const QString odd = file(u"say \"x\".xml"_s);
        using Wish = app::CommandLine::Wish;
        const struct
        {
            QStringList arguments;
            Wish wish;
            QStringList documents;
        } rows[] = {
            {{}, Wish::Edit, {}},
            {{plain}, Wish::Edit, {plain}},
            {{plain, blank}, Wish::Edit, {plain, blank}},
            {blank.split(u' '), Wish::Edit, {blank}},
            {{u'"' + blank + u'"'}, Wish::Edit, {blank}},
            {{odd}, Wish::Edit, {odd}},
            {{QUrl::fromLocalFile(hash).toString(QUrl::FullyEncoded)}, Wish::Edit, {hash}},
            {{u"file:///no/such%20one.xml"_s, u"new.xml"_s},
             Wish::Edit,
             {u"/no/such one.xml"_s, u"new.xml"_s}},
            {{u"--help"_s, plain}, Wish::Help, {}},
            {{plain, u"-v"_s}, Wish::Version, {}},
            {{u"--hepl"_s}, Wish::Refused, {}},
            {{u"--"_s, u"--help"_s}, Wish::Edit, {u"--help"_s}},
        };
        for (const auto &row : rows) {
            const app::CommandLine read = app::readCommandLine(row.arguments);
            QCOMPARE(read.wish, row.wish);
            QCOMPARE(read.documents, row.documents);
            QCOMPARE(read.said.isEmpty(), row.wish == Wish::Edit);
        }
    }

    // The user can stop a check, and nothing else happens while it waits for that.
    void checkCanBeStopped()
    {
        QTimer others;
        int ticks = 0;
        connect(&others, &QTimer::timeout, this, [&ticks] { ++ticks; });
        others.start(0);
        {
            app::CheckProgress progress(nullptr, 0, 0);
            QVERIFY(progress.goOn());
            auto *window = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
            QVERIFY(window && window->isVisible());
            for (int i = 0; i < 20; ++i)
                QVERIFY(progress.goOn());
            QCOMPARE(ticks, 0);
            QTest::keyClick(window, Qt::Key_Escape);
            QVERIFY(!progress.goOn());
            QCOMPARE(ticks, 0);
        }
        QVERIFY(!QApplication::activeModalWidget() && !QApplication::overrideCursor());
        QTRY_VERIFY(ticks > 0); // what waited is not lost
        app::CheckProgress patient(nullptr);
        QVERIFY(patient.goOn() && !QApplication::activeModalWidget());
    }

    // Where no icon theme is installed.
    void everyIconIsDrawn()
    {
        const QTemporaryDir nothing;
        for (const char *variable : {"XDG_DATA_DIRS", "XDG_DATA_HOME"})
            qputenv(variable, QFile::encodeName(nothing.path()));
        QIcon::setThemeSearchPaths({nothing.path()});
        QIcon::setThemeName(u"none"_s);
        for (const Command &row : commandTable())
            QVERIFY2(*row.icon == 0 || !dialogs::themeIcon(text(row.icon)).isNull(), row.icon);
    }
};

QTEST_MAIN(PartsTest)
#include "parts_test.moc"
