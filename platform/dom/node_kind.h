#pragma once

#include <QtGlobal>

namespace dom {

enum class NodeKind : quint8
{
    Document,
    Element,
    Text,
    CData,
    Comment,
    ProcessingInstruction, // the XML declaration too, with the target "xml"
    EntityReference,
    DocumentType,
};

// Runs in a line as text does: text, CDATA, entity references.
constexpr bool isTextLike(NodeKind kind)
{
    return kind == NodeKind::Text || kind == NodeKind::CData || kind == NodeKind::EntityReference;
}

} // namespace dom
