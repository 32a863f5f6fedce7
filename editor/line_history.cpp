#include "editor/line_history.h"

namespace editor {

void LineHistory::restart(CaretPosition position)
{
    entries_ = {position};
    current_ = 0;
}

void LineHistory::record(CaretPosition position)
{
    if (entries_[current_].line == position.line) {
        entries_[current_] = position;
        return;
    }
    entries_.resize(current_ + 1);
    entries_.append(position);
    if (entries_.size() > bound)
        entries_.removeFirst();
    current_ = entries_.size() - 1;
}

CaretPosition LineHistory::stepBack()
{
    if (hasEarlier())
        --current_;
    return entries_[current_];
}

CaretPosition LineHistory::stepForward()
{
    if (hasLater())
        ++current_;
    return entries_[current_];
}

} // namespace editor
