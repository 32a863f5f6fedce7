#include "platform/dom/layout.h"

#include "platform/dom/document_private.h"
#include "platform/dom/node.h"

namespace dom {

namespace {

// Where the last line break in blanks begins; -1 when there is none.
qsizetype lastLineBreak(QByteArrayView blanks)
{
    qsizetype at = blanks.size() - 1;
    while (at >= 0 && blanks[at] != '\n' && blanks[at] != '\r')
        --at;
    return at > 0 && blanks[at] == '\n' && blanks[at - 1] == '\r' ? at - 1 : at;
}

// The last line break and the indent after it; empty when the blanks stay on one line.
QByteArray lineStart(QByteArrayView blanks)
{
    const qsizetype at = lastLineBreak(blanks);
    return at < 0 ? QByteArray() : blanks.sliced(at).toByteArray();
}

QByteArray withoutLineBreak(QByteArray line)
{
    while (line.startsWith('\r') || line.startsWith('\n'))
        line.remove(0, 1);
    return line;
}

constexpr char usualIndent[] = "  ";

} // namespace

QByteArray Layout::lineEnd(const Document &document)
{
    QByteArray &known = document.d->content->lineEnd;
    if (known.isEmpty()) {
        known = "\n";
        const QByteArray text
            = document.d->content->sources.empty() ? QByteArray() : document.d->content->sources.front().utf8;
        const qsizetype at = text.indexOf('\n');
        if (at > 0 && text[at - 1] == '\r')
            known = "\r\n";
        else if (at < 0 && text.contains('\r'))
            known = "\r";
    }
    return known;
}

std::optional<QByteArray> Layout::indentOf(const Node &node)
{
    const QByteArray line = lineStart(node.lead());
    if (line.isEmpty())
        return std::nullopt;
    return withoutLineBreak(line);
}

Layout::Placement Layout::place(const Node &parent, const Node &node, const Node *reference)
{
    if (parent.preservesSpace_)
        return {};
    if (parent.childCount() == 0)
        return placeInEmpty(parent, node);
    if (parent.children().hasText())
        return {};
    const Node *sample = reference ? reference : parent.lastChild();
    return {lineStart(sample->lead()), std::nullopt};
}

Layout::Placement Layout::placeInEmpty(const Node &parent, const Node &node)
{
    if (isTextLike(node.kind()))
        return {{}, QByteArray()};
    const bool tailBreaks = lastLineBreak(parent.tail()) >= 0;
    const std::optional<QByteArray> indent = indentOf(parent);
    if (!indent && !tailBreaks)
        return {};
    const QByteArray line = lineEnd(parent.document()) + indent.value_or(QByteArray());
    return {line + indentUnit(parent), tailBreaks ? lineStart(parent.tail()) : line};
}

// One step of indent as this document has it: how far the nearest ancestor that begins its line stands from
// its own parent, else how far the document element's first child does.
QByteArray Layout::indentUnit(const Node &parent)
{
    const auto step = [](const Node &inner, const Node &outer) -> QByteArray {
        const std::optional<QByteArray> to = indentOf(inner);
        const QByteArray from = indentOf(outer).value_or(QByteArray());
        return to && to->startsWith(from) ? to->sliced(from.size()) : QByteArray();
    };
    const Node *root = &parent;
    for (const Node *node = &parent; node->parent_ && node->parent_->kind_ == NodeKind::Element;
         node = node->parent_) {
        root = node->parent_;
        if (QByteArray unit = step(*node, *node->parent_); !unit.isEmpty())
            return unit;
    }
    if (const Node *first = root->firstChild()) {
        if (QByteArray unit = step(*first, *root); !unit.isEmpty())
            return unit;
    }
    return usualIndent;
}

} // namespace dom
