#include "tidy/launcher/open_asides.h"

#include "tidy/launcher/xml_pieces.h"

#include <algorithm>

namespace launcher {

namespace {

struct Aside
{
    PieceKind kind;
    const char *closing;
    const char *name;
};

constexpr Aside asides[] = {
    {PieceKind::Section, "]]>", "CDATA section"},
    {PieceKind::Comment, "-->", "comment"},
    {PieceKind::Instruction, "?>", "processing instruction"},
};

QByteArray placeIn(QByteArrayView text, qsizetype at)
{
    const QByteArrayView before = text.first(at);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const qsizetype begin = before.lastIndexOf('\n') + 1;
    const qsizetype column = QString::fromUtf8(before.sliced(begin)).toUcs4().size() + 1;
    return "line " + QByteArray::number(qint64(line)) + " column " + QByteArray::number(column);
}

} // namespace

QByteArray closeAsides(QByteArray &xml)
{
    Piece last{};
    while (last.end < xml.size())
        last = pieceAt(xml, last.end);
    const QByteArrayView text = QByteArrayView(xml).sliced(last.begin, last.size());
    for (const Aside &aside : asides) {
        if (last.kind != aside.kind || text.endsWith(aside.closing))
            continue;
        const QByteArray place = placeIn(xml, last.begin);
        while (!xml.isEmpty() && isXmlBlank(xml.back()))
            xml.chop(1);
        xml += aside.closing;
        return place + " - Warning: missing " + aside.closing + " of the " + aside.name
            + ", which takes all the rest of the text\n";
    }
    return {};
}

} // namespace launcher
