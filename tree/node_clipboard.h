// The node clipboard: a copy of a node, good for any number of pastes into whatever document is open.
//
// While the document that it was taken from is open the copy is a node of it, which shares its text; in any
// other it is made from the markup. A second, hidden tree is not kept: what is pasted gets rows, labels and
// keys of its own like everything that comes into the document.
#pragma once

#include "platform/dom/document.h"
#include "tree/node_scope.h"

namespace tree {

class NodeClipboard
{
public:
    explicit NodeClipboard(dom::Document &document) : document_(document) { }

    bool isEmpty() const { return markup_.isEmpty() && !copy_; }
    platform::Result<void> keep(dom::Node *node);
    const QByteArray &markup() const { return markup_; } // with the namespace declarations it needs

    // A fresh, detached copy for the open document. Fails when the copied markup does not fit into that.
    platform::Result<dom::Node *> paste();
    const Scope &scope() const { return scope_; } // what the copy's prefixes were bound to where it stood

    // The nodes of the document are about to go.
    void letGo() { copy_ = nullptr; }

private:
    dom::Document &document_;
    dom::Node *copy_ = nullptr; // never put into the document itself
    dom::NodeKind kind_ = dom::NodeKind::Element;
    QByteArray markup_;
    Scope scope_;
};

} // namespace tree
