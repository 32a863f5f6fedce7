// Tells what each byte of an XML or HTML text is, faulty text included. It can stop at the start of any line,
// or at any place it came to by itself, and go on from there another time with the state alone.
#pragma once

#include "platform/control/code_state.h"

#include <QByteArrayView>

namespace control {

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
    SubsetSingle,
    RawText, // of an element of a page that holds no tags
    RawReference
};

// Elements of a page that are something else than elements of XML.
enum class PageElement : quint8
{
    Usual,
    Unread, // its name has yet to be read
    Void, // has no content and no end tag
    Script,
    Style,
    Textarea,
    Title
};

struct MarkupState
{
    MarkupMode mode = MarkupMode::Text;
    // Elements begun and not ended; below zero when more were ended. A start tag counts from its "<" on, but
    // not when another "<" comes before its ">".
    // Braces that are open in a script or style sheet count like elements.
    int depth = 0;
    bool html = false;
    PageElement element = PageElement::Usual; // whose start tag or raw text is being read
    CodeState code = {};

    bool operator==(const MarkupState &) const = default;
};

class MarkupStyler
{
public:
    // Begins at the text's first byte. Where styles are wanted there is room for one for each byte.
    MarkupStyler(QByteArrayView text, const MarkupState &state, char *styles = nullptr);

    // Goes on to that place, or some bytes less, up to 32, where the next piece begins that it has not seen
    // all of. With last, nothing follows. Returns how far it came.
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
    void readElementName();
    void endStartTag();
    void findRawEnd();
    void readRawText();
    void readRawReferences();
    void readCode(qsizetype end);
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
    qsizetype rawEnd_ = -1; // how far raw text goes; -1 when that is not known
    bool rawEnds_ = false; // with its end tag, and not with what is to be read
    int lowest_;
};

} // namespace control
