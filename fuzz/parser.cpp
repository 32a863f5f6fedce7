// Any bytes as a document: what is accepted is shown whole, byte for byte, and libxml2 sees the same nodes.
#include "fuzz/require.h"
#include "platform/dom/document.h"

#include <libxml/parser.h>

#include <memory>

using namespace dom;
using fuzz::require;

namespace {

bool isBlank(QByteArrayView bytes)
{
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
}

// The markup of a node's children stands in its own, in order, with nothing but blanks between; the nodes of
// the subtree.
qint64 checkSubtree(const Node &node)
{
    const QByteArray markup = node.xml();
    qsizetype at = node.kind() == NodeKind::Element ? node.startTag().size() : 0;
    qint64 nodes = 1;
    for (Node *child = node.firstChild(); child; child = child->nextSibling()) {
        require(child->parent() == &node, "a child knows its parent");
        const QByteArray part = child->xml();
        const qsizetype found = markup.indexOf(part, at);
        require(found >= 0 && isBlank(QByteArrayView(markup).sliced(at, found - at)), "children cover all");
        at = found + part.size();
        nodes += checkSubtree(*child);
    }
    if (node.hasChildren() && node.kind() == NodeKind::Element)
        require(QByteArrayView(markup).sliced(at).trimmed().startsWith("</"), "an end tag ends it");
    require(node.subtreeCount() == nodes, "the count is right");
    return nodes;
}

// Names of the elements, in order, as each of the two sees them.
void addNames(const Node &element, QByteArray &names)
{
    names += element.name().toUtf8() + '\n';
    for (Node *child = element.firstChild(); child; child = child->nextSibling()) {
        if (child->kind() == NodeKind::Element)
            addNames(*child, names);
    }
}

void addNames(const xmlNode &element, QByteArray &names)
{
    if (element.ns && element.ns->prefix)
        names += QByteArray(reinterpret_cast<const char *>(element.ns->prefix)) + ':';
    names += QByteArray(reinterpret_cast<const char *>(element.name)) + '\n';
    for (const xmlNode *child = element.children; child; child = child->next) {
        if (child->type == XML_ELEMENT_NODE)
            addNames(*child, names);
    }
}

void checkAgainstLibxml(const Document &document, const QByteArray &text)
{
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> other(
        xmlReadMemory(text.constData(), int(text.size()), nullptr, "UTF-8",
                      XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
        xmlFreeDoc);
    if (!other)
        return; // some things are no fault to the verdict, such as a document type out of reach
    QByteArray ours;
    QByteArray theirs;
    addNames(*document.documentElement(), ours);
    addNames(*xmlDocGetRootElement(other.get()), theirs);
    require(ours == theirs, "libxml2 sees the same elements");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text = fuzz::bytesOfInput(data, size);
    Document document;
    const auto error = document.load(text);
    require(document.isEmpty() == error.has_value(), "empty when refused");
    if (error) {
        require(error->code != 0 && error->line > 0 && error->position > 0, "a fault has its place");
        require(error->offset >= 0 && error->offset <= text.size(), "the fault lies in the text");
        return 0;
    }
    require(document.xml() == text, "unedited, it is its text");
    checkSubtree(*document.documentElement());
    for (Node *node = document.documentNode()->firstChild(); node; node = node->nextSibling())
        static_cast<void>(node->text() + node->data() + node->namespaceUri());
    checkAgainstLibxml(document, text);
    return 0;
}
