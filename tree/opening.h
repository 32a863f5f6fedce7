// Opens the whole tree, in as many steps as the caller likes. After each of them the tree is as it should be;
// nobody may edit it before the last.
#pragma once

#include "tree/tree_rows.h"

#include <vector>

namespace tree {

class Opening
{
public:
    explicit Opening(TreeRows &rows);

    // Goes on for so many rows. False when the whole tree is open.
    bool step(qint64 rows);
    qint64 passed() const { return passed_; } // rows, of all there are

    // Leaves what has not been passed closed, and what has been in sight.
    void stop();

private:
    struct Stand
    {
        RowList *list;
        qint64 row;
    };

    void finishList();

    TreeRows &rows_;
    std::vector<Stand> stands_; // from the root's list inwards
    qint64 passed_ = 0;
};

} // namespace tree
