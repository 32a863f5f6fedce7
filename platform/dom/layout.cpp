#include "platform/dom/layout.h"

#include "platform/dom/declared_space.h"
#include "platform/dom/document_private.h"
#include "platform/dom/names.h"
#include "platform/dom/node.h"
#include "platform/dom/start_tag.h"

namespace dom {

namespace {

// The last line break and the indent after it; empty when the blanks stay on one line.
QByteArray lineStart(QByteArrayView blanks)
{
    const qsizetype at = lastLineBreak(blanks);
    return at < 0 ? QByteArray() : blanks.sliced(at).toByteArray();
}

bool breaksLine(QByteArrayView blanks) { return lastLineBreak(blanks) >= 0; }

constexpr char usualIndent[] = "  ";
constexpr int mostSamples = 8; // levels that are looked at for the document's indent

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

std::optional<bool> Layout::keepsBlanks(const Document &document, QByteArrayView startTag)
{
    if (startTag.indexOf("xml:space") >= 0) {
        const StartTag tag(startTag);
        if (const StartTag::AttributeSpan *space = tag.find("xml:space"))
            return tag.valueOf(*space) == QByteArrayView("preserve");
    }
    Content &content = *document.d->content;
    if (!content.declaredSpaces) {
        content.declaredSpaces.emplace();
        for (const Node *top = content.documentNode->firstChild(); top; top = top->nextSibling()) {
            if (top->kind() == NodeKind::DocumentType)
                content.declaredSpaces = declaredSpaces(top->head());
        }
    }
    const QByteArrayView name = tagName(startTag);
    if (!content.declaredSpaces->isEmpty()) {
        const auto declared = content.declaredSpaces->constFind(name.toByteArray());
        if (declared != content.declaredSpaces->constEnd())
            return *declared;
    }
    return isPreformatted(name) ? std::optional(true) : std::nullopt;
}

bool Layout::keepsBlanks(const Node &node)
{
    for (const Node *at = &node; at && at->kind_ == NodeKind::Element; at = at->parent_) {
        if (const std::optional<bool> kept = keepsBlanks(node.document(), at->head()))
            return *kept;
    }
    return false;
}

QByteArrayView Layout::blanksBefore(const Node &parent, const Node *follower)
{
    parent.children(); // the end tag is known once they are listed
    return follower ? follower->lead() : parent.tail();
}

std::optional<QByteArray> Layout::indentOf(const Node &node) { return indentIn(node.lead()); }

Layout::Placement Layout::place(const Node &parent, const Node &node, const Node *reference)
{
    if (keepsBlanks(parent))
        return {};
    if (parent.childCount() == 0)
        return placeInEmpty(parent, node);
    if (parent.children().hasText())
        return {};
    if (node.kind() == NodeKind::Text)
        return {{}, breaksLine(blanksBefore(parent, reference)) ? std::optional(QByteArray()) : std::nullopt};
    const Node *sample = reference ? reference : parent.lastChild();
    return {lineStart(sample->lead()), std::nullopt};
}

Layout::Placement Layout::placeInEmpty(const Node &parent, const Node &node)
{
    if (isTextLike(node.kind()))
        return {{}, QByteArray()};
    const bool tailBreaks = breaksLine(parent.tail());
    const std::optional<QByteArray> indent = indentOf(parent);
    if (!indent && !tailBreaks)
        return {};
    const QByteArray line = lineEnd(parent.document()) + indent.value_or(QByteArray());
    return {line + indentUnit(parent).value_or(usualIndent), tailBreaks ? lineStart(parent.tail()) : line};
}

// A line break with the indent of the other children.
QByteArray Layout::siblingLine(const Node &parent)
{
    for (const Node *child = parent.firstChild(); child; child = child->nextSibling()) {
        if (QByteArray line = lineStart(child->lead()); !line.isEmpty())
            return line;
    }
    return lineEnd(parent.document()) + lineOf(parent) + indentUnit(parent).value_or(usualIndent);
}

std::optional<Layout::Passing> Layout::pass(const Node &parent, bool textGoesUp, QByteArrayView lead,
                                            const Node *follower)
{
    const QByteArrayView behind = blanksBefore(parent, follower);
    if (textGoesUp && breaksLine(lead) && behind.isEmpty())
        return Passing{{}, follower ? lead.toByteArray() : lineEnd(parent.document()) + lineOf(parent)};
    if (!textGoesUp && breaksLine(behind) && lead.isEmpty())
        return Passing{follower ? behind.toByteArray() : siblingLine(parent), {}};
    return std::nullopt;
}

std::optional<QByteArray> Layout::indentStep(const Node &inner, const Node &outer)
{
    const std::optional<QByteArray> to = indentOf(inner);
    const QByteArray from = indentOf(outer).value_or(QByteArray());
    return to && to->startsWith(from) ? std::optional(to->sliced(from.size())) : std::nullopt;
}

// One step of indent as this document has it: how far the nearest ancestor that begins its line stands from
// its own parent, else how far the document element's first child does, or the first one within that, and so
// on. A document whose lines all begin at the margin has a step of nothing.
std::optional<QByteArray> Layout::indentUnit(const Node &parent)
{
    std::optional<QByteArray> unit;
    const auto isFound = [&unit](const Node &inner, const Node &outer) {
        if (const std::optional<QByteArray> step = indentStep(inner, outer))
            unit = step;
        return unit && !unit->isEmpty();
    };
    const Node *root = &parent;
    for (const Node *node = &parent; node->parent_ && node->parent_->kind_ == NodeKind::Element;
         node = node->parent_) {
        root = node->parent_;
        if (isFound(*node, *node->parent_))
            return unit;
    }
    const Node *outer = root;
    for (int level = 0; level < mostSamples && outer; ++level) {
        const Node *inner = outer->firstChild();
        if (inner && isFound(*inner, *outer))
            return unit;
        outer = inner;
    }
    return unit;
}

QByteArray Layout::lineOf(const Node &node)
{
    for (const Node *at = &node; at && at->kind_ == NodeKind::Element; at = at->parent_) {
        if (const std::optional<QByteArray> indent = indentOf(*at))
            return *indent;
        const Node *before = at->previousSibling();
        const QByteArrayView text
            = before && before->kind_ == NodeKind::Text ? before->head() : QByteArrayView();
        const qsizetype line = lastLineBreak(text);
        if (line < 0)
            continue;
        qsizetype end = line;
        while (end < text.size() && (text[end] == '\r' || text[end] == '\n'))
            ++end;
        const qsizetype begin = end;
        while (end < text.size() && (text[end] == ' ' || text[end] == '\t'))
            ++end;
        return text.sliced(begin, end - begin).toByteArray();
    }
    return {};
}

// The blanks that the content of an element begins and ends with. Its children are not listed for that.
struct Layout::Edges
{
    QByteArrayView first;
    QByteArrayView last;

