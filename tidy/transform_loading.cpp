#include "tidy/transform_loading.h"

#include "platform/dom/addresses.h"
#include "platform/dom/local_entities.h"
#include "platform/files/file_helpers.h"
#include "platform/files/private_files.h"
#include "tidy/transform_addresses.h"
#include "tidy/transform_budget.h"
#include "tidy/transform_messages.h"

#include <libexslt/exslt.h>
#include <libxml/SAX2.h>
#include <libxml/catalog.h>
#include <libxml/parserInternals.h>
#include <libxml/uri.h>
#include <libxslt/xslt.h>
#include <libxslt/xsltutils.h>

#include <limits>
#include <mutex>

namespace tidy {

namespace {

constexpr qint64 largestFile = 64 << 20;
constexpr double newestKnown = 1.1; // what libxslt carries out

thread_local TransformLoading *ofThisThread = nullptr;
xmlExternalEntityLoader loaderBefore = nullptr; // set once, with the libraries

QString textOf(const xmlChar *text) { return QString::fromUtf8(reinterpret_cast<const char *>(text)); }

const xmlChar *chars(const char *text) { return reinterpret_cast<const xmlChar *>(text); }

// The parser of the whole text, which the one of an entity knows.
const xmlParserCtxt &wholeOf(const xmlParserCtxt &parser)
{
    return parser._private ? *static_cast<const xmlParserCtxt *>(parser._private) : parser;
}

// The libraries know one loader of catalogs, which would follow an address of another machine.
void readFilesOnly()
{
    xmlCleanupInputCallbacks();
    xmlRegisterInputCallbacks(xmlFileMatch, xmlFileOpen, xmlFileRead, xmlFileClose);
    xmlCatalogSetDefaults(XML_CATA_ALLOW_GLOBAL); // and none that a document names
}

// Nothing of what grew beyond the budget while it was read.
TransformLoading::Doc withinBudget(xmlDocPtr parsed)
{
    TransformLoading::Doc doc(parsed);
    const TransformBudget *budget = TransformBudget::current();
    return budget && budget->isSpent() ? TransformLoading::Doc() : std::move(doc);
}

// An identifier with blanks is no address; the library then keeps none.
void giveAddress(xmlEntity &entity, const xmlParserCtxt &parser)
{
    if (entity.URI || !entity.SystemID || parser.inputNr == 0)
        return;
    const QByteArray address = dom::asAddress(reinterpret_cast<const char *>(entity.SystemID));
    entity.URI = xmlBuildURI(chars(address.constData()), chars(parser.inputTab[0]->filename));
}

QString why(Reach reach, const QString &what)
{
    switch (reach) {
    case Reach::Elsewhere:
        return QStringLiteral("%1 lies neither in the folder of the document nor in that of the style sheet.")
            .arg(what);
    case Reach::NotLocal:
        return QStringLiteral("%1 is not on this machine, nor known to its XML catalogs.").arg(what);
    default:
        return QStringLiteral("%1 is not there.").arg(what);
    }
}

} // namespace

TransformLoading::TransformLoading(const TransformJob &job, MessageCollector &collector)
    : access_(job), collector_(collector)
{
    takeOverLibraries();
    ofThisThread = this;
}

TransformLoading::~TransformLoading() { ofThisThread = nullptr; }

// Both are set up for the whole process, once.
void TransformLoading::takeOverLibraries()
{
    dom::allowLocalEntitiesOnly();
    static std::once_flag once;
    std::call_once(once, [] {
        meterLibraryMemory();
        readFilesOnly();
        xsltInit();
        exsltRegisterAll();
        xsltSetLoaderFunc(loadDocument);
        loaderBefore = xmlGetExternalEntityLoader();
        xmlSetExternalEntityLoader(openEntity);
    });
}

TransformLoading::Parser TransformLoading::makeParser(xmlDictPtr dictionary)
{
    Parser parser(xmlNewParserCtxt());
    if (!parser)
        return {};
    parser->sax->getEntity = findEntity;
    parser->_private = parser.get(); // for the parsers of its entities
    if (dictionary) {
        xmlDictFree(parser->dict);
        parser->dict = dictionary;
        xmlDictReference(dictionary);
    }
    return parser;
}

TransformLoading::Doc TransformLoading::parse(const QByteArray &utf8, const QByteArray &address)
{
    if (utf8.size() > std::numeric_limits<int>::max())
        return {};
    constexpr int options = XSLT_PARSE_OPTIONS | XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_BIG_LINES;
    const Parser parser = makeParser();
    Doc doc = withinBudget(parser ? xmlCtxtReadMemory(parser.get(), utf8.constData(), int(utf8.size()),
                                                      address.constData(), "UTF-8", options)
                                  : nullptr);
    return lack_.isEmpty() ? std::move(doc) : Doc();
}

void TransformLoading::prepare(xmlDoc &styleSheet, const QString &path)
{
    xmlNode *root = xmlDocGetRootElement(&styleSheet);
    if (!root)
        return;
    escapeReferences(styleSheet);
    const auto *name = chars("version");
    xmlChar *version
        = IS_XSLT_ELEM(root) ? xmlGetNoNsProp(root, name) : xmlGetNsProp(root, name, XSLT_NAMESPACE);
    const QString number = textOf(version);
    xmlFree(version);
    if (number.toDouble() > newestKnown)
        newerSheets_.append(QStringLiteral("%1 (version %2)").arg(files::fileNameOf(path), number));
}

// Entities are copied into the tree at every reference, also from files that the verdict does not read. One
// that is not there would leave nothing in its place.
xmlEntityPtr TransformLoading::findEntity(void *context, const xmlChar *name)
{
    auto *parser = static_cast<xmlParserCtxtPtr>(context);
    const TransformBudget *budget = TransformBudget::current();
    xmlEntityPtr entity = xmlSAX2GetEntity(context, name);
    if (entity && entity->etype == XML_EXTERNAL_GENERAL_PARSED_ENTITY)
        giveAddress(*entity, wholeOf(*parser));
    const bool held = !ofThisThread || ofThisThread->holds(*parser, entity, textOf(name));
    if (held && (!budget || !budget->isSpent()))
        return entity;
    xmlStopParser(parser);
    return nullptr;
}

bool TransformLoading::holds(xmlParserCtxt &parser, const xmlEntity *entity, const QString &name)
{
    if (!entity) {
        QString text = QStringLiteral("The entity \"%1\" is not declared").arg(name);
        if (!unread_.isEmpty())
            text += QStringLiteral(", and %1, which may declare it, was not read").arg(unread_);
        lacks(parser, text + QLatin1Char('.'));
        return false;
    }
    if (entity->etype != XML_EXTERNAL_GENERAL_PARSED_ENTITY)
        return true;
    const auto *address = reinterpret_cast<const char *>(entity->URI);
    const Located found
        = access_.locate(address, reinterpret_cast<const char *>(entity->ExternalID), Wanted::Data);
    if (found.reach == Reach::Readable)
        return true;
    const QString what = found.path.isEmpty() ? textOf(entity->SystemID) : found.path;
    lacks(parser, QStringLiteral("The entity \"%1\" cannot be had: ").arg(name) + why(found.reach, what));
    return false;
}

void TransformLoading::lacks(xmlParserCtxt &parser, const QString &text)
{
    if (!lack_.isEmpty())
        return;
    const xmlParserCtxt &whole = wholeOf(parser);
    const xmlParserInput *input = whole.inputNr > 0 ? whole.inputTab[0] : nullptr;
    lack_ = input ? QStringLiteral("Line %1: ").arg(input->line) + text : text;
    collector_.add(Severity::Error, text, input ? input->filename : "", input ? input->line : 0);
}

// A document type, or a part of one. That it is not to be had is no fault by itself: many documents name one
// for the sake of its name.
void TransformLoading::tellUnread(const xmlParserCtxt &parser, const QString &address, Reach reach)
{
    if (unread_.isEmpty())
        unread_ = address;
    const xmlParserCtxt &whole = wholeOf(parser);
    const xmlParserInput *input = whole.inputNr > 0 ? whole.inputTab[0] : nullptr;
    collector_.add(Severity::Warning, why(reach, address), input ? input->filename : "",
                   input ? input->line : 0);
}

xmlParserInputPtr TransformLoading::openEntity(const char *address, const char *publicId,
                                               xmlParserCtxtPtr parser)
{
    TransformLoading *loading = ofThisThread;
    if (!loading)
        return loaderBefore(address, publicId, parser);
    const Located found = loading->access_.locate(address, publicId, Wanted::Data);
    const auto bytes = files::readPrivateFile(found.path, largestFile);
    if (found.reach != Reach::Readable || !bytes) {
        loading->tellUnread(*parser, found.path.isEmpty() ? QString::fromUtf8(address) : found.path,
                            found.reach);
        return nullptr;
    }
    xmlParserInputBufferPtr buffer
        = xmlParserInputBufferCreateMem(bytes->constData(), int(bytes->size()), XML_CHAR_ENCODING_NONE);
    xmlParserInputPtr input = buffer ? xmlNewIOInputStream(parser, buffer, XML_CHAR_ENCODING_NONE) : nullptr;
    if (input)
        input->filename
            = reinterpret_cast<char *>(xmlStrdup(chars(dom::addressOfPath(found.path).constData())));
    return input;
}

// What a style sheet includes, and what document() asks for. The library says nothing of a document() that
// finds no document.
xmlDocPtr TransformLoading::loadDocument(const xmlChar *url, xmlDictPtr dictionary, int options, void *,
                                         xsltLoadType type)
{
    TransformBudget *budget = TransformBudget::current();
    TransformLoading *loading = ofThisThread;
    if (!loading || (budget && !budget->takeDocument()))
        return nullptr;
    const auto *address = reinterpret_cast<const char *>(url);
    return loading->read(address, dictionary, options, type).release();
}

TransformLoading::Doc TransformLoading::read(const QByteArray &address, xmlDictPtr dictionary, int options,
                                             xsltLoadType type)
{
    const bool isSheet = type != XSLT_LOAD_DOCUMENT;
    if (const QByteArray *given = access_.given(address))
        return parse(*given, address);
    const Located found
        = access_.locate(address.constData(), nullptr, isSheet ? Wanted::StyleSheet : Wanted::Data);
    const auto bytes = files::readPrivateFile(found.path, largestFile);
    if (found.reach != Reach::Readable || !bytes) {
        const QString reason
            = why(found.reach, found.path.isEmpty() ? QString::fromUtf8(address) : found.path);
        collector_.add(Severity::Warning, reason);
        if (found.reach == Reach::NotLocal && lack_.isEmpty())
            lack_ = reason;
        return {};
    }
    const Parser parser = makeParser(dictionary);
    Doc doc = withinBudget(parser ? xmlCtxtReadMemory(parser.get(), bytes->constData(), int(bytes->size()),
                                                      dom::addressOfPath(found.path).constData(), nullptr,
                                                      options | XML_PARSE_NONET)
                                  : nullptr);
    if (!doc)
        collector_.add(Severity::Warning, QStringLiteral("%1 was not loaded.").arg(found.path));
    else if (isSheet)
        prepare(*doc, found.path);
    return doc;
}

} // namespace tidy
