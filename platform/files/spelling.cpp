#include "platform/files/spelling.h"

#include "platform/files/code_points.h"
#include "platform/files/narrow_codec.h"
#include "platform/files/raw_bytes.h"

#include <algorithm>

namespace files {

namespace {

using Piece = Respelling::Piece;
using Pieces = std::vector<Piece>;

constexpr qsizetype longestCode = 4; // bytes, in encodings without escapes
constexpr qsizetype neighbourhood = 16; // bytes of text by which a place is known again
constexpr qsizetype farthest = 65536; // bytes of new text that are looked through for it

// Escapes reach over characters, but not over line ends: there a line is the least that can be kept.
bool hasEscapes(const EncodingEntry &entry) { return QByteArrayView(entry.name).startsWith("ISO-2022"); }

bool isLineEnd(char c) { return c == '\n' || c == '\r'; }

// The place behind the line end of the line that a place lies in.
qsizetype nextLine(QByteArrayView text, qsizetype at)
{
    const auto *end = std::find_if(text.begin() + at, text.end(), isLineEnd);
    return end == text.end() ? text.size() : end - text.begin() + 1;
}

// The code that stands for the text at a place, in other bytes than the usual; nothing when there is none.
std::optional<Piece> unusualCode(const Spelling &spelling, qsizetype at, qsizetype byte,
                                 const char *systemName)
{
    const QByteArrayView text = QByteArrayView(spelling.text).sliced(at);
    const QByteArrayView bytes = QByteArrayView(spelling.bytes).sliced(byte);
    for (qsizetype size = 1; size <= std::min(longestCode, bytes.size()); ++size) {
        const std::optional<QByteArray> read = decodeBySystem(bytes.first(size), systemName);
        if (read && !read->isEmpty() && text.startsWith(*read))
            return Piece{at, read->size(), bytes.first(size).toByteArray()};
    }
    return std::nullopt;
}

// Goes through text and bytes side by side. Nothing when they cannot be brought together.
std::optional<Pieces> unusualCodes(const Spelling &spelling, const EncodingEntry &entry, const RawBytes &raw)
{
    const QByteArrayView text(spelling.text);
    const QByteArrayView bytes(spelling.bytes);
    const std::unique_ptr<NarrowEncoder> encoder = narrowEncoder(entry);
    Pieces pieces;
    QByteArray usual;
    qsizetype byte = 0;
    for (qsizetype at = 0; at < text.size();) {
        if (byte < bytes.size() && uchar(text[at]) < 0x80 && text[at] == bytes[byte]) {
            ++at;
            ++byte;
            continue;
        }
        const CodePoint c = codePointAt(text, at);
        if (raw.next(text.first(at + c.size), at) == at) {
            at += c.size;
            ++byte;
            continue;
        }
        usual.clear();
        encoder->encode(text.sliced(at, c.size), usual);
        encoder->finish(usual);
        if (!usual.isEmpty() && bytes.sliced(byte).startsWith(usual)) {
            at += c.size;
            byte += usual.size();
            continue;
        }
        std::optional<Piece> piece = unusualCode(spelling, at, byte, entry.systemName);
        if (!piece)
            return std::nullopt;
        at += piece->size;
        byte += piece->bytes.size();
        pieces.push_back(*std::move(piece));
    }
    return byte == bytes.size() ? std::optional(std::move(pieces)) : std::nullopt;
}

std::optional<Pieces> unusualLines(const Spelling &spelling, const EncodingEntry &entry)
{
    const QByteArrayView text(spelling.text);
    const QByteArrayView bytes(spelling.bytes);
    const std::unique_ptr<NarrowEncoder> encoder = narrowEncoder(entry);
    Pieces pieces;
    qsizetype byte = 0;
    for (qsizetype at = 0; at < text.size();) {
        const QByteArrayView line = text.sliced(at, nextLine(text, at) - at);
        const QByteArrayView code = bytes.sliced(byte, nextLine(bytes, byte) - byte);
        QByteArray usual;
        encoder->encode(line, usual);
        encoder->finish(usual);
        if (usual != code) {
            if (decodeBySystem(code, entry.systemName) != line.toByteArray())
                return std::nullopt;
            pieces.push_back({at, line.size(), code.toByteArray()});
        }
        at += line.size();
        byte += code.size();
    }
    return byte == bytes.size() ? std::optional(std::move(pieces)) : std::nullopt;
}

// What two texts begin and end with alike.
struct Common
{
    Common(QByteArrayView one, QByteArrayView other)
    {
        const qsizetype most = std::min(one.size(), other.size());
        head = std::mismatch(one.begin(), one.begin() + most, other.begin()).first - one.begin();
        while (tail < most - head && one[one.size() - 1 - tail] == other[other.size() - 1 - tail])
            ++tail;
    }