    explicit Edges(const Node &node)
    {
        if (node.children_) {
            const Node *child = node.firstChild();
            first = child && child->kind_ != NodeKind::Text ? child->lead() : QByteArrayView();
            last = node.tail();
            return;
        }
        const QByteArrayView whole = node.source_->view(node.whole_);
        const QByteArrayView content
            = whole.first(qMax<qsizetype>(node.headSize_, whole.lastIndexOf("</"))).sliced(node.headSize_);
        const qsizetype markup = skipBlanks(content, 0);
        if (markup < content.size() && content[markup] == '<')
            first = content.first(markup);
        qsizetype end = content.size();
        while (end > 0 && isBlank(content[end - 1]))
            --end;
        if (end > 0 && content[end - 1] == '>')
            last = content.sliced(end);
    }
};

std::optional<IndentChange> Layout::indentChange(const Node &node, QByteArrayView formerLead)
{
    if (node.kind_ != NodeKind::Element || !node.hasChildren() || !node.parent_ || keepsBlanks(*node.parent_))
        return std::nullopt;
    const Edges edges(node);
    // The indent of its own line is told by that of its end tag, else by where it stood.
    const std::optional<QByteArray> endTag = indentIn(edges.last);
    const std::optional<QByteArray> base = endTag ? endTag : indentIn(formerLead);
    if (!base)
        return std::nullopt;
    const std::optional<QByteArray> inner = indentIn(edges.first);
    const QByteArray unit = inner && inner->startsWith(*base) ? inner->sliced(base->size()) : QByteArray();
    const QByteArray otherUnit = indentOf(node) ? usualIndent : unit;
    const IndentChange change{{*base, unit}, {lineOf(node), indentUnit(*node.parent_).value_or(otherUnit)}};
    return change.changesNothing() ? std::nullopt : std::optional(change);
}

// A text that loses the node behind it is not joined by the line break behind that.
bool Layout::joinsText(const Node &parent, const Node *follower)
{
    const Node *before = follower ? follower->previousSibling() : parent.lastChild();
    if (!before || before->kind_ != NodeKind::Text || keepsBlanks(parent)
        || !breaksLine(blanksBefore(parent, follower)))
        return false;
    for (const Node *child = parent.firstChild(); child; child = child->nextSibling()) {
        if (child != before && isTextLike(child->kind_))
            return false;
    }
    return true;
}

} // namespace dom
