// How nodes come into being: from a scan, from an edit, from another node.
#pragma once

#include "platform/dom/node.h"

#include <memory>
#include <vector>

namespace dom {

struct Home;
struct ScannedChild;

class NodeFactory
{
public:
    // The children of an element that was not listed yet: its blocks, its tail and its end tag.
    static void list(const Node &element);

    // The nodes of a block as scanned.
    static void makeNodes(ChildList::Block &block);

    static void makeDocumentNode(Node &node, const Source &source);

    // Parses an accepted text: the document node with its children, the document element's children as
    // blocks.
    static void parse(Source &source, Node &documentNode);

    // A detached node with markup of its own.
    static Node *create(Document &document, NodeKind kind, const QByteArray &markup);

    // A detached copy of the node with (deep) or without its children; shares the text when nothing was
    // edited.
    static Node *clone(Node &node, bool deep);

    // The nodes within an accepted element, detached. Where some of them run inline the blanks between them
    // are texts; else they stay before the nodes, which tells how deep those stood.
    static std::vector<Node *> import(Document &document, const QByteArray &element);

    // Where an element is a span, and where it would be in a text that holds it with other blanks, behind as
    // many bytes as stand before it now, and nothing else.
    static Home homeOf(const Node &element);
    static Home homeIn(Source &source, const Node &element);

    // Makes an element and all nodes below it spans of the text at home, which has the same nodes, as parsed.
    // What was edited below it counts as taken back.
    static void settle(Node &element, const Home &home);

private:
    class BlockBuilder;
    struct Settling;
    static void settleChildren(const Node &element, const Source &source, std::vector<Settling> &open);
    static Node *makeNode(const Source &source, const ScannedChild &scanned, qint32 ordinal);
};

} // namespace dom
