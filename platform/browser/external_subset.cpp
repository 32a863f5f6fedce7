#include "platform/browser/external_subset.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlsave.h>
#include <limits>
#include <memory>

namespace browser {
namespace {

constexpr int kParseOptions = XML_PARSE_NOENT | XML_PARSE_DTDLOAD | XML_PARSE_DTDATTR | XML_PARSE_NONET
    | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

struct Free
{
    void operator()(xmlParserCtxtPtr context) const { xmlFreeParserCtxt(context); }
    void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
    void operator()(xmlBufferPtr buffer) const { xmlBufferFree(buffer); }
};

// One reading of a document, known to the callbacks by their context.
struct Reading
{
    const SubsetReader &read;
    bool hasSubset = false;
    bool wantsOtherFiles = false;
};

Reading &readingOf(void *context)
{
    return *static_cast<Reading *>(static_cast<xmlParserCtxtPtr>(context)->_private);
}

// Also in UTF-16, in either byte order.
bool mayDeclare(const QByteArray &xml)
{
    return xml.contains("<!DOCTYPE") || xml.contains(QByteArrayView("D\0O\0C\0T\0Y\0P\0E", 13));
}

xmlParserInputPtr inputOf(xmlParserCtxtPtr context, const QByteArray &bytes)
{
    xmlParserInputBufferPtr buffer
        = xmlParserInputBufferCreateMem(bytes.constData(), int(bytes.size()), XML_CHAR_ENCODING_NONE);
    return buffer == nullptr ? nullptr : xmlNewIOInputStream(context, buffer, XML_CHAR_ENCODING_NONE);
}

xmlParserInputPtr openSubset(void *context, const xmlChar *, const xmlChar *systemId)
{
    Reading &reading = readingOf(context);
    if (systemId == nullptr)
        return nullptr;
    const auto bytes = reading.read(QString::fromUtf8(reinterpret_cast<const char *>(systemId)));
    if (!bytes || bytes->size() > std::numeric_limits<int>::max())
        return nullptr;
    reading.hasSubset = true;
    return inputOf(static_cast<xmlParserCtxtPtr>(context), *bytes);
}

// An entity that is kept in another file counts as not declared.
xmlEntityPtr withoutFiles(void *context, xmlEntityPtr entity)
{
    const bool inFile = entity != nullptr
        && (entity->etype == XML_EXTERNAL_GENERAL_PARSED_ENTITY
            || entity->etype == XML_EXTERNAL_PARAMETER_ENTITY);
    readingOf(context).wantsOtherFiles |= inFile;
    return inFile ? nullptr : entity;
}

xmlEntityPtr findEntity(void *context, const xmlChar *name)
{
    return withoutFiles(context, xmlSAX2GetEntity(context, name));
}

xmlEntityPtr findParameterEntity(void *context, const xmlChar *name)
{
    return withoutFiles(context, xmlSAX2GetParameterEntity(context, name));
}

QByteArray serialised(xmlDocPtr document)
{
    if (xmlDtdPtr declaration = xmlGetIntSubset(document)) {
        xmlUnlinkNode(reinterpret_cast<xmlNodePtr>(declaration)); // nothing is left for it to say
        document->intSubset = nullptr;
        xmlFreeDtd(declaration);
    }
    const std::unique_ptr<xmlBuffer, Free> buffer(xmlBufferCreate());
    xmlSaveCtxtPtr save = xmlSaveToBuffer(buffer.get(), "UTF-8", XML_SAVE_AS_XML | XML_SAVE_NO_XHTML);
    if (save == nullptr)
        return {};
    xmlSaveDoc(save, document);
    xmlSaveClose(save);
    return {reinterpret_cast<const char *>(xmlBufferContent(buffer.get())), xmlBufferLength(buffer.get())};
}

} // namespace

QByteArray withExternalSubset(const QByteArray &xml, const SubsetReader &read)
{
    if (xml.size() > std::numeric_limits<int>::max() || !mayDeclare(xml))
        return xml;
    Reading reading{read};
    const std::unique_ptr<xmlParserCtxt, Free> context(xmlNewParserCtxt());
    if (!context)
        return xml;
    context->_private = &reading;
    context->sax->resolveEntity = openSubset;
    context->sax->getEntity = findEntity;
    context->sax->getParameterEntity = findParameterEntity;
    const std::unique_ptr<xmlDoc, Free> document(
        xmlCtxtReadMemory(context.get(), xml.constData(), int(xml.size()), nullptr, nullptr, kParseOptions));
    if (!document || !reading.hasSubset || reading.wantsOtherFiles)
        return xml;
    const QByteArray complete = serialised(document.get());
    return complete.isEmpty() ? xml : complete;
}

} // namespace browser
