// Editing by structure: the commands that act on the tree's selected node.
//
// The document is edited in place and the rows follow; nothing is rebuilt, and each command costs what it
// touches. A command lands whole or not at all: what the document refuses leaves document, rows and selection
// as they were, and noted() says why. What landed is one step of the history.
#pragma once

#include "platform/dialogs/dialogs.h"
#include "tree/node_clipboard.h"
#include "tree/node_history.h"
#include "tree/tree_face.h"
#include "tree/tree_model.h"

#include <QObject>
#include <functional>

namespace tree {

class NodeCommands : public QObject
{
    Q_OBJECT

public:
    enum class Direction
    {
        Up,
        Down,
        Left,
        Right
    };

    // All of them outlive this.
    NodeCommands(TreeModel &model, dom::Document &document, TreeFace &face, dialogs::Dialogs &dialogs,
                 Clipboard &clipboard);

    // What the document becomes when its root is deleted; without one the root stays.
    void setNewDocument(const QByteArray &text) { newDocument_ = text; }

    // A new node with the content of its kind: the last child of a selected element, else right after the
    // selected node. For elements, texts, CDATA sections, comments and processing instructions.
    void insert(dom::NodeKind kind);
    // The same for an element of that name with these attributes, all empty. Fails where noted() says why.
    platform::Result<void> insertElement(const QString &name, const QStringList &attributes);

    void MoveNode(Direction direction);
    bool canMove(Direction direction) const;
    platform::Result<void> drop(const QModelIndex &dragged, const QModelIndex &target);

    void Copy(); // onto the clipboard
    void Cut();
    void Paste(); // whatever the clipboard holds, as the selected element's last children
    void Delete();
    bool canPaste() const { return !clipboard_.isEmpty(); }

    void convertToAttribute();

    void Expand();
    void Collapse();
    void setSmartSelect(bool on) { smartSelect_ = on; }
    void nodeClicked(const QModelIndex &node); // Smart Select: only the path to it stays open

    // Edits of somebody else as one step: document, and rows as they follow by themselves or by the model's
    // calls. When edits fails everything is as it was, and its failure is the result.
    platform::Result<void> edit(const QString &name, const std::function<platform::Result<void>()> &edits);

    void undo();
    void redo();
    QString undoName() const; // empty when there is nothing to undo
    QString redoName() const;

Q_SIGNALS:
    void noted(const QString &reason); // what was not done, and why, for the status bar
    void stepsChanged(); // what undo and redo would do

private:
    using Body = std::function<platform::Result<void>(NodeStep &)>;

    platform::Result<void> run(const QString &name, const Body &body);
    void report(const platform::Result<void> &result);
    void turn(const NodeStep &step, bool back);
    void look(const Outlook &outlook);
    void forget();

    platform::Result<void> insertAt(const QModelIndex &selected, dom::Node *node, NodeStep &step);
    platform::Result<void> moveVertically(const QModelIndex &moved, int by, NodeStep &step);
    platform::Result<void> moveInto(const QModelIndex &moved, const QModelIndex &parent, dom::Node *reference,
                                    NodeStep &step);
    bool copySelected();
    platform::Result<void> append(dom::Node *into, const PastedNodes &pasted);
    void remove(const QString &name);
    void deleteRoot(const QString &name);
    void settleMoved(const QModelIndex &moved, NodeStep &step);
    void setOpen(const QModelIndex &node, bool open, NodeStep &step);
    void closeBelow(const QModelIndex &node, NodeStep &step);
    std::vector<OpenState> openBelow(const QModelIndex &node) const; // itself included
    bool isElement(const QModelIndex &node) const;

    TreeModel &model_;
    dom::Document &document_;
    TreeFace &face_;
    dialogs::Dialogs &dialogs_;
    NodeClipboard clipboard_;
    NodeHistory history_;
    QByteArray newDocument_;
    bool smartSelect_ = false;
};

} // namespace tree
