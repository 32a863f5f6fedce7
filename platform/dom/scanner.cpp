#include "platform/dom/scanner.h"

#include "platform/dom/markup_reader.h"
#include "platform/dom/names.h"

#include <cstring>
#include <vector>

namespace dom {

namespace {

// The first c in [from, end), or end.
const char *find(const char *from, const char *end, char c)
{
    const void *found = std::memchr(from, c, size_t(end - from));
    return found ? static_cast<const char *>(found) : end;
}

// Past the first occurrence of closing, or end.
const char *past(const char *from, const char *end, QByteArrayView closing)
{
    const char *at = find(from, end, closing.front());
    while (end - at >= closing.size() && std::memcmp(at, closing.data(), size_t(closing.size())) != 0)
        at = find(at + 1, end, closing.front());
    return end - at >= closing.size() ? at + closing.size() : end;
}

const char *skipBlanks(const char *from, const char *end)
{
    while (from < end && isBlank(*from))
        ++from;
    return from;
}

bool startsWith(const char *from, const char *end, QByteArrayView text)
{
    return end - from >= text.size() && std::memcmp(from, text.data(), size_t(text.size())) == 0;
}

// Past the ">" of a document type declaration that begins at from.
const char *pastDocumentType(const char *from, const char *end)
{
    int depth = 0;
    for (const char *at = from + 1; at < end;) {
        if (startsWith(at, end, "<!--")) {
            at = past(at + 4, end, "-->");
        } else if (startsWith(at, end, "<?")) {
            at = past(at + 2, end, "?>");
        } else if (*at == '"' || *at == '\'') {
            at = past(at + 1, end, QByteArrayView(at, 1));
        } else {
            if (*at == '>' && depth == 0)
                return at + 1;
            depth += *at == '[' ? 1 : *at == ']' ? -1 : 0;
            ++at;
        }
    }
    return end;
}

// The markup that is no element: how it begins, and how it ends.
struct Verbatim
{
    QByteArrayView opening;
    QByteArrayView closing;
    NodeKind kind;
};

const Verbatim verbatims[] = {
    {"<!--", "-->", NodeKind::Comment},
    {"<![CDATA[", "]]>", NodeKind::CData},
    {"<?", "?>", NodeKind::ProcessingInstruction},
};

// Past the comment, CDATA section, instruction or document type at a "<", and its kind; null for an element.
const char *pastVerbatim(const char *at, const char *limit, NodeKind &kind)
{
    if (limit - at < 2 || (at[1] != '!' && at[1] != '?'))
        return nullptr;
    for (const Verbatim &verbatim : verbatims) {
        if (startsWith(at, limit, verbatim.opening)) {
            kind = verbatim.kind;
            return past(at + verbatim.opening.size(), limit, verbatim.closing);
        }
    }
    kind = NodeKind::DocumentType;
    return pastDocumentType(at, limit);
}

struct TagEnd
{
    const char *end; // past ">"
    bool closesItself;
    bool preserve; // what xml:space says for its content
};

// The value that opens at quote belongs to xml:space.
bool namesSpace(const char *from, const char *quote)
{
    const char *at = quote;
    while (at > from && isBlank(at[-1]))
        --at;
    if (at == from || at[-1] != '=')
        return false;
    --at;
    while (at > from && isBlank(at[-1]))
        --at;
    constexpr qsizetype size = 9;
    return at - from > size && std::memcmp(at - size, "xml:space", size) == 0 && isBlank(at[-size - 1]);
}

TagEnd startTag(const char *from, const char *end, bool preserve)
{
    for (const char *at = from + 1; at < end; ++at) {
        if (*at == '>')
            return {at + 1, at[-1] == '/', preserve};
        if (*at == '"' || *at == '\'') {
            const char *closing = find(at + 1, end, *at);
            if (at[-1] == '=' || isBlank(at[-1])) {
                if (namesSpace(from, at))
                    preserve = QByteArrayView(at + 1, closing - at - 1) == QByteArrayView("preserve");
            }
            at = closing;
        }
    }
    return {end, false, preserve};
}

// A reference that resolves to a character and so belongs to the text around it.
bool isCharacterReference(const char *ampersand, const char *semicolon)
{
    const QByteArrayView name(ampersand + 1, semicolon - ampersand - 1);
    return name.startsWith('#') || name == QByteArrayView("amp") || name == QByteArrayView("lt")
        || name == QByteArrayView("gt") || name == QByteArrayView("quot") || name == QByteArrayView("apos");
}

// The first reference to a declared entity in [from, end), or end.
const char *findEntityReference(const char *from, const char *end)
{
    const char *at = find(from, end, '&');
    while (at < end && isCharacterReference(at, find(at, end, ';')))
        at = find(at + 1, end, '&');
    return at;
}

// The nodes in a run of character data: texts, and the entity references between them. Blanks alone are none.
template <typename OnNode>
void forEachInRun(const char *from, const char *end, bool preserve, OnNode onNode)
{
    while (from < end) {
        const char *reference = findEntityReference(from, end);
        if (reference > from && (preserve || skipBlanks(from, reference) != reference))
            onNode(NodeKind::Text, from, reference);
        if (reference == end)
            return;
        const char *semicolon = find(reference, end, ';');
        from = semicolon < end ? semicolon + 1 : end;
        onNode(NodeKind::EntityReference, reference, from);
    }
}

} // namespace

namespace {

// One forward walk over a source.
class Walk
{
public:
    Walk(const Source &source, quint32 from, StructureIndex *building)
        : base_(source.utf8.constData()), known_(source.index, from), building_(building)
    { }

