#include "editor/qiktagfrm.h"
#include "editor/quick_tag_target.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

using namespace editor;

namespace {

// Notes what is inserted, as one line each.
struct Target : QuickTagTarget
{
    int tab = 0;
    QByteArray selection;
    QStringList inserted;

    int currentTab() const override { return tab; }
    QByteArray selectedText() const override { return selection; }
    void replaceSelection(const QByteArray &utf8) override { inserted.append(QString::fromUtf8(utf8)); }
    void addElement(const QString &name, const QStringList &attributes) override
    {
        inserted.append((QStringList{name} + attributes).join(u'+'));
    }
};

// The dialog as it is opened over a tab.
class Opened
{
public:
    explicit Opened(int tab)
    {
        target.tab = tab;
        dialog = new qiktagfrm(target, &owner);
        dialog->show();
        list = dialog->findChild<QListWidget *>(QStringLiteral("List1"));
        search = dialog->findChild<QLineEdit *>(QStringLiteral("txtSearch"));
    }

    void press(const char *name) const
    {
        QTest::mouseClick(dialog->findChild<QPushButton *>(QString::fromLatin1(name)), Qt::LeftButton);
    }
    void choose(const QString &entry) const
    {
        const QList<QListWidgetItem *> found = list->findItems(entry, Qt::MatchExactly);
        QCOMPARE(found.size(), 1);
        list->setCurrentItem(found.first());
    }
    QString firstShown() const { return list->item(0)->text(); }

    Target target;
    QWidget owner;
    QPointer<qiktagfrm> dialog;
    QListWidget *list;
    QLineEdit *search;
};

} // namespace

class TestQiktagfrm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void inserts_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("inserted"); // empty for nothing
        QTest::newRow("tree") << 0 << QStringLiteral("<p></p>") << QStringLiteral("p");
        QTest::newRow("tree, attributes")
            << 0 << QStringLiteral("<area shape=\"\" alt=\"\" />") << QStringLiteral("area+shape+alt");
        QTest::newRow("tree, none") << 0 << QStringLiteral("<br />") << QStringLiteral("br");
        QTest::newRow("editor") << 1 << QStringLiteral("<p></p>") << QStringLiteral("<p>abc</p>");
        QTest::newRow("editor, declaration")
            << 1 << QStringLiteral("<!ELEMENT name ANY>") << QStringLiteral("<!ELEMENT name ANY>abc");
        QTest::newRow("preview") << 2 << QStringLiteral("<p></p>") << QString();
    }
    void inserts()
    {
        QFETCH(int, tab);
        QFETCH(QString, entry);
        QFETCH(QString, inserted);
        QApplication::clipboard()->setText(QStringLiteral("kept"));
        Opened opened(tab);
        opened.target.selection = "abc";
        opened.choose(entry);
        opened.press("OKButton");
        QCOMPARE(opened.target.inserted.join(u'\n'), inserted);
        QVERIFY(opened.dialog->isVisible());
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("kept"));
    }

    void showsWhatTheModeTakes()
    {
        Opened opened(0);
        QCOMPARE(opened.list->count(), 236);
        QCOMPARE(opened.firstShown(), QStringLiteral("<a></a>"));
        opened.choose(QStringLiteral("<p></p>"));
        opened.target.tab = 1;
        opened.dialog->modeChanged();
        QCOMPARE(opened.list->count(), 302);
        QCOMPARE(opened.firstShown(), QStringLiteral("<!-- comments -->"));
        QCOMPARE(opened.list->currentItem()->text(), QStringLiteral("<p></p>"));
    }

    // The mode changed and nobody said so.
    void declarationNeverReachesTheTree()
    {
        Opened opened(1);
        opened.choose(QStringLiteral("<!-- comments -->"));
        opened.target.tab = 0;
        opened.press("OKButton");
        QCOMPARE(opened.target.inserted, QStringList());
        QCOMPARE(opened.list->count(), 236);
    }

    void nothingSelectedInsertsNothing()
    {
        Opened opened(1);
        opened.press("OKButton");
        QTest::keyClick(opened.search, Qt::Key_Return);
        QCOMPARE(opened.target.inserted, QStringList());
        QVERIFY(opened.dialog->isVisible());
    }

    void doubleClickInserts()
    {
        Opened opened(0);
        const QPoint row = opened.list->visualItemRect(opened.list->item(1)).center();
        QTest::mouseClick(opened.list->viewport(), Qt::LeftButton, {}, row);
        QTest::mouseDClick(opened.list->viewport(), Qt::LeftButton, {}, row);
        QCOMPARE(opened.target.inserted, QStringList{QStringLiteral("abbr")});
    }

    void searchNarrowsInOrder()
    {
        Opened opened(1);
        QTest::keyClicks(opened.search, QStringLiteral("sub"));
        QCOMPARE(opened.list->count(), 2);
        QVERIFY(opened.firstShown().startsWith(QStringLiteral("<element abstract")));
        QCOMPARE(opened.list->currentItem()->text(), QStringLiteral("<sub></sub>"));
        opened.search->clear();
        QCOMPARE(opened.list->count(), 302);
        QCOMPARE(opened.list->currentItem()->text(), QStringLiteral("<sub></sub>"));
        opened.search->setText(QStringLiteral("zzz"));
        opened.press("OKButton");
        QCOMPARE(opened.target.inserted, QStringList());
    }

    void worksByKeyboard()
    {
        Opened opened(0);
        QVERIFY(QTest::qWaitForWindowActive(opened.dialog));
        QTest::keyClick(opened.search, Qt::Key_Down);
        QTest::keyClick(opened.search, Qt::Key_Down);
        QTest::keyClick(opened.search, Qt::Key_Return);
        QTest::keyClicks(opened.list, QStringLiteral("td"));
        QTest::keyClick(opened.list, Qt::Key_Return);
        QCOMPARE(opened.target.inserted.join(u' '), QStringLiteral("abbr td+rowspan+colspan"));
        QTest::keyClick(opened.search, Qt::Key_Escape);
        QTRY_VERIFY(opened.dialog.isNull());
    }

    void cancelCloses()
    {
        Opened opened(0);
        opened.press("CancelButton");
        QTRY_VERIFY(opened.dialog.isNull());
        QCOMPARE(opened.target.inserted, QStringList());
    }
};

QTEST_MAIN(TestQiktagfrm)
#include "test_qiktagfrm.moc"
