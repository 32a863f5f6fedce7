// What stands beside the lines of a code editor.
#pragma once

#include "platform/control/editor_properties.h"

#include <QString>

namespace control {

class CodeEditor;

// The user's number of a line, as it is told in a sentence.
QString lineNumber(const EditorProperties &properties, int line);

// What stands beside the line; nothing for most lines when only every tenth is numbered.
QString numberBeside(const EditorProperties &properties, int line, int caretLine);

class LineNumbers
{
public:
    // The margin's kind and width, after the choices and the number of lines.
    void fit(CodeEditor &editor);

    // Numbers that the engine does not make itself: written beside the lines in sight, and only there.
    void update(CodeEditor &editor);

private:
    bool written_ = false;
};

} // namespace control
