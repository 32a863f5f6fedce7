#include "platform/control/lf_stretch.h"

#include <algorithm>

namespace control {

namespace {

// The next CR that an LF follows, at from or behind it; -1 when there is none.
qsizetype nextCrLf(QByteArrayView text, qsizetype from)
{
    qsizetype found = text.indexOf('\r', from);
    while (found >= 0 && (found + 1 == text.size() || text[found + 1] != '\n'))
        found = text.indexOf('\r', found + 1);
    return found;
}

} // namespace

LfStretch::LfStretch(QByteArrayView text, qsizetype start, qsizetype end, Lines lines)
    : original_(text.sliced(start, end - start)), start_(start)
{
    if (lines == Lines::AsTheyAre)
        return;
    qsizetype from = 0;
    for (qsizetype found = nextCrLf(original_, 0); found >= 0; found = nextCrLf(original_, from)) {
        if (!copied_)
            copy_.reserve(original_.size());
        copied_ = true;
        copy_.append(original_.sliced(from, found - from));
        ends_.push_back(copy_.size());
        from = found + 1;
    }
    if (copied_)
        copy_.append(original_.sliced(from));
}

qsizetype LfStretch::inText(qsizetype place) const
{
    const auto before = std::lower_bound(ends_.begin(), ends_.end(), place) - ends_.begin();
    return start_ + place + before;
}

qsizetype LfStretch::inBytes(qsizetype place) const
{
    const qsizetype at = place - start_;
    size_t before = 0;
    for (size_t behind = ends_.size(); before < behind;) {
        const size_t middle = (before + behind) / 2;
        if (ends_[middle] + qsizetype(middle) + 1 < at)
            before = middle + 1;
        else
            behind = middle;
    }
    return at - qsizetype(before);
}

} // namespace control
