#include "tidy/launcher/html_tags.h"

#include "tidy/launcher/html_pieces.h"

namespace launcher {

namespace {

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
        if (empty || isVoidElement(name.toLower()))
            piece.end += nothingInside ? endTag.size() : 0;
        out += empty ? startTag(markup) : markup.toByteArray();
        if (empty && !isVoidElement(name.toLower()))
            out += endTag;
    }
    return out;
}

} // namespace launcher
