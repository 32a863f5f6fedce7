// Marks the first and the last line of a selection of several lines in the left margin.
#pragma once

#include <QtGlobal>

namespace control {

class CodeEditor;

class SelectionBounds
{
public:
    // Moves the two marks to where the selection is now, or takes them away.
    void update(CodeEditor &editor);

    // Draws the marks anew, as high as a line is now.
    static void draw(CodeEditor &editor);

private:
    struct Lines
    {
        long first = -1;
        long last = -1;
        bool operator==(const Lines &) const = default;
    };

    static Lines selectedLines(const CodeEditor &editor);

    Lines marked_;
    quint64 revision_ = 0; // of the text that was marked
};

} // namespace control
