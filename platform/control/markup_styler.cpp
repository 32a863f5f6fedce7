#include "platform/control/markup_styler.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace control {

namespace {

using Mode = MarkupMode;

constexpr std::array<bool, 256> referenceBytes = [] {
    std::array<bool, 256> bytes{};
    for (int c = 0; c < 256; ++c)
        bytes[size_t(c)] = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
            || c == '#' || c == '.' || c == '_' || c == ':' || c == '-' || c >= 0x80;
    return bytes;
}();

// By byte and here, since whole texts are read.
constexpr std::array<bool, 256> tagNameBytes = [] {
    std::array<bool, 256> bytes{};
    std::fill(bytes.begin() + ' ' + 1, bytes.end(), true);
    for (const char c : {'<', '>', '/', '=', '"', '\'', '&', '?', '!'})
        bytes[size_t(c)] = false;
    return bytes;
}();

bool isTagNameByte(char c) { return tagNameBytes[static_cast<unsigned char>(c)]; }

bool isReferenceByte(char c) { return referenceBytes[static_cast<unsigned char>(c)]; }

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

} // namespace

struct MarkupStyler::Opening
{
    QByteArrayView text;
    MarkupMode mode;
};

MarkupStyler::MarkupStyler(QByteArrayView text, const MarkupState &state, char *styles)
    : text_(text), state_(state), styles_(styles), lowest_(state.depth)
{ }

qsizetype MarkupStyler::runTo(qsizetype end, bool last)
{
    end_ = end;
    last_ = last;
    rawEnd_ = -1;
    while (at_ < end_) {
        const qsizetype before = at_;
        const Mode mode = state_.mode;
        step();
        if (at_ == before && state_.mode == mode)
            break;
    }
    return at_;
}

// Every branch takes bytes or changes the mode, but for pieces that are cut off.
void MarkupStyler::step()
{
    switch (state_.mode) {
    case Mode::Text:
        return readText();
    case Mode::Reference:
        return readReference(Mode::Text);
    case Mode::Comment:
        return readUntil("-->", CommentMarkup, Mode::Text);
    case Mode::Section:
        return readUntil("]]>", SectionMarkup, Mode::Text);
    case Mode::Instruction:
        return readUntil(state_.html ? ">" : "?>", InstructionMarkup, Mode::Text);
    case Mode::StartName:
        return readElementName();
    case Mode::StartTag:
    case Mode::Value:
        return readTag();
    case Mode::Attribute:
        return readName(AttributeMarkup, Mode::StartTag);
    case Mode::BareValue:
        return readBareValue();
    case Mode::DoubleQuoted:
        return readQuoted('"', DoubleQuotedMarkup, Mode::DoubleReference);
    case Mode::SingleQuoted:
        return readQuoted('\'', SingleQuotedMarkup, Mode::SingleReference);
    case Mode::DoubleReference:
        return readReference(Mode::DoubleQuoted);
    case Mode::SingleReference:
        return readReference(Mode::SingleQuoted);
    case Mode::EndName:
        return readName(NameMarkup, Mode::EndTag);
    case Mode::EndTag:
        return readEndTag();
    case Mode::Declaration:
        return readDeclaration();
    case Mode::DeclarationDouble:
        return readDeclarationString('"', Mode::Declaration);
    case Mode::DeclarationSingle:
        return readDeclarationString('\'', Mode::Declaration);
    case Mode::Subset:
        return readSubset();
    case Mode::SubsetReference:
        return readReference(Mode::Subset);
    case Mode::SubsetComment:
        return readUntil("-->", CommentMarkup, Mode::Subset);
    case Mode::SubsetInstruction:
        return readUntil("?>", InstructionMarkup, Mode::Subset);
    case Mode::SubsetDeclaration:
        return readSubsetDeclaration();
    case Mode::SubsetDouble:
        return readDeclarationString('"', Mode::SubsetDeclaration);
    case Mode::SubsetSingle:
        return readDeclarationString('\'', Mode::SubsetDeclaration);
    case Mode::RawText:
        return readRawText();
    case Mode::RawReference:
        return readReference(Mode::RawText);
    }
}

