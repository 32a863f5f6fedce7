#include "platform/dom/structure_index.h"

#include <algorithm>

namespace dom {

namespace {

bool beginsBefore(const StructureIndex::Entry &entry, quint32 offset) { return entry.begin < offset; }

} // namespace

void StructureIndex::finish()
{
    std::sort(entries_.begin(), entries_.end(),
              [](const Entry &a, const Entry &b) { return a.begin < b.begin; });
    entries_.shrink_to_fit();
}

StructureIndex::Cursor::Cursor(const StructureIndex &index, quint32 from)
    : next_(index.entries_.data()), last_(index.entries_.data() + index.entries_.size())
{
    next_ = std::lower_bound(next_, last_, from, beginsBefore);
}

const StructureIndex::Entry *StructureIndex::Cursor::at(quint32 begin)
{
    if (next_ != last_ && next_->begin < begin) {
        ++next_;
        if (next_ != last_ && next_->begin < begin)
            next_ = std::lower_bound(next_, last_, begin, beginsBefore);
    }
    return next_ != last_ && next_->begin == begin ? next_ : nullptr;
}

} // namespace dom
