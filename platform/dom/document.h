// The document object model: lossless and lazy.
//
// The text that was parsed is kept whole, and nodes are spans into it. `xml` of an unedited document is that
// text, byte for byte; after an edit only the bytes of what was edited differ.
#pragma once

#include "platform/dom/change.h"
#include "platform/dom/indentation.h"
#include "platform/dom/node.h"
#include "platform/dom/verdict.h"
#include "platform/result.h"

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <vector>

namespace dom {

// Is told of every change of the node structure, before and after: row models need both. Undo and redo
// tell it too. Indices count children of parent at the time of the call.
class Observer
{
public:
    virtual ~Observer() = default;
    virtual void aboutToInsert(Node *parent, qsizetype index, Node *node) = 0;
    virtual void inserted(Node *parent, qsizetype index, Node *node) = 0;
    virtual void aboutToRemove(Node *parent, qsizetype index, Node *node) = 0;
    virtual void removed(Node *parent, qsizetype index, Node *node) = 0;
    virtual void textChanged(Node *node) = 0; // start tag, name or data
};

// An attribute as it is to be.
struct AttributeEdit
{
    QString name;
    QString value; // as it is shown, with references to entities as such (entity_references.h)
    QString original; // name of the attribute it was until now; empty for a new one
};

class Document
{
public:
    template <typename T>
    using Result = platform::Result<T>;

    Document();
    ~Document();
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;

    // Parses a text (UTF-8). On failure the document is left empty. The former nodes can still be read until
    // releaseFormer(), because a tree may be showing them.
    std::optional<ParseError> load(const QByteArray &utf8, const QString &baseFolder = {});

    // The same for a text that checkWellFormed has just accepted, with the entities it found.
    void loadAccepted(const QByteArray &utf8, const Entities &entities);

    // Leaves the document empty, as a failed load does.
    void clear();

    // Nobody shows the content before the last load any more.
    void releaseFormer();

    bool isEmpty() const; // no document element: nothing loaded, or the last load failed
    Node *documentNode() const;
    Node *documentElement() const; // null when empty
    QByteArray xml() const; // shares the loaded text while nothing is edited
    const Entities &entities() const;

    // Identity of the present state: every edit and every load makes a new one, undoing gives the former one
    // back. Never 0, and no two states have the same, whatever was loaded in between.
    quint64 revision() const;

    // New nodes, detached. Fail for illegal names, for characters XML does not allow, and for content that
    // would end the markup early.
    Result<Node *> createElement(const QString &name);
    Result<Node *> createTextNode(const QString &data);
    Result<Node *> createCDATASection(const QString &data);
    Result<Node *> createComment(const QString &data);
    Result<Node *> createProcessingInstruction(const QString &target, const QString &data);
    Result<Node *> cloneNode(Node *node, bool deep);
    // What is within the markup of one element, at least one node, detached. Blanks that are content there
    // are texts here, and lines end as this document's do. Fails when that is not well-formed: its prefixes
    // are declared by that element or below, its entities by this document.
    Result<std::vector<Node *>> importContent(const QByteArray &element);
    // References to entities are bounded for the document as a whole. Fails when an edit has brought in more
    // than it may have; costs a parse.
    Result<void> keepsEntitiesBounded() const;

    // Structure. A node that stands elsewhere is moved. The node takes on the layout of the siblings it
    // joins, and within it the indentation of its depth there; it takes its leading layout along when it
    // goes. A text stands inline and is just what it says (layout.h).
    Result<void> appendChild(Node *parent, Node *node);
    Result<void> insertBefore(Node *parent, Node *node, Node *reference); // null reference: at the end
    Result<void> replaceChild(Node *parent, Node *node, Node *replaced);
    Result<void> removeChild(Node *parent, Node *node);
    // Two children of one element change places; the layout stays at the places.
    Result<void> exchange(Node *one, Node *other);

    // Content. Only the bytes of what changes change: within a value too, all that it had before keeps its
    // spelling.
    Result<void> setAttribute(Node *element, const QString &name, const QString &value); // decoded
    // To what the content of a node says, with the references that stand in it. Fails for entities that no
    // attribute can have.
    Result<void> setAttributeToText(Node *element, const QString &name, const Node &from);
    Result<void> removeAttribute(Node *element, const QString &name);
    Result<void> setData(Node *node, const QString &data);
    // A text as it is shown. Each reference to an entity in it becomes a node of its own behind the text, and
    // what follows it a text of its own.
    Result<void> setShownText(Node *text, const QString &shown);
    Result<void> renameElement(Node *element, const QString &name); // its attributes and children stay
    Result<void> setInstruction(Node *instruction, const QString &target, const QString &data);
    // The element has exactly these attributes then, in this order. Of each one that it had before, name and
    // value stay as they are written as far as they are the same. Of two with one name the later value wins,
    // in the place of the earlier.
    Result<void> setAttributes(Node *element, const QList<AttributeEdit> &attributes);

    // Becomes the document of another text: an edit like any other, which brings the nodes there are now back
    // when it is undone. The observer is not told. Fails when the text is not well-formed.
    Result<void> replaceContent(const QByteArray &utf8);

    // One user command: every edit from here to the end is one change set, and a failed one can be taken
    // back whole. Commands do not nest.
    void beginCommand();
    ChangeSet endCommand(); // what was done, for undo
    void rollBack(); // undoes the command so far and ends it

    // Undo and redo of a change set, byte for byte. Only in the reverse order of what was done.
    void revert(const ChangeSet &changes);
    void reapply(const ChangeSet &changes);

    // At most one; null takes it off. Not owned.
    void setObserver(Observer *observer);

private:
    struct Private;
    friend class Changes;
    friend class NodeFactory;
    friend class Layout;

    Result<Node *> createLeaf(NodeKind kind, const QString &target, const QString &data);
    Result<Node *> createReference(const QByteArray &markup); // to an entity
    QByteArray leafMarkup(NodeKind kind, const QByteArray &target, const QString &data) const;
    QByteArray leafMarkup(const Node &node, const QByteArray &target, const QString &data) const;
    Result<void> setAttributeAs(Node *element, const QString &name, const QByteArray &value);
    Result<void> edit(const std::function<Result<void>()> &operation); // lands whole or not at all
    void takeOut(Node *node);
    void putIn(Node *parent, Node *node, qsizetype index, const Text &lead);
    void setHead(Node *node, const QByteArray &markup);
    void setAfter(Node *parent, Node *follower, const QByteArray &blanks);
    void letTextPass(Node *one, Node *other, const Text &firstLead, const Text &secondLead);
    void takeIndentation(Node *node, const QByteArray &formerLead);
    void reindentAsText(Node *element, const IndentChange &change, bool kept, const KeepsBlanks &keepsBlanks);
    void reindentChildren(Node *element, const IndentChange &change);
    void keepTextsApart(std::initializer_list<Node *> nodes);
    Result<void> keepsAttributesApart(const Node *node) const;
    Result<void> keepsAttributesApart(const Node *node, QByteArrayView markup) const;
    std::unique_ptr<Private> d;
};

} // namespace dom
