// Every window as somebody meets it who sees nothing or has no mouse: each control has a name, takes the
// focus by keyboard, and has its mnemonic to itself.
#include "window_fixture.h"

#include "app/commands.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTimer>
#include <QToolBar>
#include <functional>

using namespace app_test;

namespace {

bool isKind(const QWidget &widget)
{
    return qobject_cast<const QAbstractButton *>(&widget) || qobject_cast<const QLineEdit *>(&widget)
        || qobject_cast<const QAbstractSpinBox *>(&widget) || qobject_cast<const QComboBox *>(&widget)
        || qobject_cast<const QTabBar *>(&widget)
        || (widget.inherits("QAbstractScrollArea") && !widget.inherits("QScrollArea"));
}

// What Qt makes for itself inside a control speaks through that control.
bool isPartOfAnother(const QWidget &widget)
{
    if (widget.objectName().startsWith(QStringLiteral("qt_")) || qobject_cast<const QHeaderView *>(&widget))
        return true;
    for (const QWidget *above = widget.parentWidget(); above != nullptr && !above->isWindow();
         above = above->parentWidget())
        if (qobject_cast<const QLineEdit *>(above) || qobject_cast<const QAbstractSpinBox *>(above)
            || qobject_cast<const QComboBox *>(above) || qobject_cast<const QTabBar *>(above)
            || qobject_cast<const QAbstractItemView *>(above) || above->inherits("browser::WebBrowser"))
            return true;
    return false;
}

QString nameOf(QWidget &widget)
{
    const QAccessibleInterface *face = QAccessible::queryAccessibleInterface(&widget);
    return face ? face->text(QAccessible::Name) : QString();
}

// One of a group of radio buttons is reached for all. A sample is only looked at; what it shows has a list.
bool needsNoFocus(const QWidget &widget)
{
    return qobject_cast<const QRadioButton *>(&widget) || widget.objectName() == QStringLiteral("edSample");
}

// A button on a tool bar has its command in a menu, or a key of its own.
bool reachedElsewhere(const QWidget &widget)
{
    const auto *bar = qobject_cast<const QToolBar *>(widget.parentWidget());
    if (bar == nullptr)
        return false;
    const QList<QAction *> actions = widget.actions();
    return std::any_of(actions.begin(), actions.end(), [](const QAction *action) {
        const QList<QObject *> places = action->associatedObjects();
        return !action->shortcut().isEmpty()
            || std::any_of(places.begin(), places.end(),
                           [](const QObject *place) { return qobject_cast<const QMenu *>(place); });
    });
}

QStringList mnemonicTexts(const QWidget &widget)
{
    QStringList texts;
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        texts.append(button->text());
    else if (const auto *label = qobject_cast<const QLabel *>(&widget); label && label->buddy())
        texts.append(label->text());
    else if (const auto *group = qobject_cast<const QGroupBox *>(&widget))
        texts.append(group->title());
    else if (const auto *tabs = qobject_cast<const QTabBar *>(&widget))
        for (int tab = 0; tab < tabs->count(); ++tab)
            texts.append(tabs->tabText(tab));
    return texts;
}

void checkControl(QWidget &widget, QStringList &faults)
{
    const QString what = QStringLiteral("%1 \"%2\"")
                             .arg(QLatin1String(widget.metaObject()->className()), widget.objectName());
    if (widget.objectName().isEmpty())
        faults.append(what + QStringLiteral(" has no object name in ") + widget.parentWidget()->objectName());
    if (nameOf(widget).trimmed().isEmpty())
        faults.append(what + QStringLiteral(" has no name to speak"));
    if (widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) == 0 && !reachedElsewhere(widget)
        && !needsNoFocus(widget))
        faults.append(what + QStringLiteral(" cannot be reached by keyboard"));
}

// All that is shown of the window now.
QStringList faultsOf(const QWidget &window)
{
    QStringList faults;
    QHash<QKeySequence, QString> mnemonics;
    const QList<QWidget *> widgets = window.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (!widget->isVisibleTo(&window) || widget->window() != &window || isPartOfAnother(*widget))
            continue;
        if (isKind(*widget))
            checkControl(*widget, faults);
        for (const QString &text : mnemonicTexts(*widget)) {
            const QKeySequence key = QKeySequence::mnemonic(text);
            if (key.isEmpty())
                continue;
            if (mnemonics.contains(key))
                faults.append(QStringLiteral("\"%1\" and \"%2\" share a mnemonic").arg(mnemonics[key], text));
            mnemonics.insert(key, text);
        }
    }
    return faults;
}

