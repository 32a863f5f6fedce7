#include "platform/control/line_opening.h"

#include "platform/control/caret_place.h"
#include "platform/control/code_editor.h"
#include "platform/control/text_window.h"
#include "platform/control/undo_step.h"

#include <algorithm>

namespace control {

namespace {

using S = QsciScintillaBase;

// The blanks that a line begins with, up to a position in it.
QByteArray indentBefore(const CodeEditor &editor, long position)
{
    const ulong line = ulong(editor.send(S::SCI_LINEFROMPOSITION, ulong(position)));
    const long start = editor.send(S::SCI_POSITIONFROMLINE, line);
    return editor.bytes({start, std::min(position, editor.send(S::SCI_GETLINEINDENTPOSITION, line))});
}

// How a new line begins, and what line follows it at once.
struct Opening
{
    QByteArray indent;
    bool split = false; // what stands behind the caret goes to a line of its own
    QByteArray splitIndent;
};

QByteArray oneStep(const CodeEditor &editor)
{
    return editor.habits().tabs ? QByteArray("\t") : QByteArray(editor.habits().indent, ' ');
}

// An element that was opened on the caret's line, and what becomes of it on the rest of the line.
struct OpenedElement
{
    QByteArray indent; // of the line that its start tag begins on
    bool tagEndsAtCaret = false;
    bool closedAtCaret = false;
    bool closedOnLine = false;
};

std::optional<OpenedElement> openedOnLine(const CodeEditor &editor, long caret)
{
    const ulong line = ulong(editor.send(S::SCI_LINEFROMPOSITION, ulong(caret)));
    const long lineStart = editor.send(S::SCI_POSITIONFROMLINE, line);
    // Without a tag's end on the line nothing was opened on it, which spares the long look.
    if (textWindow(editor, std::max(lineStart, caret - long(matchReach)), caret).bytes.indexOf('>') < 0)
        return std::nullopt;
    const TextWindow before = textWindow(editor, caret - long(matchReach), caret);
    const bool html = editor.language() == Language::Html;
    const CaretPlace place = caretPlace({before.bytes, before.start == 0, html});
    if (place.place != Place::Text || place.open.empty())
        return std::nullopt;
    const Markup &tag = place.open.back();
    if (before.start + tag.whole.end() <= lineStart)
        return std::nullopt;
    const QByteArray name = before.bytes.sliced(tag.name.start, tag.name.length).toByteArray();
    const long tagStart = before.start + long(tag.whole.start);
    OpenedElement opened;
    opened.tagEndsAtCaret = tag.whole.end() == before.bytes.size();
    const TextWindow rest = textWindow(editor, caret, editor.send(S::SCI_GETLINEENDPOSITION, line));
    const MatchText behind{rest.bytes, true, html};
    opened.closedOnLine = unmatchedEndTags(behind, name, 1) > 0;
    const std::optional<Markup> next = MarkupScanner(rest.bytes, html).next();
    opened.closedAtCaret
        = opened.closedOnLine && next && next->whole.start == 0 && next->kind == MarkupKind::EndTag;
    opened.indent = indentBefore(editor, tagStart);
    return opened;
}

Opening openingAt(const CodeEditor &editor, long caret)
{
    Opening opening;
    if (!editor.properties().autoIndent)
        return opening;
    opening.indent = indentBefore(editor, caret);
    if (editor.language() == Language::Plain)
        return opening;
    const std::optional<OpenedElement> opened = openedOnLine(editor, caret);
    if (!opened || (opened->closedOnLine && !(opened->tagEndsAtCaret && opened->closedAtCaret)))
        return opening;
    opening.indent = opened->indent + oneStep(editor);
    opening.split = opened->closedAtCaret;
    opening.splitIndent = opened->indent;
    return opening;
}

} // namespace

bool newLine(CodeEditor &editor)
{
    const Opening opening = openingAt(editor, editor.selection().start);
    const UndoStep step(editor);
    editor.send(S::SCI_NEWLINE);
    if (editor.send(S::SCI_GETSELECTIONS) == 1) {
        if (!opening.indent.isEmpty())
            editor.SendScintilla(S::SCI_REPLACESEL, opening.indent.constData());
        const long caret = editor.send(S::SCI_GETCURRENTPOS);
        if (opening.split) {
            editor.send(S::SCI_NEWLINE);
            editor.SendScintilla(S::SCI_REPLACESEL, opening.splitIndent.constData());
            editor.send(S::SCI_SETEMPTYSELECTION, ulong(caret));
            editor.send(S::SCI_CHOOSECARETX);
        }
    }
    return true;
}

bool openLineAbove(CodeEditor &editor)
{
    const QByteArray indent = editor.properties().autoIndent
        ? indentBefore(editor, editor.send(S::SCI_GETCURRENTPOS))
        : QByteArray();
    const UndoStep step(editor);
    editor.send(S::SCI_HOME);
    editor.send(S::SCI_NEWLINE);
    editor.send(S::SCI_LINEUP);
    editor.SendScintilla(S::SCI_REPLACESEL, indent.constData());
    return true;
}

bool openLineBelow(CodeEditor &editor)
{
    editor.send(S::SCI_LINEEND);
    return newLine(editor);
}

} // namespace control
