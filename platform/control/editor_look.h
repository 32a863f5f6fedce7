// How the editor looks: face, colours for light and dark surroundings, margins, marks.
#pragma once

#include "platform/control/editor_control.h"

class QFont;
class QPalette;

namespace control {

class CodeEditor;

// Numbers of the marks on lines, and of the marks in the text.
inline constexpr int bookmarkMarker = 1;
inline constexpr int highlightMarker = 2;
inline constexpr int tagIndicator = 8;

// Margins, from the left.
inline constexpr int bookmarkMargin = 0;
inline constexpr int numberMargin = 1;
inline constexpr int foldMargin = 2;

// What never changes: margins, marks, scrolling, caching.
void setUpEditor(CodeEditor &editor);

// Face and colours, after the palette.
void dressEditor(CodeEditor &editor, const QPalette &palette);

// Chooses what colours and folds the text.
void setEditorLexer(CodeEditor &editor, Language language);

// Makes the line number margin as wide as the largest number needs; hides it when not shown.
void fitNumberMargin(CodeEditor &editor, bool shown);

// The system's own fixed-pitch face, or one that really is of fixed pitch.
QFont editorFont();

} // namespace control
