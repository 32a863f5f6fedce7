#include "platform/browser/markup_check.h"

#include <libxml/parser.h>
#include <libxml/xmlerror.h>
#include <memory>

namespace browser {
namespace {

constexpr qsizetype kLargest = qsizetype(16) * 1024 * 1024; // no style sheet is larger

constexpr int kParseOptions = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

struct Free
{
    void operator()(xmlParserCtxtPtr context) const { xmlFreeParserCtxt(context); }
    void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
};

} // namespace

QString markupFault(const QByteArray &xml)
{
    const std::unique_ptr<xmlParserCtxt, Free> context(xmlNewParserCtxt());
    if (!context || xml.size() > kLargest)
        return {};
    const std::unique_ptr<xmlDoc, Free> document(
        xmlCtxtReadMemory(context.get(), xml.constData(), int(xml.size()), nullptr, nullptr, kParseOptions));
    const xmlError *error = xmlCtxtGetLastError(context.get());
    if (document || error == nullptr)
        return {};
    return QStringLiteral("line %1: %2").arg(error->line).arg(QString::fromUtf8(error->message).simplified());
}

} // namespace browser
