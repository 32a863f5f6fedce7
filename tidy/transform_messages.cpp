#include "tidy/transform_messages.h"

#include <QRegularExpression>
#include <QUrl>

#include <libxml/globals.h>
#include <libxml/tree.h>
#include <libxslt/xsltutils.h>

#include <algorithm>
#include <cstdarg>

// libxslt prints: for an error of its own a line that says where, then the text; for an xsl:message the text
// alone, and a line break after it. Each is one call.

namespace tidy {

namespace {

constexpr qsizetype longestMessage = 10'000; // characters

// The bounds' own messages name things that only a programmer can turn.
struct Rewording
{
    const char *part;
    const char *text;
};

constexpr Rewording rewordings[] = {
    {"xsltMaxDepth", "The templates call each other without end."},
    {"Operation limit exceeded", "The style sheet does more than a transformation may; it seems to loop."},
};

QString reworded(const QString &text)
{
    for (const Rewording &rewording : rewordings) {
        if (text.contains(QLatin1StringView(rewording.part)))
            return QString::fromLatin1(rewording.text);
    }
    return text;
}

TransformMessage saying(Severity severity, const QString &text)
{
    TransformMessage message;
    message.severity = severity;
    message.text = text;
    return message;
}

} // namespace

MessageCollector::MessageCollector(QByteArray documentUrl, QByteArray styleSheetUrl, int most, Tell tell)
    : documentUrl_(std::move(documentUrl)), styleSheetUrl_(std::move(styleSheetUrl)), most_(most),
      tell_(std::move(tell)), structuredBefore_(xmlStructuredError),
      structuredContextBefore_(xmlStructuredErrorContext), genericBefore_(xmlGenericError),
      genericContextBefore_(xmlGenericErrorContext), printedBefore_(xsltGenericError),
      printedContextBefore_(xsltGenericErrorContext)
{
    xmlSetStructuredErrorFunc(this, onStructured);
    xmlSetGenericErrorFunc(this, onParserPrinted);
    xsltSetGenericErrorFunc(this, onPrinted);
}

MessageCollector::~MessageCollector()
{
    xsltSetGenericErrorFunc(printedContextBefore_, printedBefore_);
    xmlSetGenericErrorFunc(genericContextBefore_, genericBefore_);
    xmlSetStructuredErrorFunc(structuredContextBefore_, structuredBefore_);
}

void MessageCollector::follow(xsltTransformContextPtr context)
{
    context_ = context;
    if (context)
        xsltSetTransformErrorFunc(context, this, onPrinted);
}

QString MessageCollector::firstError() const
{
    const auto isError = [](const TransformMessage &message) { return message.severity == Severity::Error; };
    const auto found = std::find_if(messages_.begin(), messages_.end(), isError);
    return found == messages_.end() ? QString() : found->text.simplified();
}

void MessageCollector::onStructured(void *collector, xmlErrorPtr error)
{
    static_cast<MessageCollector *>(collector)->takeStructured(*error);
}

void MessageCollector::onPrinted(void *collector, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    static_cast<MessageCollector *>(collector)->takePrinted(QString::vasprintf(format, arguments),
                                                            Severity::Information);
    va_end(arguments);
}

void MessageCollector::onParserPrinted(void *collector, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    static_cast<MessageCollector *>(collector)->takePrinted(QString::vasprintf(format, arguments),
                                                            Severity::Error);
    va_end(arguments);
}

void MessageCollector::add(TransformMessage message)
{
    const auto kept = qsizetype(messages_.size());
    if (kept > most_)
        return;
    if (kept == most_)
        message
            = saying(Severity::Information, QStringLiteral("There are more messages, which are left out."));
    if (message.text.size() > longestMessage)
        message.text = message.text.first(longestMessage) + QStringLiteral(" ...");
    if (tell_)
        tell_(message);
    messages_.push_back(std::move(message));
}

void MessageCollector::add(Severity severity, const QString &text) { add(severity, text, QByteArray(), 0); }

void MessageCollector::add(Severity severity, const QString &text, const QByteArray &url, int line)
{
    TransformMessage message = saying(severity, text);
    place(message, url, line);
    add(std::move(message));
}

void MessageCollector::takeStructured(const xmlError &error)
{
    TransformMessage message = saying(error.level == XML_ERR_WARNING ? Severity::Warning : Severity::Error,
                                      reworded(QString::fromUtf8(error.message)).trimmed());
    // Of an expression str1 is the text and int1 the place in it.
    if (error.domain == XML_FROM_XPATH && error.str1)
        message.text += QStringLiteral(": ") + QString::fromUtf8(error.str1);
    if (error.file)
        place(message, error.file, error.line);
    else if (context_ && context_->inst)
        place(message, QByteArray(), 0);
    if (!message.text.isEmpty())
        add(std::move(message));
}

void MessageCollector::takePrinted(const QString &text, Severity severity)
{
    if (takeHeader(text) || text.trimmed().isEmpty())
        return;
    TransformMessage message = saying(severity, {});
    if (announced_)
        message = announcement_;
    else
        place(message, QByteArray(), 0);
    announced_ = false;
    message.text = reworded(text);
    while (message.text.endsWith(QLatin1Char('\n')))
        message.text.chop(1);
    add(std::move(message));
}

bool MessageCollector::takeHeader(const QString &text)
{
    static const QRegularExpression header(QStringLiteral(
        "^(?:(?:compilation|runtime) error|error)(?:: (?:file (.*?) )?(?:line (\\d+) )?element .*)?\n$"));
    const QRegularExpressionMatch match = header.match(text);
    if (!match.hasMatch())
        return false;
    announcement_ = {};
    place(announcement_, match.captured(1).toUtf8(), match.captured(2).toInt());
    announced_ = true;
    return true;
}

// Without an address of its own a message is about the instruction that is being carried out.
void MessageCollector::place(TransformMessage &message, const QByteArray &url, int line) const
{
    QByteArray at = url;
    if (at.isEmpty() && context_ && context_->inst && context_->inst->doc) {
        at = reinterpret_cast<const char *>(context_->inst->doc->URL);
        line = int(xmlGetLineNo(context_->inst));
    }
    if (at.isEmpty() || line <= 0)
        return;
    message.line = line;
    message.place = at == styleSheetUrl_ ? TransformPlace::StyleSheet
        : at == documentUrl_             ? TransformPlace::Document
                                         : TransformPlace::OtherFile;
    if (message.place == TransformPlace::OtherFile) {
        const QUrl address = QUrl::fromEncoded(at);
        message.file = address.isLocalFile() ? address.toLocalFile() : QString::fromUtf8(at);
    }
}

} // namespace tidy
