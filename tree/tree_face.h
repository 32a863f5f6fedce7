// What the commands on nodes need of the control that shows the tree: the selection, and what is open. The
// view is one; tests are another.
#pragma once

#include <QModelIndex>

namespace tree {

class TreeFace
{
public:
    virtual ~TreeFace() = default;

    virtual QModelIndex selected() const = 0; // invalid when nothing is
    virtual void select(const QModelIndex &node) = 0; // opens what is above it, and shows it

    virtual bool isOpen(const QModelIndex &node) const = 0;
    virtual void setOpen(const QModelIndex &node, bool open) = 0;
    virtual void openAll() = 0;
    virtual void closeAll() = 0; // the root too

    virtual void showBusy(bool busy) = 0; // the pointer while a long step runs
    virtual void freeze(bool frozen) = 0; // no repainting meanwhile; calls do not nest
};

} // namespace tree
