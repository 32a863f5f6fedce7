#include "platform/dom/document.h"
#include "tree/tree_model.h"
#include "tree/tree_view.h"

#include <QAccessible>
#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

using namespace tree;
using namespace Qt::StringLiterals;

class TreeViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY(!document_.load("<r><a><x><z/></x></a><!--n--><empty/></r>"));
        model_ = std::make_unique<TreeModel>(document_);
        view_ = std::make_unique<TreeView>(*model_);
        model_->nametree(document_.documentElement());
        view_->resize(400, 300);
        view_->show();
        QVERIFY(QTest::qWaitForWindowExposed(view_.get()));
    }

    void cleanup()
    {
        view_.reset();
        model_.reset();
    }

    void rebuildSelectsAndOpensTheRoot()
    {
        view_->open(child(0, root()));
        view_->setCurrentIndex(child(1, root()));
        model_->nametree(document_.documentElement());
        QCOMPARE(view_->currentIndex(), root());
        QVERIFY(view_->selectionModel()->isSelected(root()));
        QVERIFY(view_->isExpanded(root()));
        QVERIFY(!view_->isExpanded(child(0, root())));
    }

    void doubleClick()
    {
        for (const int row : {0, 1, 2}) {
            const bool edits = row > 0; // neither the comment nor the empty element has children to show
            QSignalSpy asked(view_.get(), &TreeView::editRequested);
            QSignalSpy clicked(view_.get(), &TreeView::nodeClicked);
            const QModelIndex node = child(row, root());
            for (int times = 1; times <= 2; ++times) {
                QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, middle(node));
                QTest::mouseDClick(view_->viewport(), Qt::LeftButton, {}, middle(node));
                QCOMPARE(asked.count(), edits ? times : 0);
                QCOMPARE(view_->isExpanded(node), !edits && times == 1);
                QCOMPARE(view_->currentIndex(), node);
            }
            QVERIFY(clicked.count() >= 2);
        }
    }

    void pressSelects()
    {
        const std::pair<Qt::MouseButton, Qt::KeyboardModifiers> rows[]
            = {{Qt::LeftButton, {}}, {Qt::LeftButton, Qt::ControlModifier}, {Qt::RightButton, {}}};
        for (const auto &[button, modifiers] : rows) {
            QSignalSpy asked(view_.get(), &TreeView::contextMenuRequested);
            const QModelIndex node = child(1, root());
            for (int times = 0; times < 2; ++times) { // a second press leaves it selected
                QTest::mousePress(view_->viewport(), button, modifiers, middle(node));
                QCOMPARE(view_->currentIndex(), node);
                QCOMPARE(view_->selectionModel()->selectedIndexes(), QModelIndexList{node});
                QTest::mouseRelease(view_->viewport(), button, modifiers, middle(node));
            }
            QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, QPoint(200, 290)); // on no node
            QVERIFY(view_->selectionModel()->isSelected(node));
            QCOMPARE(asked.count(), button == Qt::RightButton ? 2 : 0);
        }
    }

    void keys()
    {
        const std::tuple<Qt::Key, const char *, int> steps[] = {
            {Qt::Key_Down, "a", 4},     {Qt::Key_Right, "a", 5},        {Qt::Key_Right, "x", 5},
            {Qt::Key_Asterisk, "x", 6}, {Qt::Key_Left, "x", 5},         {Qt::Key_Left, "a", 5},
            {Qt::Key_Asterisk, "a", 5}, {Qt::Key_Minus, "a", 4},        {Qt::Key_End, "empty", 4},
            {Qt::Key_Up, "n", 4},       {Qt::Key_Home, "r", 4},         {Qt::Key_Left, "r", 1},
            {Qt::Key_Right, "r", 4},    {Qt::Key_PageDown, "empty", 4}, {Qt::Key_A, "empty", 4},
            {Qt::Key_PageUp, "r", 4},
        };
        for (const auto &[key, selected, shown] : steps) {
            QTest::keyClick(view_.get(), key);
            QCOMPARE(view_->currentIndex().data().toString(), QLatin1String(selected));
            QCOMPARE(view_->shownRows(), shown);
        }
    }

    void branches()
    {
        const QModelIndex a = child(0, root());
        const QPoint branch(view_->visualRect(a).left() - view_->indentation() / 2, middle(a).y());
        for (const bool open : {true, false}) {
            QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, branch);
            QCOMPARE(view_->isExpanded(a), open);
            QCOMPARE(view_->indexBelow(a), open ? child(0, a) : child(1, root()));
        }
    }

    void accessibleRows()
    {
        QAccessibleInterface *rows = QAccessible::queryAccessibleInterface(view_.get());
        QCOMPARE(rows->role(), QAccessible::Tree);
        QCOMPARE(rows->childCount(), 4);
        QAccessibleInterface *a = rows->child(1);
        QCOMPARE(a->text(QAccessible::Name), u"a"_s);
        QVERIFY(a->state().collapsed && !a->state().selected);
        a->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        a->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
        QVERIFY(a->state().expanded && a->state().selected);
        QCOMPARE(rows->focusChild(), a);
        QCOMPARE(rows->childCount(), 5);
        QCOMPARE(rows->childAt(a->rect().center().x(), a->rect().center().y()), a);
        QVERIFY(document_.insertBefore(document_.documentElement(), *document_.createComment(u"n"_s),
                                       document_.documentElement()->firstChild()));
        QCOMPARE(rows->indexOfChild(a), 2);
        QVERIFY(document_.removeChild(document_.documentElement(), document_.documentElement()->child(1)));
        QCOMPARE(rows->childCount(), 4);
    }

    void deepRowsComeIntoView()
    {
        QVERIFY(!document_.load(QByteArray("<e>").repeated(120) + "leaf" + QByteArray("</e>").repeated(120)));
        model_->nametree(document_.documentElement());
        QModelIndex node = root();
        for (; model_->hasChildren(node); node = child(0, node))
            view_->open(node);
        view_->setCurrentIndex(node);
        const QRect view = view_->viewport()->rect();
        const QRect row = view_->visualRect(node);
        const int label = view_->fontMetrics().horizontalAdvance(u"leaf"_s);
        QVERIFY(view.contains(row.topLeft()) && view.contains(row.left() + label, row.center().y()));
        view_->setCurrentIndex(root()); // and shallow ones again
        QVERIFY(view.contains(view_->visualRect(root()).topLeft()));
    }

    void dropMovesTheNode()
    {
        QSignalSpy dropped(view_.get(), &TreeView::dropped);
        const QPersistentModelIndex comment = child(1, root());
        const QPersistentModelIndex target = child(0, root());
        view_->setCurrentIndex(comment);
        model_->beginDrag(comment);
        const std::unique_ptr<QMimeData> data(model_->mimeData({comment}));
        QDragEnterEvent enter(middle(comment), Qt::MoveAction, data.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(view_->viewport(), &enter);
        QVERIFY(enter.isAccepted());
        for (const QModelIndex &over : {child(0, root()), child(1, root()), root()}) {
            QDragMoveEvent move(middle(over), Qt::MoveAction, data.get(), Qt::LeftButton, {});
            QCoreApplication::sendEvent(view_->viewport(), &move);
            QCOMPARE(move.isAccepted(), over != comment);
        }
        QDropEvent drop(middle(target), Qt::MoveAction, data.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(view_->viewport(), &drop);
        QVERIFY(drop.isAccepted());
        QCOMPARE(dropped.count(), 1);
        QVERIFY(!model_->IsDragging());
        QCOMPARE(document_.xml(), QByteArray("<r><a><!--n--><x><z/></x></a><empty/></r>"));
        QCOMPARE(comment.parent(), target);
        QCOMPARE(view_->currentIndex(), comment);
        QVERIFY(view_->isExpanded(target)); // what was dropped stays in sight
    }

    void foreignDragsPassBy()
    {
        QMimeData files;
        files.setUrls({QUrl(u"file:///tmp/a.xml"_s)});
        QDragEnterEvent enter(middle(root()), Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, {});
        enter.accept();
        QCoreApplication::sendEvent(view_->viewport(), &enter);
        QVERIFY(!enter.isAccepted());
    }

private:
    QModelIndex child(int row, const QModelIndex &of) const { return model_->index(row, 0, of); }
    QModelIndex root() const { return model_->index(0, 0); }
    QPoint middle(const QModelIndex &node) const { return view_->visualRect(node).center(); }

    dom::Document document_;
    std::unique_ptr<TreeModel> model_;
    std::unique_ptr<TreeView> view_;
};

QTEST_MAIN(TreeViewTest)
#include "tree_view_test.moc"
