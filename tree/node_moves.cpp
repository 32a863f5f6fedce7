// Moves: one step up, down, out of the parent, into the element before; and the drop.
#include "tree/node_commands.h"

namespace tree {

namespace {

constexpr const char *const names[] = {"Move Up", "Move Down", "Move Left", "Move Right"};

} // namespace

bool NodeCommands::canMove(Direction direction) const
{
    const QModelIndex node = face_.selected();
    if (!model_.GetNodepar(node) || !node.parent().isValid())
        return false;
    switch (direction) {
    case Direction::Up:
        return node.row() > 0;
    case Direction::Down:
        return node.row() + 1 < model_.rowCount(node.parent());
    case Direction::Left:
        return node.parent().parent().isValid();
    case Direction::Right:
        return isElement(node.siblingAtRow(node.row() - 1));
    }
    return false;
}

void NodeCommands::MoveNode(Direction direction)
{
    if (!canMove(direction))
        return;
    const QModelIndex node = face_.selected();
    const QModelIndex parent = node.parent();
    const QModelIndex before = node.siblingAtRow(node.row() - 1);
    report(run(QLatin1String(names[size_t(direction)]), [&](NodeStep &step) {
        switch (direction) {
        case Direction::Up:
            return moveVertically(node, -1, step);
        case Direction::Down:
            return moveVertically(node, 1, step);
        case Direction::Left:
            return moveInto(node, parent.parent(), parent.row() + 1, model_.GetNodepar(parent)->nextSibling(),
                            step);
        default:
            return moveInto(node, before, model_.rowCount(before), nullptr, step);
        }
    }));
}

// Neighbours in the document change places; the layout stays where it is. Where the rows' neighbours are none
// in the document, the node goes beside that of the row it passes.
platform::Result<void> NodeCommands::moveVertically(const QModelIndex &moved, int by, NodeStep &step)
{
    dom::Node *node = model_.GetNodepar(moved);
    dom::Node *passed = model_.GetNodepar(moved.siblingAtRow(moved.row() + by));
    dom::Node *parent = node->parent();
    {
        const RowsByHand byHand(model_);
        const bool neighbours = (by < 0 ? node->previousSibling() : node->nextSibling()) == passed;
        auto done = neighbours
            ? document_.exchange(node, passed)
            : document_.insertBefore(parent, node, by < 0 ? passed : passed->nextSibling());
        if (!done)
            return done;
    }
    const int row = by < 0 ? moved.row() - 1 : moved.row() + 2;
    settleMoved(model_.move(moved, moved.parent(), row), step);
    return {};
}

platform::Result<void> NodeCommands::moveInto(const QModelIndex &moved, const QModelIndex &parent, int row,
                                              dom::Node *reference, NodeStep &step)
{
    dom::Node *node = model_.GetNodepar(moved);
    const Scope scope = scopeOf(node->parent());
    const QPersistentModelIndex target(parent);
    {
        const RowsByHand byHand(model_);
        auto done = document_.insertBefore(model_.GetNodepar(parent), node, reference);
        if (done)
            done = takeScopeAlong(document_, node, scope);
        if (!done)
            return done;
    }
    const QPersistentModelIndex arrived = model_.move(moved, parent, row);
    if (!face_.isOpen(target))
        setOpen(target, true, step); // the moved node stays in sight
    settleMoved(arrived, step);
    return {};
}

// The moved node keeps its key, and is selected; all below it is closed, with keys one underscore longer.
void NodeCommands::settleMoved(const QModelIndex &moved, NodeStep &step)
{
    const QPersistentModelIndex node(moved);
    closeBelow(node, step);
    model_.lengthenKeysBelow(node);
    face_.select(node);
}

platform::Result<void> NodeCommands::drop(const QModelIndex &dragged, const QModelIndex &target)
{
    return run(QStringLiteral("Move"), [&](NodeStep &) -> platform::Result<void> {
        dom::Node *node = model_.GetNodepar(dragged);
        const Scope scope = node ? scopeOf(node->parent()) : Scope();
        auto done = model_.drop(dragged, target);
        return done ? takeScopeAlong(document_, node, scope) : done;
    });
}

} // namespace tree
