#include "editor/match_walk.h"

namespace editor {

namespace {

constexpr int matchesBetweenLooks = 32; // at the clock

} // namespace

MatchWalk::MatchWalk(const control::CodeEditor &editor, std::shared_ptr<const control::TextSearch> search,
                     const control::TextMatch &range)
    : editor_(&editor), search_(std::move(search)), range_(range), revision_(editor.revision()),
      place_(range.start)
{ }

MatchWalk::State MatchWalk::advance(int milliseconds, const Visit &visit)
{
    if (editor_->revision() != revision_)
        return State::TextChanged;
    const control::SearchArea area(editor_->textInPlace(), range_);
    const QDeadlineTimer deadline(milliseconds);
    for (int visited = 1;; ++visited) {
        const control::SearchResult found = search_->next(area, place_, deadline);
        if (found.outcome == control::SearchOutcome::Missing) {
            place_ = range_.end;
            return State::Done;
        }
        if (found.outcome == control::SearchOutcome::GaveUp)
            return State::GaveUp;
        if (found.outcome == control::SearchOutcome::OutOfTime) {
            place_ = found.reached;
            return State::Going;
        }
        visit(area.text, found.match);
        place_ = control::TextSearch::behind(area.text, found.match);
        if (visited % matchesBetweenLooks == 0 && deadline.hasExpired())
            return State::Going;
    }
}

int MatchWalk::progress() const
{
    const qsizetype length = range_.length();
    return length == 0 ? 100 : int(100 * (std::min(place_, range_.end) - range_.start) / length);
}

} // namespace editor