void MarkupStyler::take(qsizetype to, MarkupStyle style)
{
    if (styles_ != nullptr)
        std::memset(styles_ + at_, style, size_t(to - at_));
    at_ = to;
}

void MarkupStyler::leave(int depthChange, MarkupMode mode)
{
    state_.depth += depthChange;
    state_.mode = mode;
    lowest_ = std::min(lowest_, state_.depth);
}

void MarkupStyler::readText()
{
    if (text_[at_] == '<')
        return readOpening();
    if (text_[at_] == '&') {
        take(at_ + 1, ReferenceMarkup);
        state_.mode = Mode::Reference;
        return;
    }
    qsizetype length = rest().indexOf('<');
    if (length < 0)
        length = end_ - at_;
    const qsizetype reference = text_.sliced(at_, length).indexOf('&');
    take(at_ + (reference < 0 ? length : reference), TextMarkup);
}

// Whether what is there could yet become the opening.
bool MarkupStyler::isCutOff(QByteArrayView opening) const
{
    return !last_ && end_ - at_ < opening.size() && opening.startsWith(rest());
}

bool MarkupStyler::open(const Opening &opening, MarkupStyle style)
{
    if (!rest().startsWith(opening.text))
        return false;
    take(at_ + opening.text.size(), style);
    state_.mode = opening.mode;
    return true;
}

void MarkupStyler::readOpening()
{
    // Most are tags.
    if (end_ - at_ > 1 && isTagNameByte(text_[at_ + 1]) && (!state_.html || isLetter(text_[at_ + 1]))) {
        take(at_ + 1, TagMarkup);
        state_.element = state_.html ? PageElement::Unread : PageElement::Usual;
        return leave(1, Mode::StartName);
    }
    if (end_ - at_ > 1 && text_[at_ + 1] == '/') {
        take(at_ + 2, TagMarkup);
        return leave(-1, Mode::EndName);
    }
    static constexpr QByteArrayView longest[] = {"<!--", "<![CDATA["};
    if (std::any_of(std::begin(longest), std::end(longest), [this](auto text) { return isCutOff(text); }))
        return;
    if (open({"<!--", Mode::Comment}, CommentMarkup) || open({"<![CDATA[", Mode::Section}, SectionMarkup)
        || open({"<?", Mode::Instruction}, InstructionMarkup)
        || open({"<!", Mode::Declaration}, DeclarationMarkup))
        return;
    take(at_ + 1, TextMarkup);
}

// Up to its ";", or to what cannot be in a reference.
void MarkupStyler::readReference(MarkupMode after)
{
    qsizetype to = at_;
    while (to < end_ && isReferenceByte(text_[to]))
        ++to;
    const bool more = to == end_;
    if (!more && text_[to] == ';')
        ++to;
    take(to, ReferenceMarkup);
    if (!more)
        state_.mode = after;
}

void MarkupStyler::readUntil(QByteArrayView ending, MarkupStyle style, MarkupMode after)
{
    const qsizetype found = rest().indexOf(ending);
    if (found >= 0) {
        take(at_ + found + ending.size(), style);
        state_.mode = after;
        return;
    }
    // A beginning of the ending stays for the next time.
    qsizetype kept = last_ ? 0 : std::min(end_ - at_, ending.size() - 1);
    while (kept > 0 && !ending.startsWith(rest().last(kept)))
        --kept;
    take(end_ - kept, style);
}

void MarkupStyler::readName(MarkupStyle style, MarkupMode after)
{
    qsizetype to = at_;
    while (to < end_ && isTagNameByte(text_[to]))
        ++to;
    take(to, style);
    if (to < end_)
        state_.mode = after;
}

// XML allows no "<" in a tag, not even quoted, so one there means that the tag was never closed.
void MarkupStyler::readTag()
{
    const char c = text_[at_];
    const bool value = state_.mode == Mode::Value;
    if (c == '<')
        return leave(-1, Mode::Text);
    if (c == '/')
        return readSlash();
    if (isTagNameByte(c)) {
        state_.mode = value ? Mode::BareValue : Mode::Attribute;
    } else if (c == '>') {
        take(at_ + 1, TagMarkup);
        endStartTag();
    } else if (c == '"' || c == '\'') {
        take(at_ + 1, c == '"' ? DoubleQuotedMarkup : SingleQuotedMarkup);
        state_.mode = c == '"' ? Mode::DoubleQuoted : Mode::SingleQuoted;
    } else if (c == '=') {
        take(at_ + 1, EqualsMarkup);
        state_.mode = Mode::Value;
    } else {
        take(at_ + 1, TagMarkup);
        if (!isBlank(c))
            state_.mode = Mode::StartTag;
    }
}

