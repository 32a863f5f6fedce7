// The one gate for change: few primitives, each recorded with its before and after.
//
// Undo, redo, notices to the tree and the document's revision all live on this log. Setters here hold no
// policy: what may stand where is in rules.h, what blanks go around it in layout.h, both one level above.
#pragma once

#include "platform/dom/piece.h"
#include "platform/dom/text.h"

#include <QtGlobal>
#include <memory>
#include <vector>

namespace dom {

class Document;
class Node;
struct Content;
struct Source;

// The text that an element is a span of, and where in it.
struct Home
{
    const Source *source = nullptr;
    Span whole;
    quint32 leadSize = 0;
    quint32 headSize = 0;
};

struct Change
{
    enum class Kind
    {
        Inserted,
        Removed,
        PieceSet,
        HomeSet,
        ContentSet
    };

    Kind kind;
    Node *node = nullptr;
    Node *parent = nullptr; // Inserted, Removed
    qsizetype index = 0;
    Piece piece = Piece::Head; // PieceSet
    Text before = {};
    Text after = {};
    Home homeBefore = {}; // HomeSet
    Home homeAfter = {};
    std::shared_ptr<Content> contentBefore = nullptr; // ContentSet
    std::shared_ptr<Content> contentAfter = nullptr;
};

// What one command did, in order; enough to take it back and to do it again.
class ChangeSet
{
public:
    bool isEmpty() const { return changes_.empty(); }

private:
    friend class Changes;
    friend class Document;
    std::vector<Change> changes_;
    quint64 revisionBefore_ = 0;
    quint64 revisionAfter_ = 0;
};

class Changes
{
public:
    explicit Changes(Document &document) : document_(document) { }

    void insertChild(Node *parent, qsizetype index, Node *node);
    void removeChild(Node *parent, qsizetype index);
    void setPiece(Node *node, Piece piece, Text text);
    // The element, whose content nobody has edited, becomes a span of another text with the same nodes in it.
    void setHome(Node *element, const Home &home);
    void setContent(std::shared_ptr<Content> content); // of which no observer is told

    // The log since it was last taken; mark and undoTo make a failed operation harmless.
    qsizetype mark() const { return qsizetype(log_.size()); }
    void undoTo(qsizetype mark);
    std::vector<Change> take();

    void applyAll(const std::vector<Change> &changes);
    void revertAll(const std::vector<Change> &changes);

private:
    void apply(const Change &change);
    void revert(const Change &change);
    void doInsert(Node *parent, qsizetype index, Node *node);
    void doRemove(Node *parent, qsizetype index, Node *node);
    void doSetPiece(Node *node, Piece piece, const Text &text);

    Document &document_;
    std::vector<Change> log_;
};

} // namespace dom
