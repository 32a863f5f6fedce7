#include "platform/control/macro_recorder.h"

#include "platform/control/code_editor.h"
#include "platform/control/undo_step.h"

#include <QHash>

namespace control {

namespace {

constexpr int undoCommand = 100;
constexpr int redoCommand = 101;

} // namespace

void MacroRecorder::start()
{
    // An undo during the recording shall not reach back into what was typed just before it.
    UndoStep(editor_).end();
    recording_ = true;
    taken_.clear();
    used_ = 0;
    hashedRevision_ = editor_.revision() - 1;
    textAtStart_ = textNow();
}

platform::Result<void> MacroRecorder::take(const Step &step)
{
    if (!recording_)
        return {};
    if (step.command == undoCommand || step.command == redoCommand)
        return followUndo(step.command == redoCommand);
    if (step.command != 0 && !standsInMacro(step.command))
        return {};
    if (bytesOf({step}).isEmpty())
        return platform::Failure{QStringLiteral("A macro cannot hold that text.")};
    if (used_ >= mostMacroSteps)
        return platform::Failure{QStringLiteral("A macro cannot hold more steps.")};
    taken_.resize(used_);
    taken_.append({step, textNow()});
    ++used_;
    return {};
}

// The recording goes back to where the text was the same. Steps that moved the caret only are undone along.
platform::Result<void> MacroRecorder::followUndo(bool redo)
{
    const size_t now = textNow();
    qsizetype at = used_;
    while (at >= 0 && at <= taken_.size() && textAfter(at) != now)
        at += redo ? 1 : -1;
    if (at < 0 || at > taken_.size()) {
        return platform::Failure{redo ? QStringLiteral("What was redone is not in the macro.")
                                      : QStringLiteral("What was undone here was no part of the macro.")};
    }
    used_ = at;
    return {};
}

qsizetype MacroRecorder::strokes() const
{
    qsizetype strokes = 0;
    for (qsizetype i = 0; i < used_; ++i)
        strokes += strokesIn({taken_[i].step});
    return strokes;
}

Macro MacroRecorder::finish()
{
    const Macro macro = withTextJoined(kept());
    recording_ = false;
    taken_.clear();
    used_ = 0;
    return macro;
}

Macro MacroRecorder::kept() const
{
    Macro macro;
    for (qsizetype i = 0; i < used_; ++i)
        macro += taken_[i].step;
    return macro;
}

size_t MacroRecorder::textNow()
{
    if (hashedRevision_ == editor_.revision())
        return hash_;
    hash_ = qHash(editor_.textInPlace());
    hashedRevision_ = editor_.revision();
    return hash_;
}

} // namespace control
