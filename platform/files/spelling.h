// The bytes of what was not edited, in encodings that write one text in several ways: rare codes of
// Shift_JIS, needless escapes of ISO-2022-JP.
#pragma once

#include "platform/files/encoding_table.h"
#include "platform/files/text_encoding.h"

#include <optional>
#include <vector>

namespace files {

// Where a text still stands as it was read, and was not in the usual bytes there, it keeps its bytes.
class Respelling
{
public:
    // A stretch of the text; the encoder has to be in its first state before and after it.
    struct Piece
    {
        qsizetype at;
        qsizetype size;
        QByteArray bytes;
    };

    // How text was spelt, if it was spelt unusually at all; as the encoding's entry and block say.
    Respelling(const TextEncoding &came, const QByteArray &text, const EncodingEntry &entry);

    // The first stretch that does not begin before a place.
    std::optional<Piece> next(qsizetype from) const;

    // Whether the text has such a stretch.
    bool any() const { return !pieces_.empty(); }

    // Something unusual lies in what was edited and will be written in the usual bytes.
    bool givesUp() const { return givesUp_; }

private:
    void place(const Spelling &spelling, const std::vector<Piece> &pieces, const QByteArray &text);

    std::vector<Piece> pieces_; // in their order
    bool givesUp_ = false;
};

} // namespace files
