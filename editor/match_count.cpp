#include "editor/match_count.h"

#include "editor/search_scope.h"

#include <algorithm>

namespace editor {

namespace {

constexpr int slice = 8; // milliseconds
constexpr int pauseBeforeCounting = 200; // milliseconds without an edit
constexpr size_t mostCounted = 1'000'000;

} // namespace

MatchCount::MatchCount(const control::CodeEditor &editor, const SearchScope &scope, QObject *parent)
    : QObject(parent), editor_(editor), scope_(scope)
{
    slices_.setInterval(0);
    pause_.setInterval(pauseBeforeCounting);
    pause_.setSingleShot(true);
    connect(&slices_, &QTimer::timeout, this, &MatchCount::advance);
    connect(&pause_, &QTimer::timeout, this, [this] { start(search_); });
}

void MatchCount::start(std::shared_ptr<const control::TextSearch> search)
{
    search_ = std::move(search);
    starts_.clear();
    more_ = false;
    walk_.reset();
    pause_.stop();
    slices_.stop();
    if (search_) {
        walk_.emplace(editor_, search_, scope_.range());
        more_ = true;
        slices_.start();
        advance();
    } else {
        Q_EMIT changed();
    }
}

void MatchCount::restartSoon()
{
    slices_.stop();
    if (search_)
        pause_.start();
}

void MatchCount::advance()
{
    const MatchWalk::State state = walk_->advance(
        slice, [this](QByteArrayView, const control::TextMatch &match) { starts_.push_back(match.start); });
    if (state == MatchWalk::State::TextChanged) {
        restartSoon();
        return;
    }
    if (state != MatchWalk::State::Going || starts_.size() >= mostCounted) {
        more_ = state != MatchWalk::State::Done;
        slices_.stop();
    }
    Q_EMIT changed();
}

QString MatchCount::text(const control::TextMatch &selected) const
{
    if (!search_)
        return {};
    const QString count = QString::number(starts_.size()) + (more_ ? QStringLiteral("+") : QString());
    const auto found = std::lower_bound(starts_.begin(), starts_.end(), selected.start);
    const bool onMatch = found != starts_.end() && *found == selected.start && selected.length() > 0;
    if (onMatch)
        return QStringLiteral("%1 of %2").arg(found - starts_.begin() + 1).arg(count);
    if (starts_.empty() && !more_)
        return QStringLiteral("No match");
    return starts_.size() == 1 && !more_ ? QStringLiteral("1 match")
                                         : QStringLiteral("%1 matches").arg(count);
}

} // namespace editor
