#include "tree/node_clipboard.h"

namespace tree {

platform::Result<void> NodeClipboard::keep(dom::Node *node)
{
    const auto copy = document_.cloneNode(node, true);
    if (!copy)
        return platform::Failure{copy.reason()};
    copy_ = *copy;
    kind_ = node->kind();
    scope_ = kind_ == dom::NodeKind::Element ? scopeOf(node->parent()) : Scope();
    markup_ = scope_.isEmpty() ? node->xml() : withScope(*node, scope_);
    return {};
}

platform::Result<dom::Node *> NodeClipboard::paste()
{
    if (!copy_ && !markup_.isEmpty()) {
        const auto imported = document_.importMarkup(markup_, kind_);
        if (!imported)
            return imported;
        copy_ = *imported;
        scope_.clear(); // the markup declares what it needs
    }
    if (!copy_)
        return platform::Failure{QStringLiteral("Nothing was copied yet")};
    return document_.cloneNode(copy_, true);
}

} // namespace tree
