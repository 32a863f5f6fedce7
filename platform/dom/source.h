// A text that nodes are spans of: parsed once, never changed, kept as long as its document lives.
#pragma once

#include "platform/dom/structure_index.h"
#include "platform/dom/text.h"

#include <QByteArray>

namespace dom {

class Document;

struct Source
{
    Document *document = nullptr;
    QByteArray utf8;
    StructureIndex index;

    QByteArrayView view(Span span) const { return QByteArrayView(utf8).sliced(span.begin, span.size()); }
};

} // namespace dom
