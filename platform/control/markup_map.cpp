#include "platform/control/markup_map.h"

#include <algorithm>
#include <span>

namespace control {

namespace {

constexpr long spacing = 32 * 1024;
// What follows a place can have a say in what stands before it, as far as the longest opening goes.
constexpr long lookahead = 32;
constexpr long guessReach = 256 * 1024;
constexpr int guessedDepth = 500;

} // namespace

void MarkupMap::clear(bool html)
{
    *this = {};
    points_.front().state.html = html;
}

void MarkupMap::changed(long at, long end)
{
    complete_ = false;
    changedUpTo_ = std::max(changedUpTo_, end);
    const auto behind = std::upper_bound(points_.begin() + 1, points_.end(), at - lookahead,
                                         [](long place, const Point &point) { return place < point.at; });
    known_ = std::min(known_, size_t(behind - points_.begin()));
}

// What was read since an earlier change does not go with what was read before it.
void MarkupMap::aboutToChange()
{
    if (known_ < points_.size())
        changedUpTo_ = std::max(changedUpTo_, points_[known_].at);
}

void MarkupMap::inserted(long at, long length)
{
    aboutToChange();
    for (auto point = points_.rbegin(); point != points_.rend() - 1 && point->at >= at; ++point)
        point->at += length;
    if (changedUpTo_ >= at)
        changedUpTo_ += length;
    changed(at, at + length);
}

void MarkupMap::deleted(long at, long length)
{
    aboutToChange();
    const auto before = [](const Point &point, long place) { return point.at < place; };
    const auto first = std::lower_bound(points_.begin() + 1, points_.end(), at, before);
    const auto last = std::lower_bound(first, points_.end(), at + length, before);
    const auto moved = points_.erase(first, last);
    for (auto point = moved; point != points_.end(); ++point)
        point->at -= length;
    if (changedUpTo_ > at)
        changedUpTo_ = std::max(at, changedUpTo_ - length);
    changed(at, at);
}

long MarkupMap::known(const MarkupSource &source) const
{
    return complete_ ? source.length : points_[known_ - 1].at;
}

// A point stands at the start of a line where there are lines.
long MarkupMap::nextStop(const MarkupSource &source, QByteArrayView text, long end) const
{
    const long start = points_[known_ - 1].at;
    if (known_ < points_.size() && points_[known_].at == end)
        return end;
    if (end == source.length)
        return end;
    const qsizetype line = text.lastIndexOf('\n');
    return line < 0 ? end : start + long(line) + 1;
}

// Whether from here on the text is what it was; the depth may be another.
bool MarkupMap::meets(const Point &reached, long stop)
{
    const Point &old = points_[known_];
    MarkupState same = reached.state;
    same.depth = old.state.depth;
    if (old.at != stop || reached.at != stop || stop < changedUpTo_ || old.state != same)
        return false;
    const int deeper = reached.state.depth - old.state.depth;
    for (auto point = points_.begin() + long(known_); deeper != 0 && point != points_.end(); ++point) {
        point->state.depth += deeper;
        point->lowest += deeper;
    }
    return true;
}

void MarkupMap::advance(const MarkupSource &source, long bytes)
{
    while (bytes > 0 && !complete_) {
        Point &from = points_[known_ - 1];
        long end = std::min(from.at + spacing, source.length);
        // An old point is gone to even when it is somewhat farther, so that it can be met.
        if (known_ < points_.size() && points_[known_].at <= end + spacing)
            end = points_[known_].at;
        const QByteArrayView text = source.read(from.at, end);
        const long stop = nextStop(source, text, end);
        MarkupStyler styler(text, from.state);
        const long at = from.at + long(styler.runTo(stop - from.at, stop == source.length));
        from.lowest = styler.lowestDepth();
        bytes -= std::max(1L, at - from.at);
        const Point reached{at, styler.state(), styler.state().depth};
        const bool old = known_ < points_.size() && points_[known_].at <= stop;
        if (old && meets(reached, stop)) {
            known_ = points_.size();
            complete_ = covered_;
            changedUpTo_ = 0;
        } else if (stop == source.length) {
            points_.resize(known_);
            complete_ = covered_ = true;
            changedUpTo_ = 0;
        } else if (at == from.at) { // an old point in the midst of something
            points_.erase(points_.begin() + long(known_));
        } else {
            if (old)
                points_[known_] = reached;
            else
                points_.insert(points_.begin() + long(known_), reached);
            ++known_;
        }
    }
}

size_t MarkupMap::pointAt(long at) const
{
    const auto behind = std::upper_bound(points_.begin() + 1, points_.begin() + long(known_), at,
                                         [](long place, const Point &point) { return place < point.at; });
    return size_t(behind - points_.begin()) - 1;
}

MarkupMap::Place MarkupMap::placeAt(const MarkupSource &source, long at) const
{
    const Point &from = points_[pointAt(at)];
    const QByteArrayView text = source.read(from.at, at);
    MarkupStyler styler(text, from.state);
    const long came = from.at + long(styler.runTo(text.size(), false));
    return {came, styler.state()};
}

MarkupMap::Place MarkupMap::guessAt(const MarkupSource &source, long at, bool html)
{
    const long start = std::max(0L, at - guessReach);
    const QByteArrayView text = source.read(start, at);
    // What is read from afar comes right by itself: any "<" and any ending leads back to the text.
    static constexpr QByteArrayView marks[]
        = {"-->", "]]>", "?>", "<!--", "<![CDATA[", "<?", "</script>", "</style>"};
    constexpr size_t ofPages = 2;
    qsizetype first = text.size();
    for (const QByteArrayView mark : std::span(marks).first(std::size(marks) - (html ? 0 : ofPages)))
        if (const qsizetype found = text.first(first).indexOf(mark); found >= 0)
            first = text[found] == '<' ? found : found + mark.size();
    if (first == text.size())
        first = std::max(qsizetype(0), text.indexOf('<'));
    MarkupStyler styler(text.sliced(first), {MarkupMode::Text, guessedDepth, html});
    const long came = start + long(first + styler.runTo(text.size() - first, false));
    return {came, styler.state()};
}

MarkupMap::Place MarkupMap::lowerStretch(long before, int depth) const
{
    size_t point = before > 0 ? pointAt(before - 1) : 0;
    while (point > 0 && points_[point].lowest >= depth)
        --point;
    return {points_[point].at, points_[point].state};
}

} // namespace control
