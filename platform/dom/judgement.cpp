#include "platform/dom/judgement.h"

#include "platform/dom/addresses.h"
#include "platform/dom/attribute_bound.h"
#include "platform/dom/local_entities.h"

#include <libxml/hash.h>
#include <libxml/parserInternals.h>
#include <libxml/uri.h>
#include <libxml/xmlerror.h>

namespace dom {

namespace {

// Entities may grow a document to this much and no more, whatever their nesting: enough for any honest use.
constexpr quint64 expansionFloor = 10'000'000;

constexpr quint64 expansionFactor = 5;

constexpr quint64 workBetweenQuestions = 4096; // elements and the like, well below a millisecond

void collectEntity(void *payload, void *data, const xmlChar *name)
{
    const auto *entity = static_cast<const xmlEntity *>(payload);
    if (entity->etype != XML_INTERNAL_GENERAL_ENTITY || !entity->content)
        return;
    auto &entities = *static_cast<Entities *>(data);
    entities.insert(QByteArray(asChars(name)), QByteArray(asChars(entity->content), entity->length));
}

} // namespace

void Judgement::FreeContext::operator()(xmlParserCtxtPtr context) const
{
    if (context->myDoc)
        xmlFreeDoc(context->myDoc);
    xmlFreeParserCtxt(context);
}

Judgement::Judgement(const QByteArray &judged, bool isVersion11, const GoOn &goOn)
    : judged_(judged), isVersion11_(isVersion11), goOn_(goOn), files_(isVersion11),
      expansionLimit_(expansionFloor + expansionFactor * quint64(judged.size()))
{ }

const Fault &Judgement::run(const QString &baseFolder)
{
    if (const auto tag = findTooManyAttributes(judged_)) {
        fault_.code = XML_ERR_INTERNAL_ERROR;
        fault_.sentence = tooManyAttributes(QStringLiteral("This element has"));
        fault_.offset = *tag;
        return fault_;
    }
    if (!makeContext(baseFolder)) {
        fault_.code = XML_ERR_NO_MEMORY;
        fault_.sentence = QStringLiteral("There is not enough memory to judge the document.");
        return fault_;
    }
    xmlParseDocument(context_.get());
    if (fault_.code == 0 && !context_->wellFormed && !forgave_) {
        fault_.code = context_->errNo != 0 ? context_->errNo : XML_ERR_INTERNAL_ERROR;
        fault_.sentence = QStringLiteral("The document is not well-formed here.");
        fault_.offset = mainOffset();
    }
    return fault_;
}

// The internal subset goes last: its declarations win.
Entities Judgement::entities() const
{
    Entities entities;
    if (!context_->myDoc)
        return entities;
    for (const xmlDtd *dtd : {context_->myDoc->extSubset, context_->myDoc->intSubset}) {
        if (dtd && dtd->entities)
            xmlHashScan(static_cast<xmlHashTablePtr>(dtd->entities), collectEntity, &entities);
    }
    return entities;
}

bool Judgement::makeContext(const QString &baseFolder)
{
    allowLocalEntitiesOnly();
    context_.reset(xmlNewParserCtxt());
    if (!context_)
        return false;
    setHandlers(*context_->sax);
    context_->userData = context_.get();
    context_->_private = this;
    trail_.begin(context_.get());
    // The text in memory is UTF-8, whatever its declaration says of the file; size alone makes no document
    // hostile; names of namespaces are compared with their entities expanded; and there are faults to be
    // forgiven.
    xmlCtxtUseOptions(context_.get(),
                      XML_PARSE_HUGE | XML_PARSE_IGNORE_ENC | XML_PARSE_NONET | XML_PARSE_DTDLOAD
                          | XML_PARSE_NOENT | XML_PARSE_RECOVER);
    // Read where it stands: an input without a buffer is neither copied nor moved.
    xmlParserInputPtr input = xmlNewStringInputStream(context_.get(), asXml(judged_.constData()));
    if (!input)
        return false;
    if (!baseFolder.isEmpty()) {
        const QByteArray base = addressOfPath(baseFolder) + '/';
        input->filename = reinterpret_cast<char *>(xmlStrdup(asXml(base.constData())));
    }
    inputPush(context_.get(), input);
    return true;
}

// To be asked in every handler. Once there is a verdict, or nobody wants one, the parser is stopped, which
// only a handler may do.
bool Judgement::goesOn(xmlParserCtxtPtr context, quint64 work)
{
    if (fault_.code != 0) {
        stop(context);
        return false;
    }
    if (forgave_)
        context->wellFormed = 1; // what the library has noted of that would make it skip things
    work_ += work;
    if (work_ < workBetweenQuestions)
        return true;
    work_ = 0;
    if (!goOn_ || goOn_())
        return true;
    fault_.stopped = true;
    record(context, XML_ERR_USER_STOP, QStringLiteral("The check was stopped."));
    stop(context);
    return false;
}

void Judgement::stop(xmlParserCtxtPtr context)
{
    for (const EntityTrail::Step &step : trail_.comeTo(context))
        xmlStopParser(step.context);
}

void Judgement::record(xmlParserCtxtPtr context, int code, const QString &sentence)
{
    if (fault_.code != 0)
        return;
    locate(context);
    fault_.code = code;
    fault_.sentence = sentence;
}

void Judgement::recordIn(xmlParserCtxtPtr context, const EntityFile &file, qsizetype offset, int code,
                         const QString &sentence)
{
    if (fault_.code != 0)
        return;
    record(context, code, sentence);
    fault_.file = &file;
    fault_.fileOffset = offset;
}

// Whether the parser may have the file; a fault where not.
bool Judgement::isReadable(xmlParserCtxtPtr context, const EntityFile &file)
{
    if (!file.fault.isEmpty())
        recordIn(context, file, file.faultOffset, XML_ERR_INVALID_ENCODING, file.fault);
    else if (const auto tag = findTooManyAttributes(file.judged, false))
        recordIn(context, file, *tag, XML_ERR_INTERNAL_ERROR,
                 tooManyAttributes(QStringLiteral("This element has")));
    return fault_.code == 0;
}

bool Judgement::spend(xmlParserCtxtPtr context, quint64 amount, const char *sentence)
{
    expanded_ += amount;
    if (expanded_ <= expansionLimit_)
        return true;
    record(context, XML_ERR_ENTITY_LOOP, QString::fromLatin1(sentence));
    stop(context);
    return false;
}

// Every expansion asks for its entity first, so this bounds them all. A parameter entity is read anew at
// every reference.
xmlEntityPtr Judgement::expand(xmlParserCtxtPtr context, xmlEntityPtr entity)
{
    if (!entity)
        return nullptr;
    trail_.ask(context, entity);
    const auto size = quint64(qMax(entity->length, 0));
    const bool isAffordable
        = spend(context, size + 1, "The entities of this document expand beyond all measure.");
    return isAffordable && goesOn(context, size / 64) ? entity : nullptr;
}

// An entity that is kept in a file, as though the file's content were its value; empty where the file cannot
// be had.
xmlEntityPtr Judgement::substituteFor(xmlParserCtxtPtr context, xmlEntityPtr entity)
{
    const auto known = substitutes_.find(entity);
    if (known != substitutes_.end())
        return &known->second.entity;
    const EntityFile *file = entity->URI ? files_.open(asChars(entity->URI)) : nullptr;
    if (file && !isReadable(context, *file))
        return nullptr;
    const bool isParameter = entity->etype == XML_EXTERNAL_PARAMETER_ENTITY;
    // One that cannot be had stands for nothing. The library would look for it by ways of its own.
    const QByteArrayView content = file ? QByteArrayView(file->judged).sliced(file->content) : "";
    Substitute &made = substitutes_.insert({entity, {*entity, file}}).first->second;
    made.entity.etype = isParameter ? XML_INTERNAL_PARAMETER_ENTITY : XML_INTERNAL_GENERAL_ENTITY;
    made.entity.content = const_cast<xmlChar *>(asXml(content.data()));
    made.entity.length = int(content.size());
    return &made.entity;
}

} // namespace dom
