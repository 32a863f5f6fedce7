// Searching the text of an editor: from match to match, around the end, and putting something in the place of
// a match. Knows no controls.
#pragma once

#include "editor/editor_text.h"
#include "editor/search_scope.h"
#include "platform/control/replacement_text.h"

#include <memory>

namespace editor {

enum class Finding
{
    Found,
    ContinuedAtStart,
    ContinuedAtEnd,
    Missing,
    MissingToEnd, // in the direction searched, since what is played does not go round
    TooSlow,
    TooComplex,
    Faulty // the pattern cannot be searched for
};

constexpr bool isFound(Finding finding)
{
    return finding == Finding::Found || finding == Finding::ContinuedAtStart
        || finding == Finding::ContinuedAtEnd;
}

enum class Direction
{
    Forwards,
    Backwards
};

class FindSession : public QObject
{
public:
    // Belongs to parent; the editor outlives it.
    FindSession(control::CodeEditor &editor, QObject *parent);

    void setPattern(const control::SearchPattern &pattern);
    // Null while there is nothing that could be searched for.
    std::shared_ptr<const control::TextSearch> search() const;
    const std::optional<control::PatternFault> &fault() const { return search_->fault(); }
    SearchScope &scope() { return scope_; }

    // Selects the next match from the selection on. Around the end only where nothing is played: a repeated
    // macro would do its work on the same place again.
    Finding find(Direction direction);
    // Selects the first match from a place on; gives up early, since somebody is typing.
    Finding findFrom(qsizetype place);
    // Whether the selection is a match.
    bool isOnMatch() const;
    // Puts the replacement in the place of the selected match, as one step of undo; the caret ends up behind
    // it. Nothing happens when the selection is no match.
    bool replace(const control::ReplacementText &replacement);

private:
    Finding told(const control::SearchResult &result, Finding found);
    control::SearchResult look(Direction direction, qsizetype from, const QDeadlineTimer &deadline) const;
    void select(const control::TextMatch &match);

    control::CodeEditor &editor_;
    SearchScope scope_;
    std::shared_ptr<const control::TextSearch> search_;
    std::optional<control::TextMatch> current_; // selected last
    quint64 revision_ = 0; // of the text in which it was
};

} // namespace editor
