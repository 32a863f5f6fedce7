// What is open: the whole tree, the root alone, or the path to one node.
#include "tree/node_commands.h"

namespace tree {

void NodeCommands::Expand() { face_.openAll(); }

void NodeCommands::Collapse()
{
    face_.showBusy(true);
    face_.freeze(true);
    QModelIndex seen = face_.selected(); // commands act on what can be seen
    while (seen.parent().parent().isValid())
        seen = seen.parent();
    face_.closeAll();
    face_.setOpen(model_.index(0, 0), true);
    if (seen.isValid())
        face_.select(seen);
    face_.freeze(false);
    face_.showBusy(false);
}

void NodeCommands::nodeClicked(const QModelIndex &node)
{
    if (!smartSelect_ || !node.isValid())
        return;
    const QPersistentModelIndex clicked(node);
    face_.freeze(true);
    face_.closeAll();
    face_.select(clicked);
    if (model_.hasChildren(clicked))
        face_.setOpen(clicked, true);
    face_.freeze(false);
}

} // namespace tree
