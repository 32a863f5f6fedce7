#include "tree/label.h"

#include "platform/dom/characters.h"
#include "platform/dom/start_tag.h"

#include <limits>

namespace tree {

namespace {

bool isBlank(QChar c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }

bool isLineBreak(QChar c)
{
    return c == u'\r' || c == u'\n' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator
        || c == QChar(0x85);
}

// Runs of blanks with a line break in them become one blank; stops when limit characters are exceeded.
QString onOneLine(QStringView text, qsizetype limit)
{
    QString line;
    line.reserve(qMin(text.size(), limit + 1));
    for (qsizetype at = 0; at < text.size() && line.size() <= limit;) {
        qsizetype end = at;
        bool breaks = false;
        for (; end < text.size() && (isBlank(text[end]) || isLineBreak(text[end])); ++end)
            breaks = breaks || isLineBreak(text[end]);
        if (breaks)
            line += u' ';
        else if (end > at)
            line += text.sliced(at, end - at);
        else
            line += text[end++];
        at = end;
    }
    return line;
}

QString ellipsized(QString line, qsizetype limit, bool moreFollows)
{
    if (line.size() <= limit && !moreFollows)
        return line;
    line.truncate(limit);
    if (!line.isEmpty() && line.back().isHighSurrogate())
        line.chop(1);
    return line + QChar(0x2026);
}

// The first bytes of a text may end within a character or a reference; drops what is not whole.
QByteArray wholeCharacters(QByteArray bytes, bool references)
{
    while (!bytes.isEmpty() && (uchar(bytes.back()) & 0xC0) == 0x80)
        bytes.chop(1);
    if (!bytes.isEmpty() && uchar(bytes.back()) >= 0xC0)
        bytes.chop(1);
    const qsizetype reference = references ? bytes.lastIndexOf('&') : -1;
    if (reference >= 0 && bytes.indexOf(';', reference) < 0)
        bytes.truncate(reference);
    return bytes;
}

bool declaresNamespace(QByteArrayView attribute)
{
    return attribute == "xmlns" || attribute.startsWith("xmlns:");
}

QByteArray tagToLabel(const dom::Node &element, TagRule rule)
{
    QByteArray tag = element.startTag();
    if (rule == TagRule::AsItStands || !tag.contains("xmlns"))
        return tag;
    return withoutNamespace(tag, element.namespaceUri());
}

} // namespace

Image imageOf(dom::NodeKind kind)
{
    switch (kind) {
    case dom::NodeKind::Element:
        return ElementImage;
    case dom::NodeKind::ProcessingInstruction:
        return InstructionImage;
    case dom::NodeKind::Comment:
        return CommentImage;
    case dom::NodeKind::CData:
        return CDataImage;
    case dom::NodeKind::Text:
        return TextImage;
    default:
        return NoImage;
    }
}

QString startTagLabel(const QByteArray &markup)
{
    qsizetype end = markup.indexOf('>');
    if (end < 1)
        return {};
    if (markup[end - 1] == '/')
        --end;
    // Blanks after the last attribute are layout; the first ">" may stand before it, in a value.
    const dom::StartTag tag(markup);
    const qsizetype layout
        = tag.attributes().empty() ? 1 + tag.name().size() : tag.attributes().back().valueEnd + 1;
    const QString text = QString::fromUtf8(markup.sliced(1, qMin(end, layout) - 1));
    return onOneLine(text, text.size());
}

QByteArray withoutNamespace(const QByteArray &startTag, const QString &uri)
{
    if (uri.isEmpty())
        return startTag;
    const dom::StartTag tag(startTag);
    for (const auto &attribute : tag.attributes()) {
        if (declaresNamespace(tag.nameOf(attribute))
            && dom::decodeAttribute(tag.valueOf(attribute), {}) == uri)
            return tag.without(attribute);
    }
    return startTag;
}

QString label(const dom::Node &node, TagRule rule)
{
    switch (imageOf(node.kind())) {
    case ElementImage:
        return startTagLabel(tagToLabel(node, rule));
    case InstructionImage: // target and data, with what stands between them
        return dom::decodeVerbatim(node.rawContent(std::numeric_limits<qsizetype>::max()));
    case NoImage:
        return {};
    default:
        return node.data();
    }
}

QString shortLabel(const dom::Node &node, TagRule rule, qsizetype limit)
{
    const Image image = imageOf(node.kind());
    if (image == ElementImage)
        return ellipsized(onOneLine(label(node, rule), limit), limit, false);
    if (image == NoImage)
        return {};
    const qsizetype enough = 16 * limit; // bytes: a character may be written as a reference
    QByteArray raw = node.rawContent(enough + 1);
    const bool moreFollows = raw.size() > enough;
    if (moreFollows)
        raw = wholeCharacters(std::move(raw), image == TextImage);
    const QString text = image == TextImage ? dom::decodeText(raw) : dom::decodeVerbatim(raw);
    return ellipsized(onOneLine(text, limit), limit, moreFollows);
}

} // namespace tree
