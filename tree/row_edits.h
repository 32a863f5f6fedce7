// What became of the rows in one step: enough to take it back and to do it again, row for row.
//
// The document's own change set cannot tell: after a drop, rows and document differ in order.
#pragma once

#include "tree/label.h"

#include <memory>
#include <vector>

namespace tree {

class TreeRows;

struct RowEdit
{
    enum class Kind
    {
        Inserted, // at to, toRow
        Removed, // from from, fromRow
        Moved, // rows counted without the moved one
        Relabelled, // the row at to, toRow
        KeysLengthened, // of all below the row at to, toRow
        TreeExchanged // all rows for others
    };

    Kind kind;
    dom::Node *node = nullptr;
    dom::Node *from = nullptr; // parents, as nodes of the document: rows come and go with them
    int fromRow = 0;
    dom::Node *to = nullptr;
    int toRow = 0;
    TagRule ruleBefore = TagRule::WithoutOwnNamespace; // Relabelled
    std::shared_ptr<TreeRows> treeBefore = nullptr; // TreeExchanged
    std::shared_ptr<TreeRows> treeAfter = nullptr;
};

using RowEdits = std::vector<RowEdit>;

} // namespace tree
