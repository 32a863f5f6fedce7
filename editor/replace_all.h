// Replaces all matches as one edit: they are looked for in slices of time, and nothing is changed before all
// are known.
#pragma once

#include "editor/match_walk.h"
#include "platform/control/replacement_text.h"

#include <QObject>
#include <QTimer>
#include <optional>
#include <vector>

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
    // What is put in the place of a match: a piece of one long text.
    struct Edit
    {
        control::TextMatch match;
        qsizetype textEnd;
    };

    void advance(int milliseconds);
    void finish(Outcome outcome);
    void apply();
    void applyOneByOne();
    void applyAsOne();
    QByteArrayView textOf(size_t edit) const;

    control::CodeEditor &editor_;
    std::optional<MatchWalk> walk_;
    std::optional<control::ReplacementText> replacement_;
    std::vector<Edit> edits_;
    QByteArray texts_;
    QTimer slices_;
};

} // namespace editor
