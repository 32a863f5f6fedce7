#include "platform/control/markup_scanner.h"

#include <algorithm>
#include <array>

namespace control {

namespace {

// By byte, since whole texts are read.
constexpr std::array<bool, 256> nameBytes = [] {
    std::array<bool, 256> bytes{};
    std::fill(bytes.begin() + ' ' + 1, bytes.end(), true);
    for (const char c : {'<', '>', '/', '=', '"', '\'', '&', '?', '!'})
        bytes[size_t(c)] = false;
    return bytes;
}();

} // namespace

static bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isNameByte(char c) { return nameBytes[static_cast<unsigned char>(c)]; }

MarkupScanner::MarkupScanner(QByteArrayView text, bool html, qsizetype from)
    : text_(text), html_(html), at_(from)
{ }

std::optional<Markup> MarkupScanner::next()
{
    for (;;) {
        const qsizetype start = text_.indexOf('<', at_);
        if (start < 0)
            return std::nullopt;
        const Markup found = readAt(start);
        if (found.whole.length == 0) {
            at_ = start + 1;
            continue;
        }
        at_ = found.whole.end();
        if (html_)
            skipRawText(found);
        return found;
    }
}

// A "<" that begins no markup gives a piece of no length.
Markup MarkupScanner::readAt(qsizetype start) const
{
    const auto other = [start](qsizetype end) { return Markup{MarkupKind::Other, {start, end - start}, {}}; };
    if (startsWith("<!--", start))
        return other(after("-->", start + 4));
    if (startsWith("<![CDATA[", start))
        return other(after("]]>", start + 9));
    if (startsWith("<?", start))
        return other(after(html_ ? ">" : "?>", start + 2));
    if (startsWith("<!", start))
        return other(endOfDeclaration(start + 2));
    if (startsWith("</", start))
        return readTag(start, start + 2);
    return readTag(start, start + 1);
}

Markup MarkupScanner::readTag(qsizetype start, qsizetype nameStart) const
{
    qsizetype nameEnd = nameStart;
    while (nameEnd < text_.size() && isNameByte(text_[nameEnd]))
        ++nameEnd;
    const bool closing = nameStart == start + 2;
    if (!closing && (nameEnd == nameStart || (html_ && !isLetter(text_[nameStart]))))
        return {};
    Markup tag;
    tag.name = {nameStart, nameEnd - nameStart};
    const qsizetype end = endOfTag(nameEnd);
    tag.whole = {start, end - start};
    const bool slashed = end - 2 >= nameEnd && text_[end - 1] == '>' && text_[end - 2] == '/';
    if (closing)
        tag.kind = MarkupKind::EndTag;
    else if (slashed
             || namesOneOf(tag.name,
                           {"area", "base", "basefont", "br", "col", "embed", "frame", "hr", "img", "input",
                            "isindex", "link", "meta", "param", "source", "track", "wbr"}))
        tag.kind = MarkupKind::EmptyTag;
    else
        tag.kind = MarkupKind::StartTag;
    return tag;
}

// XML allows no "<" in a tag, not even quoted, so one there means that the tag was never closed.
qsizetype MarkupScanner::endOfTag(qsizetype from) const
{
    char quote = 0;
    for (qsizetype i = from; i < text_.size(); ++i) {
        const char c = text_[i];
        if (c == '<' && (!html_ || quote == 0))
            return i;
        if (quote != 0)
            quote = c == quote ? '\0' : quote;
        else if (c == '>')
            return i + 1;
        else if (c == '"' || c == '\'')
            quote = c;
    }
    return text_.size();
}

// A document type holds further declarations between brackets, with quotes and comments of their own.
qsizetype MarkupScanner::endOfDeclaration(qsizetype from) const
{
    bool inSubset = false;
    for (qsizetype i = from; i < text_.size(); ++i) {
        const char c = text_[i];
        if (startsWith("<!--", i))
            i = after("-->", i + 4) - 1;
        else if (startsWith("<?", i))
            i = after("?>", i + 2) - 1;
        else if (c == '"' || c == '\'')
            i = after(QByteArrayView(&c, 1), i + 1) - 1;
        else if (c == '[')
            inSubset = true;
        else if (c == ']')
            inSubset = false;
        else if (c == '>' && !inSubset)
            return i + 1;
    }
    return text_.size();
}

qsizetype MarkupScanner::after(QByteArrayView ending, qsizetype from) const
{
    const qsizetype found = text_.indexOf(ending, from);
    return found < 0 ? text_.size() : found + ending.size();
}

bool MarkupScanner::startsWith(QByteArrayView what, qsizetype at) const
{
    return text_.size() - at >= what.size() && text_.sliced(at, what.size()) == what;
}

bool MarkupScanner::namesOneOf(const Span &name, std::initializer_list<const char *> names) const
{
    const QByteArrayView own = text_.sliced(name.start, name.length);
    return html_ && std::any_of(names.begin(), names.end(), [own](const char *one) {
               return own.compare(one, Qt::CaseInsensitive) == 0;
           });
}

void MarkupScanner::skipRawText(const Markup &tag)
{
    if (tag.kind != MarkupKind::StartTag || !namesOneOf(tag.name, {"script", "style", "textarea", "title"}))
        return;
    const QByteArrayView name = text_.sliced(tag.name.start, tag.name.length);
    for (qsizetype end = text_.indexOf("</", at_); end >= 0; end = text_.indexOf("</", end + 2)) {
        if (text_.size() - end - 2 < name.size())
            break;
        if (text_.sliced(end + 2, name.size()).compare(name, Qt::CaseInsensitive) == 0) {
            at_ = end;
            return;
        }
    }
    at_ = text_.size(); // it is only being written
}

} // namespace control