    ContentEnd content(const char *from, const char *limit, bool preserve, const Scanner::OnChild &onChild,
                       const Scanner::OnChild *onRootChild = nullptr, ContentEnd *rootEnd = nullptr)
    {
        const char *lead = from;
        const char *at = from;
        const auto emit = [&](NodeKind kind, const char *begin, const char *end) {
            onChild({kind, span(begin, end), quint32(begin - lead), quint32(end - begin), 1, preserve});
            lead = end;
        };
        while (true) {
            const char *markup = runEnd(at, limit);
            if (preserve || skipBlanks(at, markup) != markup)
                forEachInRun(at, markup, preserve, emit);
            if (markup == limit)
                return {offset(lead), offset(limit), offset(limit)};
            if (startsWith(markup, limit, "</"))
                return {offset(lead), offset(markup), offset(past(markup, limit, ">"))};
            ScannedChild child = markupAt(markup, limit, preserve, onRootChild, rootEnd);
            child.leadSize = quint32(markup - lead);
            onChild(child);
            at = lead = base_ + child.whole.end;
        }
    }

private:
    struct Frame
    {
        quint32 begin;
        qint32 nodes; // counted when it opened
        quint32 covered; // bytes that index entries covered when it opened
        bool preserve;
    };

    quint32 offset(const char *at) const { return quint32(at - base_); }
    Span span(const char *begin, const char *end) const { return {offset(begin), offset(end)}; }

    // Where the run of character data that begins here meets markup.
    static const char *runEnd(const char *at, const char *limit)
    {
        at = skipBlanks(at, limit);
        return at < limit && *at == '<' ? at : find(at, limit, '<');
    }

    ScannedChild markupAt(const char *at, const char *limit, bool preserve,
                          const Scanner::OnChild *onRootChild, ContentEnd *rootEnd)
    {
        ScannedChild child{NodeKind::Element, span(at, limit), 0, 0, 1, preserve};
        if (verbatimAt(at, limit, child))
            return child;
        const TagEnd tag = startTag(at, limit, preserve);
        child.headSize = quint32(tag.end - at);
        child.preservesSpace = tag.preserve;
        child.whole.end = offset(tag.end);
        if (tag.closesItself)
            return child;
        if (onRootChild) {
            const auto count = [&](const ScannedChild &below) {
                child.nodes += below.nodes;
                (*onRootChild)(below);
            };
            *rootEnd = content(tag.end, limit, tag.preserve, count);
            child.whole.end = rootEnd->end;
        } else if (const StructureIndex::Entry *entry = known_.at(child.whole.begin)) {
            child.whole.end = entry->end;
            child.nodes = qint32(entry->nodes);
        } else {
            child.whole.end = offset(skipSubtree(at, tag, limit, child.nodes));
        }
        return child;
    }

