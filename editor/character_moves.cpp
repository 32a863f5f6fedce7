#include "editor/character_moves.h"

namespace editor {

namespace {

constexpr int pageStep = 2 * characterColumns;

constexpr int columnOf(int index) { return (index - 1) % characterColumns + 1; } // from 1
constexpr int rowStart(int index) { return index - columnOf(index) + 1; }
constexpr int rowEnd(int index) { return rowStart(index) + characterColumns - 1; }
constexpr int inFirstRow(int index) { return columnOf(index); }
constexpr int inLastRow(int index) { return characterCount - characterColumns + columnOf(index); }

// The cell aimed at, which may lie outside the map.
int aim(int index, GridMove move, bool ctrl)
{
    switch (move) {
    case GridMove::PageUp:
        return index - pageStep;
    case GridMove::PageDown:
        return index + pageStep;
    case GridMove::Up:
        return ctrl ? inFirstRow(index) : index - characterColumns;
    case GridMove::Down:
        return ctrl ? inLastRow(index) : index + characterColumns;
    case GridMove::Home:
        return ctrl ? 1 : rowStart(index);
    case GridMove::End:
        return ctrl ? characterCount : rowEnd(index);
    case GridMove::Left:
        return index - 1;
    case GridMove::Right:
        return index + 1;
    }
    return index;
}

} // namespace

std::optional<int> moved(int index, GridMove move, bool ctrl)
{
    const int to = aim(index, move, ctrl);
    if (to == index || to < 1 || to > characterCount)
        return std::nullopt;
    return to;
}

} // namespace editor
