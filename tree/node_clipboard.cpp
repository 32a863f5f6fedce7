#include "tree/node_clipboard.h"

namespace tree {

platform::Result<void> NodeClipboard::keep(dom::Node *node)
{
    const auto copy = document_.cloneNode(node, true);
    if (!copy)
        return platform::Failure{copy.reason()};
    copy_ = *copy;
    kind_ = node->kind();
    const bool hasScope = kind_ == dom::NodeKind::Element || kind_ == dom::NodeKind::EntityReference;
    scope_ = hasScope ? scopeOf(node->parent()) : Scope();
    markup_ = kind_ != dom::NodeKind::Element ? node->xml() : withScope(*node, scope_, document_.entities());
    return {};
}

platform::Result<dom::Node *> NodeClipboard::paste()
{
    if (!copy_ && !markup_.isEmpty()) {
        const auto imported = document_.importMarkup(markup_, kind_);
        if (!imported)
            return imported;
        copy_ = *imported;
        scope_.clear(); // the markup declares what it needs, but for no namespace
        if (kind_ == dom::NodeKind::Element)
            scope_.insert(QString(), QString());
    }
    if (!copy_)
        return platform::Failure{QStringLiteral("Nothing was copied yet")};
    return document_.cloneNode(copy_, true);
}

} // namespace tree
