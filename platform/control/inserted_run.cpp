#include "platform/control/inserted_run.h"

#include <algorithm>

namespace control {

namespace {

// Where a position comes to lie when the stretch is taken out.
qsizetype afterDeletion(qsizetype at, qsizetype position, qsizetype length)
{
    if (at <= position)
        return at;
    return std::max(position, at - length);
}

} // namespace

void InsertedRun::set(qsizetype start, qsizetype length)
{
    start_ = start;
    end_ = start + length;
}

void InsertedRun::inserted(qsizetype position, qsizetype length)
{
    if (start_ >= 0 && position == end_)
        end_ += length;
    else
        set(position, length);
}

void InsertedRun::deleted(qsizetype position, qsizetype length)
{
    if (start_ < 0)
        return;
    start_ = afterDeletion(start_, position, length);
    end_ = afterDeletion(end_, position, length);
}

} // namespace control
