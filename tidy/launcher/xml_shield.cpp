#include "tidy/launcher/xml_shield.h"

#include "tidy/launcher/mixed_content.h"

#include <algorithm>

namespace launcher {

namespace {

constexpr QByteArrayView doctypeMark = "<!DOCTYPE";
constexpr QByteArrayView sectionMark = "<![CDATA[";

bool isAscii(QByteArrayView text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return (uchar(c) & 0x80) == 0; });
}

void trimEnd(QByteArray &text)
{
    qsizetype end = text.size();
    while (end > 0 && isXmlBlank(text[end - 1]))
        --end;
    text.truncate(end);
}

// As Tidy has it, which sees but a part of the text.
QByteArray withPlainTypography(QByteArray text)
{
    static constexpr std::pair<const char *, const char *> plain[] = {
        {"\u2013", "-"},  {"\u2014", "-"},  {"\u2018", "'"},  {"\u2019", "'"}, {"\u201A", "'"},
        {"\u201C", "\""}, {"\u201D", "\""}, {"\u201E", "\""}, {"\u00A0", " "},
    };
    for (const auto &[character, stands] : plain)
        text.replace(character, stands);
    return text;
}

QByteArrayList entitiesDeclaredIn(const QByteArray &doctype)
{
    constexpr QByteArrayView declaration = "<!ENTITY";
    QByteArrayList names;
    for (qsizetype at = 0; (at = doctype.indexOf(declaration, at)) >= 0;) {
        at += declaration.size();
        while (at < doctype.size() && isXmlBlank(doctype[at]))
            ++at;
        const qsizetype end = endOfName(doctype, at);
        names << doctype.sliced(at, end - at);
    }
    return names;
}

} // namespace

XmlShield::XmlShield(const QByteArray &xml, const Shielding &shielding) : shielding_(shielding), words_(xml)
{
    shielded_.reserve(xml.size());
    std::vector<Range> kept;
    if (shielding.wellFormed)
        kept = contentsNotToLayOut(xml);
    auto next = kept.begin();
    const QByteArrayView text = xml;
    for (qsizetype at = 0; at < xml.size();) {
        if (next != kept.end() && at == next->begin) {
            addContent(text.sliced(at, next->end - at));
            at = next++->end;
            continue;
        }
        const Piece piece = pieceAt(xml, at);
        addPiece(piece.kind, text.sliced(at, piece.size()));
        at = piece.end;
    }
}

QByteArray XmlShield::restored(const QByteArray &text, const QByteArray &lineEnd) const
{
    QByteArray out;
    out.reserve(text.size());
    const QByteArrayView all = text;
    qsizetype at = 0;
    while (const auto found = words_.next(text, at, qsizetype(originals_.size()))) {
        const Original &original = originals_[size_t(found->number)];
        out += all.sliced(at, found->begin - at);
        at = found->end;
        if (original.content) {
            trimEnd(out);
            while (at < text.size() && isXmlBlank(text[at]))
                ++at;
        }
        out += withLineEnds(original.text, lineEnd);
    }
    return out + text.sliced(at);
}

QByteArray XmlShield::standIn(const QByteArray &original, bool content)
{
    QByteArray &made = standIns_[content ? '>' + original : original];
    if (made.isEmpty()) {
        made = words_.word(qsizetype(originals_.size()));
        originals_.push_back({original, content});
    }
    return made;
}

void XmlShield::addPiece(PieceKind kind, QByteArrayView piece)
{
    switch (kind) {
    case PieceKind::Text:
        return addText(shielding_.wellFormed ? piece.toByteArray()
                                             : withPlainReferences(piece.toByteArray()));
    case PieceKind::StartTag:
    case PieceKind::EmptyTag:
    case PieceKind::EndTag:
        return addTag(piece);
    case PieceKind::Doctype:
        return addDoctype(piece);
    case PieceKind::Comment:
        return addAside("<!--", piece, "-->");
    case PieceKind::Instruction:
        return addAside("<?", piece, "?>");
    default:
        shielded_ += piece;
    }
}

// Blank lines behind a word are nothing to Tidy.
void XmlShield::addContent(QByteArrayView content)
{
    shielded_ += standIn(treated(content), true) + lineEndsOf(content);
}

