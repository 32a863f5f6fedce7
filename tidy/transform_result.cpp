#include "tidy/transform_result.h"

#include <libxml/parserInternals.h>
#include <libxml/xmlsave.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace tidy {

namespace {

// The elements that HTML never closes. Of all others a reader of HTML needs the end tag.
constexpr const char *voidElements[]
    = {"area",  "base",    "basefont", "br",   "col",  "command", "embed",  "frame", "hr", "img",
       "input", "isindex", "keygen",   "link", "meta", "param",   "source", "track", "wbr"};

bool isNamed(const xmlNode &element, const char *name)
{
    return xmlStrcasecmp(element.name, reinterpret_cast<const xmlChar *>(name)) == 0;
}

bool isVoid(const xmlNode &element)
{
    const auto matches = [&element](const char *name) { return isNamed(element, name); };
    return std::any_of(std::begin(voidElements), std::end(voidElements), matches);
}

// Scripts and styles are read as they stand: a reference in them would be taken for its letters.
void fitForHtml(xmlNode &element)
{
    if (!element.children && !isVoid(element))
        xmlAddChild(&element, xmlNewDocText(element.doc, reinterpret_cast<const xmlChar *>("")));
    if (!isNamed(element, "script") && !isNamed(element, "style"))
        return;
    for (xmlNode *child = element.children; child; child = child->next) {
        if (child->type == XML_TEXT_NODE)
            child->name = xmlStringTextNoenc;
    }
}

xmlNode *nextInTree(xmlNode *node, const xmlNode *root)
{
    if (node->type == XML_ELEMENT_NODE && node->children)
        return node->children;
    while (node != root && !node->next)
        node = node->parent;
    return node == root ? nullptr : node->next;
}

bool counts(const xmlNode &node)
{
    return node.type == XML_ELEMENT_NODE || node.type == XML_PI_NODE || node.type == XML_COMMENT_NODE
        || node.type == XML_DTD_NODE;
}

xmlNode *nodeAtPositionOne(const xmlDoc &result)
{
    std::vector<xmlNode *> nodes;
    for (xmlNode *child = result.children; child; child = child->next) {
        if (counts(*child))
            nodes.push_back(child);
    }
    if (nodes.size() > 1)
        return nodes[1];
    return !nodes.empty() && nodes[0]->type == XML_ELEMENT_NODE ? nodes[0] : nullptr;
}

QByteArray markupOf(xmlDoc &result, xmlNode &node)
{
    const std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> buffer(xmlBufferCreate(), xmlBufferFree);
    if (!buffer)
        return {};
    // An HTML result would be written with another list of rules, and with an encoding of its own.
    result.type = XML_DOCUMENT_NODE;
    xmlSaveCtxt *save
        = xmlSaveToBuffer(buffer.get(), "UTF-8", XML_SAVE_AS_XML | XML_SAVE_NO_DECL | XML_SAVE_NO_XHTML);
    xmlSaveTree(save, &node);
    xmlSaveClose(save);
    return {reinterpret_cast<const char *>(xmlBufferContent(buffer.get())), xmlBufferLength(buffer.get())};
}

} // namespace

platform::Result<QByteArray> markupAtPositionOne(xmlDoc &result)
{
    xmlNode *wanted = nodeAtPositionOne(result);
    if (!wanted)
        return platform::Failure{QStringLiteral("The result of the transformation holds no element.")};
    for (xmlNode *node = wanted; node; node = nextInTree(node, wanted)) {
        if (node->type == XML_ELEMENT_NODE)
            fitForHtml(*node);
    }
    return markupOf(result, *wanted);
}

} // namespace tidy
