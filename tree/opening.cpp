#include "tree/opening.h"

namespace tree {

Opening::Opening(TreeRows &rows) : rows_(rows), stands_{{&rows.top(), 0}} { }

bool Opening::step(qint64 rows)
{
    for (const qint64 end = passed_ + rows; passed_ < end && !stands_.empty();) {
        Stand &at = stands_.back();
        if (at.row == at.list->count()) {
            finishList();
            continue;
        }
        const qint64 row = at.row++;
        ++passed_;
        if (rows_.hasChildren(*at.list, row))
            stands_.push_back({&rows_.below(*rows_.node(*at.list, row)), 0});
    }
    return !stands_.empty();
}

void Opening::stop()
{
    while (!stands_.empty())
        finishList();
}

// A node opens when all below it is: as long as it is closed nothing above it needs to be told.
void Opening::finishList()
{
    TreeNode *owner = stands_.back().list->owner();
    stands_.pop_back();
    if (owner)
        owner->run->list->setOpen(*owner, true);
}

} // namespace tree
