// What became of the rows in one step, as far as the document's own change set does not tell: rows follow
// that by themselves when the step is taken back or done again.
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
        Moved, // a removal and an insertion to the document; at most once in a step
        Relabelled,
        KeysLengthened, // of all below the row
        TreeExchanged // all rows for others
    };

    Kind kind;
    dom::Node *node = nullptr; // that the row shows
    dom::Node *from = nullptr; // Moved: the parents
    dom::Node *into = nullptr;
    TagRule ruleBefore = TagRule::WithoutOwnNamespace; // Relabelled
    std::shared_ptr<TreeRows> treeBefore = nullptr; // TreeExchanged
    std::shared_ptr<TreeRows> treeAfter = nullptr;
};

using RowEdits = std::vector<RowEdit>;

} // namespace tree
