#include "platform/control/tag_marks.h"

#include "platform/control/busy_pointer.h"
#include "platform/control/code_editor.h"
#include "platform/control/editor_look.h"
#include "platform/control/text_window.h"

#include <utility>

namespace control {

namespace {

using S = QsciScintillaBase;

// The engine's position for no position.
constexpr auto nowhere = ulong(-1);

void shift(Markup &markup, long offset)
{
    markup.whole.start += offset;
    markup.name.start += offset;
}

// Spares the long look when nothing can come of it.
bool mayMatch(const CodeEditor &editor, long caret)
{
    constexpr long nameReach = 1100;
    const TextWindow near = windowAround(editor, caret, nameReach);
    const qsizetype at = caret - near.start;
    if (at < near.bytes.size() && near.bytes[at] == '<')
        return true;
    if (at > 0 && near.bytes[at - 1] == '>')
        return true;
    return nearTagName(near.bytes, at);
}

std::optional<TagMatch> tagMatchIn(const CodeEditor &editor, const TextWindow &window, long position)
{
    std::optional<TagMatch> match = matchTag(
        {window.bytes, window.start == 0, editor.language() == Language::Html}, position - window.start);
    if (!match)
        return match;
    shift(match->markup, window.start);
    if (match->partner)
        shift(*match->partner, window.start);
    return match;
}

} // namespace

std::optional<TagMatch> tagMatchAt(const CodeEditor &editor, long position)
{
    return tagMatchIn(editor, windowAround(editor, position, long(matchReach)), position);
}

std::optional<TagMatch> tagMatchAnywhere(const CodeEditor &editor, long position)
{
    const std::optional<TagMatch> match = tagMatchAt(editor, position);
    const long length = editor.send(S::SCI_GETLENGTH);
    if (!match || match->partner || !match->markup.isOfPair() || length <= long(matchReach))
        return match;
    const BusyPointer busy(length);
    return tagMatchIn(editor, textWindow(editor, 0, length), position);
}

void TagMarks::clear(CodeEditor &editor)
{
    if (!std::exchange(marked_, false))
        return;
    editor.send(S::SCI_SETINDICATORCURRENT, tagIndicator);
    editor.send(S::SCI_INDICATORCLEARRANGE, 0, editor.send(S::SCI_GETLENGTH));
    editor.send(S::SCI_BRACEHIGHLIGHT, nowhere, -1);
}

void TagMarks::update(CodeEditor &editor)
{
    clear(editor);
    const long caret = editor.send(S::SCI_GETCURRENTPOS);
    if (editor.language() == Language::Plain || !mayMatch(editor, caret))
        return;
    const std::optional<TagMatch> match = tagMatchAt(editor, caret);
    if (!match)
        return;
    const Markup &markup = match->markup;
    marked_ = true;
    if (caret == markup.whole.start || caret == markup.whole.end())
        editor.send(S::SCI_BRACEHIGHLIGHT, ulong(markup.whole.start), long(markup.whole.end() - 1));
    if (!match->partner || !markup.name.touches(caret))
        return;
    editor.send(S::SCI_SETINDICATORCURRENT, tagIndicator);
    for (const Span &name : {markup.name, match->partner->name})
        editor.send(S::SCI_INDICATORFILLRANGE, ulong(name.start), long(name.length));
}

} // namespace control
