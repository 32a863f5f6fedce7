// Every window as somebody meets it who sees nothing or has no mouse: each control has a name, takes the
// focus by keyboard, and has its mnemonic to itself.
#include "window_fixture.h"

#include "app/commands.h"

#include <QtWidgets>
#include <functional>

using namespace app_test;
using namespace Qt::StringLiterals;

namespace {

bool isOneOf(const QWidget &widget, std::initializer_list<const char *> kinds)
{
    return std::any_of(kinds.begin(), kinds.end(), [&](const char *kind) { return widget.inherits(kind); });
}

bool isControl(const QWidget &widget)
{
    return isOneOf(widget, {"QAbstractButton", "QLineEdit", "QAbstractSpinBox", "QComboBox", "QTabBar"})
        || (widget.inherits("QAbstractScrollArea") && !widget.inherits("QScrollArea"));
}

// What Qt makes for itself inside a control speaks through that control.
bool isPartOfAnother(const QWidget &widget)
{
    if (widget.objectName().startsWith(u"qt_"_s) || widget.inherits("QHeaderView"))
        return true;
    const QWidget *above = widget.parentWidget();
    while (above && !above->isWindow()
           && !isOneOf(*above,
                       {"QLineEdit", "QAbstractSpinBox", "QComboBox", "QTabBar", "QAbstractItemView",
                        "browser::WebBrowser"}))
        above = above->parentWidget();
    return above && !above->isWindow();
}

QString nameOf(QWidget &widget)
{
    const QAccessibleInterface *face = QAccessible::queryAccessibleInterface(&widget);
    return face ? face->text(QAccessible::Name) : QString();
}

// One of a group of radio buttons is reached for all. A sample is only looked at; what it shows has a list.
bool needsNoFocus(const QWidget &widget)
{
    return qobject_cast<const QRadioButton *>(&widget) || widget.objectName() == u"edSample"_s;
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
    const QString what
        = u"%1 \"%2\""_s.arg(QLatin1String(widget.metaObject()->className()), widget.objectName());
    if (widget.objectName().isEmpty())
        faults.append(what + u" has no object name in "_s + widget.parentWidget()->objectName());
    if (nameOf(widget).trimmed().isEmpty())
        faults.append(what + u" has no name to speak"_s);
    if (widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) == 0 && !reachedElsewhere(widget)
        && !needsNoFocus(widget))
        faults.append(what + u" cannot be reached by keyboard"_s);
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
        if (isControl(*widget))
            checkControl(*widget, faults);
        for (const QString &text : mnemonicTexts(*widget)) {
            const QKeySequence key = QKeySequence::mnemonic(text);
            if (key.isEmpty())
                continue;
            if (mnemonics.contains(key))
                faults.append(u"\"%1\" and \"%2\" share a mnemonic"_s.arg(mnemonics[key], text));
            mnemonics.insert(key, text);
        }
    }
    return faults;
}

