#include "platform/control/navigation_actions.h"

#include "platform/control/code_editor.h"
#include "platform/control/editor_look.h"
#include "platform/control/tag_marks.h"

#include <algorithm>

namespace control {

namespace {

using S = QsciScintillaBase;

constexpr long bookmarks = 1 << bookmarkMarker;

long caretOf(const CodeEditor &editor) { return editor.send(S::SCI_GETCURRENTPOS); }

void caretToLine(CodeEditor &editor, long line)
{
    editor.showPosition(editor.send(S::SCI_POSITIONFROMLINE, ulong(line)));
}

// The line shown so many lines below the first one in sight.
bool caretToShownLine(CodeEditor &editor, long below)
{
    const long shown = editor.send(S::SCI_GETFIRSTVISIBLELINE) + std::max(0L, below);
    const long line = editor.send(S::SCI_DOCLINEFROMVISIBLE, ulong(shown));
    editor.send(S::SCI_GOTOPOS, ulong(editor.send(S::SCI_POSITIONFROMLINE, ulong(line))));
    return true;
}

bool caretToBookmark(CodeEditor &editor, long line)
{
    if (line < 0)
        return false;
    caretToLine(editor, line);
    return true;
}

bool selectRange(CodeEditor &editor, long anchor, long caret)
{
    editor.send(S::SCI_SETSEL, ulong(anchor), caret);
    return true;
}

// What is repeated or played ends where the text does: going round, it would do its work on the same place
// again.
bool goesRound(CodeEditor &editor) { return !editor.player().playing(); }

// Both ends of the markup or the brackets that the caret touches: where the caret is to go, and the other
// end.
struct BracePair
{
    long near = 0;
    long far = 0;
};

std::optional<BracePair> bracesAt(const CodeEditor &editor)
{
    const long caret = caretOf(editor);
    if (const std::optional<TagMatch> match = tagMatchAt(editor, caret);
        match && editor.language() != Language::Plain) {
        const BracePair ends{long(match->markup.whole.start), long(match->markup.whole.end())};
        return caret == ends.far ? BracePair{ends.far, ends.near} : ends;
    }
    for (const long brace : {caret, editor.send(S::SCI_POSITIONBEFORE, ulong(caret))}) {
        const long other = editor.send(S::SCI_BRACEMATCH, ulong(brace), 0);
        if (other >= 0)
            return other > brace ? BracePair{brace, other + 1} : BracePair{brace + 1, other};
    }
    return std::nullopt;
}

bool notePartnerMissing(CodeEditor &editor, const std::optional<TagMatch> &match)
{
    Q_EMIT editor.noted(match && match->markup.isOfPair()
                            ? CodeEditor::tr("This tag has no matching tag.")
                            : CodeEditor::tr("The caret is in no tag that has a matching one."));
    return false;
}

} // namespace

bool caretToInsertedStart(CodeEditor &editor)
{
    const qsizetype start = editor.insertedRun().start();
    if (start < 0)
        return false;
    editor.showPosition(long(start));
    return true;
}

bool caretToWindowTop(CodeEditor &editor) { return caretToShownLine(editor, 0); }

bool caretToWindowBottom(CodeEditor &editor)
{
    return caretToShownLine(editor, editor.send(S::SCI_LINESONSCREEN) - 1);
}

bool selectAll(CodeEditor &editor)
{
    editor.send(S::SCI_SELECTALL);
    return true;
}

bool selectWord(CodeEditor &editor)
{
    const long start = editor.send(S::SCI_WORDSTARTPOSITION, ulong(caretOf(editor)), 1);
    const long end = editor.send(S::SCI_WORDENDPOSITION, ulong(caretOf(editor)), 1);
    return start < end && selectRange(editor, start, end);
}

bool selectLine(CodeEditor &editor)
{
    const ulong line = ulong(editor.caretLine());
    const long start = editor.send(S::SCI_POSITIONFROMLINE, line);
    const long next = editor.send(S::SCI_POSITIONFROMLINE, line + 1);
    return selectRange(editor, start, next < 0 ? editor.send(S::SCI_GETLENGTH) : next);
}

bool cancelSelection(CodeEditor &editor)
{
    if (!editor.canCopy() && editor.send(S::SCI_GETSELECTIONS) == 1)
        return false;
    editor.send(S::SCI_SETEMPTYSELECTION, ulong(caretOf(editor)));
    return true;
}

bool toggleBookmark(CodeEditor &editor)
{
    const ulong line = ulong(editor.caretLine());
    const bool marked = (editor.send(S::SCI_MARKERGET, line) & bookmarks) != 0;
    editor.send(marked ? S::SCI_MARKERDELETE : S::SCI_MARKERADD, line, bookmarkMarker);
    return true;
}

bool nextBookmark(CodeEditor &editor)
{
    long next = editor.send(S::SCI_MARKERNEXT, ulong(editor.caretLine()) + 1, bookmarks);
    if (next < 0 && goesRound(editor))
        next = editor.send(S::SCI_MARKERNEXT, 0, bookmarks);
    return caretToBookmark(editor, next);
}

bool previousBookmark(CodeEditor &editor)
{
    const int line = editor.caretLine();
    long previous = line > 0 ? editor.send(S::SCI_MARKERPREVIOUS, ulong(line) - 1, bookmarks) : -1;
    if (previous < 0 && goesRound(editor))
        previous = editor.send(S::SCI_MARKERPREVIOUS, ulong(editor.lineCount()) - 1, bookmarks);
    return caretToBookmark(editor, previous);
}

bool clearBookmarks(CodeEditor &editor)
{
    const bool any = editor.send(S::SCI_MARKERNEXT, 0, bookmarks) >= 0;
    editor.send(S::SCI_MARKERDELETEALL, bookmarkMarker);
    return any;
}

bool caretToMatchingTag(CodeEditor &editor)
{
    const std::optional<TagMatch> match = tagMatchAnywhere(editor, caretOf(editor));
    if (!match || !match->partner)
        return notePartnerMissing(editor, match);
    editor.showPosition(long(match->partner->name.start));
    return true;
}

bool selectElement(CodeEditor &editor)
{
    const std::optional<TagMatch> match = tagMatchAnywhere(editor, caretOf(editor));
    if (!match || (match->markup.isOfPair() && !match->partner))
        return notePartnerMissing(editor, match);
    const Markup &other = match->partner ? *match->partner : match->markup;
    const Markup &first = other.whole.start < match->markup.whole.start ? other : match->markup;
    const Markup &last = other.whole.start < match->markup.whole.start ? match->markup : other;
    return selectRange(editor, long(first.whole.start), long(last.whole.end()));
}

bool caretToMatchingBrace(CodeEditor &editor)
{
    const std::optional<BracePair> braces = bracesAt(editor);
    if (!braces)
        return false;
    editor.showPosition(braces->far);
    return true;
}

bool selectToMatchingBrace(CodeEditor &editor)
{
    const std::optional<BracePair> braces = bracesAt(editor);
    return braces && selectRange(editor, braces->near, braces->far);
}

} // namespace control
