#include "platform/control/closing_tag.h"

#include "platform/control/busy_pointer.h"
#include "platform/control/caret_place.h"
#include "platform/control/code_editor.h"
#include "platform/control/tag_attributes.h"
#include "platform/control/text_window.h"

#include <algorithm>

namespace control {

namespace {

using S = QsciScintillaBase;

MatchText matchText(const CodeEditor &editor, const TextWindow &window)
{
    return {window.bytes, window.start == 0, editor.language() == Language::Html};
}

// What a position stands in, and the name of the innermost element open there.
struct OpenAt
{
    Place place = Place::Elsewhere;
    QByteArray name;
};

OpenAt openAtEndOf(const CodeEditor &editor, const TextWindow &window)
{
    const CaretPlace place = caretPlace(matchText(editor, window));
    if (place.open.empty())
        return {place.place, {}};
    const Span &name = place.open.back().name;
    return {place.place, window.bytes.sliced(name.start, name.length).toByteArray()};
}

// Where nothing that begins near is open the whole text before has to be read.
OpenAt openAt(const CodeEditor &editor, long position)
{
    const TextWindow near = textWindow(editor, position - long(matchReach), position);
    const OpenAt found = openAtEndOf(editor, near);
    if (!found.name.isEmpty() || found.place != Place::Text || near.start == 0)
        return found;
    const BusyPointer busy(position);
    return openAtEndOf(editor, textWindow(editor, 0, position));
}

bool isBlank(const CodeEditor &editor, long start, long end)
{
    const QByteArrayView bytes = textWindow(editor, start, end).bytes;
    return std::all_of(bytes.begin(), bytes.end(), isBlankByte);
}

long lineStart(const CodeEditor &editor, long position)
{
    return editor.send(S::SCI_POSITIONFROMLINE, ulong(editor.send(S::SCI_LINEFROMPOSITION, ulong(position))));
}

} // namespace

QByteArray completionOfSlash(const CodeEditor &editor, long lessThan)
{
    const long behind = editor.send(S::SCI_GETCHARAT, ulong(lessThan + 1));
    const bool atEnd = lessThan + 1 >= editor.send(S::SCI_GETLENGTH);
    if (!atEnd && (isNameByte(char(behind)) || behind == '>'))
        return {};
    const auto [place, name] = openAt(editor, lessThan);
    // A "<" in a tag means that it was none, as in "a<b". In a script "</" may be its own; on a line of its
    // own it hardly is.
    const bool closes = place == Place::Text || place == Place::ElementName || place == Place::AttributeName
        || place == Place::InTag
        || (place == Place::RawText && isBlank(editor, lineStart(editor, lessThan), lessThan));
    return closes && !name.isEmpty() ? name + '>' : QByteArray();
}

QByteArray completionOfBracket(const CodeEditor &editor, long position)
{
    if (editor.send(S::SCI_GETCHARAT, ulong(position)) == '>')
        return {};
    const TextWindow window = textWindow(editor, position - long(matchReach), position);
    const CaretPlace place = caretPlace(matchText(editor, window));
    const bool ends = place.place == Place::ElementName || place.place == Place::AttributeName
        || place.place == Place::InTag;
    if (!ends || place.tag.kind != MarkupKind::StartTag || place.tag.name.length == 0
        || window.bytes.endsWith('/'))
        return {};
    const Span &span = place.tag.name;
    const QByteArray name = window.bytes.sliced(span.start, span.length).toByteArray();
    const long tagStart = window.start + long(place.tag.whole.start);
    if (closedBehind(editor, name, tagStart, position))
        return {};
    return "</" + name + '>';
}

QByteArray closingTagAt(const CodeEditor &editor, long position)
{
    const auto [place, name] = openAt(editor, position);
    if (name.isEmpty() || (place != Place::Text && place != Place::RawText))
        return {};
    return "</" + name + '>';
}

void alignClosingTag(CodeEditor &editor)
{
    const long end = editor.send(S::SCI_GETCURRENTPOS);
    const ulong line = ulong(editor.send(S::SCI_LINEFROMPOSITION, ulong(end)));
    const long indentEnd = editor.send(S::SCI_GETLINEINDENTPOSITION, line);
    const QByteArrayView written = textWindow(editor, indentEnd, end).bytes;
    if (!written.startsWith("</") || written.indexOf('>') != written.size() - 1
        || !isBlank(editor, end, editor.send(S::SCI_GETLINEENDPOSITION, line)))
        return;
    const std::optional<TagMatch> match = tagMatchAnywhere(editor, end - 1);
    if (!match || !match->partner)
        return;
    const ulong startLine = ulong(editor.send(S::SCI_LINEFROMPOSITION, ulong(match->partner->whole.start)));
    if (startLine == line)
        return;
    const QByteArray indent = editor.bytes({editor.send(S::SCI_POSITIONFROMLINE, startLine),
                                            editor.send(S::SCI_GETLINEINDENTPOSITION, startLine)});
    editor.replaceRange({editor.send(S::SCI_POSITIONFROMLINE, line), indentEnd}, indent);
}

bool closedBehind(const CodeEditor &editor, const QByteArray &name, long tagStart, long tagEnd)
{
    const TextWindow before = textWindow(editor, tagStart - long(matchReach), tagStart);
    const MatchText text = matchText(editor, before);
    const CaretPlace place = caretPlace(text);
    const auto around = std::count_if(place.open.begin(), place.open.end(), [&](const Markup &open) {
        return sameName(text, text.bytes.sliced(open.name.start, open.name.length), name);
    });
    const TextWindow behind = textWindow(editor, tagEnd, tagEnd + long(matchReach));
    MatchText following = matchText(editor, behind);
    following.fromDocumentStart = true;
    if (unmatchedEndTags(following, name, int(around) + 1) > around)
        return true;
    return around > 0 && behind.start + behind.bytes.size() < editor.send(S::SCI_GETLENGTH);
}

} // namespace control
