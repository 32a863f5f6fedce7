// Many lines get their indentation as one edit; line by line the engine needs seconds for a large text.
#pragma once

#include <QByteArray>

namespace control {

class CodeEditor;

struct LineShift
{
    long columns; // to the right; below zero to the left
    long tabWidth;
    bool tabs; // indent with tabs
    bool blanksToo; // lines of nothing but blanks as well; empty ones stay
};

// As the engine does it: what was the indentation of a shifted line is written anew.
QByteArray shiftedLines(QByteArrayView text, const LineShift &shift);

// Shifts the lines that a selection touches. False when they are few or hold what one edit would lose: then
// nothing has been done, and they are shifted one by one.
bool shiftManyLines(CodeEditor &editor, long first, long last, const LineShift &shift);

} // namespace control
