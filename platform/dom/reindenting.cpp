// Nodes take on the indentation of the depth they come to.
#include "platform/dom/document.h"
#include "platform/dom/document_private.h"
#include "platform/dom/layout.h"
#include "platform/dom/node_factory.h"

#include <algorithm>
#include <vector>

namespace dom {

namespace {

struct Open
{
    Node *element;
    bool kept; // blanks in its content are
};

} // namespace

void Document::takeIndentation(Node *node, const QByteArray &formerLead)
{
    const std::optional<IndentChange> change = Layout::indentChange(*node, formerLead);
    if (!change)
        return;
    const KeepsBlanks keepsBlanks
        = [this](QByteArrayView startTag) { return Layout::keepsBlanks(*this, startTag); };
    // Where blanks were kept they are texts, wherever these go.
    std::vector<Open> open{{node, Layout::keepsBlanks(*node) || node->preservesSpace_}};
    while (!open.empty()) {
        const auto [element, kept] = open.back();
        open.pop_back();
        if (element->isContentAsParsed()) {
            reindentAsText(element, *change, kept, keepsBlanks);
            continue;
        }
        if (!kept)
            reindentChildren(element, *change);
        for (Node *child = element->firstChild(); child; child = child->nextSibling()) {
            if (child->kind() == NodeKind::Element && child->hasChildren())
                open.push_back({child, keepsBlanks(child->head()).value_or(kept)});
        }
    }
}

// The nodes below stay what they are; only the text that they are spans of is another.
void Document::reindentAsText(Node *element, const IndentChange &change, bool kept,
                              const KeepsBlanks &keepsBlanks)
{
    const auto markup = reindented(element->source_->view(element->whole_), change, kept, keepsBlanks);
    if (!markup)
        return;
    const QByteArrayView lead
        = element->source_->view({element->whole_.begin - element->leadSize_, element->whole_.begin});
    Source *source = d->newSource(lead.toByteArray() + *markup);
    d->changes.setHome(element, NodeFactory::homeIn(*source, *element));
}

void Document::reindentChildren(Node *element, const IndentChange &change)
{
    std::vector<Node *> children;
    for (Node *child = element->firstChild(); child; child = child->nextSibling()) {
        if (isTextLike(child->kind()))
            return;
        children.push_back(child);
    }
    const auto set = [&](Node *node, Piece piece) {
        const QByteArrayView blanks = node->piece(piece).view();
        if (QByteArray now = change.applied(blanks); now != blanks)
            d->changes.setPiece(node, piece, Text(now));
    };
    for (Node *child : children)
        set(child, Piece::Lead);
    set(element, Piece::Tail);
}

} // namespace dom
