// The document as rows: the tree of `TreeView1`, and the link from each of its nodes to the document's.
//
// The tree holds nothing of the document. Child lists, tree nodes, keys and labels come into being when a
// view asks for them (see row_list.h), so a document shows at once whatever its size. An index holds its row
// and its parent's list and keeps no object for the row alive or in the making.
//
// Rows follow the document by themselves and stand in its order, always: what is inserted, removed or taken
// back there shows here at the same place. To the document a move is a removal and an insertion; move() makes
// one of the row, so that whoever holds on to it, as a selection does, goes along.
#pragma once

#include "platform/dom/document.h"
#include "platform/result.h"
#include "tree/opening.h"
#include "tree/row_edits.h"
#include "tree/tree_rows.h"

#include <QAbstractItemModel>
#include <functional>

namespace tree {

class TreeModel : public QAbstractItemModel, private dom::Observer
{
    Q_OBJECT

public:
    enum Role
    {
        // The whole label. Qt::DisplayRole has it on one line, cut to what a row shows; Qt::ToolTipRole has
        // more of it, as plain text.
        LabelRole = Qt::UserRole,
        KeyRole, // key text, e.g. "17_"
        ImageRole, // 1 to 5 by kind, see label.h; 0 for entity references
        HintRole, // what to show in place of an empty label, e.g. "&name;"
    };

    // Becomes the document's observer. The document outlives the model.
    explicit TreeModel(dom::Document &document, QObject *parent = nullptr);
    ~TreeModel() override;

    // Rebuilds the whole tree from the document element; null empties it. A document loaded anew shows only
    // then: until it is rebuilt, the tree goes on showing the former one.
    void nametree(dom::Node *domNode);

    QString trekey(); // a fresh key
    qint64 GetNodeLevel(const QModelIndex &node) const; // siblings before it
    // The document node it shows; null when that is no longer in the document.
    dom::Node *GetNodepar(const QModelIndex &node) const;
    qint64 TopLevelCount() const { return topLevelCount_; } // nodes at document level, as of the last rebuild

    // The drag under way within the tree.
    void beginDrag(const QModelIndex &node); // any but the root
    void endDrag();
    bool IsDragging() const { return isDragging_; }
    QModelIndex DraggedNode() const { return draggedNode_; }

    // Makes the dragged node the target's first child. Fails, and changes nothing, unless the target is an
    // element outside the dragged node, and when the document refuses.
    platform::Result<void> drop(const QModelIndex &dragged, const QModelIndex &target);

    // edits move the node in the document, to a place among the children of into; among these and those it
    // leaves they change nothing else. Its row goes with it, keeps its key, and is as open as before.
    using Edits = std::function<platform::Result<void>()>;
    platform::Result<void> move(dom::Node *node, dom::Node *into, const Edits &edits);

    // The document's content was replaced by an edit: builds its rows from there. Those so far are kept on
    // record. Unlike a rebuild this is a change that can be taken back.
    void exchangeTree();

    // The row that shows a node; invalid when that is not below the document element, or nobody has looked at
    // the rows around it. With reach those are listed first.
    QModelIndex find(const dom::Node *node) const;
    QModelIndex reach(const dom::Node *node);

    // What becomes of rows between the two is recorded, as far as the document cannot tell.
    void beginRecording();
    RowEdits endRecording();
    // Take a step back, or do it again: turnDocument does so to the document, and the rows follow.
    void revert(const RowEdits &edits, const std::function<void()> &turnDocument);
    void reapply(const RowEdits &edits, const std::function<void()> &turnDocument);

    // What is open. A node that is taken out and put back is as open as it was.
    bool isOpen(const QModelIndex &node) const;
    void setOpen(const QModelIndex &node, bool open);
    void closeAll(); // the root too
    Opening openAll() { return Opening(*rows_); } // valid until rows come or go

    // The rows to be seen, from 0: those whose parents are open, all the way up.
    qint64 shownCount() const;
    QModelIndex shownAt(qint64 position) const; // invalid when out of range
    // The one after a row to be seen; invalid at the end. level, that of the row, becomes that of the next.
    QModelIndex shownAfter(const QModelIndex &node, int *level = nullptr) const;
    qint64 positionOf(const QModelIndex &node) const; // -1 when it is not to be seen
    int levelOf(const QModelIndex &node) const; // 0 for the root

    // Shows the node's start tag as it stands from now on, as nodes are labelled after an edit.
    void setLabelFrom(const QModelIndex &node);
    // What moving a node does to the keys of all that is below it: one more "_" each.
    void lengthenKeysBelow(const QModelIndex &node);

    // The tree nodes made so far; for measuring.
    qint64 madeNodes() const { return rows_->madeCount(); }

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    // Only the drag under way can be dropped, and only where drop() takes it.
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

Q_SIGNALS:
    void aboutToRebuild(); // the nodes shown so far are about to go, for good

private:
    void aboutToInsert(dom::Node *parent, qsizetype index, dom::Node *node) override;
    void inserted(dom::Node *parent, qsizetype index, dom::Node *node) override;
    void aboutToRemove(dom::Node *parent, qsizetype index, dom::Node *node) override;
    void removed(dom::Node *parent, qsizetype index, dom::Node *node) override;
    void textChanged(dom::Node *node) override;

    TreeNode *nodeAt(const QModelIndex &index) const;
    QModelIndex indexOf(const TreeNode &node) const;
    QModelIndex ownerIndex(const RowList &list) const;
    bool isMoving(const dom::Node *parent) const;
    void goAlong(TreeNode &moved);
    void turn(const RowEdits &edits, bool back, const std::function<void()> &turnDocument);
    void turnRow(const RowEdit &edit, bool back);
    void relabel(TreeNode &node, TagRule rule);
    void show(const std::shared_ptr<TreeRows> &rows);
    void addToKeysBelow(TreeNode &top, int underscores);
    void record(const RowEdit &edit);
    QString dropRefusal(const QModelIndex &dragged, const QModelIndex &target) const;

    dom::Document &document_;
    std::shared_ptr<TreeRows> rows_; // filled by asking; shared with the edits that exchange it
    const dom::Node *builtFrom_ = nullptr; // the document node at the last rebuild; a load makes another
    QPersistentModelIndex draggedNode_;
    qint64 topLevelCount_ = 0;
    const dom::Node *movesFrom_ = nullptr; // the parents, while a node moves; else null
    const dom::Node *movesInto_ = nullptr;
    bool announced_ = false; // to the views, between the two notices of a change of the document
    bool isDragging_ = false;
    bool isRecording_ = false;
    RowEdits recorded_;
};

} // namespace tree
