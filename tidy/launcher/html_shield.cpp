#include "tidy/launcher/html_shield.h"

#include "tidy/launcher/xml_words.h"

#include <algorithm>

namespace launcher {

namespace {

constexpr QByteArrayView sectionMark = "<![CDATA[";
constexpr QByteArrayView sectionEnd = "]]>";

struct Foreign
{
    QByteArrayView name;
    const char *space;
};

constexpr Foreign foreignElements[] = {
    {"svg", "http://www.w3.org/2000/svg"},
    {"math", "http://www.w3.org/1998/Math/MathML"},
};

const Foreign *foreignNamed(QByteArrayView name)
{
    const auto is = [name](const Foreign &element) { return element.name == name; };
    const auto *found = std::find_if(std::begin(foreignElements), std::end(foreignElements), is);
    return found == std::end(foreignElements) ? nullptr : found;
}

// Such a comment ends at once to browsers, but not to Tidy.
bool endsAbruptly(const QByteArray &comment) { return comment == "<!-->" || comment == "<!--->"; }

// What begins no code of a server is no markup in a field or a title.
QByteArray withPlainBrackets(const QByteArray &text)
{
    QByteArray out;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype code = endOfServerCode(text, at);
        const qsizetype end = std::max(code, at + 1);
        out += code == at && text[at] == '<' ? QByteArray("&lt;") : text.sliced(at, end - at);
        at = end;
    }
    return out;
}

bool isServerCode(QByteArrayView text) { return text.contains("<?") || text.contains("<%"); }

// A script's element holds data where its type is no script's.
bool holdsData(QByteArrayView tag)
{
    const QByteArray lower = tag.toByteArray().toLower();
    const qsizetype type = lower.indexOf("type=");
    if (type < 0)
        return false;
    const QByteArray value = lower.sliced(type, std::min<qsizetype>(40, lower.size() - type));
    static constexpr const char *scripts[] = {"javascript", "ecmascript", "jscript", "module", "livescript"};
    return std::none_of(std::begin(scripts), std::end(scripts),
                        [&](const char *script) { return value.contains(script); });
}

QByteArray unescaped(QByteArray text)
{
    return text.replace("&lt;", "<")
        .replace("&gt;", ">")
        .replace("&quot;", "\"")
        .replace("&apos;", "'")
        .replace("&amp;", "&");
}

// The mark of a section stands in a comment of the script's own language, so that both readings work.
bool hidesSection(QByteArrayView text, qsizetype section)
{
    const QByteArray before = text.first(section).toByteArray().trimmed();
    return before.endsWith("//") || before.endsWith("/*");
}

// A script of XHTML as HTML reads one.
QByteArray asHtmlReads(const QByteArray &text)
{
    const qsizetype section = text.indexOf(sectionMark);
    if (section >= 0 && hidesSection(text, section))
        return text;
    QByteArray out;
    for (Piece piece{}; piece.end < text.size();) {
        piece = pieceAt(text, piece.end);
        QByteArray part = text.sliced(piece.begin, piece.size());
        if (piece.kind == PieceKind::Section)
            out += part.sliced(sectionMark.size()).chopped(sectionEnd.size());
        else
            out += piece.kind == PieceKind::Text ? unescaped(part) : part;
    }
    return out;
}

QByteArray section(QByteArray text, QByteArrayView before, QByteArrayView behind)
{
    text.replace(sectionEnd, "]]]]><![CDATA[>");
    return before.toByteArray() + sectionMark.toByteArray() + text + sectionEnd.toByteArray()
        + behind.toByteArray();
}

bool isPlain(QByteArrayView text)
{
    return !text.contains('<') && !text.contains('&') && !text.contains(sectionEnd);
}

} // namespace

HtmlShield::HtmlShield(const QByteArray &page, Kind kind) : page_(page), kind_(kind), words_(page)
{
    shielded_.reserve(page.size());
    for (qsizetype at = 0; at < page.size();)
        at = addPiece(pieceAt(at));
}

