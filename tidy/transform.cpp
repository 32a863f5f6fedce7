#include "tidy/transform.h"

#include "platform/dom/local_entities.h"
#include "platform/dom/verdict.h"
#include "tidy/transform_budget.h"
#include "tidy/transform_messages.h"
#include "tidy/transform_result.h"

#include <QFileInfo>
#include <QUrl>

#include <libexslt/exslt.h>
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxslt/documents.h>
#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xslt.h>
#include <libxslt/xsltutils.h>

#include <limits>
#include <memory>
#include <mutex>

namespace tidy {

namespace {

template <auto release>
struct Releases
{
    template <typename T>
    void operator()(T *thing) const
    {
        release(thing);
    }
};

using Doc = std::unique_ptr<xmlDoc, Releases<xmlFreeDoc>>;
using Sheet = std::unique_ptr<xsltStylesheet, Releases<xsltFreeStylesheet>>;
using Parser = std::unique_ptr<xmlParserCtxt, Releases<xmlFreeParserCtxt>>;
using Context = std::unique_ptr<xsltTransformContext, Releases<xsltFreeTransformContext>>;
using Security = std::unique_ptr<xsltSecurityPrefs, Releases<xsltFreeSecurityPrefs>>;

// Entities are copied into the tree at every reference, also from files that the verdict does not read.
xmlEntityPtr entityWithinBudget(void *parser, const xmlChar *name)
{
    const TransformBudget *budget = TransformBudget::current();
    if (!budget || !budget->isSpent())
        return xmlSAX2GetEntity(parser, name);
    xmlStopParser(static_cast<xmlParserCtxtPtr>(parser));
    return nullptr;
}

Parser makeParser(xmlDictPtr dictionary = nullptr)
{
    Parser parser(xmlNewParserCtxt());
    if (!parser)
        return {};
    parser->sax->getEntity = entityWithinBudget;
    if (dictionary) {
        xmlDictFree(parser->dict);
        parser->dict = dictionary;
        xmlDictReference(dictionary);
    }
    return parser;
}

// Nothing of what grew beyond the budget while it was read.
Doc withinBudget(xmlDocPtr parsed)
{
    Doc doc(parsed);
    const TransformBudget *budget = TransformBudget::current();
    return budget && budget->isSpent() ? Doc() : std::move(doc);
}

// The library says nothing of a document() that finds no document.
xmlDocPtr loadOrNote(const xmlChar *url, xmlDictPtr dictionary, int options, void *context, xsltLoadType type)
{
    TransformBudget *budget = TransformBudget::current();
    if (budget && !budget->takeDocument())
        return nullptr;
    const Parser parser = makeParser(dictionary);
    Doc loaded = withinBudget(
        parser ? xmlCtxtReadFile(parser.get(), reinterpret_cast<const char *>(url), nullptr, options)
               : nullptr);
    auto *running = type == XSLT_LOAD_DOCUMENT ? static_cast<xsltTransformContextPtr>(context) : nullptr;
    if (!loaded && running && running->_private)
        static_cast<MessageCollector *>(running->_private)
            ->add(Severity::Warning,
                  QStringLiteral("Not loaded: ") + QString::fromUtf8(reinterpret_cast<const char *>(url)));
    return loaded.release();
}

// Both libraries are set up for the whole process, once.
void prepareLibraries()
{
    dom::allowLocalEntitiesOnly();
    static std::once_flag once;
    std::call_once(once, [] {
        meterLibraryMemory();
        xsltInit();
        exsltRegisterAll();
        xsltSetLoaderFunc(loadOrNote);
    });
}

Security noWritingNoNetwork()
{
    Security security(xsltNewSecurityPrefs());
    for (const xsltSecurityOption option : {XSLT_SECPREF_WRITE_FILE, XSLT_SECPREF_CREATE_DIRECTORY,
                                            XSLT_SECPREF_READ_NETWORK, XSLT_SECPREF_WRITE_NETWORK})
        xsltSetSecurityPrefs(security.get(), option, xsltSecurityForbid);
    return security;
}

// An address, so that a path may hold any character. The two inputs never share one, or each would pass for
// the other.
QByteArray addressOf(const TransformInput &input) { return QUrl::fromLocalFile(input.path).toEncoded(); }

QByteArray styleSheetAddress(const TransformInput &document, const TransformInput &styleSheet)
{
    const QByteArray address = addressOf(styleSheet);
    return address == addressOf(document) ? address + "#stylesheet" : address;
}

platform::Failure tooMuch()
{
    return {QStringLiteral("The transformation failed. The style sheet takes more memory or time than a "
                           "transformation may.")};
}

// The verdict comes first: it says what is wrong in the words the rest of the program uses, and it bounds
// what entities amount to, so that the parser's own limits on honest large texts can go.
Doc parse(const TransformInput &input, const QByteArray &address, TransformPlace place,
          const TransformBounds &bounds, MessageCollector &collector)
{
    const QString folder = QFileInfo(input.path).path();
    if (const auto fault = dom::checkWellFormed(input.utf8, folder)) {
        collector.add({Severity::Error, place, int(fault->line), {}, fault->reason.trimmed()});
        return {};
    }
    if (input.utf8.size() > std::numeric_limits<int>::max())
        return {};
    constexpr int options = XSLT_PARSE_OPTIONS | XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_BIG_LINES;
    const auto size = std::size_t(input.utf8.size());
    const TransformBudget budget(bounds.memory + 128 * size, bounds.traffic + 256 * size, bounds.documents);
    const Parser parser = makeParser();
    Doc doc = withinBudget(parser ? xmlCtxtReadMemory(parser.get(), input.utf8.constData(), int(size),
                                                      address.constData(), "UTF-8", options)
                                  : nullptr);
    if (budget.isSpent())
        collector.add({Severity::Error, place, 0, {}, tooMuch().reason});
    return doc;
}

Sheet compile(Doc doc)
{
    Sheet sheet(xsltParseStylesheetDoc(doc.get()));
    if (!sheet)
        return {};
    static_cast<void>(doc.release()); // the sheet's from now on
    return sheet->errors ? Sheet() : std::move(sheet);
}

void bound(xsltTransformContext &context, const TransformBounds &bounds)
{
    context.maxTemplateDepth = bounds.depth;
    context.opLimit = bounds.instructions;
    context.xpathCtxt->opLimit = bounds.steps;
}

// Whatever runs comes to an end at its next instruction or step.
void stop(void *running)
{
    auto *context = static_cast<xsltTransformContextPtr>(running);
    context->state = XSLT_STATE_STOPPED;
    context->opLimit = 1;
    context->xpathCtxt->opLimit = 1;
}

platform::Failure failed(const MessageCollector &collector, const QString &otherwise)
{
    const QString error = collector.firstError();
    return {error.isEmpty() ? otherwise : otherwise + QStringLiteral(" ") + error};
}

platform::Result<QByteArray> apply(xsltStylesheet &sheet, xmlDoc &document, const TransformBounds &bounds,
                                   MessageCollector &collector)
{
    const Security security = noWritingNoNetwork();
    const Context context(xsltNewTransformContext(&sheet, &document));
    if (!security || !context || xsltSetCtxtSecurityPrefs(security.get(), context.get()) != 0)
        return platform::Failure{QStringLiteral("The transformation could not be started.")};
    bound(*context, bounds);
    context->_private = &collector;
    collector.follow(context.get());
    TransformBudget *budget = TransformBudget::current();
    budget->whenSpent(stop, context.get());
    const Doc result(xsltApplyStylesheetUser(&sheet, &document, nullptr, nullptr, nullptr, context.get()));
    collector.follow(nullptr);
    budget->whenSpent(nullptr, nullptr);
    if (budget->isSpent())
        return tooMuch();
    if (!result || context->state != XSLT_STATE_OK)
        return failed(collector, QStringLiteral("The transformation failed."));
    platform::Result<QByteArray> markup = markupAtPositionOne(*result);
    return budget->isSpent() ? tooMuch() : std::move(markup);
}

platform::Result<QByteArray> run(const TransformInput &document, const TransformInput &styleSheet,
                                 const TransformBounds &bounds, MessageCollector &collector)
{
    Doc source = parse(document, addressOf(document), TransformPlace::Document, bounds, collector);
    if (!source)
        return failed(collector, QStringLiteral("The XML is not well-formed."));
    Doc sheetSource = parse(styleSheet, styleSheetAddress(document, styleSheet), TransformPlace::StyleSheet,
                            bounds, collector);
    if (!sheetSource)
        return failed(collector, QStringLiteral("The XSL is not well-formed."));
    const std::size_t given = std::size_t(document.utf8.size() + styleSheet.utf8.size());
    TransformBudget budget(bounds.memory + 16 * given, bounds.traffic + 256 * given, bounds.documents);
    const Sheet sheet = compile(std::move(sheetSource));
    if (budget.isSpent())
        return tooMuch();
    if (!sheet)
        return failed(collector, QStringLiteral("The XSL is no usable style sheet."));
    return apply(*sheet, *source, bounds, collector);
}

} // namespace

Transformation transform(const TransformInput &document, const TransformInput &styleSheet,
                         const TransformBounds &bounds)
{
    prepareLibraries();
    MessageCollector collector(addressOf(document), styleSheetAddress(document, styleSheet), bounds.messages);
    platform::Result<QByteArray> markup = run(document, styleSheet, bounds, collector);
    return {std::move(markup), std::move(collector.messages())};
}

} // namespace tidy