void MarkupStyler::readSlash()
{
    if (isCutOff("/>"))
        return;
    if (open({"/>", Mode::Text}, TagMarkup))
        return leave(-1, Mode::Text);
    take(at_ + 1, TagMarkup);
    state_.mode = Mode::StartTag;
}

void MarkupStyler::readBareValue()
{
    qsizetype to = at_;
    while (to < end_ && isTagNameByte(text_[to]))
        ++to;
    take(to, BareValueMarkup);
    if (to < end_)
        state_.mode = Mode::StartTag;
}

void MarkupStyler::readQuoted(char quote, MarkupStyle style, MarkupMode reference)
{
    qsizetype to = at_;
    const bool mayHoldTags = state_.html;
    while (to < end_ && text_[to] != quote && (mayHoldTags || text_[to] != '<') && text_[to] != '&')
        ++to;
    take(to, style);
    if (at_ == end_)
        return;
    if (text_[at_] == '<')
        return leave(-1, Mode::Text);
    take(at_ + 1, text_[at_] == quote ? style : ReferenceMarkup);
    state_.mode = text_[at_ - 1] == quote ? Mode::StartTag : reference;
}

void MarkupStyler::readEndTag()
{
    if (text_[at_] == '<')
        return leave(1, Mode::Text);
    const bool closed = text_[at_] == '>';
    take(at_ + 1, TagMarkup);
    if (closed)
        state_.mode = Mode::Text;
}

// A tag in it means that it was never closed.
void MarkupStyler::readDeclaration()
{
    const char c = text_[at_];
    if (c == '<')
        return leave(0, Mode::Text);
    take(at_ + 1, c == '"' || c == '\'' ? DeclarationStringMarkup : DeclarationMarkup);
    switch (c) {
    case '"':
        state_.mode = Mode::DeclarationDouble;
        break;
    case '\'':
        state_.mode = Mode::DeclarationSingle;
        break;
    case '[':
        state_.mode = Mode::Subset;
        break;
    case '>':
        state_.mode = Mode::Text;
        break;
    default:
        break;
    }
}

void MarkupStyler::readDeclarationString(char quote, MarkupMode after)
{
    const qsizetype length = rest().indexOf(quote);
    take(length < 0 ? end_ : at_ + length + 1, DeclarationStringMarkup);
    if (length >= 0)
        state_.mode = after;
}

// A tag among the declarations means that the brackets were never closed.
void MarkupStyler::readSubset()
{
    const char c = text_[at_];
    if (c != '<') {
        take(at_ + 1, c == '%' ? ReferenceMarkup : DeclarationMarkup);
        if (c == '%' || c == ']')
            state_.mode = c == '%' ? Mode::SubsetReference : Mode::Declaration;
        return;
    }
    if (isCutOff("<!--"))
        return;
    if (open({"<!--", Mode::SubsetComment}, CommentMarkup)
        || open({"<?", Mode::SubsetInstruction}, InstructionMarkup)
        || open({"<!", Mode::SubsetDeclaration}, DeclarationMarkup))
        return;
    if (end_ - at_ > 1 && (isTagNameByte(text_[at_ + 1]) || text_[at_ + 1] == '/'))
        return leave(0, Mode::Text);
    take(at_ + 1, DeclarationMarkup);
}

void MarkupStyler::readSubsetDeclaration()
{
    const char c = text_[at_];
    if (c == '<')
        return leave(0, Mode::Subset);
    take(at_ + 1, c == '"' || c == '\'' ? DeclarationStringMarkup : DeclarationMarkup);
    if (c == '"' || c == '\'')
        state_.mode = c == '"' ? Mode::SubsetDouble : Mode::SubsetSingle;
    else if (c == '>')
        state_.mode = Mode::Subset;
}

} // namespace control
