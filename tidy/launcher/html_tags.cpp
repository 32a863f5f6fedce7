#include "tidy/launcher/html_tags.h"

#include "tidy/launcher/xml_pieces.h"

#include <algorithm>
#include <iterator>

namespace launcher {

namespace {

constexpr const char *voidElements[]
    = {"area", "base",  "basefont", "bgsound", "br",   "col",  "command", "embed",  "frame", "hr", "image",
       "img",  "input", "isindex",  "keygen",  "link", "meta", "param",   "source", "track", "wbr"};

bool isVoid(const QByteArray &name)
{
    const QByteArray lower = name.toLower();
    return std::find(std::begin(voidElements), std::end(voidElements), lower) != std::end(voidElements);
}

QByteArray startTag(QByteArrayView emptyTag)
{
    QByteArray tag = emptyTag.chopped(2).toByteArray();
    while (isXmlBlank(tag.back()))
        tag.chop(1);
    return tag + '>';
}

} // namespace

QByteArray withHtmlTags(const QByteArray &xml)
{
    const QByteArrayView text = xml;
    QByteArray out;
    out.reserve(xml.size());
    for (Piece piece{}; piece.end < xml.size();) {
        piece = pieceAt(text, piece.end);
        const QByteArrayView markup = text.sliced(piece.begin, piece.size());
        const bool empty = piece.kind == PieceKind::EmptyTag;
        if (!empty && piece.kind != PieceKind::StartTag) {
            out += markup;
            continue;
        }
        const QByteArray name = markup.first(endOfName(markup, 1)).sliced(1).toByteArray();
        const QByteArray endTag = "</" + name + '>';
        const bool nothingInside = text.sliced(piece.end).startsWith(endTag);
        if (empty || isVoid(name))
            piece.end += nothingInside ? endTag.size() : 0;
        out += empty ? startTag(markup) : markup.toByteArray();
        if (empty && !isVoid(name))
            out += endTag;
    }
    return out;
}

} // namespace launcher
