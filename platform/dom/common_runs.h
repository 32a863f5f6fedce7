// What two rows of characters have in common, in order: what an edit left alone.
#pragma once

#include <QtGlobal>

#include <string_view>
#include <vector>

namespace dom {

// length characters from before on in the one stand from after on in the other.
struct CommonRun
{
    qsizetype before;
    qsizetype after;
    qsizetype length;
};

// Runs that rise in both. A few scattered edits are told apart exactly. Where very much has changed, words
// that both have only once hold their places, and what lies between two of them may count as changed
// altogether; so the time stays about in proportion to the length.
std::vector<CommonRun> commonRuns(std::u32string_view before, std::u32string_view after);

} // namespace dom
