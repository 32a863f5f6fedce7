// Copy, paste, delete.
#include "tree/node_commands.h"

namespace tree {

void NodeCommands::Copy()
{
    dom::Node *node = model_.GetNodepar(face_.selected());
    if (!node)
        return;
    face_.showBusy(true);
    const auto kept = clipboard_.keep(node);
    face_.showBusy(false);
    report(kept);
    if (!kept)
        return;
    Q_EMIT copied(clipboard_.markup());
    Q_EMIT stepsChanged();
}

void NodeCommands::Paste()
{
    const QModelIndex target = face_.selected();
    if (!isElement(target)) {
        dialogs_.message(dialogs::Icon::Exclamation, dialogs::Buttons::Ok,
                         QStringLiteral("You can only paste into a Topic"));
        return;
    }
    report(run(QStringLiteral("Paste"), [&](NodeStep &step) -> platform::Result<void> {
        const auto copy = clipboard_.paste();
        if (!copy)
            return platform::Failure{copy.reason()};
        auto done = document_.appendChild(model_.GetNodepar(target), *copy);
        if (done)
            done = takeScopeAlong(document_, *copy, clipboard_.scope());
        if (!done)
            return done;
        if (!face_.isOpen(target))
            setOpen(target, true, step); // what was pasted is in sight
        return {};
    }));
}

void NodeCommands::Delete()
{
    const QPersistentModelIndex selected = face_.selected();
    dom::Node *node = model_.GetNodepar(selected);
    if (!node)
        return;
    if (!selected.parent().isValid())
        return deleteRoot();
    report(run(QStringLiteral("Delete"), [&](NodeStep &) -> platform::Result<void> {
        face_.select(selected.row() > 0 ? selected.sibling(selected.row() - 1, 0) : selected.parent());
        return document_.removeChild(node->parent(), node);
    }));
}

// The former document stays as it is, nodes, rows and all: so the steps before this one hold too.
void NodeCommands::deleteRoot()
{
    if (newDocument_.isEmpty())
        return;
    const auto done = run(QStringLiteral("Delete"), [&](NodeStep &) {
        auto replaced = document_.replaceContent(newDocument_);
        if (replaced)
            model_.exchangeTree();
        return replaced;
    });
    report(done);
    if (done)
        Q_EMIT noted(QStringLiteral("The whole document was deleted; Undo brings it back"));
}

} // namespace tree
