#include "tidy/launcher/marked_text.h"

#include "platform/files/code_points.h"
#include "tidy/launcher/html_pieces.h"
#include "tidy/launcher/text_references.h"

#include <utility>

namespace launcher {

namespace {

constexpr char32_t wordMark = 0xFFFC;
constexpr QByteArrayView sectionMark = "<![CDATA[";
constexpr QByteArrayView sectionEnd = "]]>";

struct Content
{
    QByteArray name;
    int parent = 0;
    bool preserved = false; // xml:space
    bool text = false;
    bool elements = false;
};

class Reader
{
public:
    Reader(QByteArrayView markup, Dialect dialect) : markup_(markup), dialect_(dialect)
    {
        contents_.push_back({{}, 0, false, false, true}); // around the document element nothing counts
        beginGap(0);
    }

    MarkedText read()
    {
        while (at_ < markup_.size()) {
            const Piece piece = nextPiece();
            take(piece);
            at_ = std::max(at_, piece.end);
        }
        endGap();
        for (Gap &gap : read_.gaps) {
            for (Blanks &blanks : gap.blanks)
                blanks.exact = dialect_ == Dialect::Xml ? countsIn(blanks.element) : blanks.exact;
        }
        return std::move(read_);
    }

private:
    bool isHtml() const { return dialect_ != Dialect::Xml; }

    // A server's code stands in the tags of XHTML, too.
    Piece nextPiece() const
    {
        const bool section = dialect_ == Dialect::Xhtml && markup_.sliced(at_).startsWith(sectionMark);
        return isHtml() && !section ? htmlPieceAt(markup_, at_) : pieceAt(markup_, at_);
    }

    bool countsIn(int element) const
    {
        const Content &content = contents_[size_t(element)];
        return content.preserved || content.text || !content.elements;
    }

    void take(const Piece &piece)
    {
        const QByteArrayView text = markup_.sliced(piece.begin, piece.size());
        switch (piece.kind) {
        case PieceKind::Text:
            return addText(piece.begin, piece.end, true);
        case PieceKind::Section:
            return addSection(piece);
        case PieceKind::StartTag:
        case PieceKind::EmptyTag:
            return isHtml() ? addHtmlStart(piece, text) : addXmlStart(piece, text);
        case PieceKind::EndTag:
            return isHtml() ? addHtmlEnd(piece, text) : addXmlEnd(piece, text);
        default:
            return addMark({text.first(std::min<qsizetype>(text.size(), 2)).toByteArray()}, piece.end);
        }
    }

    void beginGap(qsizetype at)
    {
        gap_ = {qsizetype(read_.characters.size()), {}, {}};
        addBlanks(at);
    }

    void addBlanks(qsizetype at) { gap_.blanks.push_back({at, at, preserved_ > 0, element_}); }

    void endGap()
    {
        if (!gap_.marks.empty() || gap_.blanks.front().size() > 0)
            read_.gaps.push_back(std::move(gap_));
    }

    void addMark(const Mark &mark, qsizetype behind)
    {
        gap_.marks.push_back(mark);
        addBlanks(behind);
    }

    void addCharacter(char32_t character, qsizetype at, qsizetype behind)
    {
        endGap();
        read_.characters += character;
        read_.places.push_back(at);
        beginGap(behind);
    }

    void addText(qsizetype at, qsizetype end, bool references)
    {
        while (at < end) {
            const TextCharacter found = references
                ? textCharacterAt(markup_.first(end), at)
                : TextCharacter{files::codePointAt(markup_.first(end), at).value,
                                files::codePointAt(markup_.first(end), at).size};
            at += found.size;
            if (isBlankCharacter(found.value)) {
                gap_.blanks.back().end = at;
            } else {
                contents_[size_t(element_)].text = true;
                addCharacter(found.value, at - found.size, at);
            }
        }
    }

