#include "tidy/transform_addresses.h"

#include "platform/dom/addresses.h"

#include <libxml/xpathInternals.h>
#include <libxslt/functions.h>
#include <libxslt/xsltutils.h>

#include <memory>

namespace tidy {

namespace {

struct Freed
{
    void operator()(xmlXPathObject *object) const { xmlXPathFreeObject(object); }
    void operator()(xmlChar *text) const { xmlFree(text); }
};

using Object = std::unique_ptr<xmlXPathObject, Freed>;
using Text = std::unique_ptr<xmlChar, Freed>;

const xmlChar *chars(const QByteArray &text) { return reinterpret_cast<const xmlChar *>(text.constData()); }

// Calls the library's own function, with these on the stack.
Object load(xmlXPathParserContextPtr parser, xmlChar *reference, Object base)
{
    const Text written(reference);
    const QByteArray address = dom::asAddress(reinterpret_cast<const char *>(written.get()));
    const int count = base ? 2 : 1;
    valuePush(parser, xmlXPathNewString(chars(address)));
    if (base)
        valuePush(parser, base.release());
    xsltDocumentFunction(parser, count);
    return Object(valuePop(parser));
}

bool isNodes(const xmlXPathObject &object)
{
    return object.type == XPATH_NODESET || object.type == XPATH_XSLT_TREE;
}

// Each node names a document, beside the node itself where no other base is given.
Object loadEach(xmlXPathParserContextPtr parser, const xmlXPathObject &names, const xmlXPathObject *base)
{
    Object all(xmlXPathNewNodeSet(nullptr));
    const int count = names.nodesetval ? names.nodesetval->nodeNr : 0;
    for (int at = 0; all && at < count && parser->error == XPATH_EXPRESSION_OK; ++at) {
        xmlNode *node = names.nodesetval->nodeTab[at];
        Object beside(base ? xmlXPathObjectCopy(const_cast<xmlXPathObject *>(base))
                           : xmlXPathNewNodeSet(node));
        const Object loaded = load(parser, xmlXPathCastNodeToString(node), std::move(beside));
        if (loaded && isNodes(*loaded))
            all->nodesetval = xmlXPathNodeSetMerge(all->nodesetval, loaded->nodesetval);
    }
    return all;
}

void documentFunction(xmlXPathParserContextPtr parser, int count)
{
    if (count != 1 && count != 2)
        return xsltDocumentFunction(parser, count); // which says what is wrong
    Object base(count == 2 ? valuePop(parser) : nullptr);
    const Object names(valuePop(parser));
    if (!names)
        return xmlXPathErr(parser, XPATH_STACK_ERROR);
    Object loaded = isNodes(*names) ? loadEach(parser, *names, base.get())
                                    : load(parser, xmlXPathCastToString(names.get()), std::move(base));
    if (loaded)
        valuePush(parser, loaded.release());
}

} // namespace

void escapeReferences(xmlDoc &styleSheet)
{
    const xmlNode *root = xmlDocGetRootElement(&styleSheet);
    for (xmlNode *child = root ? root->children : nullptr; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE || !IS_XSLT_ELEM(child)
            || (!IS_XSLT_NAME(child, "include") && !IS_XSLT_NAME(child, "import")))
            continue;
        const Text written(xmlGetNoNsProp(child, reinterpret_cast<const xmlChar *>("href")));
        if (!written)
            continue;
        const QByteArray address = dom::asAddress(reinterpret_cast<const char *>(written.get()));
        xmlSetProp(child, reinterpret_cast<const xmlChar *>("href"), chars(address));
    }
}

void registerDocumentFunction(xsltTransformContext &context)
{
    const auto *name = reinterpret_cast<const xmlChar *>("document");
    xmlXPathRegisterFunc(context.xpathCtxt, name, nullptr); // one that is there is not replaced
    xmlXPathRegisterFunc(context.xpathCtxt, name, documentFunction);
}

} // namespace tidy