bool HtmlShield::isWholeIn(const QByteArray &tidied) const
{
    std::vector<int> times(originals_.size(), 0);
    qsizetype at = 0;
    while (const auto found = words_.next(tidied, at, qsizetype(originals_.size()))) {
        ++times[size_t(found->number)];
        at = found->end;
    }
    for (size_t number = 0; number < times.size(); ++number) {
        if (times[number] != 1 && originals_[number].what != What::Value)
            return false;
    }
    return true;
}

QByteArray HtmlShield::restored(const QByteArray &tidied, const QByteArray &lineEnd) const
{
    QByteArray out;
    out.reserve(tidied.size() + page_.size() - shielded_.size());
    const QByteArrayView text = tidied;
    qsizetype at = 0;
    while (const auto found = words_.next(tidied, at, qsizetype(originals_.size()))) {
        const Original &original = originals_[size_t(found->number)];
        out += text.sliced(at, found->begin - at);
        at = found->end;
        if (original.what == What::Foreign) {
            out.truncate(std::max<qsizetype>(out.lastIndexOf('<'), 0));
            const qsizetype tagEnd = tidied.indexOf('>', at);
            const bool empty = tagEnd > 0 && tidied[tagEnd - 1] == '/';
            at = empty ? tagEnd + 1 : tidied.indexOf('>', tidied.indexOf("</", at)) + 1;
        } else if (original.what != What::Value) {
            out.truncate(out.lastIndexOf('>') + 1);
            at = tidied.indexOf("</", at);
        }
        at = at > 0 ? at : tidied.size();
        out += withLineEnds(rawText(original), lineEnd);
    }
    return out + tidied.sliced(at);
}

QByteArray HtmlShield::told(const QByteArray &report) const
{
    QByteArray out;
    qsizetype at = 0;
    while (const auto found = words_.next(report, at, qsizetype(originals_.size()))) {
        out += report.sliced(at, found->begin - at);
        out += withLineEnds(originals_[size_t(found->number)].text, " ");
        at = found->end;
    }
    return out + report.sliced(at);
}

Piece HtmlShield::pieceAt(qsizetype at) const
{
    return kind_.xhtml ? launcher::pieceAt(page_, at) : htmlPieceAt(page_, at);
}

QByteArray HtmlShield::standIn(What what, QByteArrayView text)
{
    originals_.push_back({what, text.toByteArray()});
    return words_.word(qsizetype(originals_.size()) - 1);
}

// The place behind what was added.
qsizetype HtmlShield::addPiece(const Piece &piece)
{
    const QByteArray text = page_.sliced(piece.begin, piece.size());
    switch (piece.kind) {
    case PieceKind::StartTag:
    case PieceKind::EmptyTag:
        return addStart(piece);
    case PieceKind::EndTag:
        if (!kind_.xhtml || !isVoidElement(tagName(text)))
            shielded_ += text;
        return piece.end;
    case PieceKind::Section:
        shielded_ += escaped(text.sliced(sectionMark.size()).chopped(sectionEnd.size()));
        return piece.end;
    case PieceKind::Text:
        shielded_ += withPlainReferences(text);
        return piece.end;
    case PieceKind::Comment:
        shielded_ += endsAbruptly(text) ? QByteArray("<!---->") : text;
        return piece.end;
    default:
        shielded_ += text;
        return piece.end;
    }
}

qsizetype HtmlShield::addStart(const Piece &piece)
{
    const QByteArrayView page = page_;
    const QByteArrayView tag = page.sliced(piece.begin, piece.size());
    const QByteArray name = tagName(tag);
    const qsizetype foreignEnd = endOfForeign(piece, name);
    if (foreignEnd > piece.end || (foreignEnd > 0 && piece.kind == PieceKind::EmptyTag)) {
        const QByteArrayView whole = page.sliced(piece.begin, foreignEnd - piece.begin);
        shielded_ += '<' + name + " class=\"" + standIn(What::Foreign, whole) + '"' + lineEndsOf(whole)
            + "></" + name + '>';
        return foreignEnd;
    }
    const bool empty = kind_.xhtml && piece.kind == PieceKind::EmptyTag;
    addTag(empty ? tag.chopped(2) : tag);
    if (empty)
        shielded_ += isVoidElement(name) ? QByteArray(">") : "></" + name + '>';
    return empty ? piece.end : addContent(piece, name);
}