    // Comment, CDATA section, instruction or document type at a "<": fills child; false for an element.
    bool verbatimAt(const char *at, const char *limit, ScannedChild &child) const
    {
        const char *end = pastVerbatim(at, limit, child.kind);
        if (!end)
            return false;
        child.whole.end = offset(end);
        child.headSize = child.whole.size();
        return true;
    }

    // Past the end tag of the element whose start tag is given; counts the nodes below it.
    const char *skipSubtree(const char *begin, const TagEnd &tag, const char *limit, qint32 &nodes)
    {
        frames_.clear();
        frames_.push_back({offset(begin), nodes - 1, covered_, tag.preserve});
        const char *at = tag.end;
        while (true) {
            const char *markup = runEnd(at, limit);
            const bool preserve = frames_.back().preserve;
            if (preserve || skipBlanks(at, markup) != markup)
                forEachInRun(at, markup, preserve,
                             [&nodes](NodeKind, const char *, const char *) { ++nodes; });
            if (markup == limit)
                return limit;
            if (startsWith(markup, limit, "</")) {
                at = past(markup, limit, ">");
                closeFrame(at, nodes);
                if (frames_.empty())
                    return at;
            } else {
                at = stepInto(markup, limit, preserve, nodes);
            }
        }
    }

    const char *stepInto(const char *markup, const char *limit, bool preserve, qint32 &nodes)
    {
        ScannedChild child{NodeKind::Element, span(markup, limit), 0, 0, 1, preserve};
        if (verbatimAt(markup, limit, child)) {
            ++nodes;
            return base_ + child.whole.end;
        }
        if (const StructureIndex::Entry *entry = known_.at(child.whole.begin)) {
            nodes += qint32(entry->nodes);
            return base_ + entry->end;
        }
        const TagEnd tag = startTag(markup, limit, preserve);
        if (!tag.closesItself)
            frames_.push_back({child.whole.begin, nodes, covered_, tag.preserve});
        ++nodes;
        return tag.end;
    }

    void closeFrame(const char *end, qint32 nodes)
    {
        const Frame frame = frames_.back();
        frames_.pop_back();
        if (!building_)
            return;
        const quint32 size = offset(end) - frame.begin;
        if (size - (covered_ - frame.covered) < StructureIndex::grain)
            return;
        building_->add({frame.begin, offset(end), quint32(nodes - frame.nodes)});
        covered_ = frame.covered + size;
    }

    const char *base_;
    StructureIndex::Cursor known_;
    StructureIndex *building_;
    std::vector<Frame> frames_;
    quint32 covered_ = 0;
};

} // namespace

std::optional<MarkupReader::Tag> MarkupReader::nextTag()
{
    while (true) {
        const char *markup = find(at_, end_, '<');
        if (markup == end_)
            return std::nullopt;
        NodeKind kind{};
        if (const char *past = pastVerbatim(markup, end_, kind)) {
            at_ = past;
            continue;
        }
        const TagEnd tag = startTag(markup, end_, false);
        at_ = tag.end;
        const bool closes = startsWith(markup, end_, "</");
        return Tag{closes                 ? Tag::End
                       : tag.closesItself ? Tag::Empty
                                          : Tag::Start,
                   {markup, tag.end - markup}};
    }
}

ContentEnd Scanner::children(quint32 from, quint32 limit, bool preserve, const OnChild &onChild) const
{
    Walk walk(source_, from, nullptr);
    const char *base = source_.utf8.constData();
    return walk.content(base + from, base + limit, preserve, onChild);
}

ContentEnd Scanner::wholeDocument(StructureIndex &index, const OnChild &onTop, const OnChild &onChild,
                                  ContentEnd &rootEnd) const
{
    Walk walk(source_, 0, &index);
    const char *base = source_.utf8.constData();
    const ContentEnd end = walk.content(base, base + source_.utf8.size(), false, onTop, &onChild, &rootEnd);
    index.finish();
    return end;
}

void Scanner::element(StructureIndex &index, quint32 from, bool preserve, const OnChild &onElement) const
{
    Walk walk(source_, from, &index);
    const char *base = source_.utf8.constData();
    walk.content(base + from, base + source_.utf8.size(), preserve, onElement);
    index.finish();
}

} // namespace dom
