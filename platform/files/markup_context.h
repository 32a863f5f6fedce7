// Where in marked-up text a character stands: only some places can hold a character reference.
#pragma once

#include <QByteArrayView>

namespace files {

// Walks through a text once, from front to end. Faulty text is walked through as well: an unclosed piece of
// markup reaches to the text's end, a "<" that begins no markup is text.
class MarkupContext
{
public:
    // The text must outlive the object.
    explicit MarkupContext(QByteArrayView utf8);

    // Whether a character reference may stand for the character at a byte: in element content and attribute
    // values, outside entity names. Text that is no markup has no such place. Places are asked in rising
    // order.
    bool allowsReferenceAt(qsizetype at);

private:
    enum class Piece
    {
        Content,
        Tag,
        Value,
        Verbatim
    };

    void nextPiece();
    void enter(Piece piece, qsizetype end);
    void enterContent();
    void enterMarkup();
    void enterTagPart();
    qsizetype after(QByteArrayView closing, qsizetype from) const;
    qsizetype endOfDoctype() const;
    qsizetype endOfScript() const;
    bool opensMarkup(qsizetype at) const;
    bool inEntityName(qsizetype at) const;

    QByteArrayView text_;
    bool markup_;
    bool html_; // script and style hold no references
    Piece piece_ = Piece::Content;
    qsizetype end_ = 0; // of the current piece
    qsizetype tagStart_ = 0;
    bool tagDone_ = false; // the tag's ">" has been passed
};

} // namespace files
