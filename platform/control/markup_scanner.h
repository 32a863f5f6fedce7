// Walks the markup of an XML or HTML text piece by piece, faulty text included, without building anything.
#pragma once

#include <QByteArrayView>
#include <optional>

namespace control {

// A stretch of bytes.
struct Span
{
    qsizetype start = 0;
    qsizetype length = 0;

    qsizetype end() const { return start + length; }
    // Whether a caret stands in it or at one of its ends.
    bool touches(qsizetype caret) const { return caret >= start && caret <= end(); }
    bool operator==(const Span &) const = default;
};

enum class MarkupKind
{
    StartTag,
    EndTag,
    EmptyTag,
    Other
};

// A tag, or a comment, CDATA section, instruction or declaration (Other, without a name).
struct Markup
{
    MarkupKind kind = MarkupKind::Other;
    // From "<" to ">"; to the end of the text, or to the next "<", when it is not closed.
    Span whole;
    Span name;

    // Whether there ought to be another tag of the same element.
    bool isOfPair() const { return kind == MarkupKind::StartTag || kind == MarkupKind::EndTag; }
};

class MarkupScanner
{
public:
    // With html, void elements count as empty tags and scripts and style sheets hold no tags.
    MarkupScanner(QByteArrayView text, bool html, qsizetype from = 0);

    // The next piece of markup; nothing at the end of the text.
    std::optional<Markup> next();

private:
    Markup readAt(qsizetype start) const;
    Markup readTag(qsizetype start, qsizetype nameStart) const;
    qsizetype endOfTag(qsizetype from) const;
    qsizetype endOfDeclaration(qsizetype from) const;
    qsizetype after(QByteArrayView ending, qsizetype from) const;
    bool startsWith(QByteArrayView what, qsizetype at) const;
    bool namesOneOf(const Span &name, std::initializer_list<const char *> names) const;
    void skipRawText(const Markup &tag);

    QByteArrayView text_;
    bool html_;
    qsizetype at_;
};

// Whether the byte can stand in the name of a tag.
bool isNameByte(char c);

} // namespace control
