#include "platform/control/typing_help.h"

#include "platform/control/closing_tag.h"
#include "platform/control/code_editor.h"

#include <algorithm>

namespace control {

namespace {

using S = QsciScintillaBase;

enum Command
{
    DeleteBack = 105,
    NewLine = 121,
    Tab = 128,
    CancelSelection = 140,
    CompleteName = 212
};

// Commands that move in an open list, and the engine's messages for that.
constexpr std::pair<int, unsigned> moving[]
    = {{166, S::SCI_LINEUP}, {167, S::SCI_LINEDOWN}, {172, S::SCI_PAGEUP}, {173, S::SCI_PAGEDOWN}};

// One character typed, which can be a letter of a name.
bool typesLetter(const Step &step)
{
    const auto begins = [](char c) { return (uchar(c) & 0xC0) != 0x80; };
    return step.command == 0 && !step.text.isEmpty()
        && std::count_if(step.text.begin(), step.text.end(), begins) == 1 && isNameByte(step.text.back());
}

} // namespace

bool TypingHelp::takes(const Step &step)
{
    alone_ = depth_ == 0 && !editor_.isQuiet();
    if (!alone_ || step.command == 0 || !NameOffer::isOpen(editor_))
        return false;
    for (const auto &[command, message] : moving) {
        if (step.command == command) {
            editor_.send(message);
            return true;
        }
    }
    if (step.command == DeleteBack || step.command == CompleteName)
        return false;
    if (step.command != NewLine && step.command != Tab) {
        NameOffer::close(editor_);
        return step.command == CancelSelection;
    }
    const QByteArray rest = offer_.chosenRest(editor_);
    NameOffer::close(editor_);
    // A word that is there already leaves the key to itself.
    if (rest.isEmpty())
        return false;
    editor_.perform({0, rest});
    return true;
}

void TypingHelp::takeWord(const QByteArray &word)
{
    const QByteArray rest = offer_.restOf(editor_, word);
    NameOffer::close(editor_);
    if (!rest.isEmpty())
        editor_.perform({0, rest});
}

// A macro has the name that was taken as a step of its own, so it needs no list.
bool TypingHelp::offerNames() { return depth_ != 1 || editor_.isQuiet() || offer_.show(editor_); }

bool TypingHelp::isAlone() const { return alone_ && depth_ == 0 && !editor_.isQuiet(); }

void TypingHelp::forget()
{
    renaming_ = {};
    typedAlong_.clear();
    byHand_.clear();
    offer_.forget();
}

bool TypingHelp::mayClose() const
{
    return editor_.language() != Language::Plain && editor_.send(S::SCI_GETSELECTIONS) == 1
        && editor_.send(S::SCI_SELECTIONISRECTANGLE) == 0;
}

// What is typed is looked at first: most letters end here.
void TypingHelp::before(const Step &step)
{
    ++depth_;
    completion_.clear();
    undo_.reset();
    if (repeatsCompletion(step)) {
        undo_.emplace(editor_);
        return;
    }
    const long caret = editor_.selection().start;
    if (step.command == 0 && step.text == "/" && editor_.properties().closeOnSlash && mayClose() && caret > 0
        && editor_.send(S::SCI_GETCHARAT, ulong(caret - 1)) == '<' && editor_.selection().length() == 0)
        completion_ = completionOfSlash(editor_, caret - 1);
    else if (step.command == 0 && step.text == ">" && editor_.properties().closeOnBracket && mayClose())
        completion_ = completionOfBracket(editor_, caret);
    if (completion_.isEmpty())
        renaming_.before(editor_, step);
    else
        undo_.emplace(editor_);
}

void TypingHelp::after(const Step &step)
{
    --depth_;
    if (!byHand_.isEmpty() && byHand_ == typedAlong_)
        takeBackByHand();
    else if (!completion_.isEmpty())
        closeTag(step);
    else
        renaming_.after(editor_, step, isAlone());
    undo_.reset();
    if (isAlone())
        offerAfter(step);
    if (depth_ == 0)
        alone_ = false;
}

void TypingHelp::closeTag(const Step &step)
{
    const QByteArray completion = std::exchange(completion_, {});
    const long caret = editor_.send(S::SCI_GETCURRENTPOS);
    const bool slash = step.text == "/";
    editor_.SendScintilla(S::SCI_INSERTTEXT, uintptr_t(caret), completion.constData());
    editor_.send(S::SCI_SETEMPTYSELECTION, ulong(slash ? caret + completion.size() : caret));
    if (slash && editor_.properties().autoIndent)
        alignClosingTag(editor_);
    if (slash) {
        typedAlong_ = completion;
        typedAlongEnd_ = editor_.send(S::SCI_GETCURRENTPOS);
        byHand_.clear();
    }
}

// Out of habit a tag is typed to its end though that stands there already. True for the step that ends it.
bool TypingHelp::repeatsCompletion(const Step &step)
{
    if (typedAlong_.isEmpty())
        return false;
    const ByteRange caret = editor_.selection();
    const QByteArray more = byHand_ + step.text;
    if (step.command != 0 || caret.length() != 0 || caret.start != typedAlongEnd_ + byHand_.size()
        || !typedAlong_.startsWith(more)) {
        typedAlong_.clear();
        byHand_.clear();
        return false;
    }
    byHand_ = more;
    return byHand_ == typedAlong_;
}

void TypingHelp::takeBackByHand()
{
    editor_.send(S::SCI_DELETERANGE, ulong(typedAlongEnd_), byHand_.size());
    typedAlong_.clear();
    byHand_.clear();
}

void TypingHelp::offerAfter(const Step &step)
{
    if (step.command == CompleteName)
        return;
    const bool open = NameOffer::isOpen(editor_);
    const bool letter = typesLetter(step) && editor_.properties().offerNames;
    const bool deletes = step.command == DeleteBack && (open || offer_.wasShown());
    if (letter || deletes || (open && typesLetter(step)))
        offer_.follow(editor_, letter && editor_.send(S::SCI_GETSELECTIONS) == 1);
    else if (open)
        NameOffer::close(editor_);
}

} // namespace control
