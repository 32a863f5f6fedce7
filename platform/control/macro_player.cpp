#include "platform/control/macro_player.h"

#include "platform/control/code_editor.h"
#include "platform/control/editor_commands.h"

#include <algorithm>
#include <span>

namespace control {

namespace {

using S = QsciScintillaBase;

constexpr int undoCommand = 100;
constexpr int redoCommand = 101;
constexpr int tabCommand = 128;
constexpr int newLineCommand = 121;
constexpr qint64 askEvery = 100; // milliseconds

// Moves and deletions that say nothing where the text ends: a play that they bring no further is at its end.
constexpr unsigned advances[] = {
    S::SCI_DELETEBACK, S::SCI_DELWORDLEFT,    S::SCI_DELWORDRIGHT,    S::SCI_CHARLEFT,
    S::SCI_CHARRIGHT,  S::SCI_CHARLEFTEXTEND, S::SCI_CHARRIGHTEXTEND, S::SCI_LINEUP,
    S::SCI_LINEDOWN,   S::SCI_LINEUPEXTEND,   S::SCI_LINEDOWNEXTEND,  S::SCI_PAGEUP,
    S::SCI_PAGEDOWN,   S::SCI_PAGEUPEXTEND,   S::SCI_PAGEDOWNEXTEND,  S::SCI_PARAUP,
    S::SCI_PARADOWN,   S::SCI_PARAUPEXTEND,   S::SCI_PARADOWNEXTEND,  S::SCI_WORDLEFT,
    S::SCI_WORDRIGHT,  S::SCI_WORDLEFTEXTEND, S::SCI_WORDRIGHTEXTEND,
};

// Those that go on to the line's end in the last line, or to its start in the first.
constexpr unsigned lineMoves[] = {S::SCI_LINEUP, S::SCI_LINEDOWN, S::SCI_LINEUPEXTEND, S::SCI_LINEDOWNEXTEND};

bool isAmong(std::span<const unsigned> messages, int command)
{
    const EditorCommand *row = findEditorCommand(command);
    return row != nullptr && row->message != 0
        && std::find(messages.begin(), messages.end(), row->message) != messages.end();
}

// The key that a character of a text stands for.
Step strokeOf(QByteArrayView character)
{
    if (character == QByteArrayView("\n"))
        return {newLineCommand, {}};
    if (character == QByteArrayView("\t"))
        return {tabCommand, {}};
    return {0, character.toByteArray()};
}

qsizetype lengthOfFirst(QByteArrayView text)
{
    qsizetype length = 1;
    while (length < text.size() && (quint8(text[length]) & 0xC0U) == 0x80U)
        ++length;
    return length;
}

} // namespace

void MacroPlayer::watch(const GoOn &goOn, const Ended &ended)
{
    goOn_ = goOn;
    ended_ = ended;
}

bool MacroPlayer::play(const Macro &macro)
{
    if (!enter(true))
        return false;
    const Span whole = span_;
    qsizetype at = 0;
    while (at < macro.size() && goesOn(whole, at, macro.size()) && does(macro[at]))
        ++at;
    const bool finished = at == macro.size();
    span_ = whole;
    leave(); // whoever is told of the end may let go of the macro
    return finished;
}

bool MacroPlayer::repeat(const Step &step)
{
    if (!enter(step.command != undoCommand && step.command != redoCommand))
        return false;
    const Span whole = span_;
    Step once = step;
    once.times = 1;
    int round = 0;
    if (depth_ == 1)
        report_.asked = step.times;
    while (round < step.times && goesOn(whole, round, step.times) && does(once)) {
        ++round;
        if (depth_ == 1)
            report_.rounds = round;
    }
    // Within a macro the steps that follow have their turn.
    if (depth_ > 1 && round > 0 && report_.end == PlayEnd::StepFailed)
        report_.end = PlayEnd::Done;
    span_ = whole;
    leave();
    return round > 0;
}

bool MacroPlayer::spell(const QByteArray &text)
{
    if (!enter(true))
        return false;
    const Span whole = span_;
    QByteArrayView rest = text;
    while (!rest.empty() && goesOn(whole, text.size() - rest.size(), text.size())) {
        const qsizetype length = lengthOfFirst(rest);
        if (!does(strokeOf(rest.first(length))))
            break;
        rest = rest.sliced(length);
    }
    span_ = whole;
    leave();
    return rest.empty();
}

bool MacroPlayer::enter(bool asOneUndo)
{
    if (depth_ >= deepest)
        return false;
    if (depth_++ > 0)
        return true;
    report_ = {};
    span_ = {};
    largest_ = std::max(mostText, 2 * editor_.send(S::SCI_GETLENGTH));
    sinceAsked_.start();
    editor_.beginQuiet();
    if (asOneUndo)
        undo_.emplace(editor_);
    return true;
}

void MacroPlayer::leave()
{
    if (depth_ > 1) {
        --depth_;
        return;
    }
    undo_.reset();
    editor_.endQuiet();
    depth_ = 0;
    if (ended_)
        ended_(report_);
}

bool MacroPlayer::goesOn(const Span &whole, qint64 at, qint64 of)
{
    if (stopped())
        return false;
    span_ = {whole.start + whole.width * double(at) / double(of), whole.width / double(of)};
    if (report_.steps >= mostSteps)
        return stop(PlayEnd::TooManySteps);
    if (editor_.send(S::SCI_GETLENGTH) > largest_)
        return stop(PlayEnd::TextTooLarge);
    if (!goOn_ || sinceAsked_.elapsed() < askEvery)
        return true;
    report_.part = span_.start;
    const bool going = goOn_(report_);
    sinceAsked_.start();
    return going || stop(PlayEnd::Cancelled);
}

bool MacroPlayer::stop(PlayEnd end)
{
    report_.end = end;
    return false;
}

bool MacroPlayer::stopped() const
{
    return report_.end != PlayEnd::Done && report_.end != PlayEnd::StepFailed;
}

MacroPlayer::Place MacroPlayer::place() const
{
    return {editor_.revision(), editor_.send(S::SCI_GETCURRENTPOS), editor_.send(S::SCI_GETANCHOR)};
}

bool MacroPlayer::isFurther(const Place &before, int command) const
{
    const Place now = place();
    if (now == before || !isAmong(lineMoves, command))
        return now != before;
    const long line = editor_.send(S::SCI_LINEFROMPOSITION, ulong(now.caret));
    return line != editor_.send(S::SCI_LINEFROMPOSITION, ulong(before.caret))
        || editor_.send(S::SCI_WRAPCOUNT, ulong(line)) > 1;
}

bool MacroPlayer::does(const Step &step)
{
    ++report_.steps;
    const bool watched = step.times == 1 && isAmong(advances, step.command);
    const Place before = watched ? place() : Place();
    bool done = editor_.perform(step);
    if (watched && !isFurther(before, step.command))
        done = false;
    // The innermost step is the one to name.
    if (!done && report_.end == PlayEnd::Done) {
        report_.end = PlayEnd::StepFailed;
        report_.failed = step;
    }
    return done && !stopped();
}

} // namespace control
