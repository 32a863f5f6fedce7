// The options dialog: every option reachable, each in its editor; found, marked, saved or dropped.
#include "platform/dialogs/scripted_dialogs.h"
#include "tidy/config_files.h"
#include "tidy/option_catalogue.h"
#include "tidy/options_editor.h"
#include "tidy/options_list.h"
#include "tidy/options_search.h"
#include "tidy/tidyopfrm.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>

using namespace tidy;
using namespace Qt::StringLiterals;

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
    void click(const char *name) const { find<QAbstractButton>(name)->click(); }

    void edit(int index) const
    {
        dialog->selitm(tabForIndex(index), itemKey(index));
        find<QTabWidget>("SSTab1")->currentWidget()->findChild<QPushButton *>(q("cmdedit"))->click();
    }

    QWidget *editor() const
    {
        int number = 0;
        while (!find<QWidget>(qPrintable(u"editor%1"_s.arg(number)))->isVisible())
            ++number;
        return find<QWidget>(qPrintable(u"editor%1"_s.arg(number)));
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
    void change(int index, const QString &value) const
    {
        edit(index);
        enter(value);
        click("cmdapply");
    }

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
    void everyOption()
    {
        const Desk desk;
        QCOMPARE(desk.row()->text(0), q("add-xml-decl"));
        for (int index = 0; index < int(optionCatalogue().size()); ++index) {
            if (!isListed(index))
                continue;
            const Option &option = optionCatalogue()[size_t(index)];
            desk.edit(index);
            QCOMPARE(desk.row()->text(0), option.nameText());
            const bool editable = option.kind < OptionKind::FixedYesNo;
            QCOMPARE(desk.panel()->isVisible(), editable);
            if (!editable)
                continue;
            QCOMPARE(desk.editor()->objectName(), u"editor%1"_s.arg(int(option.kind)));
            desk.click("cmdapply");
            QCOMPARE(desk.row()->text(1), defaultValue(index)); // applying what was preset changes nothing
            QVERIFY(!desk.panel()->isVisible() && !desk.row()->font(0).bold());
        }
    }

    void values()
    {
        const std::tuple<int, const char *, const char *> rows[] = {{50, "auto", "auto"},
                                                                    {60, "7", "7"},
                                                                    {41, "keep-last", "keep-last"},
                                                                    {83, "inline", "inline"},
                                                                    {60, "99999", "32767"},
                                                                    {76, "a, b", "a, b"},
                                                                    {43, "p,div ,  span,", "p, div, span"},
                                                                    {40, "strict", "strict"}};
        const Desk desk;
        for (const auto &[index, entered, shown] : rows) {
            desk.change(index, q(entered));
            QCOMPARE(desk.row()->text(1), q(shown));
            QVERIFY(desk.row()->font(1).bold() && !desk.row()->toolTip(0).isEmpty());
        }
        desk.edit(40);
        QVERIFY(!desk.find<QLineEdit>("txtuser")->isEnabled());
        desk.enter(q("(user)"));
        QVERIFY(desk.find<QLineEdit>("txtuser")->isEnabled());
        desk.find<QLineEdit>("txtuser")->setText(q("mine"));
        desk.click("cmdapply");
        QCOMPARE(desk.row()->text(1), q("mine"));
        desk.edit(40);
        QCOMPARE(qobject_cast<QComboBox *>(desk.editor())->currentText(), q("(user)"));
    }

    void keyboard()
    {
        const Desk desk;
        desk.dialog->selitm(tabForIndex(50), itemKey(50));
        QTest::keyClick(desk.list(), Qt::Key_Return);
        QVERIFY(desk.panel()->isVisible() && !desk.find<QPushButton>("OKButton")->isEnabled());
        QTest::keyClick(desk.editor(), Qt::Key_Escape);
        QVERIFY(!desk.panel()->isVisible() && desk.dialog->isVisible());
        QTest::keyClick(desk.list(), Qt::Key_F2);
        QTest::keyClick(desk.list(), Qt::Key_Escape);
        QVERIFY(!desk.panel()->isVisible() && desk.dialog->isVisible());
        QTest::keyClick(desk.list(), Qt::Key_F2);
        desk.enter(q("auto"));
        QTest::keyClick(desk.editor(), Qt::Key_Return);
        QCOMPARE(desk.row()->text(1), q("auto"));
        QVERIFY(desk.dialog->isVisible() && desk.list()->hasFocus());
        QVERIFY(desk.find<QPushButton>("OKButton")->isEnabled());
    }

    void search()
    {
        Desk desk;
        auto *box = desk.find<QLineEdit>("txtfind");
        auto *results = desk.find<QListWidget>("lstfound");
        auto *panel = desk.find<OptionsSearch>("frasearch");
        desk.click("chksearch");
        box->setText(q("WORD 2000"));
        desk.click("cmdfind");
        QCOMPARE(results->count(), 2);
        QCOMPARE(results->item(0)->text(), q("bare"));
        QTest::mouseClick(results->viewport(), Qt::LeftButton, {},
                          results->visualItemRect(results->item(1)).center());
        QCOMPARE(desk.row()->text(0), q("word-2000"));
        QVERIFY(desk.list()->hasFocus());
        box->setText(q("no such words anywhere"));
        desk.dialogs.answer(dialogs::Answer::Ok);
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(results->count(), 0);
        QCOMPARE(desk.dialogs.messages().last().text, q("Search text is not found!"));
        Q_EMIT panel->optionChosen(q("output-file")); // which is in no list
        QVERIFY(!desk.row() && desk.find<QTextEdit>("txtdescription")->toPlainText().isEmpty());
    }

    void saving()
    {
        const std::pair<const char *, QByteArray> rows[] = {
            {"OKButton", "odd\r\nwrap: 70\r\nindent: auto\r\n\r\n"},
            {"CancelButton", "INDENT: yes\r\nodd\r\nwrap: 70\r\n"},
        };
        for (const auto &[button, file] : rows) {
            const Desk desk("INDENT: yes\r\nodd\r\nwrap: 70\r\n");
            desk.edit(50);
            QCOMPARE(desk.row()->text(1), q("yes"));
            desk.change(50, q("auto"));
            desk.change(60, q("7"));
            desk.change(60, defaultValue(60));
            desk.click(button);
            QVERIFY(!desk.dialog->isVisible());
            QCOMPARE(desk.file(), file);
        }
    }

    void loadDefault()
    {
        const Desk desk("wrap: 70\r\n");
        desk.click("cmddefault");
        QCOMPARE(desk.file(),
                 QByteArray("indent: auto\r\nindent-spaces: 5\r\nforce-output: yes\r\ntidy-mark: no\r\n"));
        desk.dialog->selitm(tabForIndex(74), itemKey(74));
        QCOMPARE(desk.row()->text(1), q("no"));
        QVERIFY(desk.dialog->isVisible());
        desk.click("OKButton");
        QCOMPARE(desk.file(), QByteArray("\r\n"));
    }
};

QTEST_MAIN(OptionsTest)
#include "test_options.moc"
