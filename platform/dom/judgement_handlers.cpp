// What the parser calls on its way.
#include "platform/dom/judgement.h"

#include "platform/dom/addresses.h"
#include "platform/dom/attribute_bound.h"
#include "platform/dom/fault_words.h"
#include "platform/dom/markup_reader.h"

#include <libxml/hash.h>
#include <libxml/parserInternals.h>
#include <libxml/uri.h>
#include <libxml/xmlerror.h>

#include <cstring>

namespace dom {

namespace {

// Defaulted attributes are held against all others of their element, a good deal faster than text is read.
constexpr quint64 comparisonsPerByte = 256;

// Buckets of the table that holds the defaults; left to itself the library makes do with ten.
constexpr int elementsWithDefaults = 16'384;

// Undeclared prefixes and the like make a document that no later tool accepts; a doubtful namespace name does
// not.
bool isFatal(const xmlError &error)
{
    if (error.domain == XML_FROM_NAMESPACE)
        return error.code >= XML_NS_ERR_XML_NAMESPACE && error.code <= XML_NS_ERR_COLON;
    return error.level == XML_ERR_FATAL;
}

// The innermost input that is a file, or the document; system names are relative to it.
const char *baseOf(const xmlParserCtxt &context)
{
    for (int i = context.inputNr - 1; i >= 0; --i) {
        if (context.inputTab[i]->filename)
            return context.inputTab[i]->filename;
    }
    return nullptr;
}

// The library knows only the base of the input it reads, and an internal entity has none.
class BaseInUse
{
public:
    explicit BaseInUse(xmlParserCtxt &context) : context_(context), former_(context.directory)
    {
        context.directory = const_cast<char *>(baseOf(context));
    }
    ~BaseInUse() { context_.directory = former_; }
    Q_DISABLE_COPY_MOVE(BaseInUse)

private:
    xmlParserCtxt &context_;
    char *former_;
};

// What lies between the beginning of the document type and the document element.
QByteArrayView documentTypeAt(QByteArrayView document, qsizetype begin)
{
    const QByteArrayView rest = document.sliced(begin);
    const auto root = MarkupReader(rest).nextTag();
    return root ? rest.first(root->text.data() - rest.data()) : rest;
}

} // namespace

void Judgement::setHandlers(xmlSAXHandler &sax)
{
    std::memset(&sax, 0, sizeof sax);
    sax.initialized = XML_SAX2_MAGIC;
    sax.startDocument = onStartDocument;
    sax.internalSubset = onInternalSubset;
    sax.externalSubset = onExternalSubset;
    sax.isStandalone = xmlSAX2IsStandalone;
    sax.hasInternalSubset = xmlSAX2HasInternalSubset;
    sax.hasExternalSubset = xmlSAX2HasExternalSubset;
    sax.resolveEntity = onResolveEntity;
    sax.getEntity = onGetEntity;
    sax.getParameterEntity = onGetParameterEntity;
    sax.entityDecl = onEntityDecl;
    sax.attributeDecl = onAttributeDecl;
    sax.elementDecl = onElementDecl;
    sax.unparsedEntityDecl = xmlSAX2UnparsedEntityDecl;
    sax.notationDecl = xmlSAX2NotationDecl;
    sax.startElementNs = onStartElement;
    sax.serror = reinterpret_cast<xmlStructuredErrorFunc>(onError);
}

Judgement &Judgement::of(void *context)
{
    return *static_cast<Judgement *>(static_cast<xmlParserCtxtPtr>(context)->_private);
}

// The declaration of the text itself is behind us. A file that it takes in has no other way to say what it
// is, and is the parser's to refuse where its declaration is not right.
void Judgement::onStartDocument(void *context)
{
    static_cast<xmlParserCtxtPtr>(context)->options &= ~XML_PARSE_IGNORE_ENC;
    xmlSAX2StartDocument(context);
}

void Judgement::onInternalSubset(void *context, const xmlChar *name, const xmlChar *id, const xmlChar *system)
{
    Judgement &judgement = of(context);
    judgement.documentType_
        = qMax(qsizetype(0), judgement.judged_.lastIndexOf("<!DOCTYPE", judgement.mainOffset()));
    const Choice choice = longestChoice(documentTypeAt(judgement.judged_, judgement.documentType_));
    if (choice.count >= mostChoices) {
        judgement.record(static_cast<xmlParserCtxtPtr>(context), XML_ERR_INTERNAL_ERROR, tooManyChoices());
        judgement.fault_.offset = judgement.documentType_ + choice.at;
        judgement.stop(static_cast<xmlParserCtxtPtr>(context));
        return;
    }
    xmlSAX2InternalSubset(context, name, id, system);
}

void Judgement::onExternalSubset(void *context, const xmlChar *name, const xmlChar *id, const xmlChar *system)
{
    Judgement &judgement = of(context);
    if (!judgement.goesOn(static_cast<xmlParserCtxtPtr>(context), 1))
        return;
    judgement.readsSubset_ = true;
    xmlSAX2ExternalSubset(context, name, id, system);
    judgement.readsSubset_ = false;
}

xmlParserInputPtr Judgement::onResolveEntity(void *user, const xmlChar *, const xmlChar *system)
{
    auto *context = static_cast<xmlParserCtxtPtr>(user);
    Judgement &judgement = of(user);
    const QByteArray reference = system ? asAddress(asChars(system)) : QByteArray();
    const std::unique_ptr<xmlChar, decltype(xmlFree)> address(
        xmlBuildURI(asXml(reference.constData()), asXml(baseOf(*context))), xmlFree);
    const EntityFile *file = address ? judgement.files_.open(asChars(address.get())) : nullptr;
    if (!file || !judgement.isReadable(context, *file))
        return nullptr;
    if (const Choice choice = longestChoice(file->judged); choice.count >= mostChoices) {
        judgement.recordIn(context, *file, choice.at, XML_ERR_INTERNAL_ERROR, tooManyChoices());
        return nullptr;
    }
    xmlParserInputPtr input
        = xmlNewStringInputStream(context, asXml(file->judged.constData() + file->content));
    if (input)
        input->filename = reinterpret_cast<char *>(xmlStrdup(address.get()));
    return input;
}

xmlEntityPtr Judgement::onGetEntity(void *user, const xmlChar *name)
{
    auto *context = static_cast<xmlParserCtxtPtr>(user);
    Judgement &judgement = of(user);
    if (!judgement.goesOn(context, 1))
        return nullptr;
    xmlEntityPtr entity = xmlSAX2GetEntity(user, name);
    // In the value of an attribute it is the parser's to refuse.
    if (entity && entity->etype == XML_EXTERNAL_GENERAL_PARSED_ENTITY
        && context->instate == XML_PARSER_CONTENT)
        entity = judgement.substituteFor(context, entity);
    return judgement.expand(context, entity);
}

xmlEntityPtr Judgement::onGetParameterEntity(void *user, const xmlChar *name)
{
    auto *context = static_cast<xmlParserCtxtPtr>(user);
    Judgement &judgement = of(user);
    if (!judgement.goesOn(context, 1))
        return nullptr;
    xmlEntityPtr entity = xmlSAX2GetParameterEntity(user, name);
    if (entity && entity->etype == XML_EXTERNAL_PARAMETER_ENTITY) {
        // Also one that is not read may declare anything.
        context->hasPErefs = 1;
        entity = judgement.substituteFor(context, entity);
    }
    if (entity && entity->content) {
        judgement.choices_ += longestChoice({asChars(entity->content), entity->length}).count;
        if (judgement.choices_ >= mostChoices) {
            judgement.record(context, XML_ERR_INTERNAL_ERROR, tooManyChoices());
            judgement.stop(context);
            return nullptr;
        }
    }
    return judgement.expand(context, entity);
}

void Judgement::onEntityDecl(void *user, const xmlChar *name, int type, const xmlChar *id,
                             const xmlChar *system, xmlChar *content)
{
    auto *context = static_cast<xmlParserCtxtPtr>(user);
    Judgement &judgement = of(user);
    judgement.choices_ = 0;
    if (!judgement.goesOn(context, 1))
        return;
    if (content && findTooManyAttributes(asChars(content), false)) {
        judgement.record(context, XML_ERR_INTERNAL_ERROR,
                         tooManyAttributes(QStringLiteral("In this entity an element has")));
        return;
    }
    const BaseInUse base(*context);
    const QByteArray address = system ? asAddress(asChars(system)) : QByteArray();
    xmlSAX2EntityDecl(user, name, type, id, system ? asXml(address.constData()) : nullptr, content);
}

// The library holds every default of an element against all others of it.
void Judgement::onAttributeDecl(void *user, const xmlChar *element, const xmlChar *, int, int,
                                const xmlChar *value, xmlEnumerationPtr choices)
{
    auto *context = static_cast<xmlParserCtxtPtr>(user);
    xmlFreeEnumeration(choices);
    Judgement &judgement = of(user);
    judgement.choices_ = 0;
    if (!judgement.goesOn(context, 1) || !value)
        return;
    if (!context->attsDefault)
        context->attsDefault = xmlHashCreateDict(elementsWithDefaults, context->dict);
    if (++judgement.defaults_[QByteArray(asChars(element))] <= mostAttributes)
        return;
    judgement.record(
        context, XML_ERR_INTERNAL_ERROR,
        tooManyAttributes(QStringLiteral("The element \"%1\" has").arg(QString::fromUtf8(asChars(element)))));
    judgement.stop(context);
}

void Judgement::onElementDecl(void *context, const xmlChar *, int, xmlElementContentPtr)
{
    of(context).choices_ = 0;
    of(context).goesOn(static_cast<xmlParserCtxtPtr>(context), 1);
}

void Judgement::onStartElement(void *user, const xmlChar *, const xmlChar *, const xmlChar *, int,
                               const xmlChar **, int attributes, int defaulted, const xmlChar **)
{
    auto *context = static_cast<xmlParserCtxtPtr>(user);
    const auto count = quint64(attributes);
    Judgement &judgement = of(user);
    if (judgement.goesOn(context, 1 + count * count / comparisonsPerByte) && defaulted > 0)
        judgement.spend(context, count * quint64(defaulted) / comparisonsPerByte,
                        "The document type adds more attributes to this document than can be judged.");
}

void Judgement::onError(void *, const xmlError *error)
{
    auto *context = static_cast<xmlParserCtxtPtr>(error->ctxt);
    if (!context || !context->_private || !isFatal(*error))
        return;
    Judgement &judgement = of(context);
    if (judgement.fault_.code != 0)
        return; // what follows the first fault is only its echo
    if (judgement.forgives(*error)) {
        judgement.forgave_ = true;
        return;
    }
    judgement.locate(context);
    judgement.record(context, error->code, faultSentence(*error, judgement.openedAt(*error)));
}

// That a content model, or a declaration, ends within an entity that it refers to only a validating parser
// minds; a declaration that ends behind the entity it began in is cut, though. And in 1.1 a prefix may be
// taken back.
bool Judgement::forgives(const xmlError &error) const
{
    if (error.code == XML_ERR_ENTITY_BOUNDARY) {
        const auto &context = *static_cast<const xmlParserCtxt *>(error.ctxt);
        const int newest = context.input_id - 1;
        return (context.input && context.input->id == newest)
            || std::strstr(error.message, "Element content");
    }
    return isVersion11_ && error.code == XML_NS_ERR_XML_NAMESPACE && error.message
        && std::strstr(error.message, "Empty");
}

} // namespace dom