// What is no markup although it may look so. The place behind it.
qsizetype HtmlShield::addContent(const Piece &start, const QByteArray &name)
{
    const bool plain = hasPlainText(name) && !kind_.xhtml;
    const bool script = name == "script";
    if (!plain && !script && name != "style")
        return start.end;
    const QByteArrayView page = page_;
    const qsizetype end = endOfRawText(page, start.end, name);
    const QByteArrayView content = page.sliced(start.end, end - start.end);
    if (end == page.size() || content.empty())
        return start.end;
    if (plain) {
        shielded_ += withPlainBrackets(withPlainReferences(content.toByteArray()));
        return end;
    }
    const bool data = holdsData(page.sliced(start.begin, start.size()));
    const What what = !script ? What::Style : data ? What::Data : What::Script;
    shielded_ += standIn(what, content) + lineEndsOf(content);
    return end;
}

// Values that a server is to write.
void HtmlShield::addTag(QByteArrayView tag)
{
    bool value = false;
    for (qsizetype at = 0; at < tag.size();) {
        const char c = tag[at];
        qsizetype end = at + 1;
        if (value && (c == '"' || c == '\'')) {
            while (end < tag.size() && tag[end] != c)
                end = std::max(endOfServerCode(tag, end), end + 1);
            const QByteArrayView inside = tag.sliced(at + 1, std::min(end, tag.size()) - at - 1);
            if (end < tag.size() && isServerCode(inside)) {
                shielded_ += c + standIn(What::Value, inside) + c + lineEndsOf(inside);
                at = end + 1;
                value = false;
                continue;
            }
            end = std::min(end + 1, tag.size());
        } else if (!kind_.xhtml) {
            end = std::max(end, endOfServerCode(tag, at));
        }
        shielded_ += tag.sliced(at, end - at);
        value = c == '=' || (value && isXmlBlank(c));
        at = end;
    }
}

// 0 where it is not of another kind than HTML, has no end, or cannot be put back as XML.
qsizetype HtmlShield::endOfForeign(const Piece &start, const QByteArray &name) const
{
    if (!foreignNamed(name))
        return 0;
    int depth = 0;
    for (Piece piece = start; true; piece = pieceAt(piece.end)) {
        const bool tag = piece.kind == PieceKind::StartTag || piece.kind == PieceKind::EndTag;
        if (tag && tagName(QByteArrayView(page_).sliced(piece.begin, piece.size())) == name)
            depth += piece.kind == PieceKind::StartTag ? 1 : -1;
        if (depth == 0) {
            const QByteArray whole = page_.sliced(start.begin, piece.end - start.begin);
            return !kind_.writesXml || kind_.xhtml || wordsOf(whole) ? piece.end : 0;
        }
        if (piece.end >= page_.size())
            return 0;
    }
}

// What is put back, as the output means it.
QByteArray HtmlShield::rawText(const Original &original) const
{
    if (original.what == What::Foreign)
        return foreign(original.text);
    if (original.what == What::Value)
        return kind_.writesXml && !kind_.xhtml ? escaped(original.text).replace('"', "&quot;")
                                               : original.text;
    if (!kind_.writesXml)
        return kind_.xhtml ? asHtmlReads(original.text) : original.text;
    if (kind_.xhtml || isPlain(original.text))
        return original.text;
    const qsizetype own = original.text.indexOf(sectionMark);
    if (own >= 0 && hidesSection(original.text, own) && wordsOf("<a>" + original.text + "</a>"))
        return original.text;
    if (original.what == What::Data)
        return section(original.text, {}, {});
    return original.what == What::Script ? section('\n' + original.text + "\n//", "//", {})
                                         : section("*/" + original.text + "/*", "/*", "*/");
}

QByteArray HtmlShield::foreign(const QByteArray &text) const
{
    const QByteArray name = tagName(text);
    const Piece start = htmlPieceAt(text, 0);
    const Foreign *element = foreignNamed(name);
    if (!kind_.writesXml || !element || text.first(start.end).contains("xmlns="))
        return text;
    QByteArray out = text;
    return out.insert(1 + name.size(), " xmlns=\"" + QByteArray(element->space) + '"');
}

} // namespace launcher
