// Replaces all matches as one edit: they are looked for, and the new text is made, in slices of time. Nothing
// is changed before all of it is there, and then at once, so that nobody can meet a text that is half done.
#pragma once

#include "editor/match_walk.h"
#include "editor/replacing_text.h"
#include "platform/control/replacement_text.h"

#include <QObject>
#include <QTimer>
#include <optional>

namespace editor {

class ReplaceAll : public QObject
{
    Q_OBJECT

public:
    enum class Outcome
    {
        Replaced,
        Cancelled,
        TextChanged,
        GaveUp
    };

    // Belongs to parent; the editor outlives it.
    ReplaceAll(control::CodeEditor &editor, QObject *parent);

    // Small work is done at once, before this returns.
    void start(std::shared_ptr<const control::TextSearch> search, const control::ReplacementText &replacement,
               const control::TextMatch &range);
    // Ends the work with the text untouched.
    void cancel();
    bool isRunning() const { return walk_.has_value(); }

Q_SIGNALS:
    void progressed(int percent);
    // Count is the number of matches replaced.
    void finished(editor::ReplaceAll::Outcome outcome, qsizetype count);

private:
    void advance(int milliseconds);
    void commit();
    void finish(Outcome outcome);

    control::CodeEditor &editor_;
    std::optional<MatchWalk> walk_;
    std::optional<control::ReplacementText> replacement_;
    std::optional<ReplacingText> text_;
    QTimer slices_;
};

} // namespace editor
