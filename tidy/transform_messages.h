// What libxml2 and libxslt say while a transformation runs, collected instead of printed.
#pragma once

#include "tidy/transform.h"

#include <libxml/xmlerror.h>
#include <libxslt/xsltInternals.h>

#include <functional>

namespace tidy {

// Takes over both libraries' reports for as long as it lives, and gives them back; one at a time.
class MessageCollector
{
public:
    using Tell = std::function<void(const TransformMessage &)>;

    // Keeps so many messages, telling each, and leaves out those that follow. tell may be empty.
    MessageCollector(QByteArray documentUrl, QByteArray styleSheetUrl, int most, Tell tell = {});
    ~MessageCollector();
    MessageCollector(const MessageCollector &) = delete;
    MessageCollector &operator=(const MessageCollector &) = delete;

    // From now on what has no place of its own is about the instruction that this context carries out.
    void follow(xsltTransformContextPtr context);

    void add(TransformMessage message);

    // The same, about the instruction that is being carried out.
    void add(Severity severity, const QString &text);

    // The same, about a line of the file at an address.
    void add(Severity severity, const QString &text, const QByteArray &url, int line);

    std::vector<TransformMessage> &messages() { return messages_; }

    // The text of the first error, on one line; empty while there is none.
    QString firstError() const;

private:
    static void onStructured(void *collector, xmlErrorPtr error);
    static void onPrinted(void *collector, const char *format, ...) __attribute__((format(printf, 2, 3)));
    void takeStructured(const xmlError &error);
    static void onParserPrinted(void *collector, const char *format, ...)
        __attribute__((format(printf, 2, 3)));
    void takePrinted(const QString &text, Severity severity);
    bool takeHeader(const QString &text);
    void place(TransformMessage &message, const QByteArray &url, int line) const;

    QByteArray documentUrl_;
    QByteArray styleSheetUrl_;
    xsltTransformContextPtr context_ = nullptr;
    std::vector<TransformMessage> messages_;
    int most_;
    Tell tell_;
    bool announced_ = false; // a header came, its text is to follow
    TransformMessage announcement_;

    xmlStructuredErrorFunc structuredBefore_;
    void *structuredContextBefore_;
    xmlGenericErrorFunc genericBefore_;
    void *genericContextBefore_;
    xmlGenericErrorFunc printedBefore_;
    void *printedContextBefore_;
};

} // namespace tidy
