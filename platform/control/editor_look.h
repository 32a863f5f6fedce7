// How the editor looks: face, colours for light and dark surroundings, margins, marks.
#pragma once

#include "platform/control/colour_reading.h"
#include "platform/control/editor_control.h"

class QFont;

namespace control {

class CodeEditor;

// Numbers of the marks on lines, and of the marks in the text.
inline constexpr int bookmarkMarker = 1;
inline constexpr int highlightMarker = 2;
inline constexpr int selectionFirstMarker = 3;
inline constexpr int selectionLastMarker = 4;
inline constexpr int tagIndicator = 8;
inline constexpr int strikeIndicator = 24;

// Margins, from the left.
inline constexpr int bookmarkMargin = 0;
inline constexpr int numberMargin = 1;
inline constexpr int foldMargin = 2;
inline constexpr int dividerMargin = 3;

inline constexpr int leftMarginWidth = 16;

// What never changes: margins, marks, scrolling, caching.
void setUpEditor(CodeEditor &editor);

// Face and colours, after what the user chose and the editor's palette.
void dressEditor(CodeEditor &editor);

// One style of a lexer.
void dressStyle(CodeEditor &editor, int style, const TokenLook &look);

// Chooses what colours and folds the text.
void setEditorLexer(CodeEditor &editor, Language language);

// Shows or hides the left margin as the user chose, and the line between margins and text.
void fitMargins(CodeEditor &editor);

// Struck text stays struck while it is edited.
void strikeText(CodeEditor &editor);

// The system's own fixed-pitch face, or one that really is of fixed pitch.
QFont editorFont();

// The installed face of that name when it is of fixed pitch; otherwise editorFont()'s.
QString fixedPitchFace(const QString &name);

} // namespace control
