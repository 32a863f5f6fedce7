// The options dialog: every option reachable, each in its editor; found, marked, saved or dropped.
#include "platform/dialogs/scripted_dialogs.h"
#include "tidy/config_files.h"
#include "tidy/option_catalogue.h"
#include "tidy/options_editor.h"
#include "tidy/options_list.h"
#include "tidy/options_search.h"
#include "tidy/tidyopfrm.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>

using namespace tidy;

namespace {

QString q(const char *text) { return QString::fromUtf8(text); }

struct Desk
{
    QTemporaryDir folder;
    dialogs::ScriptedDialogs dialogs;
    QWidget owner;
    std::unique_ptr<tidyopfrm> dialog;

    explicit Desk(const QByteArray &standing = "\r\n")
    {
        QDir(folder.path()).mkdir(q("tdyex"));
        QFile file(standingOptionsFile(folder.path()));
        file.open(QIODevice::WriteOnly);
        file.write(standing);
        file.close();
        dialog = std::make_unique<tidyopfrm>(folder.path(), dialogs, &owner);
        dialog->show();
        dialog->activateWindow();
        static_cast<void>(QTest::qWaitForWindowActive(dialog.get()));
    }

    template <typename T>
    T *find(const char *name) const
    {
        return dialog->findChild<T *>(q(name));
    }

    OptionsList *list() const
    {
        return find<QTabWidget>("SSTab1")->currentWidget()->findChild<OptionsList *>();
    }
    OptionsEditor *panel() const { return find<OptionsEditor>("fraedit"); }
    QTreeWidgetItem *row() const { return list()->selectedItems().value(0); }
    void select(int index) const { dialog->selitm(tabForIndex(index), itemKey(index)); }

    void edit(int index) const
    {
        select(index);
        find<QTabWidget>("SSTab1")->currentWidget()->findChild<QPushButton *>(q("cmdedit"))->click();
    }

    QWidget *editor() const
    {
        for (int number = 0; number < 9; ++number) {
            auto *widget = find<QWidget>(qPrintable(QStringLiteral("editor%1").arg(number)));
            if (widget->isVisible())
                return widget;
        }
        return nullptr;
    }

    void enter(const QString &value) const
    {
        if (auto *list = qobject_cast<QComboBox *>(editor()))
            list->setCurrentText(value);
        else if (auto *number = qobject_cast<QSpinBox *>(editor()))
            number->setValue(value.toInt());
        else
            qobject_cast<QLineEdit *>(editor())->setText(value);
    }

    void apply() const { find<QPushButton>("cmdapply")->click(); }

    QByteArray file() const
    {
        QFile standing(standingOptionsFile(folder.path()));
        standing.open(QIODevice::ReadOnly);
        return standing.readAll();
    }
};

} // namespace

class OptionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opening();
    void everyOption();
    void values_data();
    void values();
    void keyboard();
    void search();
    void showSearch();
    void savesChangedOnly();
    void cancelDrops();
    void loadDefault();
};

void OptionsTest::opening()
{
    const Desk desk("INDENT: yes\r\nnonsense\r\noutput-file: x\r\n");
    auto *tabs = desk.find<QTabWidget>("SSTab1");
    QStringList captions;
    for (int tab = 0; tab < tabs->count(); ++tab)
        captions << tabs->tabText(tab);
    QCOMPARE(captions,
             QStringList({q("Markup (HTML, XHTML, XML)"), q("Layout (Pretty Print)"), q("Character Encoding"),
                          q("Warnings"), q("Miscellaneous")}));
    QCOMPARE(desk.row()->text(0), q("add-xml-decl"));
    QCOMPARE(desk.find<QTextEdit>("txtdescription")->toPlainText(), optionCatalogue()[0].descriptionText());
    desk.select(50);
    QCOMPARE(desk.row()->text(1), q("yes"));
    QVERIFY(desk.row()->font(0).bold());
    desk.select(51);
    QVERIFY(!desk.row()->font(0).bold());
}

void OptionsTest::everyOption()
{
    const Desk desk;
    for (int index = 0; index < listedOptions; ++index) {
        const Option &option = optionCatalogue()[size_t(index)];
        desk.edit(index);
        QCOMPARE(desk.row()->text(0), option.nameText());
        QCOMPARE(desk.row()->text(1), option.builtInText());
        QCOMPARE(desk.find<QTextEdit>("txtdescription")->toPlainText(), option.descriptionText());
        const bool editable = option.kind < OptionKind::FixedYesNo;
        QCOMPARE(desk.panel()->isVisible(), editable);
        if (!editable)
            continue;
        QCOMPARE(desk.panel()->title(), q("Edit ") + option.nameText());
        QCOMPARE(desk.find<QLabel>("lblcurrent")->text(), q("Current: ") + option.builtInText());
        QCOMPARE(desk.editor()->objectName(), QStringLiteral("editor%1").arg(int(option.kind)));
        desk.apply();
        QCOMPARE(desk.row()->text(1), option.builtInText()); // applying what was preset changes nothing
        QVERIFY(!desk.panel()->isVisible());
    }
}

void OptionsTest::values_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("entered");
    QTest::addColumn<QString>("shown");
    QTest::newRow("list") << 50 << q("auto") << q("auto");
    QTest::newRow("number") << 60 << q("7") << q("7");
    QTest::newRow("too large") << 60 << q("99999") << q("32767");
    QTest::newRow("text") << 76 << q("a, b") << q("a, b");
    QTest::newRow("tags") << 43 << q("p,div ,  span,") << q("p, div, span");
}

