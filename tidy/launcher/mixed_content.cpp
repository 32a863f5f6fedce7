#include "tidy/launcher/mixed_content.h"

#include "tidy/launcher/xml_pieces.h"

#include <algorithm>
#include <iterator>

namespace launcher {

namespace {

struct OpenElement
{
    qsizetype content; // where it begins
    bool text = false; // not blanks alone
    bool elements = false;
    bool anything = false;
    bool preserved = false;
};

constexpr const char *preservedNames[] = {"xml:space", "xsl:text", "pre", "xmp", "listing", "plaintext"};

bool preservesSpace(QByteArrayView tag)
{
    if (isNameOfPreserved(tag.first(endOfName(tag, 1)).sliced(1)))
        return true;
    const qsizetype name = tag.indexOf("xml:space");
    return name >= 0 && tag.indexOf("preserve", name) >= 0;
}

// Blanks mean nothing only where elements stand among them and no text does.
bool isLayout(const OpenElement &element)
{
    return !element.anything || (element.elements && !element.text && !element.preserved);
}

void add(OpenElement &parent, const Piece &piece, QByteArrayView text)
{
    parent.anything = true;
    if (piece.kind == PieceKind::StartTag || piece.kind == PieceKind::EmptyTag)
        parent.elements = true;
    else if (piece.kind == PieceKind::Section)
        parent.text = true;
    else if (piece.kind == PieceKind::Text)
        parent.text = parent.text || !std::all_of(text.begin(), text.end(), isXmlBlank);
}

} // namespace

bool isNameOfPreserved(QByteArrayView name)
{
    const auto is = [name](const char *known) { return name.compare(known, Qt::CaseInsensitive) == 0; };
    return std::any_of(std::begin(preservedNames), std::end(preservedNames), is);
}

std::vector<Range> contentsNotToLayOut(QByteArrayView xml)
{
    std::vector<Range> found;
    std::vector<OpenElement> open;
    for (Piece piece{}; piece.end < xml.size();) {
        piece = pieceAt(xml, piece.end);
        const QByteArrayView text = xml.sliced(piece.begin, piece.size());
        if (piece.kind == PieceKind::EndTag && !open.empty()) {
            const Range content{open.back().content, piece.begin};
            if (!isLayout(open.back())) {
                while (!found.empty() && found.back().begin > content.begin)
                    found.pop_back();
                found.push_back(content);
            }
            open.pop_back();
            continue;
        }
        if (!open.empty())
            add(open.back(), piece, text);
        if (piece.kind == PieceKind::StartTag)
            open.push_back({.content = piece.end, .preserved = preservesSpace(text)});
    }
    return found;
}

} // namespace launcher
