#include "tidy/transform.h"

#include "platform/dom/addresses.h"
#include "platform/dom/verdict.h"
#include "tidy/transform_addresses.h"
#include "tidy/transform_budget.h"
#include "tidy/transform_loading.h"
#include "tidy/transform_messages.h"
#include "tidy/transform_result.h"

#include <QFileInfo>

#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/variables.h>

#include <algorithm>
#include <memory>
#include <optional>

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

using Doc = TransformLoading::Doc;
using Sheet = std::unique_ptr<xsltStylesheet, Releases<xsltFreeStylesheet>>;
using Context = std::unique_ptr<xsltTransformContext, Releases<xsltFreeTransformContext>>;
using Security = std::unique_ptr<xsltSecurityPrefs, Releases<xsltFreeSecurityPrefs>>;

// What is read is for the loading to say: an address of another machine may be in the catalogs.
Security noWriting()
{
    Security security(xsltNewSecurityPrefs());
    for (const xsltSecurityOption option :
         {XSLT_SECPREF_WRITE_FILE, XSLT_SECPREF_CREATE_DIRECTORY, XSLT_SECPREF_WRITE_NETWORK})
        xsltSetSecurityPrefs(security.get(), option, xsltSecurityForbid);
    return security;
}

QByteArray documentAddress(const TransformJob &job) { return dom::addressOfPath(job.document.path); }

// The two never share one, or each would pass for the other.
QByteArray styleSheetAddress(const TransformJob &job)
{
    const QByteArray address = dom::addressOfPath(job.styleSheet.path);
    return address == documentAddress(job) ? address + "#stylesheet" : address;
}

platform::Failure tooMuch()
{
    return {QStringLiteral("The transformation failed. The style sheet takes more memory or time than a "
                           "transformation may.")};
}

// All that one transformation works with.
struct Work
{
    const TransformJob &job;
    MessageCollector &collector;
    TransformLoading &loading;
};

QString asked(const QStringList &names)
{
    constexpr qsizetype most = 10;
    const QString first = names.first(qMin(names.size(), most)).join(QStringLiteral(", "));
    return names.size() <= most ? first
                                : QStringLiteral("%1 and %2 more").arg(first).arg(names.size() - most);
}

// What keeps a result from being what the two texts say; nothing when it may count.
std::optional<platform::Failure> shortcoming(const Work &work)
{
    const TransformLoading &loading = work.loading;
    if (!loading.refused().isEmpty())
        return platform::Failure{
            QStringLiteral(
                "Not read, because it lies neither in the folder of the document nor in that of the "
                "style sheet: %1")
                .arg(asked(loading.refused()))};
    if (!loading.lack().isEmpty())
        return platform::Failure{loading.lack()};
    if (!loading.newerSheets().isEmpty() && !work.job.licence.newerSheets)
        return platform::Failure{QStringLiteral("Only version 1.0 of XSLT can be carried out here: %1")
                                     .arg(asked(loading.newerSheets()))};
    return std::nullopt;
}

// The verdict comes first: it says what is wrong in the words the rest of the program uses, and it bounds
// what entities amount to, so that the parser's own limits on honest large texts can go.
Doc parse(const TransformInput &input, const QByteArray &address, TransformPlace place, const Work &work)
{
    const QString folder = QFileInfo(input.path).path();
    if (const auto fault = dom::checkWellFormed(input.utf8, folder)) {
        work.collector.add({Severity::Error, place, int(fault->line), {}, fault->reason.trimmed()});
        return {};
    }
    const TransformBounds &bounds = work.job.bounds;
    const auto size = std::size_t(input.utf8.size());
    const TransformBudget budget(bounds.memory + 128 * size, bounds.traffic + 256 * size, bounds.documents);
    Doc doc = work.loading.parse(input.utf8, address);
    if (budget.isSpent())
        work.collector.add({Severity::Error, place, 0, {}, tooMuch().reason});
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

bool setParameters(xsltTransformContext &context, const SheetParameters &parameters)
{
    const auto text
        = [](const QByteArray &bytes) { return reinterpret_cast<const xmlChar *>(bytes.constData()); };
    return std::all_of(parameters.begin(), parameters.end(), [&](const auto &parameter) {
        return xsltQuoteOneUserParam(&context, text(parameter.first), text(parameter.second)) == 0;
    });
}

platform::Result<QByteArray> apply(xsltStylesheet &sheet, xmlDoc &document, const Work &work)
{
    const Security security = noWriting();
    const Context context(xsltNewTransformContext(&sheet, &document));
    if (!security || !context || xsltSetCtxtSecurityPrefs(security.get(), context.get()) != 0)
        return platform::Failure{QStringLiteral("The transformation could not be started.")};
    bound(*context, work.job.bounds);
    registerDocumentFunction(*context);
    if (!setParameters(*context, work.job.parameters))
        return platform::Failure{QStringLiteral("The parameters cannot be set.")};
    work.collector.follow(context.get());
    TransformBudget *budget = TransformBudget::current();
    budget->whenSpent(stop, context.get());
    const Doc result(xsltApplyStylesheetUser(&sheet, &document, nullptr, nullptr, nullptr, context.get()));
    work.collector.follow(nullptr);
    budget->whenSpent(nullptr, nullptr);
    if (budget->isSpent())
        return tooMuch();
    if (!result || context->state != XSLT_STATE_OK)
        return failed(work.collector, QStringLiteral("The transformation failed."));
    platform::Result<QByteArray> markup = markupAtPositionOne(*result);
    if (budget->isSpent() || (markup && markup->size() > work.job.bounds.output))
        return tooMuch();
    return markup;
}

platform::Result<QByteArray> compileAndApply(Doc sheetSource, xmlDoc &source, const Work &work)
{
    const TransformJob &job = work.job;
    const std::size_t given = std::size_t(job.document.utf8.size() + job.styleSheet.utf8.size());
    TransformBudget budget(job.bounds.memory + 16 * given, job.bounds.traffic + 256 * given,
                           job.bounds.documents);
    work.loading.prepare(*sheetSource, job.styleSheet.path);
    const Sheet sheet = compile(std::move(sheetSource));
    if (budget.isSpent())
        return tooMuch();
    if (auto failure = shortcoming(work))
        return *failure;
    if (!sheet)
        return failed(work.collector, QStringLiteral("The XSL is no usable style sheet."));
    return apply(*sheet, source, work);
}

platform::Result<QByteArray> run(const Work &work)
{
    const TransformJob &job = work.job;
    const Doc source = parse(job.document, documentAddress(job), TransformPlace::Document, work);
    if (auto failure = shortcoming(work))
        return *failure;
    if (!source)
        return failed(work.collector, QStringLiteral("The XML is not well-formed."));
    Doc sheetSource = parse(job.styleSheet, styleSheetAddress(job), TransformPlace::StyleSheet, work);
    if (auto failure = shortcoming(work))
        return *failure;
    if (!sheetSource)
        return failed(work.collector, QStringLiteral("The XSL is not well-formed."));
    platform::Result<QByteArray> markup = compileAndApply(std::move(sheetSource), *source, work);
    if (auto failure = shortcoming(work))
        return *failure;
    return markup;
}

} // namespace

Transformation transform(const TransformJob &job, const std::function<void(const TransformMessage &)> &tell)
{
    MessageCollector collector(documentAddress(job), styleSheetAddress(job), job.bounds.messages, tell);
    TransformLoading loading(job, collector);
    platform::Result<QByteArray> markup = run({job, collector, loading});
    return {std::move(markup), std::move(collector.messages()), loading.refused(), loading.newerSheets()};
}

} // namespace tidy
