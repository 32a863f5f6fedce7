// What assistive technology sees of the character map: a list of named characters.
#pragma once

namespace editor {

class CharacterGrid;

// To be called before a grid is asked for; once or more often.
void describeGridsToAssistance();

// The focus went to that cell, counted from 1.
void announceCell(CharacterGrid &grid, int index);

} // namespace editor
