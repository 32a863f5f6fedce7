// The place in the tree, and the same place in the document's text.
//
// Nodes are found again by the byte they begin with: a text that is parsed anew has other nodes, but what
// stands before and after the one stretch that differs stands there still.
#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <vector>

class QModelIndex;

namespace dom {
class Document;
class Node;
} // namespace dom
namespace tree {
class TreeModel;
class TreeView;
} // namespace tree

namespace app {

class TreePlace
{
public:
    // All of them outlive this.
    TreePlace(tree::TreeView &view, tree::TreeModel &model, dom::Document &document)
        : view_(view), model_(model), document_(document)
    { }

    // The document is about to be parsed anew: remembers what is open, selected and in view.
    void hold();
    // The tree was rebuilt: opens, selects and shows the same nodes, as far as there are such.
    void restore();

    // Of the document's text, in bytes; -1 when no node is selected.
    qsizetype selectedOffset() const;
    // The node around that byte, or the root where the tree shows none.
    QModelIndex nodeAt(qsizetype offset) const;
    void select(qsizetype offset);

private:
    qsizetype offsetOf(const QModelIndex &node) const;
    QModelIndex beginningAt(qsizetype offset) const;
    void holdOpen();

    tree::TreeView &view_;
    tree::TreeModel &model_;
    dom::Document &document_;
    QByteArray text_;
    std::vector<qsizetype> open_; // from the top
    qsizetype selected_ = -1;
    qsizetype top_ = -1; // the first row in view
};

} // namespace app
