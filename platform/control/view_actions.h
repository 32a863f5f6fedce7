// Commands that change how the text is shown and not the text.
#pragma once

namespace control {

class CodeEditor;

bool resetZoom(CodeEditor &editor);
bool toggleFold(CodeEditor &editor);
// The outermost element stays open, so that its children can be seen.
bool foldAll(CodeEditor &editor);
bool unfoldAll(CodeEditor &editor);
// Every block as deep as the one that the caret is in.
bool foldLevel(CodeEditor &editor);
bool unfoldLevel(CodeEditor &editor);
bool toggleLineNumbers(CodeEditor &editor);
bool toggleWhiteSpace(CodeEditor &editor);
bool toggleLineEnds(CodeEditor &editor);
bool toggleWrap(CodeEditor &editor);
bool toggleIndentGuides(CodeEditor &editor);

} // namespace control
