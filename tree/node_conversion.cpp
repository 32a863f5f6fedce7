// An element that holds one text becomes an attribute of its parent.
#include "tree/node_commands.h"

namespace tree {

namespace {

// Of step 2 and step 3 of the tests on the element: how many children it and its child have.
const char *const oneChild = "Please select an 'Element' tag which has only one 'Child' tag";
const char *const plainChild
    = "Please select an 'Element' tag which has only one 'Child' tag, which itself has no 'Child' tags";

} // namespace

void NodeCommands::convertToAttribute()
{
    const QModelIndex selected = face_.selected();
    const QModelIndex parent = selected.parent();
    if (!model_.GetNodepar(selected) || !parent.isValid())
        return;
    const bool single = model_.hasChildren(selected) && model_.rowCount(selected) == 1;
    if (!single || model_.hasChildren(model_.index(0, 0, selected))) {
        dialogs_.message(dialogs::Icon::Exclamation, dialogs::Buttons::Ok,
                         QLatin1String(single ? plainChild : oneChild));
        return;
    }
    report(run(QStringLiteral("Convert to Attribute"), [&](NodeStep &) -> platform::Result<void> {
        const dom::Node *element = model_.GetNodepar(selected);
        dom::Node *above = model_.GetNodepar(parent);
        const QString name = element->name();
        if (!isPrefixBound(above, name)) // the document would not parse
            return platform::Failure{
                QStringLiteral("The prefix of \"%1\" is not declared for its parent").arg(name)};
        auto done = document_.setAttributeToText(above, name, *element);
        if (done)
            model_.setLabelFrom(parent);
        return done;
    }));
}

} // namespace tree
