// Records what the user does in an editor. What is undone meanwhile is taken out of the recording, what is
// redone comes back in: a typing error and its repair are not what the macro is for.
#pragma once

#include "platform/control/macro.h"
#include "platform/result.h"

namespace control {

class CodeEditor;

class MacroRecorder
{
public:
    explicit MacroRecorder(CodeEditor &editor) : editor_(editor) { }

    bool recording() const { return recording_; }

    void start();

    // To be told of each step after it was taken; those that cannot stand in a macro are left out. The
    // failure says what the recording will not hold although the text does.
    platform::Result<void> take(const Step &step);

    // Ends the recording and hands it out.
    Macro finish();

    qsizetype strokes() const;

private:
    // A step, and the text it led to.
    struct Taken
    {
        Step step;
        size_t text = 0;
    };

    Macro kept() const;
    size_t textAfter(qsizetype steps) const { return steps == 0 ? textAtStart_ : taken_[steps - 1].text; }
    platform::Result<void> followUndo(bool redo);
    size_t textNow();

    CodeEditor &editor_;
    bool recording_ = false;
    QList<Taken> taken_;
    qsizetype used_ = 0; // the steps behind these were undone
    size_t textAtStart_ = 0;
    quint64 hashedRevision_ = 0;
    size_t hash_ = 0;
};

} // namespace control
