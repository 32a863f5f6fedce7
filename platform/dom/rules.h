// What may stand where: the reasons for which an edit is refused. Every accepted edit leaves a text that
// parses.
#pragma once

#include "platform/result.h"

#include <QString>

namespace dom {

class Node;
enum class NodeKind : quint8;

struct Rules
{
    using Verdict = platform::Result<void>;

    // replaced: the child that goes when node comes, or null.
    static Verdict mayInsert(const Node *parent, const Node *node, const Node *reference,
                             const Node *replaced);
    static Verdict mayRemove(const Node *parent, const Node *node);
    static Verdict isElementName(const QString &name);
    static Verdict isInstructionTarget(const QString &target);
    static Verdict isData(NodeKind kind, const QString &data);
    static Verdict isAttribute(const Node *element, const QString &name, const QString &value);

private:
    static Verdict mayStandAtTop(const Node *top, const Node *node, const Node *reference,
                                 const Node *replaced);
};

} // namespace dom