    void addSection(const Piece &piece)
    {
        const QByteArrayView text = markup_.sliced(piece.begin, piece.size());
        const qsizetype end = piece.end - (text.endsWith(sectionEnd) ? sectionEnd.size() : 0);
        contents_[size_t(element_)].text = true;
        addMark({"<!["}, piece.begin + sectionMark.size());
        addText(piece.begin + sectionMark.size(), end, false);
        addMark({"]]>"}, piece.end);
    }

    void addXmlStart(const Piece &piece, QByteArrayView tag)
    {
        const QByteArray name = tag.first(endOfName(tag, 1)).sliced(1).toByteArray();
        contents_[size_t(element_)].elements = true;
        if (piece.kind == PieceKind::StartTag) {
            const qsizetype space = tag.indexOf("xml:space");
            const bool preserves = space >= 0 && tag.indexOf("preserve", space) >= 0;
            contents_.push_back({name, element_, preserves || contents_[size_t(element_)].preserved});
            element_ = int(contents_.size()) - 1;
        }
        addMark({piece.kind == PieceKind::StartTag ? name : name + '/'}, piece.end);
    }

    // An end tag that nothing open belongs to ends nothing.
    void addXmlEnd(const Piece &piece, QByteArrayView tag)
    {
        const QByteArray name = tag.first(endOfName(tag, 2)).sliced(2).toByteArray();
        int open = element_;
        while (open > 0 && contents_[size_t(open)].name != name)
            open = contents_[size_t(open)].parent;
        if (open > 0)
            element_ = contents_[size_t(open)].parent;
        addMark({'/' + name}, piece.end);
    }

    void addHtmlStart(const Piece &piece, QByteArrayView tag)
    {
        const QByteArray name = tagName(tag);
        const bool word = isWordElement(name);
        const bool open = !isVoidElement(name) && !(piece.kind == PieceKind::EmptyTag && ends(name));
        if (word)
            addCharacter(wordMark, piece.begin, piece.end);
        preserved_ += open && keepsBlanks(name) ? 1 : 0;
        addMark({name, word || isBlockElement(name)}, piece.end);
        if (!open)
            return;
        if (dialect_ == Dialect::Html && keepsBlanks(name))
            skipFirstLineEnd(piece.end);
        const qsizetype from = gap_.blanks.back().begin;
        if (!hasRawText(name) && !hasPlainText(name))
            return;
        const qsizetype end = endOfRawText(markup_, from, name);
        if (end == markup_.size())
            return;
        at_ = end;
        if (hasPlainText(name))
            addText(from, end, true);
        else
            gap_.blanks.back() = {end, end, false, element_};
    }

    // In XHTML every element can be empty, in HTML only what is no element of its own.
    bool ends(const QByteArray &name) const
    {
        return dialect_ == Dialect::Xhtml || name == "svg" || name == "math";
    }

    void skipFirstLineEnd(qsizetype at)
    {
        const QByteArrayView rest = markup_.sliced(at);
        const qsizetype size = rest.startsWith("\r\n") ? 2 : rest.startsWith('\n') || rest.startsWith('\r');
        gap_.blanks.back().begin = gap_.blanks.back().end = at + size;
        at_ = at + size;
    }

    void addHtmlEnd(const Piece &piece, QByteArrayView tag)
    {
        const QByteArray name = tagName(tag);
        if (isVoidElement(name))
            return addMark({'/' + name, isBlockElement(name)}, piece.end);
        if (keepsBlanks(name) && preserved_ > 0)
            --preserved_;
        addMark({'/' + name, isWordElement(name) || isBlockElement(name)}, piece.end);
        if (isWordElement(name))
            addCharacter(wordMark, piece.begin, piece.end);
    }

    const QByteArrayView markup_;
    const Dialect dialect_;
    MarkedText read_;
    Gap gap_;
    std::vector<Content> contents_; // of XML
    int element_ = 0;
    int preserved_ = 0; // how many elements are open that keep their blanks
    qsizetype at_ = 0;
};

} // namespace

MarkedText readMarkedText(QByteArrayView markup, Dialect dialect) { return Reader(markup, dialect).read(); }

} // namespace launcher
