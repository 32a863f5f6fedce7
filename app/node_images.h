// The pictures of the tree's nodes.
#pragma once

#include <QIcon>
#include <array>

namespace app {

// By kind of node: element, processing instruction, comment, CDATA section, text. On a selected row they
// take the colour of its text, since their own may be the row's.
std::array<QIcon, 5> nodeImages();

} // namespace app
