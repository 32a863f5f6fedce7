// The tree control `TreeView1`: shows the tree model and turns pointer and keys into selections, drags and
// requests.
#pragma once

#include "platform/result.h"
#include "tree/freeze.h"
#include "tree/tree_face.h"

#include <QElapsedTimer>
#include <QIcon>
#include <QTimer>
#include <QTreeView>
#include <array>
#include <functional>
#include <optional>

namespace tree {

class NodeDelegate;
class TreeModel;

class TreeView : public QTreeView, public TreeFace
{
    Q_OBJECT

public:
    // Not the owner of model, which outlives the view.
    explicit TreeView(TreeModel &model, QWidget *parent = nullptr);

    void setNodeImages(const std::array<QIcon, 5> &images); // in the order of the images, 1 to 5

    // Expands a node, under the busy pointer: its children may be many.
    void open(const QModelIndex &node);

    // TreeFace (tree_view_face.cpp). Opening all stops at a bound on rows, and notes it.
    QModelIndex selected() const override { return currentIndex(); }
    void select(const QModelIndex &node) override;
    bool isOpen(const QModelIndex &node) const override { return isExpanded(node); }
    void setOpen(const QModelIndex &node, bool open) override;
    void openAll() override;
    void closeAll() override;
    void showBusy(bool busy) override;
    void freeze(bool frozen) override;

    // What a drop does, in place of the model's own.
    using Drop = std::function<platform::Result<void>(const QModelIndex &dragged, const QModelIndex &target)>;
    void setDrop(Drop drop) { drop_ = std::move(drop); }

    // Also brings the beginning of the label into view, and no more than that, sideways.
    void scrollTo(const QModelIndex &node, ScrollHint hint = EnsureVisible) override;

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
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyboardSearch(const QString &search) override;
    void resizeEvent(QResizeEvent *event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &options,
                 const QModelIndex &index) const override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;

private:
    void showRoot();
    void watchChanges();
    void fitColumn();
    int labelRoom() const; // pixels that every row's label gets, however deep it stands
    bool wouldOpen(const QPoint &position) const; // a press there expands a node
    void setDropHighlight(const QModelIndex &node);
    bool isExpandable(const QModelIndex &node) const;

    void openLevels(qint64 bound);

    TreeModel &model_;
    Drop drop_;
    std::optional<Freeze> freeze_;
    NodeDelegate *delegate_;
    QPersistentModelIndex dropHighlight_;
    QTimer fitSoon_; // for fitColumn, once for any number of changes
    int columnNeeds_ = 0; // pixels; grows as deeper rows come into view
    QString typed_; // for keyboardSearch
    QElapsedTimer lastTyped_;
};

} // namespace tree
