#include "tidy/launcher/html_pieces.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace launcher {

namespace {

constexpr const char *voidElements[]
    = {"area", "base",  "basefont", "bgsound", "br",   "col",  "command", "embed",  "frame", "hr", "image",
       "img",  "input", "isindex",  "keygen",  "link", "meta", "param",   "source", "track", "wbr"};

constexpr const char *blockElements[]
    = {"address",   "article", "aside",    "base",     "blockquote", "body",     "br",     "caption",
       "center",    "col",     "colgroup", "dd",       "details",    "dialog",   "dir",    "div",
       "dl",        "dt",      "fieldset", "figure",   "figcaption", "footer",   "form",   "frame",
       "frameset",  "h1",      "h2",       "h3",       "h4",         "h5",       "h6",     "head",
       "header",    "hgroup",  "hr",       "html",     "isindex",    "legend",   "li",     "listing",
       "main",      "menu",    "nav",      "noframes", "ol",         "optgroup", "option", "p",
       "plaintext", "pre",     "search",   "section",  "summary",    "table",    "tbody",  "td",
       "tfoot",     "th",      "thead",    "title",    "tr",         "ul",       "xmp"};

constexpr const char *wordElements[]
    = {"applet", "audio", "button", "canvas",   "embed",  "iframe", "image",    "img",  "input",
       "math",   "meter", "object", "progress", "select", "svg",    "textarea", "video"};

constexpr const char *rawElements[] = {"iframe", "noembed", "script", "style"};
constexpr const char *plainElements[] = {"textarea", "title"};
constexpr const char *preservingElements[] = {"listing", "plaintext", "pre", "textarea", "xmp"};

template <size_t count>
bool isOneOf(const QByteArray &name, const char *const (&names)[count])
{
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

qsizetype behind(QByteArrayView text, QByteArrayView closing, qsizetype from)
{
    const qsizetype found = text.indexOf(closing, from);
    return found < 0 ? text.size() : found + closing.size();
}

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

qsizetype endOfQuoted(QByteArrayView text, qsizetype at, char quote)
{
    while (at < text.size() && text[at] != quote)
        at = std::max(endOfServerCode(text, at), at + 1);
    return std::min(at + 1, text.size());
}

qsizetype endOfHtmlTag(QByteArrayView text, qsizetype at)
{
    bool value = false; // may begin here
    while (at < text.size() && text[at] != '>') {
        const char c = text[at];
        if (const qsizetype code = endOfServerCode(text, at); code > at)
            at = code;
        else if (value && (c == '"' || c == '\''))
            at = endOfQuoted(text, at + 1, c);
        else
            ++at;
        value = c == '=' || (value && isXmlBlank(c));
    }
    return std::min(at + 1, text.size());
}

Piece htmlTagAt(QByteArrayView text, qsizetype at)
{
    const bool end = text[at + 1] == '/';
    const qsizetype behindIt = endOfHtmlTag(text, at + 1);
    if (end)
        return {PieceKind::EndTag, at, behindIt};
    return {text.first(behindIt).endsWith("/>") ? PieceKind::EmptyTag : PieceKind::StartTag, at, behindIt};
}

bool isDoctype(QByteArrayView rest)
{
    constexpr qsizetype size = 9;
    return rest.first(std::min(rest.size(), size)).compare("<!DOCTYPE", Qt::CaseInsensitive) == 0;
}

} // namespace

Piece htmlPieceAt(QByteArrayView text, qsizetype at)
{
    const QByteArrayView rest = text.sliced(at);
    if (const qsizetype code = endOfServerCode(text, at); code > at)
        return {PieceKind::Instruction, at, code};
    if (rest.startsWith("<!--"))
        return {PieceKind::Comment, at, behind(text, "-->", at + 2)};
    if (isDoctype(rest))
        return {PieceKind::Doctype, at, endOfDoctype(text, at)};
    if (rest.startsWith("<!"))
        return {PieceKind::Comment, at, behind(text, ">", at)};
    const qsizetype name = 1 + (rest.startsWith("</") ? 1 : 0);
    if (rest.startsWith('<') && rest.size() > name && isLetter(rest[name]))
        return htmlTagAt(text, at);
    const qsizetype next = text.indexOf('<', at + 1);
    return {PieceKind::Text, at, next < 0 ? text.size() : next};
}

qsizetype endOfServerCode(QByteArrayView text, qsizetype at)
{
    const QByteArrayView rest = text.sliced(at);
    for (const auto &[opening, closing] : {std::pair("<%", "%>"), std::pair("<#", "#>")}) {
        if (rest.startsWith(opening) && rest.indexOf(closing) >= 0)
            return behind(text, closing, at);
    }
    // "<?php" ends by its own mark, what else begins so ends with the tag, as browsers have it.
    if (rest.startsWith("<?"))
        return text.indexOf("?>", at) < 0 ? behind(text, ">", at) : behind(text, "?>", at);
    return at;
}

QByteArray tagName(QByteArrayView tag)
{
    const qsizetype begin = std::min<qsizetype>(tag.startsWith("</") ? 2 : 1, tag.size());
    return tag.first(endOfName(tag, begin)).sliced(begin).toByteArray().toLower();
}

bool isVoidElement(const QByteArray &name) { return isOneOf(name, voidElements); }
bool isBlockElement(const QByteArray &name) { return isOneOf(name, blockElements); }
bool isWordElement(const QByteArray &name) { return isOneOf(name, wordElements); }
bool hasRawText(const QByteArray &name) { return isOneOf(name, rawElements); }
bool hasPlainText(const QByteArray &name) { return isOneOf(name, plainElements); }
bool keepsBlanks(const QByteArray &name) { return isOneOf(name, preservingElements); }

qsizetype endOfRawText(QByteArrayView text, qsizetype from, const QByteArray &name)
{
    for (qsizetype at = from; (at = text.indexOf("</", at)) >= 0; at += 2) {
        if (text.sliced(at + 2)
                .first(std::min(name.size(), text.size() - at - 2))
                .compare(name, Qt::CaseInsensitive)
            == 0)
            return at;
    }
    return text.size();
}

} // namespace launcher
