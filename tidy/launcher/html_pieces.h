// The pieces of HTML as browsers see them, and which elements are what there.
#pragma once

#include "tidy/launcher/xml_pieces.h"

#include <QByteArray>

namespace launcher {

// As pieceAt(), but for HTML: quotes count only where a value begins, code of a server in a tag is no part of
// its markup, and declarations other than the document type are comments.
Piece htmlPieceAt(QByteArrayView text, qsizetype at);

// The place behind a server's code that begins at a byte ("<?", "<%"); that byte itself where none begins.
qsizetype endOfServerCode(QByteArrayView text, qsizetype at);

// The name in a start, empty or end tag, in lower case.
QByteArray tagName(QByteArrayView tag);

// How an element stands among the text around it; by its name in lower case.
bool isVoidElement(const QByteArray &name); // has neither content nor end tag
bool isBlockElement(const QByteArray &name); // parts the text before it from that behind it
bool isWordElement(const QByteArray &name); // takes a place in a line, as a word does
bool hasRawText(const QByteArray &name); // its content is no markup
bool hasPlainText(const QByteArray &name); // its content has references, but no tags
bool keepsBlanks(const QByteArray &name); // blanks in it are shown as they are

// The place of the end tag that ends raw or plain text; the text's end without one.
qsizetype endOfRawText(QByteArrayView text, qsizetype from, const QByteArray &name);

} // namespace launcher
