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

} // namespace dom
