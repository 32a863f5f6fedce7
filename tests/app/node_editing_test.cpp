// Editing by structure through the real window: keys, menus, buttons, and what follows in the other views.
#include "tree/tree_view.h"
#include "window_fixture.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QListWidget>
#include <QPushButton>
#include <tuple>

using namespace app_test;
using namespace Qt::StringLiterals;

namespace {

class TreeWindow : public Window
{
public:
    explicit TreeWindow(const QByteArray &text)
        : Window("d.xml", text), tree(main->findChild<tree::TreeView *>())
    {
        QVERIFY(QTest::qWaitForWindowActive(main.get()));
        tree->setFocus();
    }

    QByteArray xml() { return main->session().state().Document.xml(); }

    QModelIndex at(const QList<int> &rows) const
    {
        QModelIndex node = tree->model()->index(0, 0);
        for (const int row : rows)
            node = tree->model()->index(row, 0, node);
        return node;
    }
    void select(const QList<int> &rows) { tree->setCurrentIndex(at(rows)); }

    QString selected() const { return tree->currentIndex().data().toString(); }

    void press(const char *keys)
    {
        const QKeyCombination key = QKeySequence(QString::fromLatin1(keys))[0];
        QTest::keyClick(tree, key.key(), key.keyboardModifiers());
    }

    tree::TreeView *tree;
};

} // namespace

class NodeEditingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keys()
    {
        TreeWindow window("<a><b/><c/></a>");
        const std::pair<const char *, QByteArray> steps[] = {
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
            {"Ctrl+X", "<a></a>"},
            {"Ctrl+V", "<a><c></c></a>"},
            {"Ctrl+Z", "<a></a>"},
            {"Ctrl+Z", "<a><c></c></a>"},
        };
        for (const auto &[keys, text] : steps) {
            window.press(keys);
            QCOMPARE(window.xml(), text);
        }
        QCOMPARE(window.selected(), u"c"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"<c></c>"_s);
        QVERIFY(window.main->session().saving().isChanged());
        while (window.action("mnuundotag")->isEnabled())
            window.choose("mnuundotag");
        QVERIFY(!window.main->session().saving().isChanged());
    }

    // What belongs to the tree stays out of the editor, and the other way round.
    void keysBelongToTheirView()
    {
        TreeWindow window("<a><b/></a>");
        window.select({0});
        window.choose("mnuxmlmode");
        window.editor()->placeCaret(0, 0);
        QTest::keyClick(window.editor(), Qt::Key_Delete);
        QTest::keyClick(window.editor(), Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(window.editor(), Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(window.xml(), QByteArray("<a><b/></a>"));
        QCOMPARE(window.editor()->text(), QByteArray("<a><b/></a>"));
    }

    void skeletonsInXmlMode()
    {
        const std::tuple<const char *, QByteArray, int> rows[]
            = {{"mnucdata", "<a><![CDATA[]]></a>", 12},
               {"mnucomment", "<a><!----></a>", 7},
               {"mnupi", QByteArray("<a><?") + "?></a>", 5},
               {"mnuelement", "<a><Element></Element></a>", 12},
               {"mnutext", "<a>Text</a>", 7}};
        for (const auto &[command, text, caret] : rows) {
            TreeWindow window("<a>abc</a>");
            window.choose("mnuxmlmode");
            window.editor()->placeCaret(0, 3);
            for (int i = 0; i < 3; ++i)
                QTest::keyClick(window.editor(), Qt::Key_Right, Qt::ShiftModifier);
            window.choose(command);
            QCOMPARE(window.editor()->text(), text);
            QCOMPARE(window.editor()->caretColumn(), caret);
            QCOMPARE(window.xml(), QByteArray("<a>abc</a>"));
            QCOMPARE(window.editor()->selectedText(), QByteArray(text.contains("Text") ? "Text" : ""));
            window.choose("editcmxsub_0");
            QCOMPARE(window.editor()->text(), QByteArray("<a>abc</a>"));
        }
    }

    // The caret goes to the selected node, and the node around the caret is selected, with what was open and
    // in view as before.
    void placeGoesAlong()
    {
        const QByteArray text = "<a>\n  <b><c>x</c></b>\n  <d><e><f/></e>\n\n    </d> <!--g-->\n</a>";
        TreeWindow window(text);
        const std::tuple<QList<int>, int, int> nodes[]
            = {{{1}, 2, 2}, {{0, 0}, 1, 5}, {{0, 0, 0}, 1, 8}, {{2}, 4, 9}, {{1, 0, 0}, 2, 8}, {{}, 0, 0}};
        for (const auto &[rows, line, column] : nodes) {
            window.select(rows);
            window.choose("mnuxmlmode");
            QCOMPARE(std::pair(window.editor()->caretLine(), window.editor()->caretColumn()),
                     std::pair(line, column));
            window.choose("mnunormalmod");
            QCOMPARE(window.tree->currentIndex(), window.at(rows));
        }
        const std::tuple<int, int, QList<int>> carets[] = {
            {0, 1, {}},   {0, 3, {}},  {1, 0, {0}}, {1, 12, {0, 0}}, {1, 13, {0, 0}}, {1, 14, {0}},
            {1, 17, {0}}, {3, 0, {1}}, {4, 4, {1}}, {4, 11, {2}},    {4, 17, {2}},    {5, 0, {}},
        };
        for (const auto &[line, column, rows] : carets) {
            window.choose("mnuxmlmode");
            window.editor()->placeCaret(line, column);
            window.choose("mnunormalmod");
            QCOMPARE(window.tree->currentIndex(), window.at(rows));
            window.choose("mnuxmlmode");
            QCOMPARE(window.editor()->caretColumn(), column); // it stands in the selected node
            window.choose("mnunormalmod");
        }
    }

    void openRowsStay()
    {
        const QByteArray rows = QByteArray("<r><s/></r>\n").repeated(200);
        TreeWindow window("<a>\n<b><c/></b>\n" + rows + "<d><e><f/></e></d>\n</a>");
        window.tree->collapseAll();
        for (const QList<int> &open : {QList<int>{}, {0}, {201}, {201, 0}})
            window.tree->expand(window.at(open));
        window.select({150});
        const int shown = window.tree->shownRows();
        QCOMPARE(shown, 1 + 202 + 1 + 2);
        window.choose("mnuxmlmode");
        window.typeAt(151, 2, " "); // within the selected start tag
        window.choose("mnunormalmod");
        QVERIFY(window.xml().contains("<r ><s/></r>"));
        QCOMPARE(window.tree->shownRows(), shown);
        QCOMPARE(window.tree->currentIndex(), window.at({150}));
        QVERIFY(window.tree->viewport()->rect().contains(window.tree->visualRect(window.at({150}))));
        window.choose("mnuxmlmode");
        window.typeAt(1, 0, "<new/>"); // what follows it moves on
        window.choose("mnunormalmod");
        QCOMPARE(window.tree->shownRows(), shown + 1);
        QVERIFY(window.tree->isExpanded(window.at({1})) && window.tree->isExpanded(window.at({202, 0})));
        window.choose("mnumoveup");
        window.select({202, 0, 0});
        window.choose("mnuelement"); // an edited tree knows its places too
        window.choose("mnuxmlmode");
        QCOMPARE(window.editor()->caretLine(), 202);
        window.typeAt(202, 0, " ");
        window.choose("mnunormalmod");
        QVERIFY(window.tree->isExpanded(window.at({202, 0, 0})));
    }

    void placeStaysWhenLoadedAgain()
    {
        TreeWindow window("<a><b><c/></b><d><e/></d></a>");
        window.tree->expand(window.at({1}));
        window.select({1, 0});
        write(window.path, "<a><b><c/></b><new/><d><e/></d></a>");
        window.dialogs.answer(dialogs::Answer::Yes);
        window.choose("mnuSave"); // asks whether to load it again
        QCOMPARE(window.xml(), contentOf(window.path));
        QCOMPARE(window.tree->shownRows(), 5);
        QCOMPARE(window.tree->currentIndex(), window.at({2, 0}));
    }

    // Whoever put something on the clipboard last.
    void pasteTakesTheClipboard()
    {
        QClipboard *clipboard = QGuiApplication::clipboard();
        clipboard->clear();
        TreeWindow window("<a><b>x</b>y</a>");
        QVERIFY(!window.action("mnupastetag")->isEnabled());
        window.select({0});
        window.press("Ctrl+C");
        QVERIFY(window.action("mnupastetag")->isEnabled());
        window.select({});
        clipboard->setText(u"1 &lt; 2"_s); // some program's
        window.press("Ctrl+V");
        QCOMPARE(window.xml(), QByteArray("<a><b>x</b>y1 &amp;lt; 2</a>"));
        window.press("Ctrl+Z");
        window.choose("mnuxmlmode");
        window.typeAt(0, 0, " ");
        window.editor()->replaceText("<a>1 &lt; 2</a>");
        window.editor()->placeCaret(0, 3);
        for (int i = 0; i < 8; ++i)
            QTest::keyClick(window.editor(), Qt::Key_Right, Qt::ShiftModifier);
        window.choose("editcmxsub_4");
        QCOMPARE(clipboard->text(), u"1 &lt; 2"_s);
        window.choose("mnunormalmod");
        window.select({});
        window.press("Ctrl+V");
        QCOMPARE(window.xml(), QByteArray("<a>1 &lt; 21 &lt; 2</a>"));
        clipboard->setText(u"<b>"_s);
        window.press("Ctrl+V");
        QCOMPARE(window.xml(), QByteArray("<a>1 &lt; 21 &lt; 2</a>"));
        QVERIFY(!window.note().isEmpty());
        clipboard->clear();
        QVERIFY(!window.action("mnupastetag")->isEnabled());
    }

    void enabledStates()
    {
        QGuiApplication::clipboard()->clear();
        TreeWindow window("<a><b/><!--c--><d/></a>");
        static constexpr const char *const names[]
            = {"mnumoveup",  "mnumovedown", "mnumoveleft", "mnumoveright", "mnuconverttoattribute",
               "mnueditnod", "mnuundotag",  "mnupastetag"};
        // What is selected, what is done then, and which of the names are enabled.
        const std::tuple<QList<int>, const char *, QByteArray> steps[] = {
            {{}, nullptr, "00000100"},      {{1}, nullptr, "11011100"},      {{2}, nullptr, "10001100"},
            {{2}, "mnumoveup", "11011110"}, {{1}, "mnucopytag", "11011111"},
        };
        for (const auto &[selected, command, wanted] : steps) {
            window.select(selected);
            if (command)
                window.choose(command);
            QByteArray enabled;
            for (const char *name : names)
                enabled += window.action(name)->isEnabled() ? '1' : '0';
            QCOMPARE(enabled, wanted);
        }
        QCOMPARE(window.action("mnuundotag")->text(), u"&Undo Move Up"_s);
    }

    void deletedRootLeavesANewDocument()
    {
        TreeWindow window("<a><b/></a>");
        window.select({0});
        window.press("Del");
        QTest::simulateEvent(window.tree, true, Qt::Key_Delete, {}, {}, true); // held down
        QCOMPARE(window.xml(), QByteArray("<a></a>"));
        window.press("Del");
        QCOMPARE(window.xml(), QByteArray("<?xml version=\"1.0\"?>\r\n<Element/>"));
        QCOMPARE(window.treeRoot(), u"Element"_s);
        QVERIFY(!window.note().isEmpty());
        window.choose("mnuxmlmode");
        QCOMPARE(window.editor()->text(), window.xml());
        window.choose("mnunormalmod");
        window.press("Ctrl+Z");
        window.press("Ctrl+Z");
        QCOMPARE(window.xml(), QByteArray("<a><b/></a>"));
        QCOMPARE(window.selected(), u"b"_s);
        QVERIFY(!window.main->session().saving().isChanged());
    }

    void quickTagsInsertIntoTheTree()
    {
        TreeWindow window("<r/>");
        window.choose("mnuQuicktag");
        auto *dialog = window.main->findChild<QDialog *>(u"qiktagfrm"_s);
        QVERIFY(dialog);
        auto *list = dialog->findChild<QListWidget *>(u"List1"_s);
        const auto choose = [&](const char *tag) {
            const QList<QListWidgetItem *> found = list->findItems(QLatin1String(tag), Qt::MatchExactly);
            QCOMPARE(found.size(), 1);
            list->setCurrentItem(found.first());
            dialog->findChild<QPushButton *>(u"OKButton"_s)->click();
        };
        choose("<area shape=\"\" alt=\"\" />");
        QCOMPARE(window.xml(), QByteArray("<r><area shape=\"\" alt=\"\"/></r>"));
        choose("<xsl:text></xsl:text>"); // its prefix is not declared
        QCOMPARE(window.xml(), QByteArray("<r><area shape=\"\" alt=\"\"/></r>"));
        QVERIFY(!window.note().isEmpty());
        window.choose("mnuundotag");
        QCOMPARE(window.xml(), QByteArray("<r/>"));
    }

    void smartSelectAndExpand()
    {
        TreeWindow window("<a><b><c><d/></c></b><e><f/></e></a>");
        window.choose("mnuexpand");
        window.select({0, 0, 0});
        QVERIFY(!window.tree->visualRect(window.tree->currentIndex()).isEmpty());
        window.choose("mnutagselectedonly");
        window.select({1});
        QTest::mouseClick(window.tree->viewport(), Qt::LeftButton, {},
                          window.tree->visualRect(window.tree->currentIndex()).center());
        QVERIFY(window.tree->isExpanded(window.tree->currentIndex()));
        QVERIFY(window.tree->isExpanded(window.at({})) && !window.tree->isExpanded(window.at({0})));
        window.choose("mnucontract");
        QCOMPARE(window.tree->shownRows(), 3);
        // The first click moves the rows: the second one is for the same node even so.
        window.choose("mnuexpand");
        window.select({1});
        const QPoint at = window.tree->visualRect(window.tree->currentIndex()).center();
        QTest::mouseClick(window.tree->viewport(), Qt::LeftButton, {}, at);
        QVERIFY(window.tree->isExpanded(window.at({1})) && window.tree->indexAt(at) != window.at({1}));
        QTest::mouseDClick(window.tree->viewport(), Qt::LeftButton, {}, at);
        QVERIFY(!window.tree->isExpanded(window.at({1})));
        window.select({0, 0, 0});
        window.choose("mnucontract"); // what can be seen is selected
        QCOMPARE(window.selected(), u"b"_s);
    }
};

APP_TEST_MAIN(NodeEditingTest)
#include "node_editing_test.moc"
