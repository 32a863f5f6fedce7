#include "platform/browser/style_instruction.h"

#include <QList>
#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <cctype>

namespace browser {
namespace {

constexpr char kEarly[] = "<?xml:stylesheet";
constexpr char kModern[] = "<?xml-stylesheet";
constexpr qsizetype kColon = 5; // where the colon stands in it
constexpr qsizetype kNameEnd = sizeof kEarly - 1;

// What may stand before the root element, and what ends it.
struct Construct
{
    const char *start;
    const char *end;
};
constexpr std::array kProlog = {Construct{"<?", "?>"}, Construct{"<!--", "-->"}};

// One character that gives way to others; places are in characters.
struct Edit
{
    qsizetype at;
    QByteArray text;
};

// How characters lie in bytes.
struct Units
{
    qsizetype width = 1;
    qsizetype low = 0; // where in a unit its low byte is
};

bool isBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

bool startsAt(const QByteArray &text, qsizetype at, const char *what)
{
    return QByteArrayView(text).sliced(at).startsWith(what);
}

// Behind what begins at position at and ends with end; -1 when it never does.
qsizetype behind(const QByteArray &xml, const char *end, qsizetype at)
{
    const qsizetype found = xml.indexOf(end, at);
    return found < 0 ? -1 : found + qsizetype(qstrlen(end));
}

// Behind a comment or an instruction; at itself where there is none.
qsizetype behindProlog(const QByteArray &xml, qsizetype at)
{
    for (const Construct &construct : kProlog) {
        if (startsAt(xml, at, construct.start))
            return behind(xml, construct.end, at + qsizetype(qstrlen(construct.start)));
    }
    return at;
}

// Behind a document type declaration, with its internal subset when it has one.
qsizetype behindDocumentType(const QByteArray &xml, qsizetype at)
{
    bool inSubset = false;
    while (at >= 0 && at < xml.size()) {
        const char c = xml[at];
        if (c == '>' && !inSubset)
            return at + 1;
        if (c == '[' || c == ']')
            inSubset = c == '[';
        const qsizetype next = behindProlog(xml, at);
        if (next != at)
            at = next;
        else if (c == '"' || c == '\'')
            at = behind(xml, c == '"' ? "\"" : "'", at + 1);
        else
            ++at;
    }
    return -1;
}

// Behind the construct at position at; -1 where the root element (or no markup at all) begins.
qsizetype behindConstruct(const QByteArray &xml, qsizetype at)
{
    const qsizetype next = behindProlog(xml, at);
    if (next != at)
        return next;
    return startsAt(xml, at, "<!DOCTYPE") ? behindDocumentType(xml, at) : -1;
}

// What an instruction may refer to, which has no entities but these.
constexpr std::array kReferences = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;", "&#"};

bool beginsReference(const QByteArray &xml, qsizetype at)
{
    return std::any_of(kReferences.begin(), kReferences.end(),
                       [&](const char *reference) { return startsAt(xml, at, reference); });
}

bool isStyleInstruction(const QByteArray &xml, qsizetype at)
{
    const qsizetype nameEnd = at + kNameEnd;
    return (startsAt(xml, at, kEarly) || startsAt(xml, at, kModern)) && nameEnd < xml.size()
        && isBlank(xml[nameEnd]);
}

void mendInstruction(const QByteArray &xml, qsizetype at, QList<Edit> &edits)
{
    if (xml[at + kColon] == ':')
        edits.append({at + kColon, "-"});
    const qsizetype end = xml.indexOf("?>", at);
    for (qsizetype i = at + kNameEnd; i < end; ++i) {
        if (xml[i] == '<')
            edits.append({i, "&lt;"});
        else if (xml[i] == '&' && !beginsReference(xml, i))
            edits.append({i, "&amp;"});
    }
}

// Where the style-sheet instructions before the root element begin.
QList<qsizetype> instructionsIn(const QByteArray &xml)
{
    QList<qsizetype> found;
    qsizetype at = xml.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    while (at >= 0 && at < xml.size()) {
        if (isBlank(xml[at])) {
            ++at;
            continue;
        }
        if (isStyleInstruction(xml, at))
            found.append(at);
        at = behindConstruct(xml, at);
    }
    return found;
}

QList<Edit> editsOf(const QByteArray &xml)
{
    QList<Edit> edits;
    for (const qsizetype at : instructionsIn(xml))
        mendInstruction(xml, at, edits);
    return edits;
}

Units unitsOf(const QByteArray &xml)
{
    if (xml.startsWith("\xFF\xFE") || xml.startsWith(QByteArrayView("<\0", 2)))
        return {2, 0};
    if (xml.startsWith("\xFE\xFF") || xml.startsWith(QByteArrayView("\0<", 2)))
        return {2, 1};
    return {};
}

// The prolog as single bytes, for looking at: what is no ASCII, a mark among it, becomes a blank at the
// front and a sign that means nothing elsewhere.
QByteArray narrowed(const QByteArray &xml, const Units &units)
{
    if (units.width == 1)
        return xml;
    QByteArray narrow(xml.size() / units.width, '?');
    for (qsizetype i = 0; i < narrow.size(); ++i) {
        const bool ascii = xml[i * 2 + 1 - units.low] == 0 && uchar(xml[i * 2 + units.low]) < 0x80;
        if (ascii)
            narrow[i] = xml[i * 2 + units.low];
    }
    if (narrow.startsWith('?'))
        narrow[0] = ' ';
    return narrow;
}

QByteArray widened(const QByteArray &text, const Units &units)
{
    if (units.width == 1)
        return text;
    QByteArray wide(text.size() * units.width, '\0');
    for (qsizetype i = 0; i < text.size(); ++i)
        wide[i * units.width + units.low] = text[i];
    return wide;
}

} // namespace

QByteArray withModernStyleInstructions(QByteArray xml)
{
    const Units units = unitsOf(xml);
    const QList<Edit> edits = editsOf(narrowed(xml, units));
    for (auto edit = edits.crbegin(); edit != edits.crend(); ++edit)
        xml.replace(edit->at * units.width, units.width, widened(edit->text, units));
    return xml;
}

QStringList styleSheets(const QByteArray &xml)
{
    static const QRegularExpression reference(QStringLiteral("\\shref\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)')"));
    const QByteArray narrow = narrowed(xml, unitsOf(xml));
    QStringList sheets;
    for (const qsizetype at : instructionsIn(narrow)) {
        const QString data = QString::fromUtf8(narrow.mid(at, narrow.indexOf("?>", at) - at));
        const QRegularExpressionMatch match = reference.match(data);
        QString sheet = match.captured(1) + match.captured(2);
        sheets.append(sheet.replace(QStringLiteral("&amp;"), QStringLiteral("&")));
    }
    return sheets;
}

} // namespace browser
