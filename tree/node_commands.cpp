// How a command becomes a step, and how steps are taken back.
#include "tree/node_commands.h"

namespace tree {

namespace {

class Busy
{
public:
    explicit Busy(TreeFace &face) : face_(face) { face_.showBusy(true); }
    ~Busy() { face_.showBusy(false); }
    Busy(const Busy &) = delete;
    Busy &operator=(const Busy &) = delete;

private:
    TreeFace &face_;
};

} // namespace

NodeCommands::NodeCommands(TreeModel &model, dom::Document &document, TreeFace &face,
                           dialogs::Dialogs &dialogs, Clipboard &clipboard)
    : model_(model), document_(document), face_(face), dialogs_(dialogs), clipboard_(document, clipboard)
{
    connect(&model_, &TreeModel::aboutToRebuild, this, &NodeCommands::forget);
    connect(&model_, &QAbstractItemModel::modelAboutToBeReset, this, [this] { clipboard_.letGo(); });
}

// The nodes that steps point to are about to go.
void NodeCommands::forget()
{
    history_.clear();
    Q_EMIT stepsChanged();
}

platform::Result<void> NodeCommands::run(const QString &name, const Body &body)
{
    const Busy busy(face_);
    NodeStep step;
    step.name = name;
    step.before.selected = model_.GetNodepar(face_.selected());
    step.revisionBefore = document_.revision();
    document_.beginCommand();
    model_.beginRecording();
    const platform::Result<void> done = body(step);
    step.rows = model_.endRecording();
    if (!done) {
        model_.revert(step.rows, [this] { document_.rollBack(); });
        look(step.before);
        return done;
    }
    step.changes = document_.endCommand();
    step.revisionAfter = document_.revision();
    step.after.selected = model_.GetNodepar(face_.selected());
    if (!step.changes.isEmpty() || !step.rows.empty()) {
        history_.push(std::move(step));
        Q_EMIT stepsChanged();
    }
    return {};
}

platform::Result<void> NodeCommands::edit(const QString &name,
                                          const std::function<platform::Result<void>()> &edits)
{
    return run(name, [&edits](NodeStep &) { return edits(); });
}

void NodeCommands::report(const platform::Result<void> &result)
{
    if (!result && !result.reason().isEmpty())
        Q_EMIT noted(result.reason());
}

void NodeCommands::undo()
{
    const NodeStep *step = history_.toUndo(document_.revision());
    if (!step)
        return;
    turn(*step, true);
    history_.undone();
    Q_EMIT stepsChanged();
}

void NodeCommands::redo()
{
    const NodeStep *step = history_.toRedo(document_.revision());
    if (!step)
        return;
    turn(*step, false);
    history_.redone();
    Q_EMIT stepsChanged();
}

void NodeCommands::turn(const NodeStep &step, bool back)
{
    const Busy busy(face_);
    if (back)
        model_.revert(step.rows, [&] { document_.revert(step.changes); });
    else
        model_.reapply(step.rows, [&] { document_.reapply(step.changes); });
    look(back ? step.before : step.after);
}

void NodeCommands::look(const Outlook &outlook)
{
    for (const OpenState &state : outlook.opened)
        face_.setOpen(model_.find(state.node), state.open);
    if (const QModelIndex selected = model_.find(outlook.selected); selected.isValid())
        face_.select(selected);
}

QString NodeCommands::undoName() const
{
    const NodeStep *step = history_.toUndo(document_.revision());
    return step ? step->name : QString();
}

QString NodeCommands::redoName() const
{
    const NodeStep *step = history_.toRedo(document_.revision());
    return step ? step->name : QString();
}

bool NodeCommands::isElement(const QModelIndex &node) const
{
    const dom::Node *shown = model_.GetNodepar(node);
    return shown && shown->kind() == dom::NodeKind::Element;
}

void NodeCommands::setOpen(const QModelIndex &node, bool open, NodeStep &step)
{
    dom::Node *shown = model_.GetNodepar(node);
    step.before.opened.push_back({shown, face_.isOpen(node)});
    step.after.opened.push_back({shown, open});
    face_.setOpen(node, open);
}

std::vector<OpenState> NodeCommands::openBelow(const QModelIndex &node) const
{
    std::vector<OpenState> found;
    std::vector<QModelIndex> open{node};
    while (!open.empty()) {
        const QModelIndex at = open.back();
        open.pop_back();
        if (!face_.isOpen(at))
            continue;
        found.push_back({model_.GetNodepar(at), true});
        const int rows = model_.rowCount(at);
        for (int row = 0; row < rows; ++row) {
            const QModelIndex child = model_.index(row, 0, at);
            if (model_.hasChildren(child))
                open.push_back(child);
        }
    }
    return found;
}

void NodeCommands::closeBelow(const QModelIndex &node, NodeStep &step)
{
    const std::vector<OpenState> open = openBelow(node);
    for (const OpenState &state : open) {
        step.before.opened.push_back(state);
        step.after.opened.push_back({state.node, false});
        face_.setOpen(model_.find(state.node), false);
    }
}

} // namespace tree
