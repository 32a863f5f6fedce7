#include "platform/browser/style_instruction.h"

#include <array>
#include <cctype>

namespace browser {
namespace {

constexpr char kEarly[] = "<?xml:stylesheet";
constexpr qsizetype kColon = 5; // where the colon stands in it

// What may stand before the root element, and what ends it.
struct Construct
{
    const char *start;
    const char *end;
};
constexpr std::array kProlog = {Construct{"<?", "?>"}, Construct{"<!--", "-->"}};

bool isBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

bool startsAt(const QByteArray &text, qsizetype at, const char *what)
{
    return QByteArrayView(text).sliced(at).startsWith(what);
}

// Behind a document type declaration, with its internal subset when it has one.
qsizetype behindDocumentType(const QByteArray &xml, qsizetype at)
{
    const qsizetype subset = xml.indexOf('[', at);
    const qsizetype end = xml.indexOf('>', at);
    if (subset < 0 || (end >= 0 && end < subset))
        return end < 0 ? -1 : end + 1;
    const qsizetype subsetEnd = xml.indexOf(']', subset);
    const qsizetype close = subsetEnd < 0 ? -1 : xml.indexOf('>', subsetEnd);
    return close < 0 ? -1 : close + 1;
}

// Behind the construct at position at; -1 where the root element (or no markup at all) begins.
qsizetype behindConstruct(const QByteArray &xml, qsizetype at)
{
    for (const Construct &construct : kProlog) {
        if (!startsAt(xml, at, construct.start))
            continue;
        const qsizetype end = xml.indexOf(construct.end, at);
        return end < 0 ? -1 : end + qsizetype(qstrlen(construct.end));
    }
    return startsAt(xml, at, "<!DOCTYPE") ? behindDocumentType(xml, at) : -1;
}

} // namespace

QByteArray withModernStyleInstructions(QByteArray xml)
{
    qsizetype at = xml.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    while (at >= 0 && at < xml.size()) {
        if (isBlank(xml[at])) {
            ++at;
            continue;
        }
        const qsizetype afterName = at + qsizetype(sizeof kEarly) - 1;
        if (startsAt(xml, at, kEarly) && afterName < xml.size() && isBlank(xml[afterName]))
            xml[at + kColon] = '-';
        at = behindConstruct(xml, at);
    }
    return xml;
}

} // namespace browser
