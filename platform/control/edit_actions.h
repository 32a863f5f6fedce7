// Editing commands that the engine has no message of its own for. Each is one step of undo; false means that
// there was nothing to act on and nothing changed.
#pragma once

namespace control {

class CodeEditor;

bool undoLast(CodeEditor &editor);
bool redoNext(CodeEditor &editor);
bool cutSelection(CodeEditor &editor);
bool copySelection(CodeEditor &editor);
bool pasteClipboard(CodeEditor &editor);
bool deleteSelectionOrCharacter(CodeEditor &editor);

// What the tabulator does: shifts the lines of a selection that reaches over several, else types.
bool tabForward(CodeEditor &editor);
bool tabBackward(CodeEditor &editor);

// All lines that the selection touches, blank ones excepted.
bool increaseIndent(CodeEditor &editor);
bool decreaseIndent(CodeEditor &editor);

// On the selection; nothing to act on without one.
bool selectionToSpaces(CodeEditor &editor);
bool selectionToTabs(CodeEditor &editor);
bool upperCaseSelection(CodeEditor &editor);
bool lowerCaseSelection(CodeEditor &editor);
bool sentenceCaseSelection(CodeEditor &editor);
bool capitaliseSelection(CodeEditor &editor);
bool invertCaseSelection(CodeEditor &editor);

// On the lines that the selection touches, or on the whole text.
bool sortLines(CodeEditor &editor);
bool sortLinesDescending(CodeEditor &editor);
bool reverseLines(CodeEditor &editor);
bool removeRepeatedLines(CodeEditor &editor);
bool removeBlankLines(CodeEditor &editor);
bool trimTrailingBlanks(CodeEditor &editor);

// The selected lines in one, or the caret's line and the next.
bool joinLines(CodeEditor &editor);
// Lines too wide for the window are broken at blanks.
bool splitLines(CodeEditor &editor);
// The characters on both sides of the caret change places.
bool transposeCharacters(CodeEditor &editor);
// Every line end of the text becomes that of the document.
bool unifyLineEnds(CodeEditor &editor);

} // namespace control