// Each page of its tabs, when it has some.
QStringList faultsOfPages(QWidget &window)
{
    const auto *tabs = window.findChild<QTabWidget *>();
    QStringList faults;
    for (int page = 0; page < (tabs ? tabs->count() : 1); ++page) {
        if (tabs)
            const_cast<QTabWidget *>(tabs)->setCurrentIndex(page);
        faults += faultsOf(window);
    }
    faults.removeDuplicates();
    return faults;
}

QStringList faultsOfDialog(QDialog &dialog)
{
    const bool active = QTest::qWaitForWindowActive(&dialog);
    QStringList faults = faultsOfPages(dialog);
    if (!active || dialog.focusWidget() == nullptr)
        faults.append(QStringLiteral("nothing has the focus at first"));
    return faults;
}

} // namespace

class AccessibilityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        folders_ = std::make_unique<Folders>();
        const QString path = folders_->document(QStringLiteral("a.xml"));
        write(path, "<a b='1'>text<!--c--><d/></a>");
        write(folders_->program(QStringLiteral("tdyex/default.tidy")), "indent: auto\r\n");
        window_ = std::make_unique<Window>(*folders_, QStringList{path});
        QVERIFY(QTest::qWaitForWindowActive(window_->main.get()));
    }
    void cleanupTestCase() { window_.reset(); }

    void mainWindow_data()
    {
        QTest::addColumn<int>("tab");
        QTest::newRow("Normal Mode") << 0;
        QTest::newRow("XML Mode") << 1;
        QTest::newRow("Preview") << 2;
    }

    void mainWindow()
    {
        QFETCH(int, tab);
        window_->tabs()->setCurrentIndex(tab);
        if (tab == 1)
            window_->editor()->execute(169);
        const QStringList faults = faultsOf(*window_->main);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
    }

    void dialogs_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("button"); // of the dialog, which opens the one to look at
        const auto row = [](const char *command, int tab, const char *button = "") {
            QTest::addRow("%s %s", command, button)
                << QString::fromLatin1(command) << tab << QString::fromLatin1(button);
        };
        for (const char *command : {"mnueditnod4", "mnuQuicktag", "mnuabout", "mnuAssignedfilePre"})
            row(command, 0);
        for (const char *command : {"mnucleancod", "mnuCleaningOptions", "editcmxsub_14", "searchcmxsub_5",
                                    "mnuRepeatCount", "createmac"})
            row(command, 1);
        row("mnueditnod4", 0, "cmdadd");
        row("mnueditnod4", 0, "cmdsynbols");
    }

    void dialogs()
    {
        QFETCH(QString, command);
        QFETCH(int, tab);
        QFETCH(QString, button);
        window_->tabs()->setCurrentIndex(tab);
        if (command == QStringLiteral("createmac")) {
            window_->choose("createmac"); // the end of recording asks where it goes
            window_->typeIntoEditor(QStringLiteral("x"));
        }
        QStringList faults{QStringLiteral("no dialog came")};
        whenOpen(nullptr, [&](QDialog *first) {
            if (button.isEmpty()) {
                faults = faultsOfDialog(*first);
            } else {
                whenOpen(first, [&](QDialog *second) {
                    faults = faultsOfDialog(*second);
                    second->close();
                });
                first->findChild<QPushButton *>(button)->click();
                QTest::qWait(10);
            }
            first->close();
        });
        window_->choose(qPrintable(command));
        QTest::qWait(10);
        window_->editor()->undo();
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
    }

    // The mnemonics of the bar; those within the menus are given with their captions.
    void menuBar()
    {
        QHash<QKeySequence, QString> mnemonics;
        const QList<QAction *> actions = window_->main->menuBar()->actions();
        for (const QAction *action : actions) {
            if (!action->isVisible())
                continue;
            const QKeySequence key = QKeySequence::mnemonic(action->text());
            QVERIFY2(!key.isEmpty() && !mnemonics.contains(key), qPrintable(action->text()));
            mnemonics.insert(key, action->text());
        }
    }

private:
    // Looks at the dialog that is about to come up over another one, within its own loop if it has one.
    void whenOpen(QDialog *below, const std::function<void(QDialog *)> &look)
    {
        QTimer::singleShot(0, this, [below, look] {
            const QWidgetList windows = QApplication::topLevelWidgets();
            for (QWidget *window : windows)
                if (auto *dialog = qobject_cast<QDialog *>(window);
                    dialog != nullptr && dialog != below && dialog->isVisible())
                    return look(dialog);
        });
    }

    std::unique_ptr<Folders> folders_;
    std::unique_ptr<Window> window_;
};

int main(int argc, char *argv[])
{
    AccessibilityTest tests;
    return runWindowTests(argc, argv, tests);
}
#include "accessibility_test.moc"
