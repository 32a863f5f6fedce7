// The pieces that marked-up text is made of, one behind the other.
#pragma once

#include <QByteArrayView>

namespace launcher {

enum class PieceKind
{
    Text,
    StartTag,
    EmptyTag,
    EndTag,
    Comment,
    Section, // CDATA
    Instruction,
    Doctype
};

struct Piece
{
    PieceKind kind;
    qsizetype begin;
    qsizetype end;

    qsizetype size() const { return end - begin; }
};

// The piece that begins at a byte before the text's end. What is not closed reaches to the end; a "<" that
// begins no markup is text.
Piece pieceAt(QByteArrayView text, qsizetype at);

// The place behind a document type that begins at a byte, its internal subset included.
qsizetype endOfDoctype(QByteArrayView text, qsizetype at);

// The name in a tag, from its first byte; the place behind it.
qsizetype endOfName(QByteArrayView text, qsizetype at);

inline bool isXmlBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

} // namespace launcher
