#include "tree/node_history.h"

#include <QUndoCommand>

namespace tree {

namespace {

// The stack keeps the steps and their order; taking one back is the commands' business, who ask for it first.
class StepCommand : public QUndoCommand
{
public:
    explicit StepCommand(NodeStep made) : QUndoCommand(made.name), step(std::move(made)) { }

    NodeStep step;
};

const NodeStep *stepAt(const QUndoStack &stack, int index)
{
    const QUndoCommand *command = stack.command(index);
    return command ? &static_cast<const StepCommand *>(command)->step : nullptr;
}

} // namespace

void NodeHistory::clear() { stack_.clear(); }

void NodeHistory::push(NodeStep step)
{
    const NodeStep *last = stepAt(stack_, stack_.index() - 1);
    if (last && last->revisionAfter != step.revisionBefore)
        stack_.clear(); // there is a gap between them
    stack_.push(new StepCommand(std::move(step))); // the stack owns it
}

const NodeStep *NodeHistory::toUndo(quint64 revision) const
{
    const NodeStep *step = stepAt(stack_, stack_.index() - 1);
    return step && step->revisionAfter == revision ? step : nullptr;
}

const NodeStep *NodeHistory::toRedo(quint64 revision) const
{
    const NodeStep *step = stepAt(stack_, stack_.index());
    return step && step->revisionBefore == revision ? step : nullptr;
}

} // namespace tree
