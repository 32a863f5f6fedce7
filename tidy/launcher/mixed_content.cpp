#include "tidy/launcher/mixed_content.h"

#include "tidy/launcher/xml_pieces.h"

#include <algorithm>
#include <iterator>

namespace launcher {

namespace {

struct OpenElement
{
    qsizetype content; // where it begins
    int texts = 0;
    int sections = 0;
    int others = 0;
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

bool isMixed(const OpenElement &element, bool sections)
{
    const int texts = element.texts + element.sections;
    return element.preserved || (texts > 0 && texts + element.others > 1)
        || (sections && element.sections > 0);
}

void count(OpenElement &parent, const Piece &piece, QByteArrayView text)
{
    if (piece.kind == PieceKind::Section)
        ++parent.sections;
    else if (piece.kind != PieceKind::Text)
        ++parent.others;
    else if (!std::all_of(text.begin(), text.end(), isXmlBlank))
        ++parent.texts;
}

} // namespace

bool isNameOfPreserved(QByteArrayView name)
{
    const auto is = [name](const char *known) { return name.compare(known, Qt::CaseInsensitive) == 0; };
    return std::any_of(std::begin(preservedNames), std::end(preservedNames), is);
}

std::vector<Range> contentsNotToLayOut(QByteArrayView xml, bool sections)
{
    std::vector<Range> found;
    std::vector<OpenElement> open;
    for (Piece piece{}; piece.end < xml.size();) {
        piece = pieceAt(xml, piece.end);
        const QByteArrayView text = xml.sliced(piece.begin, piece.size());
        if (piece.kind == PieceKind::EndTag && !open.empty()) {
            const Range content{open.back().content, piece.begin};
            if (isMixed(open.back(), sections) && content.end > content.begin) {
                while (!found.empty() && found.back().begin > content.begin)
                    found.pop_back();
                found.push_back(content);
            }
            open.pop_back();
            continue;
        }
        if (!open.empty())
            count(open.back(), piece, text);
        if (piece.kind == PieceKind::StartTag)
            open.push_back({.content = piece.end, .preserved = preservesSpace(text)});
    }
    return found;
}

} // namespace launcher
