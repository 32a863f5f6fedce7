#include "platform/files/markup_context.h"

#include "platform/files/declaration.h"

#include <algorithm>

namespace files {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool isNameStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || uchar(c) >= 0x80;
}

bool isNamePart(char c) { return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

bool wordAt(QByteArrayView text, qsizetype at, QByteArrayView lowerCase)
{
    return text.size() - at >= lowerCase.size()
        && qstrnicmp(text.data() + at, lowerCase.size(), lowerCase.data(), lowerCase.size()) == 0;
}

} // namespace

MarkupContext::MarkupContext(QByteArrayView utf8)
    : text_(utf8), markup_(looksLikeMarkup(utf8)),
      html_(declarationIn(utf8).by != DeclaredBy::Xml && looksLikeHtml(utf8))
{
    enterContent();
}

bool MarkupContext::allowsReferenceAt(qsizetype at)
{
    if (!markup_)
        return false;
    while (end_ <= at && end_ < text_.size())
        nextPiece();
    return (piece_ == Piece::Content || piece_ == Piece::Value) && !inEntityName(at);
}

void MarkupContext::enter(Piece piece, qsizetype end)
{
    piece_ = piece;
    end_ = end;
}

void MarkupContext::nextPiece()
{
    const bool inTag = piece_ == Piece::Value || piece_ == Piece::Tag;
    if (inTag && !tagDone_)
        enterTagPart();
    else if (inTag && html_ && endOfScript() > end_)
        enter(Piece::Verbatim, endOfScript());
    else if (opensMarkup(end_))
        enterMarkup();
    else
        enterContent();
}

bool MarkupContext::opensMarkup(qsizetype at) const
{
    if (text_[at] != '<' || at + 1 >= text_.size())
        return false;
    const char next = text_[at + 1];
    return next == '!' || next == '?' || next == '/' || isNameStart(next);
}

// Up to the next "<" that opens markup.
void MarkupContext::enterContent()
{
    qsizetype at = text_.indexOf('<', end_);
    while (at >= 0 && !opensMarkup(at))
        at = text_.indexOf('<', at + 1);
    enter(Piece::Content, at < 0 ? text_.size() : at);
}

void MarkupContext::enterMarkup()
{
    const QByteArrayView rest = text_.sliced(end_);
    if (rest.startsWith("<!--"))
        enter(Piece::Verbatim, after("-->", end_ + 4));
    else if (rest.startsWith("<![CDATA["))
        enter(Piece::Verbatim, after("]]>", end_ + 9));
    else if (rest.startsWith("<?"))
        enter(Piece::Verbatim, after("?>", end_ + 2));
    else if (rest.startsWith("<!"))
        enter(Piece::Verbatim, endOfDoctype());
    else {
        tagStart_ = end_;
        tagDone_ = false;
        ++end_;
        enterTagPart();
    }
}

// Either the value that follows a "=", or the names and blanks up to the next value or the tag's end.
void MarkupContext::enterTagPart()
{
    const bool valueNext = piece_ == Piece::Tag && text_[end_ - 1] == '=';
    if (valueNext) {
        const char *first = std::find_if_not(text_.begin() + end_, text_.end(), isBlank);
        const qsizetype start = first - text_.begin();
        if (start < text_.size() && (text_[start] == '"' || text_[start] == '\'')) {
            const qsizetype close = text_.indexOf(text_[start], start + 1);
            const qsizetype open = text_.indexOf('<', start + 1);
            const qsizetype end = close >= 0 ? close + 1 : open;
            return enter(Piece::Value, end < 0 ? text_.size() : end);
        }
        const char *last = std::find_if(first, text_.end(), [](char c) { return isBlank(c) || c == '>'; });
        if (last != first)
            return enter(Piece::Value, last - text_.begin());
    }
    const char *stop = std::find_if(text_.begin() + end_, text_.end(),
                                    [](char c) { return c == '=' || c == '>' || c == '<'; });
    tagDone_ = stop != text_.end() && *stop != '=';
    const bool included = stop != text_.end() && *stop != '<';
    enter(Piece::Tag, stop - text_.begin() + (included ? 1 : 0));
}

qsizetype MarkupContext::after(QByteArrayView closing, qsizetype from) const
{
    const qsizetype at = text_.indexOf(closing, std::min(from, text_.size()));
    return at < 0 ? text_.size() : at + closing.size();
}

// A declaration may hold quoted text, comments and, in brackets, further declarations.
qsizetype MarkupContext::endOfDoctype() const
{
    int depth = 1;
    qsizetype at = end_ + 2;
    while (at < text_.size() && depth > 0) {
        const char c = text_[at];
        if (c == '"' || c == '\'') {
            at = after(text_.sliced(at, 1), at + 1);
        } else if (c == '<' && text_.sliced(at).startsWith("<!--")) {
            at = after("-->", at + 4);
        } else if (c == '<' && text_.sliced(at).startsWith("<?")) {
            at = after("?>", at + 2);
        } else {
            depth += (c == '<') - (c == '>');
            ++at;
        }
    }
    return at;
}

// Where the script or style sheet ends whose start tag has just been passed; the current place when the tag
// was another.
qsizetype MarkupContext::endOfScript() const
{
    constexpr const char *names[] = {"script", "style"};
    for (const QByteArrayView name : names) {
        const qsizetype behind = tagStart_ + 1 + name.size();
        if (!wordAt(text_, tagStart_ + 1, name) || (behind < text_.size() && isNamePart(text_[behind])))
            continue;
        if (text_[end_ - 2] == '/')
            continue;
        for (qsizetype at = text_.indexOf("</", end_); at >= 0; at = text_.indexOf("</", at + 2)) {
            if (wordAt(text_, at + 2, name))
                return at;
        }
        return text_.size();
    }
    return end_;
}

// "&na" before and "ve;" behind: a reference would cut the name of another. Names this long are none.
bool MarkupContext::inEntityName(qsizetype at) const
{
    constexpr qsizetype longest = 256;
    qsizetype from = at;
    while (from > 0 && at - from < longest && isNamePart(text_[from - 1]))
        --from;
    if (from == 0 || text_[from - 1] != '&')
        return false;
    qsizetype to = at;
    while (to < text_.size() && to - at < longest && isNamePart(text_[to]))
        ++to;
    return to < text_.size() && text_[to] == ';';
}

} // namespace files
