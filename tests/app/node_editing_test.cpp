// Editing by structure through the real window: keys, menus, buttons, and what follows in the other views.
#include "window_fixture.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>

using namespace app_test;

namespace {

class TreeWindow : public Window
{
public:
    explicit TreeWindow(const Folders &folders, const QByteArray &text)
        : Window(folders, {written(folders, text)}),
          tree(main->findChild<QTreeView *>(QStringLiteral("TreeView1")))
    {
        QVERIFY(QTest::qWaitForWindowActive(main.get()));
        tree->setFocus();
    }

    QByteArray xml() { return main->session().state().Document.xml(); }

    void select(const QList<int> &path)
    {
        QModelIndex node = tree->model()->index(0, 0);
        for (const int row : path)
            node = tree->model()->index(row, 0, node);
        tree->setCurrentIndex(node);
    }

    QString selected() const { return tree->currentIndex().data().toString(); }

    void press(const char *keys)
    {
        const QKeyCombination key = QKeySequence(QString::fromLatin1(keys))[0];
        QTest::keyClick(tree, key.key(), key.keyboardModifiers());
    }

    QTreeView *tree;

private:
    static QString written(const Folders &folders, const QByteArray &text)
    {
        const QString path = folders.document(QStringLiteral("d.xml"));
        write(path, text);
        return path;
    }
};

} // namespace

class NodeEditingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keys()
    {
        const Folders folders;
        TreeWindow window(folders, "<a><b/><c/></a>");
        const struct
        {
            const char *keys;
            QByteArray text;
        } steps[] = {
            {"Ctrl+Shift+E", "<a><b/><c/><Element/></a>"},
            {"Ctrl+Shift+T", "<a><b/><c/><Element/>Text</a>"},
            {"Ctrl+Z", "<a><b/><c/><Element/></a>"},
            {"Ctrl+Shift+M", "<a><b/><c/><Element/><!--Comment--></a>"},
            {"Ctrl+Z", "<a><b/><c/><Element/></a>"},
            {"Ctrl+Z", "<a><b/><c/></a>"},
            {"Down", "<a><b/><c/></a>"},
            {"Alt+Up", "<a><b/><c/></a>"},
            {"Alt+Down", "<a><c/><b/></a>"},
            {"Alt+Right", "<a><c><b/></c></a>"},
            {"Ctrl+Z", "<a><c/><b/></a>"},
            {"Ctrl+Shift+Z", "<a><c><b/></c></a>"},
            {"Alt+Left", "<a><c></c><b/></a>"},
            {"Ctrl+C", "<a><c></c><b/></a>"},
            {"Ctrl+V", "<a><c></c><b><b/></b></a>"},
            {"Del", "<a><c></c></a>"},
        };
        for (const auto &step : steps) {
            window.press(step.keys);
            QCOMPARE(window.xml(), step.text);
        }
        QCOMPARE(window.selected(), QStringLiteral("c"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("<b/>"));
        QVERIFY(window.main->session().saving().isChanged());
        while (window.action("mnuundotag")->isEnabled())
            window.choose("mnuundotag");
        QVERIFY(!window.main->session().saving().isChanged());
    }

    // What belongs to the tree stays out of the editor, and the other way round.
    void keysBelongToTheirView()
    {
        const Folders folders;
        TreeWindow window(folders, "<a><b/></a>");
        window.select({0});
        window.choose("mnuxmlmode");
        window.editor()->placeCaret(0, 0);
        QTest::keyClick(window.editor(), Qt::Key_Delete);
        QTest::keyClick(window.editor(), Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(window.editor(), Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(window.xml(), QByteArray("<a><b/></a>"));
        QCOMPARE(window.editor()->text(), QByteArray("<a><b/></a>"));
    }

    void skeletonsInXmlMode_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("caret");
        QTest::newRow("mnucdata") << QByteArray("<a><![CDATA[]]></a>") << 12;
        QTest::newRow("mnucomment") << QByteArray("<a><!----></a>") << 7;
        QTest::newRow("mnupi") << QByteArray("<a><?") + "?></a>" << 5;
    }

    void skeletonsInXmlMode()
    {
        QFETCH(QByteArray, text);
        const Folders folders;
        TreeWindow window(folders, "<a>abc</a>");
        window.choose("mnuxmlmode");
        window.editor()->placeCaret(0, 3);
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(window.editor(), Qt::Key_Right, Qt::ShiftModifier);
        window.choose(QTest::currentDataTag());
        QCOMPARE(window.editor()->text(), text);
        QTEST(window.editor()->caretColumn(), "caret");
        QCOMPARE(window.xml(), QByteArray("<a>abc</a>"));
        window.choose("mnuelement"); // acts on the tree even here
        QCOMPARE(window.xml(), QByteArray("<a>abc<Element/></a>"));
        QCOMPARE(window.editor()->text(), text);
    }

    void enabledStates()
    {
        const Folders folders;
        TreeWindow window(folders, "<a><b/><!--c--><d/></a>");
        const auto enabled = [&](std::initializer_list<const char *> names) {
            return std::all_of(names.begin(), names.end(),
                               [&](const char *name) { return window.action(name)->isEnabled(); });
        };
        QVERIFY(!window.action("mnupastetag")->isEnabled());
        QVERIFY(!window.main->findChild<QWidget *>(QStringLiteral("Toolbar2"))
                     ->findChild<QToolButton *>(QStringLiteral("paste"))
                     ->isEnabled());
        QVERIFY(!window.action("mnumoveup")->isEnabled()
                && !window.action("mnuconverttoattribute")->isEnabled());
        window.select({1});
        QVERIFY(enabled({"mnumoveup", "mnumovedown", "mnumoveright", "mnueditnod", "mnuconverttoattribute"}));
        window.select({2});
        QVERIFY(!window.action("mnumoveright")->isEnabled() && !window.action("mnumovedown")->isEnabled());
        QVERIFY(!window.action("mnumoveleft")->isEnabled() && !window.action("mnuundotag")->isEnabled());
        window.choose("mnumoveup");
        QCOMPARE(window.action("mnuundotag")->text(), QStringLiteral("&Undo Move Up"));
        QVERIFY(enabled({"mnumovedown", "mnumoveup", "mnumoveright"}));
        window.choose("mnucopytag");
        QVERIFY(enabled({"mnupastetag"}));
    }

    void deletedRootLeavesANewDocument()
    {
        const Folders folders;
        TreeWindow window(folders, "<a><b/></a>");
        window.press("Del");
        QCOMPARE(window.xml(), QByteArray("<?xml version=\"1.0\"?>\r\n<Element/>"));
        QCOMPARE(window.treeRoot(), QStringLiteral("Element"));
        QVERIFY(!window.action("mnuundotag")->isEnabled());
        window.choose("mnuxmlmode");
        QCOMPARE(window.editor()->text(), window.xml());
    }

    void dialogIsOneStep()
    {
        const Folders folders;
        TreeWindow window(folders, "<a><b x='1'/></a>");
        window.select({0});
        QTimer::singleShot(0, [] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            dialog->findChild<QLineEdit *>(QStringLiteral("elname"))->setText(QStringLiteral("z"));
            dialog->accept();
        });
        window.press("F2");
        QCOMPARE(window.xml(), QByteArray("<a><z x='1'/></a>"));
        QCOMPARE(window.selected(), QStringLiteral("z x='1'"));
        window.choose("mnuundotag");
        QCOMPARE(window.xml(), QByteArray("<a><b x='1'/></a>"));
        QCOMPARE(window.selected(), QStringLiteral("b x='1'"));
    }

    void menuAtThePointer()
    {
        const Folders folders;
        TreeWindow window(folders, "<a><b/></a>");
        auto *menu = window.main->findChild<QMenu *>(QStringLiteral("mnueditnod1"));
        const QRect row
            = window.tree->visualRect(window.tree->model()->index(0, 0, window.tree->model()->index(0, 0)));
        QTest::mousePress(window.tree->viewport(), Qt::RightButton, {}, row.center());
        QVERIFY(menu->isVisible());
        QCOMPARE(window.selected(), QStringLiteral("b"));
        menu->close();
        window.choose("mnudeletetag");
        QCOMPARE(window.xml(), QByteArray("<a></a>"));
    }

    void quickTagsInsertIntoTheTree()
    {
        const Folders folders;
        TreeWindow window(folders, "<r/>");
        window.choose("mnuQuicktag");
        auto *dialog = window.main->findChild<QDialog *>(QStringLiteral("qiktagfrm"));
        QVERIFY(dialog);
        auto *list = dialog->findChild<QListWidget *>(QStringLiteral("List1"));
        const auto choose = [&](const char *tag) {
            const QList<QListWidgetItem *> found = list->findItems(QLatin1String(tag), Qt::MatchExactly);
            QCOMPARE(found.size(), 1);
            list->setCurrentItem(found.first());
            dialog->findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
        };
        choose("<area shape=\"\" alt=\"\" />");
        QCOMPARE(window.xml(), QByteArray("<r><area shape=\"\" alt=\"\"/></r>"));
        choose("<xsl:text></xsl:text>"); // its prefix is not declared
        QCOMPARE(window.xml(), QByteArray("<r><area shape=\"\" alt=\"\"/></r>"));
        QVERIFY(!window.note().isEmpty());
        window.choose("mnuundotag");
        QCOMPARE(window.xml(), QByteArray("<r/>"));
    }

    // A node that comes back is open as it was, and selected.
    void undoOpensAgain()
    {
        const Folders folders;
        TreeWindow window(folders, "<a><b><c><d/></c></b><e/></a>");
        window.choose("mnuexpand");
        window.select({0});
        window.press("Alt+Down");
        QVERIFY(!window.tree->isExpanded(window.tree->currentIndex()));
        window.choose("mnuundotag");
        window.press("Del");
        QCOMPARE(window.selected(), QStringLiteral("a"));
        window.choose("mnuundotag");
        QCOMPARE(window.selected(), QStringLiteral("b"));
        QVERIFY(window.tree->isExpanded(window.tree->currentIndex()));
        const QModelIndex c = window.tree->model()->index(0, 0, window.tree->currentIndex());
        QVERIFY(window.tree->isExpanded(c));
        window.choose("mnuredotag");
        QCOMPARE(window.xml(), QByteArray("<a><e/></a>"));
    }

    void smartSelectAndExpand()
    {
        const Folders folders;
        TreeWindow window(folders, "<a><b><c><d/></c></b><e><f/></e></a>");
        window.choose("mnuexpand");
        window.select({0, 0, 0});
        QVERIFY(!window.tree->visualRect(window.tree->currentIndex()).isEmpty());
        window.choose("mnutagselectedonly");
        window.select({1});
        QTest::mouseClick(window.tree->viewport(), Qt::LeftButton, {},
                          window.tree->visualRect(window.tree->currentIndex()).center());
        QVERIFY(window.tree->isExpanded(window.tree->currentIndex()));
        const QModelIndex root = window.tree->model()->index(0, 0);
        QVERIFY(window.tree->isExpanded(root)
                && !window.tree->isExpanded(window.tree->model()->index(0, 0, root)));
    }
};

int main(int argc, char *argv[])
{
    NodeEditingTest tests;
    return runWindowTests(argc, argv, tests);
}
#include "node_editing_test.moc"