void OptionsTest::values()
{
    QFETCH(int, index);
    QFETCH(QString, entered);
    QFETCH(QString, shown);
    const Desk desk;
    desk.edit(index);
    desk.enter(entered);
    desk.apply();
    QCOMPARE(desk.row()->text(1), shown);
    QVERIFY(desk.row()->font(1).bold());
    QVERIFY(!desk.row()->toolTip(0).isEmpty());
    desk.edit(40);
    desk.enter(q("strict"));
    QVERIFY(!desk.find<QLineEdit>("txtuser")->isEnabled());
    desk.enter(q("(user)"));
    QVERIFY(desk.find<QLineEdit>("txtuser")->isEnabled());
    desk.find<QLineEdit>("txtuser")->setText(entered);
    desk.apply();
    QCOMPARE(desk.row()->text(1), entered);
    desk.edit(40);
    QCOMPARE(qobject_cast<QComboBox *>(desk.editor())->currentText(),
             entered == q("auto") ? entered : q("(user)"));
}

void OptionsTest::keyboard()
{
    const Desk desk;
    desk.select(50);
    QTest::keyClick(desk.list(), Qt::Key_Return);
    QVERIFY(desk.panel()->isVisible());
    QVERIFY(!desk.find<QPushButton>("OKButton")->isEnabled());
    QTest::keyClick(desk.editor(), Qt::Key_Escape);
    QVERIFY(!desk.panel()->isVisible());
    QVERIFY(desk.dialog->isVisible());
    QTest::keyClick(desk.list(), Qt::Key_F2);
    QTest::keyClick(desk.list(), Qt::Key_Escape);
    QVERIFY(!desk.panel()->isVisible());
    QVERIFY(desk.dialog->isVisible());
    QTest::keyClick(desk.list(), Qt::Key_F2);
    desk.enter(q("auto"));
    QTest::keyClick(desk.editor(), Qt::Key_Return);
    QCOMPARE(desk.row()->text(1), q("auto"));
    QVERIFY(desk.dialog->isVisible());
    QVERIFY(desk.list()->hasFocus());
    QVERIFY(desk.find<QPushButton>("OKButton")->isEnabled());
}

void OptionsTest::search()
{
    Desk desk;
    auto *box = desk.find<QLineEdit>("txtfind");
    auto *results = desk.find<QListWidget>("lstfound");
    desk.find<QCheckBox>("chksearch")->click();
    QVERIFY(!desk.find<QToolButton>("cmdfind")->isEnabled());
    box->setText(q("WORD 2000"));
    desk.find<QToolButton>("cmdfind")->click();
    QCOMPARE(results->count(), 2);
    QCOMPARE(results->item(0)->text(), q("bare"));
    QCOMPARE(results->item(1)->text(), q("word-2000"));
    QTest::mouseClick(results->viewport(), Qt::LeftButton, {},
                      results->visualItemRect(results->item(1)).center());
    QCOMPARE(desk.row()->text(0), q("word-2000"));
    QVERIFY(desk.list()->hasFocus());
    box->setText(q("no such words anywhere"));
    desk.dialogs.answer(dialogs::Answer::Ok);
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(results->count(), 0);
    QCOMPARE(desk.dialogs.messages().last().text, q("Search text is not found!"));
    QVERIFY(desk.dialog->isVisible());
    Q_EMIT desk.find<OptionsSearch>("frasearch")->optionChosen(q("output-file"));
    QCOMPARE(desk.find<QTabWidget>("SSTab1")->tabText(desk.find<QTabWidget>("SSTab1")->currentIndex()),
             q("Miscellaneous"));
    QVERIFY(!desk.row());
}

void OptionsTest::showSearch()
{
    const Desk desk;
    const int before = desk.dialog->height();
    desk.find<QCheckBox>("chksearch")->click();
    auto *panel = desk.find<OptionsSearch>("frasearch");
    QVERIFY(panel->isVisible());
    QCOMPARE(desk.dialog->height(), before + panel->sizeHint().height() + 7);
    desk.find<QCheckBox>("chksearch")->click();
    QVERIFY(!panel->isVisible());
    QCOMPARE(desk.dialog->height(), before);
}

void OptionsTest::savesChangedOnly()
{
    const Desk desk("indent: yes\r\nwrap: 70\r\n");
    desk.edit(50);
    desk.enter(q("auto"));
    desk.apply();
    desk.edit(60);
    desk.enter(q("7"));
    desk.apply();
    desk.edit(60);
    desk.enter(optionCatalogue()[60].builtInText());
    desk.apply();
    desk.find<QPushButton>("OKButton")->click();
    QVERIFY(!desk.dialog->isVisible());
    QCOMPARE(desk.file(), QByteArray("wrap: 70\r\nindent: auto\r\n\r\n"));
}

void OptionsTest::cancelDrops()
{
    const Desk desk("indent: yes\r\n");
    desk.edit(50);
    desk.enter(q("auto"));
    desk.apply();
    desk.find<QPushButton>("CancelButton")->click();
    QVERIFY(!desk.dialog->isVisible());
    QCOMPARE(desk.file(), QByteArray("indent: yes\r\n"));
}

void OptionsTest::loadDefault()
{
    const Desk desk("wrap: 70\r\n");
    desk.find<QPushButton>("cmddefault")->click();
    QCOMPARE(desk.file(),
             QByteArray("indent: auto\r\nindent-spaces: 5\r\nforce-output: yes\r\ntidy-mark: no\r\n"));
    desk.select(74);
    QCOMPARE(desk.row()->text(1), q("no"));
    QVERIFY(desk.dialog->isVisible());
    desk.find<QPushButton>("OKButton")->click();
    QCOMPARE(desk.file(), QByteArray("\r\n"));
}

QTEST_MAIN(OptionsTest)
#include "test_options.moc"