// Each page of its tabs, when it has some.
QStringList faultsOfPages(QWidget &window)
{
    auto *tabs = window.findChild<QTabWidget *>();
    QStringList faults;
    for (int page = 0; page < (tabs ? tabs->count() : 1); ++page) {
        if (tabs)
            tabs->setCurrentIndex(page);
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
        faults.append(u"nothing has the focus at first"_s);
    return faults;
}

constexpr QSize smallScreen(1280, 720);
constexpr QSize frameOfWindow(8, 48); // what a desktop puts around it

QString inDots(const QSize &size) { return u"%1x%2"_s.arg(size.width()).arg(size.height()); }

bool fits(const QSize &size, const QSize &room) { return size.expandedTo(room) == room; }

// Each page of its tabs can be made small enough for the screen, and it does not open larger than the one
// it is on.
QStringList faultsOfSize(QDialog &dialog)
{
    QStringList faults;
    if (auto *more = dialog.findChild<QCheckBox *>(u"chksearch"_s))
        more->setChecked(true);
    auto *tabs = dialog.findChild<QTabWidget *>();
    for (int page = 0; page < (tabs ? tabs->count() : 1); ++page) {
        if (tabs)
            tabs->setCurrentIndex(page);
        const QSize least = dialog.minimumSizeHint().expandedTo(dialog.minimumSize());
        if (!fits(least, smallScreen - frameOfWindow))
            faults.append(u"page %1 takes %2"_s.arg(page).arg(inDots(least)));
    }
    const QList<QWidget *> ofCode
        = dialog.findChildren<QWidget *>(QRegularExpression(u"^(List1|Text3_.)$"_s));
    for (const QWidget *lines : ofCode)
        if (lines->font().pointSizeF() < dialog.font().pointSizeF())
            faults.append(lines->objectName() + u" has small letters"_s);
    const QSize screen = dialog.screen()->availableSize();
    if (!fits(dialog.size(), screen))
        faults.append(u"opens as %1 on a screen of %2"_s.arg(inDots(dialog.size()), inDots(screen)));
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
        const QString path = folders_->document(u"a.xml"_s);
        write(path, "<a b='1'>text<!--c--><d/></a>");
        write(folders_->program(u"tdyex/default.tidy"_s), "indent: auto\r\n");
        window_ = std::make_unique<Window>(*folders_, QStringList{path});
        QVERIFY(QTest::qWaitForWindowActive(window_->main.get()));
    }
    void cleanupTestCase() { window_.reset(); }

    void mainWindow()
    {
        for (const int tab : {0, 1, 2}) {
            window_->tabs()->setCurrentIndex(tab);
            if (tab == 1)
                window_->editor()->execute(169);
            const QStringList faults = faultsOf(*window_->main);
            QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
        }
    }

    void dialogs() { walkDialogs(faultsOfDialog); }

    // Somebody who reads in 16 pt may still have a small screen.
    void dialogsInLargePrint()
    {
        const QFont usual = QApplication::font();
        const auto back = qScopeGuard([&] { QApplication::setFont(usual); });
        QFont large = usual;
        large.setPointSizeF(16);
        QApplication::setFont(large);
        walkDialogs(faultsOfSize);
        const QSize usualIcons = window_->main->findChild<QToolBar *>()->iconSize();
        const Window opened("b.xml", "<a/>");
        const QList<QToolBar *> bars = opened.main->findChildren<QToolBar *>();
        QVERIFY(!bars.isEmpty());
        for (const QToolBar *bar : bars)
            QVERIFY2(bar->iconSize().height() > usualIcons.height(), qPrintable(bar->objectName()));
    }

private:
    using Look = QStringList (*)(QDialog &dialog);

    void walkDialogs(Look look)
    {
        // The last is a button of the dialog, which opens the one to look at.
        const std::tuple<const char *, int, QString> rows[] = {
            {"mnueditnod4", 0, {}},
            {"mnuQuicktag", 0, {}},
            {"mnuabout", 0, {}},
            {"mnuAssignedfilePre", 0, {}},
            {"mnucleancod", 1, {}},
            {"mnuCleaningOptions", 1, {}},
            {"editcmxsub_14", 1, {}},
            {"searchcmxsub_5", 1, {}},
            {"mnuRepeatCount", 1, {}},
            {"createmac", 1, {}},
            {"mnueditnod4", 0, u"cmdadd"_s},
            {"mnueditnod4", 0, u"cmdsynbols"_s},
        };
        QStringList all;
        for (const auto &[command, tab, button] : rows) {
            window_->tabs()->setCurrentIndex(tab);
            if (qstrcmp(command, "createmac") == 0) {
                window_->choose(command); // the end of recording asks where it goes
                window_->typeIntoEditor(u"x"_s);
            }
            const QStringList faults = faultsBehind(command, button, look);
            window_->editor()->undo();
            if (!faults.isEmpty())
                all.append(QLatin1String(command) + u' ' + button + u": "_s + faults.join(u'\n'));
        }
        QVERIFY2(all.isEmpty(), qPrintable(all.join(u'\n')));
    }

    QStringList faultsBehind(const char *command, const QString &button, Look look)
    {
        QStringList faults{u"no dialog came"_s};
        whenOpen(nullptr, [&](QDialog *first) {
            if (button.isEmpty()) {
                faults = look(*first);
            } else {
                whenOpen(first, [&](QDialog *second) {
                    faults = look(*second);
                    second->close();
                });
                first->findChild<QPushButton *>(button)->click();
                QTest::qWait(10);
            }
            first->close();
        });
        window_->choose(command);
        QTest::qWait(10);
        return faults;
    }

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

APP_TEST_MAIN(AccessibilityTest)
#include "accessibility_test.moc"
