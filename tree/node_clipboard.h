// Nodes on their way to the clipboard and from there: what comes last is pasted, whoever put it there.
//
// As long as the clipboard holds what was copied here, and the document that it was taken from is open, a
// copy of the node serves, which shares its text. Everything else is markup that is judged and parsed. A
// second, hidden tree is not kept: what is pasted gets rows, labels and keys of its own like everything that
// comes into the document.
#pragma once

#include "platform/dom/document.h"
#include "tree/clipboard.h"
#include "tree/node_scope.h"

#include <vector>

namespace tree {

// Fresh, detached nodes of the open document.
struct PastedNodes
{
    std::vector<dom::Node *> nodes; // at least one
    Scope scope; // what prefixes were bound to where they come from; empty for what is at home where it goes
    QString note; // what was left behind, if anything was
};

class NodeClipboard
{
public:
    NodeClipboard(dom::Document &document, Clipboard &clipboard) : document_(document), clipboard_(clipboard)
    { }

    platform::Result<void> copy(dom::Node *node);

    bool isEmpty() const { return !clipboard_.holdsText(); }
    // For the element they go into. Text becomes a text node. Fails for markup that is broken or does not fit
    // there, and for characters that XML does not allow.
    platform::Result<PastedNodes> paste(const dom::Node &into);

    // The nodes of the document are about to go.
    void letGo() { copy_ = nullptr; }

private:
    platform::Result<PastedNodes> fromElement(const QByteArray &element);
    platform::Result<PastedNodes> fromMarkup(const QString &markup, const dom::Node &into);
    platform::Result<PastedNodes> fromDocument(const QString &text);
    platform::Result<PastedNodes> fromText(const QString &text);

    dom::Document &document_;
    Clipboard &clipboard_;
    dom::Node *copy_ = nullptr; // never put into the document itself
    Scope scope_;
};

} // namespace tree
