// A node of the document: a span of the text it was parsed from until somebody edits it.
//
// Nodes are made when first asked for and belong to their document; a Node pointer stays good until the
// content before a new load is released, also while the node is removed (undo may bring it back).
#pragma once

#include "platform/dom/child_list.h"
#include "platform/dom/node_kind.h"
#include "platform/dom/piece.h"
#include "platform/dom/text.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <memory>
#include <optional>

namespace dom {

class Document;
struct Source;

struct Attribute
{
    QString name;
    QString value; // decoded
};

class Node
{
public:
    NodeKind kind() const { return kind_; }
    Node *parent() const { return parent_; } // null for the document node and for detached nodes

    // Children in document order. Listing happens on the first question and costs the element's own text
    // at most; hasChildren never lists.
    bool hasChildren() const;
    qsizetype childCount() const;
    Node *child(qsizetype index) const; // null when out of range
    bool childHasChildren(qsizetype index) const; // without making the child
    Node *firstChild() const { return child(0); }
    Node *lastChild() const { return child(childCount() - 1); }
    Node *nextSibling() const;
    Node *previousSibling() const;
    qsizetype indexInParent() const; // -1 when detached
    bool contains(const Node *other) const; // is other this node or below it

    // The number a depth-first walk of the text this node was parsed from gives it (document element 0);
    // -1 for nodes that came by an edit. The children of a parsed node are numbered on from it.
    qint64 ordinal() const { return ordinal_; }
    // Nodes in this subtree, itself included, as parsed or as edited since.
    qint64 subtreeCount() const;

    QString name() const; // tag name, target, entity name, document type's name; else empty
    QString data() const; // text, CDATA and comment: decoded content; processing instruction: its data
    QString text() const; // the text content of the whole subtree; empty for comments and instructions
    QByteArray xml() const; // this subtree's markup, without the layout around it
    QByteArray startTag() const; // element: the start tag as it stands; else the same as xml()
    QByteArray rawContent(qsizetype atMost) const; // a leaf's content as written, its first bytes only
    QString namespaceUri() const; // of an element; empty when none

    // As people see it: a text's data, with what looks like a reference told from one (entity_references.h).
    QString shownText() const;

    QList<Attribute> attributes() const;
    QList<Attribute> shownAttributes() const; // with references to entities as such
    std::optional<QString> attribute(const QString &name) const;

private:
    friend class Document;
    friend class ChildList;
    friend class Changes;
    friend class NodeFactory;
    friend class Layout;
    friend class Serialiser;
    friend struct Rules;

    // What was edited in a node itself; the geometry below keeps telling how it stood in its source.
    struct Edited
    {
        std::optional<Text> pieces[4]; // by Piece
    };

    Text piece(Piece piece) const; // tail and end are known once the children are listed
    void setPiece(Piece piece, const Text &text);
    QByteArrayView lead() const { return piece(Piece::Lead).view(); }
    QByteArrayView head() const { return piece(Piece::Head).view(); }
    QByteArrayView tail() const { return piece(Piece::Tail).view(); }
    QByteArrayView end() const { return piece(Piece::End).view(); }
    // What stands between its tags is a range of its source: nothing there was ever edited.
    bool isContentAsParsed() const;
    const Node *textBefore() const; // the text that this one follows directly; null when none
    QByteArrayView content() const; // a leaf's head without the markup around it
    QByteArrayView writtenData() const; // what data() decodes
    QString
    resolvePrefix(QByteArrayView prefix) const; // the namespace in force here; empty prefix: the default
    ChildList &children() const; // lists them when that was not done yet
    void markDirty(); // this node and everything above it
    static void addToCounts(Node *node, qint32 nodes); // that many came below node
    Document &document() const;

    Node *parent_ = nullptr;
    ChildList::Block *block_ = nullptr; // the part of the parent's list that holds this node
    const Source *source_ = nullptr; // never null; nodes made by an edit have an empty one
    mutable std::unique_ptr<ChildList> children_; // null until asked for
    std::unique_ptr<Edited> edited_; // null until edited
    Span whole_; // the subtree's markup, while dirty_ is false
    quint32 leadSize_ = 0; // bytes before whole_
    quint32 headSize_ = 0; // bytes at the beginning of whole_
    mutable quint32 tailSize_ = 0; // bytes before the end tag, once listed
    mutable quint32 endSize_ = 0; // bytes at the end of whole_, once listed
    qint32 ordinal_ = -1;
    qint32 subtreeCount_ = 1;
    NodeKind kind_ = NodeKind::Element;
    bool dirty_ = false; // something in the subtree was edited: whole_ no longer serves
    bool preservesSpace_ = false; // xml:space="preserve" is in force for its content
};

} // namespace dom
