// Copy, paste, delete.
#include "tree/node_commands.h"

#include <algorithm>

namespace tree {

namespace {

bool isTextLike(const dom::Node *node) { return dom::isTextLike(node->kind()); }

// The texts come first: where one stands, what comes beside it gets no line of its own.
platform::Result<void> appendAll(dom::Document &document, dom::Node *into,
                                 const std::vector<dom::Node *> &nodes)
{
    platform::Result<void> done;
    for (auto node = nodes.begin(); done && node != nodes.end(); ++node) {
        if (isTextLike(*node))
            done = document.appendChild(into, *node);
    }
    auto text = nodes.begin(); // the next one, from where we are
    for (auto node = nodes.begin(); done && node != nodes.end(); ++node) {
        if (text <= node)
            text = std::find_if(node, nodes.end(), isTextLike);
        if (text != node)
            done = document.insertBefore(into, *node, text == nodes.end() ? nullptr : *text);
    }
    return done;
}

} // namespace

void NodeCommands::Copy() { (void)copySelected(); }

bool NodeCommands::copySelected()
{
    dom::Node *node = model_.GetNodepar(face_.selected());
    if (!node)
        return false;
    face_.showBusy(true);
    const auto copied = clipboard_.copy(node);
    face_.showBusy(false);
    report(copied);
    return copied.ok();
}

void NodeCommands::Paste()
{
    const QModelIndex target = face_.selected();
    if (!isElement(target)) {
        dialogs_.message(dialogs::Icon::Exclamation, dialogs::Buttons::Ok,
                         QStringLiteral("You can only paste into a Topic"));
        return;
    }
    QString note;
    const auto done = run(QStringLiteral("Paste"), [&](NodeStep &step) -> platform::Result<void> {
        dom::Node *into = model_.GetNodepar(target);
        const auto pasted = clipboard_.paste(*into);
        if (!pasted)
            return platform::Failure{pasted.reason()};
        note = pasted->note;
        auto added = append(into, *pasted);
        if (added && !face_.isOpen(target))
            setOpen(target, true, step); // what was pasted is in sight
        return added;
    });
    report(done);
    if (done && !note.isEmpty())
        Q_EMIT noted(note);
}

platform::Result<void> NodeCommands::append(dom::Node *into, const PastedNodes &pasted)
{
    auto done = appendAll(document_, into, pasted.nodes);
    for (auto node = pasted.nodes.begin(); done && node != pasted.nodes.end() && !pasted.scope.isEmpty();
         ++node)
        done = takeScopeAlong(document_, *node, pasted.scope);
    const bool refers = std::any_of(pasted.nodes.begin(), pasted.nodes.end(), [this](const dom::Node *node) {
        return refersToEntities(*node, document_.entities());
    });
    return done && refers ? document_.keepsEntitiesBounded() : done;
}

void NodeCommands::Delete() { remove(QStringLiteral("Delete")); }

void NodeCommands::Cut()
{
    if (copySelected())
        remove(QStringLiteral("Cut"));
}

void NodeCommands::remove(const QString &name)
{
    const QPersistentModelIndex selected = face_.selected();
    dom::Node *node = model_.GetNodepar(selected);
    if (!node)
        return;
    if (!selected.parent().isValid())
        return deleteRoot(name);
    report(run(name, [&](NodeStep &) -> platform::Result<void> {
        face_.select(selected.row() > 0 ? selected.sibling(selected.row() - 1, 0) : selected.parent());
        return document_.removeChild(node->parent(), node);
    }));
}

// The former document stays as it is, nodes, rows and all: so the steps before this one hold too.
void NodeCommands::deleteRoot(const QString &name)
{
    if (newDocument_.isEmpty())
        return;
    const auto done = run(name, [&](NodeStep &) {
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
