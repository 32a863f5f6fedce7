#include "platform/control/tag_renaming.h"

#include "platform/control/closing_tag.h"
#include "platform/control/code_editor.h"
#include "platform/control/text_window.h"

#include <algorithm>
#include <utility>

namespace control {

namespace {

using S = QsciScintillaBase;

constexpr int deleteBack = 105;
constexpr int deleteForward = 195;
// Commands that can change the letters of a name: cutting, pasting, deleting, changing the case.
constexpr int changing[]
    = {102, 104, deleteBack, 106, 107, 108, 109, 110, 114, 116, 125, 145, 146, 147, 148, deleteForward};

constexpr long longestName = 1024;

bool mayChangeName(const Step &step)
{
    return step.command == 0
        || std::find(std::begin(changing), std::end(changing), step.command) != std::end(changing);
}

char byteAt(const CodeEditor &editor, long position)
{
    return char(editor.send(S::SCI_GETCHARAT, ulong(position)));
}

// Whether a position can be in a tag's name; looks at single bytes, which costs next to nothing.
bool mayBeInName(const CodeEditor &editor, long position)
{
    long start = position;
    while (start > 0 && position - start < longestName && isNameByte(byteAt(editor, start - 1)))
        --start;
    if (start == 0)
        return false;
    const char before = byteAt(editor, start - 1);
    return before == '<' || (before == '/' && start > 1 && byteAt(editor, start - 2) == '<');
}

// Whether the tag around a position ends with ">", as one that is only being written does not. Looks at the
// nearest bytes.
bool isFollowedByEnd(const CodeEditor &editor, long position)
{
    constexpr long longestTag = 8L * 1024;
    for (const char c : textWindow(editor, position, position + longestTag).bytes)
        if (c == '<' || c == '>')
            return c == '>';
    return false;
}

bool isClosed(const CodeEditor &editor, const Markup &tag)
{
    return byteAt(editor, long(tag.whole.end()) - 1) == '>';
}

bool within(const Span &inner, const Span &outer)
{
    return inner.start >= outer.start && inner.end() <= outer.end();
}

QByteArray bytesOf(const CodeEditor &editor, const Span &span)
{
    return editor.bytes({long(span.start), long(span.end())});
}

// The stretches at which two names stand, when the first named becomes as long as told.
void resize(Span &changed, Span &other, qsizetype length)
{
    if (other.start > changed.start)
        other.start += length - changed.length;
    changed.length = length;
}

void put(CodeEditor &editor, const Span &where, const QByteArray &name)
{
    editor.replaceRange({long(where.start), long(where.end())}, name);
}

} // namespace

std::optional<TagRenaming::Link> TagRenaming::linkAt(const CodeEditor &editor, const Span &selected) const
{
    if (link_ && link_->revision == editor.revision()) {
        if (within(selected, link_->own))
            return link_;
        if (within(selected, link_->partner))
            return Link{link_->partner, link_->own, link_->revision};
    }
    if (!mayBeInName(editor, long(selected.start)) || !isFollowedByEnd(editor, long(selected.end())))
        return std::nullopt;
    const std::optional<TagMatch> match = tagMatchAt(editor, long(selected.start));
    if (!match || !match->partner || !within(selected, match->markup.name) || !isClosed(editor, match->markup)
        || !isClosed(editor, *match->partner))
        return std::nullopt;
    const Markup &start = match->markup.kind == MarkupKind::StartTag ? match->markup : *match->partner;
    if (!closedBehind(editor, bytesOf(editor, start.name), long(start.whole.start), long(start.whole.end())))
        return std::nullopt;
    return Link{match->markup.name, match->partner->name, editor.revision()};
}

void TagRenaming::before(CodeEditor &editor, const Step &step)
{
    armed_.reset();
    if (!mayChangeName(step)) {
        run_.reset();
        return;
    }
    if (!editor.properties().renameBoth || editor.language() == Language::Plain
        || editor.send(S::SCI_GETSELECTIONS) != 1 || editor.send(S::SCI_SELECTIONISRECTANGLE) != 0)
        return;
    const ByteRange selection = editor.selection();
    const std::optional<Link> link = linkAt(editor, {selection.start, selection.length()});
    if (!link)
        return;
    const bool runGoesOn = run_ && run_->revision == editor.revision() && run_->command == step.command
        && selection.length() == 0;
    armed_.emplace(Armed{*link, bytesOf(editor, link->own), editor.send(S::SCI_GETCURRENTPOS),
                         editor.send(S::SCI_GETLENGTH), runGoesOn, UndoStep(editor)});
}

void TagRenaming::after(CodeEditor &editor, const Step &step, bool mergeable)
{
    std::optional<Armed> armed = std::exchange(armed_, std::nullopt);
    if (!armed)
        return;
    const bool renamed = editor.revision() != armed->link.revision && rename(editor, *armed);
    armed->undo.end();
    link_.reset();
    if (!renamed) {
        run_.reset();
        return;
    }
    link_ = armed->link;
    const bool single
        = mergeable && (step.command == 0 || step.command == deleteBack || step.command == deleteForward);
    if (single && armed->runGoesOn)
        merge(editor);
    else
        run_ = single ? std::optional<Run>({step.command, armed->nameBefore, armed->caretBefore, 0})
                      : std::nullopt;
    link_->revision = editor.revision();
    if (run_)
        run_->revision = editor.revision();
}

// Gives the partner the name that the step has left behind; false when what the step changed was not a name.
bool TagRenaming::rename(CodeEditor &editor, Armed &armed)
{
    Span &own = armed.link.own;
    Span &partner = armed.link.partner;
    const long delta = editor.send(S::SCI_GETLENGTH) - armed.lengthBefore;
    const auto start = long(own.start);
    const char before = start == 0 ? '\0' : byteAt(editor, start - 1);
    long end = start;
    while (end - start < longestName && isNameByte(byteAt(editor, end)))
        ++end;
    const bool nameOnly = end == long(own.end()) + delta;
    if ((before != '<' && before != '/') || (end == start && !nameOnly))
        return false;
    const QByteArray name = editor.bytes({start, end});
    if (name == armed.nameBefore)
        return false;
    if (partner.start > own.start)
        partner.start += delta;
    own.length = end - start;
    editor.markStepCaret(armed.caretBefore);
    put(editor, partner, name);
    resize(partner, own, name.size());
    editor.markStepCaret(editor.send(S::SCI_GETCURRENTPOS));
    return true;
}

// Takes this step and the ones before it back and does all at once, so that one step of undo does the same.
// What is in sight stays, however far away the partner is.
void TagRenaming::merge(CodeEditor &editor)
{
    const QByteArray name = bytesOf(editor, link_->own);
    const long caret = editor.send(S::SCI_GETCURRENTPOS) - long(link_->own.start);
    const long firstInSight = editor.send(S::SCI_GETFIRSTVISIBLELINE);
    Link old = *link_;
    resize(old.own, old.partner, run_->nameBefore.size());
    resize(old.partner, old.own, run_->nameBefore.size());
    editor.send(S::SCI_UNDO);
    editor.send(S::SCI_UNDO);
    UndoStep step(editor);
    editor.markStepCaret(run_->caretBefore);
    put(editor, old.own, name);
    resize(old.own, old.partner, name.size());
    put(editor, old.partner, name);
    editor.send(S::SCI_SETEMPTYSELECTION, ulong(link_->own.start + caret));
    editor.markStepCaret(link_->own.start + caret);
    step.end();
    editor.send(S::SCI_SETFIRSTVISIBLELINE, ulong(firstInSight));
}

} // namespace control