// Tidy indents the lines of comments and respells hyphens; its declaration it writes itself. What stands
// behind the name of an instruction is enough to keep.
void XmlShield::addAside(QByteArrayView opening, QByteArrayView aside, QByteArrayView closing)
{
    const bool whole = aside.endsWith(closing) && aside.size() > opening.size() + closing.size();
    const bool instruction = opening == "<?";
    const qsizetype begin = instruction ? endOfName(aside, opening.size()) : opening.size();
    const QByteArrayView inside = aside.sliced(std::min(begin, aside.size()));
    const bool declaration = aside.first(std::min(begin, aside.size())) == "<?xml";
    if (!shielding_.wellFormed || !whole || declaration || inside.size() <= closing.size()) {
        shielded_ += aside;
        return;
    }
    shielded_ += aside.first(begin).toByteArray() + (instruction ? " " : "");
    shielded_ += standIn(inside.chopped(closing.size()).toByteArray(), instruction);
    shielded_ += closing.toByteArray() + lineEndsOf(inside);
}

QByteArray XmlShield::treated(QByteArrayView content) const
{
    if (!shielding_.escapesSections && !shielding_.dropsComments && !shielding_.plainTypography)
        return content.toByteArray();
    QByteArray out;
    for (Piece piece{}; piece.end < content.size();) {
        piece = pieceAt(content, piece.end);
        const QByteArray text = content.sliced(piece.begin, piece.size()).toByteArray();
        const bool dropped = piece.kind == PieceKind::Comment && shielding_.dropsComments;
        if (piece.kind == PieceKind::Section && shielding_.escapesSections)
            out += escaped(text.sliced(sectionMark.size()).chopped(3));
        else if (piece.kind == PieceKind::Text && shielding_.plainTypography)
            out += withPlainTypography(text);
        else if (!dropped)
            out += text;
    }
    return out;
}

void XmlShield::addDoctype(QByteArrayView doctype)
{
    declared_ += entitiesDeclaredIn(doctype.toByteArray());
    if (!doctype.endsWith('>')) {
        shielded_ += doctype;
        return;
    }
    const QByteArrayView inside = doctype.sliced(doctypeMark.size()).chopped(1);
    shielded_ += doctypeMark.toByteArray() + ' ' + standIn(inside.toByteArray().trimmed())
        + lineEndsOf(doctype) + '>';
}

void XmlShield::addTag(QByteArrayView tag)
{
    qsizetype at = 0;
    while (at < tag.size()) {
        const char c = tag[at];
        if (c == '"' || c == '\'') {
            const qsizetype close = tag.indexOf(c, at + 1);
            if (close < 0)
                break;
            addValue(tag.sliced(at + 1, close - at - 1), c);
            at = close + 1;
            continue;
        }
        const qsizetype end = endOfName(tag, at);
        addName(tag.sliced(at, end - at));
        at = end;
        if (at < tag.size() && tag[at] != '"' && tag[at] != '\'')
            shielded_ += tag[at++];
    }
    shielded_ += tag.sliced(at);
}

void XmlShield::addName(QByteArrayView name)
{
    const bool preserved = shielding_.wellFormed && isNameOfPreserved(name);
    if (preserved || !isAscii(name))
        shielded_ += standIn(name.toByteArray());
    else
        shielded_ += name;
}

// Tidy makes blanks of tabs, as many as they are wide. A value's line ends may as well stand behind it.
void XmlShield::addValue(QByteArrayView value, char quote)
{
    shielded_ += quote;
    if (shielding_.wellFormed && !value.isEmpty())
        shielded_ += standIn(value.toByteArray()) + quote + lineEndsOf(value);
    else {
        addText(value);
        shielded_ += quote;
    }
}

void XmlShield::addText(QByteArrayView text)
{
    qsizetype at = 0;
    for (qsizetype found = 0; (found = text.indexOf('&', at)) >= 0;) {
        const qsizetype end = text.indexOf(';', found);
        if (end < 0)
            break;
        shielded_ += text.sliced(at, found - at);
        addReference(text.sliced(found, end + 1 - found));
        at = end + 1;
    }
    shielded_ += text.sliced(at);
}

// In a text that is not well-formed only a reference to something declared is one.
void XmlShield::addReference(QByteArrayView reference)
{
    static constexpr QByteArrayView predefined[] = {"&lt;", "&gt;", "&amp;", "&quot;", "&apos;"};
    const bool known
        = std::find(std::begin(predefined), std::end(predefined), reference) != std::end(predefined);
    const QByteArray name = reference.sliced(1).chopped(1).toByteArray();
    if (!known && (shielding_.wellFormed || declared_.contains(name)))
        shielded_ += standIn(reference.toByteArray());
    else
        shielded_ += reference;
}

} // namespace launcher
