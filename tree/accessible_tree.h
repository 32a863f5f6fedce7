// The tree as assistive programs see it: a list of the rows to be seen, each with its level and state.
#pragma once

namespace tree {

// Every TreeView made from now on is described so.
void describeToAccessibility();

} // namespace tree
