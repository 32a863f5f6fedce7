// Commands that go to a place or select up to one. False means that there is no such place.
#pragma once

namespace control {

class CodeEditor;

bool caretToInsertedStart(CodeEditor &editor);
bool caretToWindowTop(CodeEditor &editor);
bool caretToWindowBottom(CodeEditor &editor);

bool selectAll(CodeEditor &editor);
bool selectWord(CodeEditor &editor);
bool selectLine(CodeEditor &editor);
// The selection shrinks to the caret; nothing to do when there is none.
bool cancelSelection(CodeEditor &editor);

bool toggleBookmark(CodeEditor &editor);
// Both go on at the other end of the text.
bool nextBookmark(CodeEditor &editor);
bool previousBookmark(CodeEditor &editor);
bool clearBookmarks(CodeEditor &editor);

// From a tag to the one that closes or opens its element, or all from the one to the other.
bool caretToMatchingTag(CodeEditor &editor);
bool selectElement(CodeEditor &editor);
// From one end of a piece of markup ("<", ">") to the other, or of a pair of brackets.
bool caretToMatchingBrace(CodeEditor &editor);
bool selectToMatchingBrace(CodeEditor &editor);

} // namespace control
