#pragma once

namespace control {
class CodeEditor;
}

namespace bench {

class Report;
struct Shape;

// Find and Replace All in the editor, beside a plain scan of its text.
void measureSearch(control::CodeEditor &editor, const Shape &shape, const Report &report);

} // namespace bench
