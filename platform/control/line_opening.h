// New lines, and how deep they begin.
#pragma once

namespace control {

class CodeEditor;

// A line end, and the indentation of the line that was left; one step deeper when an element was opened on it
// and not closed. Between a start tag and its end tag an empty line is opened.
bool newLine(CodeEditor &editor);
bool openLineAbove(CodeEditor &editor);
bool openLineBelow(CodeEditor &editor);

} // namespace control
