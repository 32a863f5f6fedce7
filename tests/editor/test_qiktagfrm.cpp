#include "editor/qiktagfrm.h"
#include "editor/quick_tag_target.h"

#include <QtTest>
#include <QtWidgets>

using namespace editor;
using namespace Qt::StringLiterals;

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
    QString addElement(const QString &name, const QStringList &attributes) override
    {
        if (name.contains(u':'))
            return u"No prefix"_s;
        inserted.append((QStringList{name} + attributes).join(u'+'));
        return {};
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
        list = dialog->findChild<QListWidget *>(u"List1"_s);
        search = dialog->findChild<QLineEdit *>(u"txtSearch"_s);
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
    QString inserted() const { return target.inserted.join(u' '); }
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
    void inserts()
    {
        const std::tuple<int, QString, QString> rows[] = {
            {0, u"<p></p>"_s, u"p"_s},
            {0, u"<area shape=\"\" alt=\"\" />"_s, u"area+shape+alt"_s},
            {1, u"<p></p>"_s, u"<p>abc</p>"_s},
            {1, u"<!ELEMENT name ANY>"_s, u"<!ELEMENT name ANY>abc"_s},
            {2, u"<p></p>"_s, {}},
        };
        QApplication::clipboard()->setText(u"kept"_s);
        for (const auto &[tab, entry, inserted] : rows) {
            Opened opened(tab);
            opened.target.selection = "abc";
            opened.press("OKButton");
            QTest::keyClick(opened.search, Qt::Key_Return); // nothing is selected
            opened.choose(entry);
            opened.press("OKButton");
            QCOMPARE(opened.inserted(), inserted);
            QVERIFY(opened.dialog->isVisible());
        }
        QCOMPARE(QApplication::clipboard()->text(), u"kept"_s);
    }

    void showsWhatTheModeTakes()
    {
        Opened opened(0);
        QCOMPARE(opened.list->count(), 236);
        QCOMPARE(opened.firstShown(), u"<a></a>"_s);
        opened.choose(u"<p></p>"_s);
        opened.target.tab = 1;
        opened.dialog->modeChanged();
        QCOMPARE(opened.list->count(), 302);
        QCOMPARE(opened.firstShown(), u"<!-- comments -->"_s);
        QCOMPARE(opened.list->currentItem()->text(), u"<p></p>"_s);
    }

    // The mode changed and nobody said so.
    void declarationNeverReachesTheTree()
    {
        Opened opened(1);
        opened.choose(u"<!-- comments -->"_s);
        opened.target.tab = 0;
        opened.press("OKButton");
        QCOMPARE(opened.inserted(), QString());
        QCOMPARE(opened.list->count(), 236);
    }

    // Until another tag is chosen or inserted.
    void saysWhyATagIsRefused()
    {
        Opened opened(0);
        const auto *state = opened.dialog->findChild<QLabel *>(u"lblState"_s);
        const QString usual = state->text();
        opened.choose(u"<xsl:text></xsl:text>"_s);
        opened.press("OKButton");
        QCOMPARE(state->text(), u"No prefix."_s);
        opened.choose(u"<p></p>"_s);
        QCOMPARE(state->text(), usual);
    }

    // Long tags are read to their ends.
    void listScrollsSideways()
    {
        Opened opened(1);
        const QScrollBar *bar = opened.list->horizontalScrollBar();
        QTest::keyClick(opened.list, Qt::Key_Right);
        QVERIFY(bar->value() > 0);
        QVERIFY(bar->maximum() + opened.list->viewport()->width() >= opened.list->sizeHintForColumn(0));
        QTest::keyClick(opened.list, Qt::Key_Left);
        QCOMPARE(bar->value(), 0);
    }

    void searchNarrowsInOrder()
    {
        Opened opened(1);
        QTest::keyClicks(opened.search, u"sub"_s);
        QCOMPARE(opened.list->count(), 2);
        QVERIFY(opened.firstShown().startsWith(u"<element abstract"_s));
        QCOMPARE(opened.list->currentItem()->text(), u"<sub></sub>"_s);
        opened.search->clear();
        QCOMPARE(opened.list->count(), 302);
        QCOMPARE(opened.list->currentItem()->text(), u"<sub></sub>"_s);
        opened.search->setText(u"zzz"_s);
        opened.press("OKButton");
        QCOMPARE(opened.inserted(), QString());
    }

    void worksByKeyboard()
    {
        Opened opened(0);
        QVERIFY(QTest::qWaitForWindowActive(opened.dialog));
        QTest::keyClick(opened.search, Qt::Key_Down);
        QTest::keyClick(opened.search, Qt::Key_Down);
        QTest::keyClick(opened.search, Qt::Key_Return);
        QTest::keyClicks(opened.list, u"td"_s);
        QTest::keyClick(opened.list, Qt::Key_Return);
        QCOMPARE(opened.inserted(), u"abbr td+rowspan+colspan"_s);
        QTest::keyClick(opened.search, Qt::Key_Escape);
        QTRY_VERIFY(opened.dialog.isNull());
        Opened again(0);
        again.press("CancelButton");
        QTRY_VERIFY(again.dialog.isNull());
    }
};

QTEST_MAIN(TestQiktagfrm)
#include "test_qiktagfrm.moc"
