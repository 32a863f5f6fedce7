// Plays steps on an editor many at a time: unseen, as one step of undo, until one fails or somebody says
// stop.
#pragma once

#include "platform/control/macro.h"
#include "platform/control/undo_step.h"

#include <QElapsedTimer>
#include <functional>
#include <optional>

namespace control {

class CodeEditor;

enum class PlayEnd
{
    Done,
    StepFailed,
    Cancelled,
    TooManySteps,
    TextTooLarge
};

// How far a play has come, or how it ended.
struct PlayReport
{
    PlayEnd end = PlayEnd::Done;
    Step failed; // the step that could do nothing, for StepFailed
    qint64 steps = 0; // done in all
    int rounds = 0; // done whole, of those asked for
    int asked = 1;
    double part = 0; // of all there is to do, 0 to 1
};

class MacroPlayer
{
public:
    // Macros that play others could go on for years and fill the memory.
    static constexpr qint64 mostSteps = 20'000'000;
    static constexpr long mostText = 128L << 20; // bytes, for a text that was smaller at first
    static constexpr int deepest = 100;

    using GoOn = std::function<bool(const PlayReport &)>;
    using Ended = std::function<void(const PlayReport &)>;

    // Part of the editor.
    explicit MacroPlayer(CodeEditor &editor) : editor_(editor) { }

    // goOn is asked about ten times a second whether to; ended is told at the end of each play, though not
    // of those within a play.
    void watch(const GoOn &goOn, const Ended &ended);

    // False when a step failed or the play was stopped; what was done until then stays.
    bool play(const Macro &macro);

    // One step as often as it says; ends early when it fails. False when nothing came of it. Undo and redo
    // are repeated one by one.
    bool repeat(const Step &step);

    // Text letter by letter, as if typed.
    bool spell(const QByteArray &text);

    bool playing() const { return depth_ > 0; }

private:
    struct Span
    {
        double start = 0;
        double width = 1;
    };

    // What a step changes when it gets anywhere.
    struct Place
    {
        quint64 revision = 0;
        long caret = 0;
        long anchor = 0;
        bool operator==(const Place &) const = default;
    };

    bool enter(bool asOneUndo);
    void leave();
    bool goesOn(const Span &whole, qint64 at, qint64 of);
    bool stop(PlayEnd end);
    bool stopped() const;
    Place place() const;
    bool isFurther(const Place &before, int command) const;
    bool does(const Step &step);

    CodeEditor &editor_;
    GoOn goOn_;
    Ended ended_;
    int depth_ = 0;
    std::optional<UndoStep> undo_;
    long largest_ = mostText;
    Span span_; // where in the whole the present step lies
    PlayReport report_;
    QElapsedTimer sinceAsked_;
};

} // namespace control
