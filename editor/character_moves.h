// Where the keys lead in the character map. Cells are counted from 1, row by row.
#pragma once

#include "editor/character_set.h"

#include <optional>

namespace editor {

constexpr int characterColumns = 32;
constexpr int characterRows = characterCount / characterColumns;

enum class GridMove
{
    PageUp,
    PageDown,
    Up,
    Down,
    Home,
    End,
    Left,
    Right
};

// The cell that a key leads to; none when there is no way, which is answered with a beep.
std::optional<int> moved(int index, GridMove move, bool ctrl);

} // namespace editor
