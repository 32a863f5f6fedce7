// The tree control `TreeView1`: shows the tree model and turns pointer and keys into selections, drags and
// requests.
//
// A QTreeView in all that others see of one, but for its layout: that goes over all shown rows at every
// change. Here the model counts what is open, and only the rows in view are looked at (tree_view_rows.cpp).
// The items of the base class are never laid out. Its functions that are not virtual and go by them are
// hidden by those below, which are to be called on a TreeView.
#pragma once

#include "platform/result.h"
#include "tree/freeze.h"
#include "tree/tree_face.h"
#include "tree/tree_model.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QIcon>
#include <QTimer>
#include <QTreeView>
#include <array>
#include <functional>
#include <optional>

namespace tree {

class NodeDelegate;

class TreeView : public QTreeView, public TreeFace
{
    Q_OBJECT

public:
    // Not the owner of model, which outlives the view.
    explicit TreeView(TreeModel &model, QWidget *parent = nullptr);

    void setNodeImages(const std::array<QIcon, 5> &images); // in the order of the images, 1 to 5

    bool isExpanded(const QModelIndex &node) const { return model_.isOpen(node); }
    void setExpanded(const QModelIndex &node, bool open);
    void expand(const QModelIndex &node) { setExpanded(node, true); }
    void collapse(const QModelIndex &node) { setExpanded(node, false); }
    void expandAll() { openAll(); }
    void collapseAll() { closeAll(); }
    QModelIndex indexAbove(const QModelIndex &node) const;
    QModelIndex indexBelow(const QModelIndex &node) const;

    // The rows to be seen, from 0 at the top. The position is -1 of what is not to be seen.
    int shownRows() const { return int(model_.shownCount()); }
    QModelIndex shownRow(int position) const { return model_.shownAt(position); }
    int positionOf(const QModelIndex &node) const { return int(model_.positionOf(node)); }

    // Expands a node, under the busy pointer: its children may be many.
    void open(const QModelIndex &node);

    // TreeFace (tree_view_face.cpp). Opening all shows its progress when it takes longer. Cancelled, or at a
    // bound on rows, what was reached stays open, which is noted.
    QModelIndex selected() const override { return currentIndex(); }
    void select(const QModelIndex &node) override;
    bool isOpen(const QModelIndex &node) const override { return model_.isOpen(node); }
    void setOpen(const QModelIndex &node, bool open) override;
    void openAll() override;
    void closeAll() override;
    void showBusy(bool busy) override;
    void freeze(bool frozen) override;

    // What a drop does, in place of the model's own.
    using Drop = std::function<platform::Result<void>(const QModelIndex &dragged, const QModelIndex &target)>;
    void setDrop(Drop drop) { drop_ = std::move(drop); }

    // Opens what is above it. Also brings the beginning of the label into view, and no more than that,
    // sideways.
    void scrollTo(const QModelIndex &node, ScrollHint hint = EnsureVisible) override;
    QRect visualRect(const QModelIndex &node) const override;
    QModelIndex indexAt(const QPoint &position) const override;
    void doItemsLayout() override;

Q_SIGNALS:
    void nodeClicked(const QModelIndex &node);
    // Enter, or a double-click on a node that has nothing to expand: it is the selected one.
    void editRequested();
    void contextMenuRequested(const QPoint &globalPosition);
    void dropped(); // a node was moved by dragging
    void selectionMoved(); // another node is selected, or none
    void noted(const QString &reason); // what was not done, and why, for the status bar

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyboardSearch(const QString &search) override;
    void resizeEvent(QResizeEvent *event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    int horizontalOffset() const override;
    int verticalOffset() const override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command) override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;
    void paintEvent(QPaintEvent *event) override;
    void drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;

private:
    void drawRowAt(QPainter *painter, const QStyleOptionViewItem &options, const QRect &label,
                   const QModelIndex &index) const;
    QRect labelPlace(int level, int top) const; // in the viewport, from the row's branch to its end
    void showRoot();
    int rowsInView() const; // whole ones
    int columnLeft() const; // where the column begins, in the viewport
    bool hasMoreSiblings(const QModelIndex &node) const;
    bool isBranchAt(const QPoint &position) const; // what opens and closes a node
    bool togglesAt(QEvent::Type type, const QMouseEvent &event) const;
    void toggle(const QModelIndex &node);
    bool stepSideways(Qt::Key key);
    void tellFocus() const;
    void watchChanges();
    void fitColumn();
    int labelRoom() const; // pixels that every row's label gets, however deep it stands
    bool wouldOpen(const QPoint &position) const; // a press there expands a node
    void setDropHighlight(const QModelIndex &node);
    bool isExpandable(const QModelIndex &node) const;

    TreeModel &model_;
    Drop drop_;
    std::optional<Freeze> freeze_;
    NodeDelegate *delegate_;
    QPersistentModelIndex dropHighlight_;
    QTimer fitSoon_; // for fitColumn, once for any number of changes
    QTimer openSoon_; // for the node that a drag rests on
    int rowHeight_ = 1; // pixels, of every row
    bool pressedBranch_ = false;
    QPersistentModelIndex pressedNode_; // not by its branch
    int columnNeeds_ = 0; // pixels; grows as deeper rows come into view
    QString typed_; // for keyboardSearch
    QElapsedTimer lastTyped_;
};

} // namespace tree
