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
    report(run(QLatin1String(names[size_t(direction)]), [&](NodeStep &step) {
        switch (direction) {
        case Direction::Up:
            return moveVertically(node, -1, step);
        case Direction::Down:
            return moveVertically(node, 1, step);
        case Direction::Left:
            return moveInto(node, parent.parent(), model_.GetNodepar(parent)->nextSibling(), step);
        default:
            return moveInto(node, node.siblingAtRow(node.row() - 1), nullptr, step);
        }
    }));
}

// Neighbours change places; the layout stays where it is.
platform::Result<void> NodeCommands::moveVertically(const QModelIndex &moved, int by, NodeStep &step)
{
    dom::Node *node = model_.GetNodepar(moved);
    dom::Node *passed = model_.GetNodepar(moved.siblingAtRow(moved.row() + by));
    auto done = model_.move(node, node->parent(), [&] { return document_.exchange(node, passed); });
    if (done)
        settleMoved(model_.find(node), step);
    return done;
}

platform::Result<void> NodeCommands::moveInto(const QModelIndex &moved, const QModelIndex &parent,
                                              dom::Node *reference, NodeStep &step)
{
    dom::Node *node = model_.GetNodepar(moved);
    dom::Node *into = model_.GetNodepar(parent);
    const Scope scope = scopeOf(node->parent());
    auto done = model_.move(node, into, [&] { return document_.insertBefore(into, node, reference); });
    if (done)
        done = takeScopeAlong(document_, node, scope);
    if (!done)
        return done;
    if (const QModelIndex target = model_.find(into); !face_.isOpen(target))
        setOpen(target, true, step); // the moved node stays in sight
    settleMoved(model_.find(node), step);
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
    return run(QStringLiteral("Move"), [&](NodeStep &step) -> platform::Result<void> {
        dom::Node *node = model_.GetNodepar(dragged);
        dom::Node *into = model_.GetNodepar(target);
        const bool isThere = node && into && into->firstChild() == node;
        const Scope scope = node ? scopeOf(node->parent()) : Scope();
        auto done = model_.drop(dragged, target);
        if (done && !isThere)
            done = takeScopeAlong(document_, node, scope);
        if (const QModelIndex onto = model_.find(into); done && !isThere && !face_.isOpen(onto))
            setOpen(onto, true, step); // what was dropped stays in sight
        return done;
    });
}

} // namespace tree