    qsizetype head = 0;
    qsizetype tail = 0;
};

// The text between the first edit and the last, where pieces are looked for in their order.
class Middle
{
public:
    Middle(QByteArrayView former, QByteArrayView text, qsizetype start)
        : former_(former), text_(text), formerAt_(start), at_(start)
    { }

    // Where a piece of the former text stands now; negative when it is not there any more.
    qsizetype find(const Piece &piece)
    {
        constexpr std::pair<qsizetype, qsizetype> sides[]
            = {{neighbourhood, neighbourhood}, {neighbourhood, 0}, {0, neighbourhood}};
        const qsizetype end = std::min(text_.size(), at_ + (piece.at - formerAt_) + farthest);
        for (const auto &[before, behind] : sides) {
            const qsizetype left = std::min(before, piece.at);
            const qsizetype right = std::min(behind, former_.size() - piece.at - piece.size);
            const QByteArrayView sought = former_.sliced(piece.at - left, left + piece.size + right);
            const qsizetype from = std::max(qsizetype(0), at_ - left);
            const qsizetype found = text_.first(end).indexOf(sought, from);
            if (found < 0)
                continue;
            formerAt_ = piece.at + piece.size;
            at_ = found + left + piece.size;
            return found + left;
        }
        return -1;
    }

private:
    QByteArrayView former_;
    QByteArrayView text_;
    qsizetype formerAt_; // behind the last piece that was found, in either text
    qsizetype at_;
};

} // namespace

Respelling::Respelling(const TextEncoding &came, const QByteArray &text, const EncodingEntry &entry)
{
    if (came.spelling.text.isEmpty())
        return;
    std::optional<Pieces> pieces;
    if (entry.codec == Codec::System) {
        pieces = hasEscapes(entry) ? unusualLines(came.spelling, entry)
                                   : unusualCodes(came.spelling, entry, RawBytes(came.block));
    }
    givesUp_ = !pieces;
    if (pieces)
        place(came.spelling, *pieces, text);
}

// Before and behind all edits a piece stands where it stood; between them it is known by what stands around
// it.
void Respelling::place(const Spelling &spelling, const std::vector<Piece> &pieces, const QByteArray &text)
{
    const QByteArrayView former(spelling.text);
    const Common common(former, text);
    const qsizetype shift = text.size() - former.size();
    Middle middle(former, text, common.head);
    for (Piece piece : pieces) {
        if (piece.at >= former.size() - common.tail) {
            piece.at += shift;
        } else if (piece.at + piece.size > common.head) {
            const qsizetype found = middle.find(piece);
            givesUp_ |= found < 0;
            if (found < 0)
                continue;
            piece.at = found;
        }
        if (pieces_.empty() || piece.at >= pieces_.back().at + pieces_.back().size)
            pieces_.push_back(std::move(piece));
    }
}

std::optional<Piece> Respelling::next(qsizetype from) const
{
    const auto found = std::lower_bound(pieces_.begin(), pieces_.end(), from,
                                        [](const Piece &piece, qsizetype place) { return piece.at < place; });
    return found == pieces_.end() ? std::nullopt : std::optional(*found);
}

} // namespace files
