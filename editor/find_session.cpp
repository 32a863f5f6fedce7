#include "editor/find_session.h"

#include "platform/control/left_edge.h"
#include "platform/control/undo_step.h"

namespace editor {

namespace {

using S = QsciScintillaBase;

constexpr int patience = 5000; // milliseconds
constexpr int patienceWhileTyping = 300; // milliseconds

} // namespace

FindSession::FindSession(control::CodeEditor &editor, QObject *parent)
    : QObject(parent), editor_(editor), scope_(editor, this),
      search_(std::make_shared<control::TextSearch>(control::SearchPattern{}))
{ }

void FindSession::setPattern(const control::SearchPattern &pattern)
{
    if (pattern == search_->pattern())
        return;
    search_ = std::make_shared<control::TextSearch>(pattern);
    current_.reset();
}

std::shared_ptr<const control::TextSearch> FindSession::search() const
{
    return search_->pattern().text.isEmpty() || search_->fault() ? nullptr : search_;
}

control::SearchResult FindSession::look(Direction direction, qsizetype from,
                                        const QDeadlineTimer &deadline) const
{
    return direction == Direction::Forwards ? search_->next(scope_.area(), from, deadline)
                                            : search_->previous(scope_.area(), from, deadline);
}

// An empty match that is selected already is stepped over.
Finding FindSession::find(Direction direction)
{
    if (search() == nullptr)
        return Finding::Faulty;
    const bool forwards = direction == Direction::Forwards;
    const control::TextMatch selected = selectionOf(editor_);
    const bool current = current_ == selected && revision_ == editor_.revision();
    qsizetype from = forwards ? selected.end : selected.start;
    if (forwards && current)
        from = control::TextSearch::behind(editor_.textInPlace(), selected);
    const QDeadlineTimer deadline(patience);
    const control::SearchResult ahead = look(direction, from, deadline);
    if (ahead.outcome != control::SearchOutcome::Missing)
        return told(ahead, Finding::Found);
    if (editor_.player().playing())
        return Finding::MissingToEnd;
    const control::TextMatch range = scope_.range();
    return told(look(direction, forwards ? range.start : range.end + 1, deadline),
                forwards ? Finding::ContinuedAtStart : Finding::ContinuedAtEnd);
}

Finding FindSession::findFrom(qsizetype place)
{
    if (search() == nullptr)
        return Finding::Faulty;
    const QDeadlineTimer deadline(patienceWhileTyping);
    const control::SearchResult ahead = look(Direction::Forwards, place, deadline);
    if (ahead.outcome != control::SearchOutcome::Missing)
        return told(ahead, Finding::Found);
    return told(look(Direction::Forwards, scope_.range().start, deadline), Finding::ContinuedAtStart);
}

Finding FindSession::told(const control::SearchResult &result, Finding found)
{
    switch (result.outcome) {
    case control::SearchOutcome::Found:
        select(result.match);
        return found;
    case control::SearchOutcome::OutOfTime:
        return Finding::TooSlow;
    case control::SearchOutcome::GaveUp:
        return Finding::TooComplex;
    case control::SearchOutcome::Missing:
        break;
    }
    return Finding::Missing;
}

// Unfolds what hides the match, and shows it in the middle when it was out of sight.
void FindSession::select(const control::TextMatch &match)
{
    current_ = match;
    revision_ = editor_.revision();
    const auto lineOf
        = [this](qsizetype place) { return editor_.send(S::SCI_LINEFROMPOSITION, ulong(place)); };
    editor_.send(S::SCI_ENSUREVISIBLE, ulong(lineOf(match.end)));
    editor_.send(S::SCI_ENSUREVISIBLE, ulong(lineOf(match.start)));
    const long shown = editor_.send(S::SCI_VISIBLEFROMDOCLINE, ulong(lineOf(match.start)));
    const long first = editor_.send(S::SCI_GETFIRSTVISIBLELINE);
    const long count = editor_.send(S::SCI_LINESONSCREEN);
    if (shown < first || shown >= first + count)
        editor_.send(S::SCI_SETFIRSTVISIBLELINE, ulong(std::max(0L, shown - count / 2)));
    editor_.send(S::SCI_SETSEL, ulong(match.start), long(match.end));
    editor_.send(S::SCI_SCROLLRANGE, ulong(match.end), long(match.start));
    control::showLeftEdge(editor_);
    editor_.send(S::SCI_CHOOSECARETX);
}

bool FindSession::isOnMatch() const
{
    const control::TextMatch selected = selectionOf(editor_);
    if (search() == nullptr || (selected.length() == 0 && current_ != selected))
        return false;
    const control::SearchResult found
        = search_->next(scope_.area(), selected.start, QDeadlineTimer(patienceWhileTyping));
    return found && found.match == selected;
}

bool FindSession::replace(const control::ReplacementText &replacement)
{
    if (!isOnMatch() || editor_.send(S::SCI_GETREADONLY) != 0)
        return false;
    const control::TextMatch match = selectionOf(editor_);
    QByteArray text;
    replacement.appendTo(text, editor_.textInPlace(), *search_);
    control::UndoStep step(editor_);
    editor_.send(S::SCI_SETTARGETRANGE, ulong(match.start), long(match.end));
    editor_.SendScintilla(S::SCI_REPLACETARGET, uintptr_t(text.size()), text.constData());
    step.end();
    const qsizetype behind = match.start + text.size();
    editor_.send(S::SCI_SETEMPTYSELECTION, ulong(behind));
    current_.reset();
    // What was empty is not found again at the same place.
    if (match.length() == 0) {
        current_ = control::TextMatch{behind, behind};
        revision_ = editor_.revision();
    }
    return true;
}

} // namespace editor
