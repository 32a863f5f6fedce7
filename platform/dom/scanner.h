// The structural scanner: where the nodes of an accepted text begin and end.
//
// It reads only text that the verdict has accepted and can therefore be small and fast; on any other text it
// gives some answer but never leaves the bounds it was given.
#pragma once

#include "platform/dom/node_kind.h"
#include "platform/dom/source.h"
#include "platform/dom/structure_index.h"
#include "platform/dom/text.h"

#include <QByteArrayView>
#include <functional>

namespace dom {

// One child as found: the blanks before it, its markup, and what stands below it.
struct ScannedChild
{
    NodeKind kind;
    Span whole;
    quint32 leadSize; // bytes of layout before whole
    quint32 headSize; // element: bytes of the start tag; else all of whole
    qint32 nodes; // in the subtree, itself included
    bool preservesSpace; // for the content of an element
};

// Where the content of an element (or of the document) ended.
struct ContentEnd
{
    quint32 tail; // the layout after the last child begins here
    quint32 tag; // the end tag begins here
    quint32 end; // and ends here
};

class Scanner
{
public:
    explicit Scanner(const Source &source) : source_(source) { }

    using OnChild = std::function<void(const ScannedChild &)>;

    // Walks the children in content beginning at from, until the end tag or limit; steps over what is below
    // them.
    ContentEnd children(quint32 from, quint32 limit, bool preserve, const OnChild &onChild) const;

    // The first walk of a source: the nodes at document level to onTop, the children of the document element
    // to onChild, and the larger elements below into index.
    ContentEnd wholeDocument(StructureIndex &index, const OnChild &onTop, const OnChild &onChild,
                             ContentEnd &rootEnd) const;

    // The first walk of a source that holds an element from there on and nothing else.
    void element(StructureIndex &index, quint32 from, bool preserve, const OnChild &onElement) const;

private:
    const Source &source_;
};

} // namespace dom
