// Tells what each byte of an XML text is, faulty text included. It can stop at the start of any line, or at
// any place it came to by itself, and go on from there another time with the state alone.
#pragma once

#include <QByteArrayView>

namespace control {

// The styles it gives. They are the hypertext lexer's numbers where that one has them.
enum MarkupStyle : char
{
    TextMarkup = 0,
    NameMarkup = 1, // of an element
    AttributeMarkup = 3,
    DoubleQuotedMarkup = 6,
    SingleQuotedMarkup = 7,
    TagMarkup = 8, // brackets and blanks of a tag
    CommentMarkup = 9,
    ReferenceMarkup = 10,
    InstructionMarkup = 12,
    SectionMarkup = 17, // CDATA
    BareValueMarkup = 19,
    DeclarationMarkup = 21,
    DeclarationStringMarkup = 24,
    EqualsMarkup = 53
};

enum class MarkupMode : quint8
{
    Text,
    Reference,
    Comment,
    Section,
    Instruction,
    StartName,
    StartTag, // between its name and attributes
    Attribute,
    Value, // behind "="
    BareValue,
    DoubleQuoted,
    SingleQuoted,
    DoubleReference, // within a value
    SingleReference,
    EndName,
    EndTag,
    Declaration,
    DeclarationDouble,
    DeclarationSingle,
    Subset, // between the brackets of a document type
    SubsetReference,
    SubsetComment,
    SubsetInstruction,
    SubsetDeclaration,
    SubsetDouble,
    SubsetSingle
};

struct MarkupState
{
    MarkupMode mode = MarkupMode::Text;
    // Elements begun and not ended; below zero when more were ended. A start tag counts from its "<" on, but
    // not when another "<" comes before its ">".
    int depth = 0;

    bool operator==(const MarkupState &) const = default;
};

class MarkupStyler
{
public:
    // Begins at the text's first byte. Where styles are wanted there is room for one for each byte.
    MarkupStyler(QByteArrayView text, const MarkupState &state, char *styles = nullptr);

    // Goes on to that place, or up to eight bytes less where the next piece begins that it has not seen all
    // of. With last, nothing follows. Returns how far it came.
    qsizetype runTo(qsizetype end, bool last);

    const MarkupState &state() const { return state_; }
    // The least depth so far.
    int lowestDepth() const { return lowest_; }

private:
    struct Opening;

    void step();
    void readText();
    void readOpening();
    void readReference(MarkupMode after);
    void readUntil(QByteArrayView ending, MarkupStyle style, MarkupMode after);
    void readName(MarkupStyle style, MarkupMode after);
    void readTag();
    void readSlash();
    void readBareValue();
    void readQuoted(char quote, MarkupStyle style, MarkupMode reference);
    void readEndTag();
    void readDeclaration();
    void readDeclarationString(char quote, MarkupMode after);
    void readSubset();
    void readSubsetDeclaration();
    bool open(const Opening &opening, MarkupStyle style);
    bool isCutOff(QByteArrayView opening) const;
    QByteArrayView rest() const { return text_.sliced(at_, end_ - at_); }
    void take(qsizetype to, MarkupStyle style);
    void leave(int depthChange, MarkupMode mode);

    QByteArrayView text_;
    MarkupState state_;
    char *styles_;
    qsizetype at_ = 0;
    qsizetype end_ = 0;
    bool last_ = false;
    int lowest_;
};

} // namespace control
