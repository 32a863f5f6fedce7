#include "platform/control/caret_place.h"

#include "platform/control/tag_attributes.h"

#include <QByteArray>

namespace control {

namespace {

QByteArrayView named(const MatchText &text, const Markup &tag)
{
    return text.bytes.sliced(tag.name.start, tag.name.length);
}

bool holdsRawText(const MatchText &text, const Markup &tag)
{
    if (!text.html || tag.kind != MarkupKind::StartTag)
        return false;
    for (const char *raw : {"script", "style", "textarea", "title"})
        if (sameName(text, named(text, tag), raw))
            return true;
    return false;
}

// Markup that is not closed takes in whatever follows it.
bool takesInMore(const MatchText &text, const Markup &last)
{
    QByteArray longer = text.bytes.sliced(last.whole.start).toByteArray();
    const qsizetype length = longer.size();
    longer += ' ';
    const std::optional<Markup> read = MarkupScanner(longer, text.html).next();
    return read && read->whole.length > length;
}

void close(const MatchText &text, const Markup &endTag, std::vector<Markup> &open)
{
    for (auto at = open.rbegin(); at != open.rend(); ++at) {
        if (!sameName(text, named(text, *at), named(text, endTag)))
            continue;
        open.erase(std::next(at).base(), open.end());
        return;
    }
}

// Where in a start tag, behind its name, the bytes end.
void placeAmongAttributes(const MatchText &text, CaretPlace &place)
{
    const qsizetype start = place.tag.name.end();
    const QByteArrayView bytes = text.bytes.sliced(start);
    TagAttributes attributes(bytes);
    TagAttribute last;
    while (const std::optional<TagAttribute> next = attributes.next())
        last = *next;
    place.place = Place::InTag;
    if (last.quoted && !last.closed) {
        place.place = Place::AttributeValue;
        place.attribute = {start + last.name.start, last.name.length};
        place.word = start + last.value.start;
    } else if (last.name.length > 0 && last.name.end() == bytes.size()
               && isBlankByte(bytes[last.name.start - 1])) {
        place.place = Place::AttributeName;
        place.word = start + last.name.start;
    } else if (isBlankByte(bytes.back()) && !bytes.trimmed().endsWith('=')
               && !bytes.trimmed().endsWith('/')) {
        place.place = Place::AttributeName;
    }
}

void placeInside(const MatchText &text, const Markup &tag, CaretPlace &place)
{
    place.tag = tag;
    const bool atName = tag.name.end() == text.bytes.size();
    place.place = Place::Elsewhere;
    if (tag.kind == MarkupKind::EndTag && atName) {
        place.place = Place::EndName;
        place.word = tag.name.start;
    } else if ((tag.kind == MarkupKind::StartTag || tag.kind == MarkupKind::EmptyTag) && atName) {
        place.place = Place::ElementName;
        place.word = tag.name.start;
    } else if (tag.kind == MarkupKind::StartTag || tag.kind == MarkupKind::EmptyTag) {
        placeAmongAttributes(text, place);
    }
}

} // namespace

bool sameName(const MatchText &text, QByteArrayView one, QByteArrayView other)
{
    return one.compare(other, text.html ? Qt::CaseInsensitive : Qt::CaseSensitive) == 0;
}

CaretPlace caretPlace(const MatchText &before)
{
    CaretPlace place;
    place.word = before.bytes.size();
    MarkupScanner scanner(before.bytes, before.html, firstSafePosition(before));
    qsizetype end = 0;
    while (const std::optional<Markup> met = scanner.next()) {
        // The end of raw text is the only markup in it.
        if (!place.open.empty() && place.open.back().whole.end() == end
            && holdsRawText(before, place.open.back())
            && !sameName(before, named(before, *met), named(before, place.open.back()))) {
            place.place = Place::RawText;
            return place;
        }
        end = met->whole.end();
        if (end == before.bytes.size() && takesInMore(before, *met)) {
            placeInside(before, *met, place);
            return place;
        }
        if (met->kind == MarkupKind::EndTag)
            close(before, *met, place.open);
        else if (met->kind == MarkupKind::StartTag && before.bytes[end - 1] == '>')
            place.open.push_back(*met);
    }
    if (!place.open.empty() && place.open.back().whole.end() == end
        && holdsRawText(before, place.open.back()))
        place.place = Place::RawText;
    else if (before.bytes.endsWith('<'))
        place.place = Place::ElementName;
    return place;
}

int unmatchedEndTags(const MatchText &behind, QByteArrayView name, int wanted)
{
    MarkupScanner scanner(behind.bytes, behind.html);
    int depth = 0;
    int found = 0;
    while (found < wanted) {
        const std::optional<Markup> met = scanner.next();
        if (!met)
            break;
        if ((met->kind != MarkupKind::StartTag && met->kind != MarkupKind::EndTag)
            || !sameName(behind, named(behind, *met), name))
            continue;
        if (met->kind == MarkupKind::StartTag)
            ++depth;
        else if (depth > 0)
            --depth;
        else
            ++found;
    }
    return found;
}

} // namespace control
