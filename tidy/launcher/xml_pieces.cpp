#include "tidy/launcher/xml_pieces.h"

namespace launcher {

namespace {

struct Enclosed
{
    PieceKind kind;
    QByteArrayView opening;
    QByteArrayView closing;
};

constexpr Enclosed enclosed[] = {
    {PieceKind::Comment, "<!--", "-->"},
    {PieceKind::Section, "<![CDATA[", "]]>"},
    {PieceKind::Instruction, "<?", "?>"},
};

qsizetype behind(QByteArrayView text, QByteArrayView closing, qsizetype from)
{
    const qsizetype found = text.indexOf(closing, from);
    return found < 0 ? text.size() : found + closing.size();
}

// Comments and instructions are no place to look for quotes and brackets in; 0 where neither begins.
qsizetype endOfAside(QByteArrayView text, qsizetype at)
{
    for (const Enclosed &aside : enclosed) {
        if (aside.kind != PieceKind::Section && text.sliced(at).startsWith(aside.opening))
            return behind(text, aside.closing, at + aside.opening.size());
    }
    return 0;
}

qsizetype endOfTag(QByteArrayView text, qsizetype at)
{
    while (at < text.size()) {
        const char c = text[at++];
        if (c == '>')
            return at;
        if (c == '"' || c == '\'')
            at = behind(text, {&c, 1}, at);
    }
    return text.size();
}

Piece tagAt(QByteArrayView text, qsizetype at)
{
    if (text[at + 1] == '/')
        return {PieceKind::EndTag, at, behind(text, ">", at)};
    const qsizetype end = endOfTag(text, at);
    return {text.first(end).endsWith("/>") ? PieceKind::EmptyTag : PieceKind::StartTag, at, end};
}

} // namespace

qsizetype endOfDoctype(QByteArrayView text, qsizetype at)
{
    bool inside = false; // the internal subset
    while (at < text.size()) {
        const char c = text[at];
        if (const qsizetype end = c == '<' ? endOfAside(text, at) : 0) {
            at = end;
            continue;
        }
        ++at;
        if (c == '"' || c == '\'')
            at = behind(text, {&c, 1}, at);
        else if (c == '[' || c == ']')
            inside = c == '[';
        else if (c == '>' && !inside)
            return at;
    }
    return text.size();
}

qsizetype endOfName(QByteArrayView text, qsizetype at)
{
    while (at < text.size() && !isXmlBlank(text[at]) && !QByteArrayView("<>/=\"'").contains(text[at]))
        ++at;
    return at;
}

Piece pieceAt(QByteArrayView text, qsizetype at)
{
    const QByteArrayView rest = text.sliced(at);
    for (const Enclosed &form : enclosed) {
        if (rest.startsWith(form.opening))
            return {form.kind, at, behind(text, form.closing, at + form.opening.size())};
    }
    if (rest.startsWith("<!DOCTYPE"))
        return {PieceKind::Doctype, at, endOfDoctype(text, at)};
    if (rest.startsWith('<') && endOfName(text, at + 1 + rest.startsWith("</")) > at + 1)
        return tagAt(text, at);
    const qsizetype next = text.indexOf('<', at + 1);
    return {PieceKind::Text, at, next < 0 ? text.size() : next};
}

} // namespace launcher
