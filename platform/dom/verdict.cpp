#include "platform/dom/verdict.h"

#include "platform/dom/local_entities.h"
#include "platform/dom/names.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/uri.h>
#include <libxml/xmlerror.h>

#include <cstring>
#include <limits>
#include <memory>

// The judge is one libxml2 pass over the text in memory. No content handler is set, so that nothing is built;
// the document type and entity handlers are kept, because entities decide what is well-formed.

namespace dom {

namespace {

// Entities may grow a document to this much and no more, whatever their nesting: enough for any honest use.
constexpr quint64 expansionFloor = 10'000'000;
constexpr quint64 expansionFactor = 5;

// A source line longer than this is shown cut around the fault, so that a report stays on the screen.
constexpr qsizetype longestSourceText = 160;

struct Judgement
{
    QByteArrayView text;
    xmlParserCtxtPtr context = nullptr; // of the main text; entities get contexts of their own
    quint64 expanded = 0;
    quint64 expansionLimit = 0;
    bool bomb = false;
    int code = 0; // of the first fatal error; 0 while there is none
    QString reason;
    qsizetype offset = 0;
};

Judgement &judgementOf(xmlParserCtxtPtr context) { return *static_cast<Judgement *>(context->_private); }

// Where in the main text the parser stands, also while it reads an entity.
qsizetype mainOffset(const Judgement &judgement)
{
    const xmlParserInput *input = judgement.context->inputNr > 0 ? judgement.context->inputTab[0] : nullptr;
    if (!input)
        return judgement.text.size();
    return qBound(qsizetype(0), qsizetype(input->cur - input->base), judgement.text.size());
}

// Undeclared prefixes and the like make a document that no later tool accepts; a doubtful namespace name does
// not.
bool isFatal(const xmlError &error)
{
    if (error.domain == XML_FROM_NAMESPACE)
        return error.code >= XML_NS_ERR_XML_NAMESPACE && error.code <= XML_NS_ERR_COLON;
    return error.level == XML_ERR_FATAL;
}

void onError(void *, const xmlError *error)
{
    auto *context = static_cast<xmlParserCtxtPtr>(error->ctxt);
    if (!context || !context->_private || !isFatal(*error))
        return;
    Judgement &judgement = judgementOf(context);
    if (judgement.code != 0 || judgement.bomb)
        return; // what follows the first fault is only its echo
    judgement.code = error->code;
    judgement.reason = QString::fromUtf8(error->message);
    judgement.offset = mainOffset(judgement);
}

// Of an external general entity nothing is read here; a parameter entity is read anew at every reference.
quint64 sizeOf(const xmlEntity &entity)
{
    const bool inFile = entity.etype == XML_EXTERNAL_PARAMETER_ENTITY;
    return quint64(qMax(entity.length, 0))
        + quint64(inFile ? localEntitySize(reinterpret_cast<const char *>(entity.URI)) : 0);
}

// Counts what the references amount to. Every expansion asks for its entity first, so this bounds them all.
void countExpansion(xmlParserCtxtPtr context, xmlEntityPtr entity)
{
    if (!entity || !context->_private)
        return;
    Judgement &judgement = judgementOf(context);
    judgement.expanded += sizeOf(*entity) + 1;
    if (judgement.expanded <= judgement.expansionLimit)
        return;
    if (!judgement.bomb) {
        judgement.bomb = true;
        judgement.offset = mainOffset(judgement);
    }
    xmlStopParser(context);
}

xmlEntityPtr onGetEntity(void *user, const xmlChar *name)
{
    xmlEntityPtr entity = xmlSAX2GetEntity(user, name);
    countExpansion(static_cast<xmlParserCtxtPtr>(user), entity);
    return entity;
}

xmlEntityPtr onGetParameterEntity(void *user, const xmlChar *name)
{
    xmlEntityPtr entity = xmlSAX2GetParameterEntity(user, name);
    countExpansion(static_cast<xmlParserCtxtPtr>(user), entity);
    return entity;
}

void setHandlers(xmlSAXHandler &sax)
{
    std::memset(&sax, 0, sizeof sax);
    sax.initialized = XML_SAX2_MAGIC;
    sax.startDocument = xmlSAX2StartDocument;
    sax.internalSubset = xmlSAX2InternalSubset;
    sax.externalSubset = xmlSAX2ExternalSubset;
    sax.isStandalone = xmlSAX2IsStandalone;
    sax.hasInternalSubset = xmlSAX2HasInternalSubset;
    sax.hasExternalSubset = xmlSAX2HasExternalSubset;
    sax.resolveEntity = xmlSAX2ResolveEntity;
    sax.getEntity = onGetEntity;
    sax.getParameterEntity = onGetParameterEntity;
    sax.entityDecl = xmlSAX2EntityDecl;
    sax.unparsedEntityDecl = xmlSAX2UnparsedEntityDecl;
    sax.notationDecl = xmlSAX2NotationDecl;
    sax.serror = reinterpret_cast<xmlStructuredErrorFunc>(onError);
}

struct FreeContext
{
    void operator()(xmlParserCtxtPtr context) const
    {
        if (context->myDoc)
            xmlFreeDoc(context->myDoc);
        xmlFreeParserCtxt(context);
    }
};

using Context = std::unique_ptr<xmlParserCtxt, FreeContext>;

Context makeContext(const QByteArray &utf8, const QString &baseFolder, Judgement &judgement)
{
    allowLocalEntitiesOnly();
    Context context(xmlNewParserCtxt());
    if (!context)
        return {};
    setHandlers(*context->sax);
    context->userData = context.get();
    context->_private = &judgement;
    judgement.context = context.get();
    // The text in memory is UTF-8, whatever its declaration says of the file; size alone makes no document
    // hostile.
    xmlCtxtUseOptions(context.get(),
                      XML_PARSE_HUGE | XML_PARSE_IGNORE_ENC | XML_PARSE_NONET | XML_PARSE_DTDLOAD);
    // Read where it stands: an input without a buffer is neither copied nor moved.
    xmlParserInputPtr input
        = xmlNewStringInputStream(context.get(), reinterpret_cast<const xmlChar *>(utf8.constData()));
    if (!input)
        return {};
    if (!baseFolder.isEmpty()) {
        const QByteArray base = baseFolder.toUtf8() + '/';
        input->filename
            = reinterpret_cast<char *>(xmlCanonicPath(reinterpret_cast<const xmlChar *>(base.constData())));
    }
    inputPush(context.get(), input);
    return context;
}

void collectEntities(void *payload, void *data, const xmlChar *name)
{
    const auto *entity = static_cast<const xmlEntity *>(payload);
    if (entity->etype != XML_INTERNAL_GENERAL_ENTITY || !entity->content)
        return;
    auto &entities = *static_cast<Entities *>(data);
    entities.insert(QByteArray(reinterpret_cast<const char *>(name)),
                    QByteArray(reinterpret_cast<const char *>(entity->content), entity->length));
}

// The internal subset goes last: its declarations win.
void readEntities(const xmlDoc *document, Entities &entities)
{
    for (const xmlDtd *dtd : {document->extSubset, document->intSubset}) {
        if (dtd && dtd->entities)
            xmlHashScan(static_cast<xmlHashTablePtr>(dtd->entities), collectEntities, &entities);
    }
}

// Lines end as an editor counts them: CR LF, LF or a lone CR.
qsizetype countLineEnds(QByteArrayView text)
{
    qsizetype count = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' || (text[i] == '\r' && !(i + 1 < text.size() && text[i + 1] == '\n')))
            ++count;
    }
    return count;
}

qsizetype characterCount(QByteArrayView utf8)
{
    qsizetype count = 0;
    for (const char c : utf8)
        count += (c & 0xC0) != 0x80;
    return count;
}

// offset moved back to the beginning of the character it lies in.
qsizetype characterStart(QByteArrayView text, qsizetype offset)
{
    while (offset > 0 && offset < text.size() && (text[offset] & 0xC0) == 0x80)
        --offset;
    return offset;
}

QString sourceLine(QByteArrayView text, qsizetype begin, qsizetype end, qsizetype fault)
{
    const QString cut = QStringLiteral("…");
    const qsizetype half = longestSourceText / 2;
    const qsizetype from
        = end - begin > longestSourceText ? characterStart(text, qMax(begin, fault - half)) : begin;
    const qsizetype to = qMin(end, characterStart(text, qMin(end, from + longestSourceText)));
    return (from > begin ? cut : QString()) + QString::fromUtf8(text.sliced(from, to - from))
        + (to < end ? cut : QString());
}

ParseError placed(int code, const QString &reason, QByteArrayView text, qsizetype offset)
{
    const auto isLineEnd = [](char c) { return c == '\n' || c == '\r'; };
    qsizetype begin = offset;
    while (begin > 0 && !isLineEnd(text[begin - 1]))
        --begin;
    qsizetype end = offset;
    while (end < text.size() && !isLineEnd(text[end]))
        ++end;
    ParseError error;
    error.code = code;
    error.reason = reason;
    error.line = countLineEnds(text.first(begin)) + 1;
    error.position = characterCount(text.sliced(begin, offset - begin)) + 1;
    error.sourceText = sourceLine(text, begin, end, offset);
    error.offset = offset;
    return error;
}

// libxml2 takes a NUL for the end of the text; here it is a character that XML does not allow.
void judgeNul(const QByteArray &utf8, Judgement &judgement)
{
    const qsizetype nul = utf8.indexOf('\0');
    if (nul < 0 || (judgement.code != 0 && judgement.offset < nul))
        return;
    judgement.code = XML_ERR_INVALID_CHAR;
    judgement.reason = QStringLiteral("Char 0x0 out of allowed range\n");
    judgement.offset = nul;
}

void judgeOutcome(const QByteArray &utf8, const Context &context, Judgement &judgement)
{
    if (judgement.bomb) {
        judgement.code = XML_ERR_ENTITY_LOOP;
        judgement.reason = QStringLiteral("The entities of this document expand beyond all measure\n");
    } else {
        judgeNul(utf8, judgement);
    }
    if (judgement.code == 0 && !context->wellFormed) {
        judgement.code = context->errNo != 0 ? context->errNo : XML_ERR_INTERNAL_ERROR;
        judgement.reason = QStringLiteral("The parser refused the document\n");
    }
}

} // namespace

std::optional<ParseError> checkWellFormed(const QByteArray &utf8, const QString &baseFolder,
                                          Entities *entities)
{
    if (utf8.isEmpty())
        return placed(XML_ERR_DOCUMENT_EMPTY, QStringLiteral("Document is empty\n"), utf8, 0);
    if (utf8.size() > std::numeric_limits<int>::max())
        return placed(XML_ERR_NO_MEMORY, QStringLiteral("The document is larger than 2 GiB\n"), utf8.first(1),
                      0);
    Judgement judgement;
    judgement.text = utf8;
    judgement.expansionLimit = expansionFloor + expansionFactor * quint64(utf8.size());
    const Context context = makeContext(utf8, baseFolder, judgement);
    if (!context)
        return placed(XML_ERR_NO_MEMORY, QStringLiteral("Out of memory\n"), utf8, 0);
    xmlParseDocument(context.get());
    judgeOutcome(utf8, context, judgement);
    if (judgement.code != 0)
        return placed(judgement.code, judgement.reason, utf8, judgement.offset);
    if (entities) {
        entities->clear();
        if (context->myDoc)
            readEntities(context->myDoc, *entities);
    }
    return std::nullopt;
}

} // namespace dom
