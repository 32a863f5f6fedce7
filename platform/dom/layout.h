// The blanks around a node that comes, and within it: its own line and indent where its siblings have theirs,
// nothing where they run inline, and never anything in mixed content or where blanks are kept.
//
// A text has no layout: every blank beside it would be part of it. So it stands inline, and where there is no
// other text, a line break at the place it takes goes. Blanks within a line count as content and stay.
#pragma once

#include "platform/dom/indentation.h"

#include <QByteArray>
#include <optional>

namespace dom {

class Document;
class Node;

class Layout
{
public:
    struct Placement
    {
        QByteArray lead; // what goes before the node
        std::optional<QByteArray> after; // what then stands behind it; nothing: as it is
    };

    // For a node about to be inserted into parent before reference (null: at the end).
    static Placement place(const Node &parent, const Node &node, const Node *reference);

    // For a text that changes places with its neighbour in parent, which has no other, so that follower
    // (null: the end) comes behind both. lead is what stood before the neighbour. The line break that the
    // text leaves comes back, and that of its new place goes. Nothing where no line is broken: then blanks
    // keep their places.
    struct Passing
    {
        QByteArray lead; // of the neighbour
        QByteArray after; // before follower
    };
    static std::optional<Passing> pass(const Node &parent, bool textGoesUp, QByteArrayView lead,
                                       const Node *follower);

    // A node before follower (null: the end) has gone, and the only text there has come to stand before
    // blanks that break the line.
    static bool joinsText(const Node &parent, const Node *follower);

    // How the lines within a node that has just come to its place are to change; formerLead is what stood
    // before it at its old one. Nothing where they stay as they are.
    static std::optional<IndentChange> indentChange(const Node &node, QByteArrayView formerLead);

    // Blanks in the node's content are kept: xml:space says so here or around it, or what the document type
    // declares, or they are in any case.
    static bool keepsBlanks(const Node &node);
    static std::optional<bool> keepsBlanks(const Document &document, QByteArrayView startTag);

    // What the document's lines end with; a line feed when it has only one line.
    static QByteArray lineEnd(const Document &document);

private:
    struct Edges;
    static Placement placeInEmpty(const Node &parent, const Node &node);
    static std::optional<QByteArray> indentUnit(const Node &parent);
    static std::optional<QByteArray> indentStep(const Node &inner, const Node &outer);
    static std::optional<QByteArray> indentOf(const Node &node); // nothing when it does not begin its line
    static QByteArray lineOf(const Node &node); // the indent of the line that the node begins on
    static QByteArrayView blanksBefore(const Node &parent, const Node *follower);
    static QByteArray siblingLine(const Node &parent);
};

} // namespace dom
