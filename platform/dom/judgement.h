// One pass of libxml2 over a text in memory, and what it makes of it.
//
// No content handler is set but the one that counts, so that nothing is built; the document type and entity
// handlers are kept, because entities decide what is well-formed. The files that entities lead to are read
// and decoded here, each by its own declaration, and given to the parser as though they stood in the
// document: it would read them without the prefixes that are declared around them, and not say where in them
// a fault lies.
#pragma once

#include "platform/dom/entity_files.h"
#include "platform/dom/entity_trail.h"
#include "platform/dom/verdict.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>

#include <map>
#include <memory>

namespace dom {

// libxml2's characters are unsigned.
inline const xmlChar *asXml(const char *text) { return reinterpret_cast<const xmlChar *>(text); }
inline const char *asChars(const xmlChar *text) { return reinterpret_cast<const char *>(text); }

struct Fault
{
    int code = 0; // 0 while there is none
    QString sentence;
    qsizetype offset = 0; // in the document
    const EntityFile *file = nullptr; // where it lies, if not in the document itself
    qsizetype fileOffset = 0;
    bool stopped = false;
};

class Judgement
{
public:
    // judged is what the parser reads in the place of the text, byte for byte (see xml11.h). Both it and goOn
    // must outlive this.
    Judgement(const QByteArray &judged, bool isVersion11, const GoOn &goOn);

    // The first fault, in the order of reading; with code 0 where there is none.
    const Fault &run(const QString &baseFolder);

    // After a run without a fault.
    Entities entities() const;

private:
    struct FreeContext
    {
        void operator()(xmlParserCtxtPtr context) const;
    };

    struct Substitute
    {
        xmlEntity entity; // the declared one, as though the content of its file were its value
        const EntityFile *file; // null where that cannot be had
    };

    static Judgement &of(void *context);
    static void setHandlers(xmlSAXHandler &sax);
    static void onStartDocument(void *context);
    static void onInternalSubset(void *context, const xmlChar *name, const xmlChar *id,
                                 const xmlChar *system);
    static void onExternalSubset(void *context, const xmlChar *name, const xmlChar *id,
                                 const xmlChar *system);
    static xmlParserInputPtr onResolveEntity(void *context, const xmlChar *id, const xmlChar *system);
    static xmlEntityPtr onGetEntity(void *context, const xmlChar *name);
    static xmlEntityPtr onGetParameterEntity(void *context, const xmlChar *name);
    static void onEntityDecl(void *context, const xmlChar *name, int type, const xmlChar *id,
                             const xmlChar *system, xmlChar *content);
    static void onAttributeDecl(void *context, const xmlChar *element, const xmlChar *name, int type,
                                int kind, const xmlChar *value, xmlEnumerationPtr choices);
    static void onElementDecl(void *context, const xmlChar *name, int type, xmlElementContentPtr content);
    static void onStartElement(void *context, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri,
                               int namespaces, const xmlChar **bindings, int attributes, int defaulted,
                               const xmlChar **values);
    static void onError(void *, const xmlError *error);

    bool makeContext(const QString &baseFolder);
    bool goesOn(xmlParserCtxtPtr context, quint64 work);
    void stop(xmlParserCtxtPtr context);
    bool forgives(const xmlError &error) const;
    void record(xmlParserCtxtPtr context, int code, const QString &sentence);
    void recordIn(xmlParserCtxtPtr context, const EntityFile &file, qsizetype offset, int code,
                  const QString &sentence);
    bool isReadable(xmlParserCtxtPtr context, const EntityFile &file);
    void locate(xmlParserCtxtPtr context);
    bool locateIn(const EntityTrail::Step &step);
    bool isInDocumentItself(xmlParserCtxtPtr context) const;
    const EntityFile *fileReadBy(const EntityTrail::Step &step) const;
    std::optional<qint64> openedAt(const xmlError &error) const;
    qsizetype mainOffset() const;
    bool spend(xmlParserCtxtPtr context, quint64 amount, const char *sentence);
    xmlEntityPtr expand(xmlParserCtxtPtr context, xmlEntityPtr entity);
    xmlEntityPtr substituteFor(xmlParserCtxtPtr context, xmlEntityPtr entity);

    const QByteArray &judged_;
    const bool isVersion11_;
    const GoOn &goOn_;
    EntityFiles files_;
    std::map<const xmlEntity *, Substitute> substitutes_; // by the declared entity
    EntityTrail trail_;
    std::unique_ptr<xmlParserCtxt, FreeContext>
        context_; // of the document; entities get contexts of their own
    qsizetype documentType_ = -1; // where it begins; known while its files are read
    bool readsSubset_ = false;
    quint64 expanded_ = 0;
    quint64 expansionLimit_;
    quint64 work_ = 0; // since goOn was last asked
    QHash<QByteArray, int> defaults_; // attributes with a default value, by element
    qsizetype choices_ = 0; // that entities brought into the declaration being read
    bool forgave_ = false;
    Fault fault_;
};

} // namespace dom
