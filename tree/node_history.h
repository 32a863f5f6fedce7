// The steps that were made in the document since it was last parsed, to be taken back and done again.
#pragma once

#include "platform/dom/change.h"
#include "tree/row_edits.h"

#include <QString>
#include <QUndoStack>
#include <vector>

namespace tree {

// A node, and whether it is open.
struct OpenState
{
    dom::Node *node;
    bool open;
};

// What the user sees besides the document: the selected node, and as far as a step changes it what is open.
struct Outlook
{
    dom::Node *selected = nullptr;
    std::vector<OpenState> opened;
};

// One user command: what it did to the document, to the rows, and to what the user sees.
struct NodeStep
{
    QString name;
    dom::ChangeSet changes;
    RowEdits rows;
    Outlook before;
    Outlook after;
    quint64 revisionBefore = 0; // of the document
    quint64 revisionAfter = 0;
};

class NodeHistory
{
public:
    void clear();
    void push(NodeStep step); // forgets what was undone

    // The step to take back or to do again; null when there is none, or when the document is not in the state
    // that the step left: somebody else has edited it since.
    const NodeStep *toUndo(quint64 revision) const;
    const NodeStep *toRedo(quint64 revision) const;
    void undone() { stack_.undo(); }
    void redone() { stack_.redo(); }

private:
    QUndoStack stack_;
};

} // namespace tree
