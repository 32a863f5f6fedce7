#include "platform/files/declaration.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace files {

namespace {

constexpr qsizetype headSize = 4096;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f'; }

QByteArrayView withoutLeadingBlanks(QByteArrayView text)
{
    const auto *first = std::find_if_not(text.begin(), text.end(), isBlank);
    return text.sliced(first - text.begin());
}

bool startsWithNoCase(QByteArrayView text, QByteArrayView lowerCase)
{
    return text.size() >= lowerCase.size()
        && qstrnicmp(text.data(), lowerCase.size(), lowerCase.data(), lowerCase.size()) == 0;
}

// Takes a leading name of attribute kind off the text.
QByteArrayView takeName(QByteArrayView &text)
{
    const auto *end = std::find_if(text.begin(), text.end(),
                                   [](char c) { return isBlank(c) || c == '=' || c == '?' || c == '>'; });
    const QByteArrayView name = text.first(end - text.begin());
    text = withoutLeadingBlanks(text.sliced(name.size()));
    return name;
}

// Takes a leading '=' and quoted value off the text; nothing when there is no such thing.
std::optional<QByteArrayView> takeQuotedValue(QByteArrayView &text)
{
    if (!text.startsWith('='))
        return std::nullopt;
    text = withoutLeadingBlanks(text.sliced(1));
    if (!text.startsWith('"') && !text.startsWith('\''))
        return std::nullopt;
    const qsizetype end = text.indexOf(text.front(), 1);
    if (end < 0)
        return std::nullopt;
    const QByteArrayView value = text.sliced(1, end - 1);
    text = withoutLeadingBlanks(text.sliced(end + 1));
    return value;
}

// The head stands behind "<?xml".
QByteArrayView encodingInXmlDeclaration(QByteArrayView head)
{
    head = withoutLeadingBlanks(head);
    while (!head.isEmpty()) {
        const QByteArrayView name = takeName(head);
        const std::optional<QByteArrayView> value = takeQuotedValue(head);
        if (name.isEmpty() || !value)
            break;
        if (name == "encoding")
            return *value;
    }
    return {};
}

// Takes comments, processing instructions and blanks off the text.
QByteArrayView withoutPreamble(QByteArrayView text)
{
    for (;;) {
        text = withoutLeadingBlanks(text);
        const bool comment = text.startsWith("<!--");
        if (!comment && !text.startsWith("<?"))
            return text;
        const qsizetype end = comment ? text.indexOf("-->", 4) : text.indexOf("?>", 2);
        if (end < 0)
            return {};
        text = text.sliced(end + (comment ? 3 : 2));
    }
}

// The encoding behind "charset=", which stands either alone or inside the value of "content".
QByteArrayView charsetInTag(QByteArrayView tag)
{
    const qsizetype at = tag.toByteArray().toLower().indexOf("charset");
    if (at < 0)
        return {};
    QByteArrayView rest = withoutLeadingBlanks(tag.sliced(at + 7));
    if (!rest.startsWith('='))
        return {};
    rest = withoutLeadingBlanks(rest.sliced(1));
    if (rest.startsWith('"') || rest.startsWith('\''))
        rest = withoutLeadingBlanks(rest.sliced(1));
    const auto *end = std::find_if(rest.begin(), rest.end(), [](char c) {
        return isBlank(c) || c == '"' || c == '\'' || c == ';' || c == '/' || c == '>';
    });
    return rest.first(end - rest.begin());
}

QByteArrayView encodingInMeta(QByteArrayView head)
{
    for (;;) {
        head = withoutPreamble(head);
        const qsizetype end = head.indexOf('>');
        if (end < 0)
            return {};
        if (startsWithNoCase(head, "<meta")) {
            const QByteArrayView name = charsetInTag(head.first(end));
            if (!name.isEmpty())
                return name;
        }
        const qsizetype next = head.indexOf('<', head.startsWith('<') ? end : 0);
        if (next < 0)
            return {};
        head = head.sliced(next);
    }
}

Declaration found(QByteArrayView text, DeclaredBy by, QByteArrayView name)
{
    return {by, name.toByteArray(), name.isEmpty() ? -1 : name.data() - text.data()};
}

} // namespace

Declaration declarationIn(QByteArrayView text)
{
    QByteArrayView head = withoutLeadingBlanks(text.first(std::min(text.size(), headSize)));
    if (head.size() > 5 && head.startsWith("<?xml") && (isBlank(head[5]) || head[5] == '?'))
        return found(text, DeclaredBy::Xml, encodingInXmlDeclaration(head.sliced(5)));
    if (looksLikeHtml(head)) {
        const QByteArrayView name = encodingInMeta(head);
        if (!name.isEmpty())
            return found(text, DeclaredBy::Html, name);
    }
    return {};
}

const EncodingEntry *declaredEntry(const Declaration &declaration)
{
    const EncodingEntry *entry = findEncoding(declaration.name);
    if (!entry || declaration.by != DeclaredBy::Html)
        return entry;
    if (isWide(entry->codec))
        return &entryOf(Codec::Utf8);
    const bool latin1 = entry->codec == Codec::Latin1 || entry->codec == Codec::Ascii;
    return latin1 ? &entryOf(Codec::Windows1252) : entry;
}

bool looksLikeMarkup(QByteArrayView text) { return withoutLeadingBlanks(text).startsWith('<'); }

bool looksLikeHtml(QByteArrayView text)
{
    const QByteArrayView head = withoutPreamble(text.first(std::min(text.size(), headSize)));
    constexpr const char *starts[] = {"<!doctype html", "<html", "<head", "<meta"};
    return std::any_of(std::begin(starts), std::end(starts),
                       [head](const char *start) { return startsWithNoCase(head, start); });
}

} // namespace files
