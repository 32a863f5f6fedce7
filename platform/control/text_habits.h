// How a text ends its lines and indents them, told from its beginning, so that what is typed fits in.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace control {

enum class LineEnd
{
    CrLf,
    Cr,
    Lf
};

struct TextHabits
{
    // That of the first line; LF for a text of one line.
    LineEnd lineEnd = LineEnd::Lf;
    // Whether the text has a line end at all.
    bool hasLineEnd = false;
    // Whether lines are mostly indented with tabs; true when none is indented.
    bool tabs = true;
    // Columns of one step of indentation, as most tags at the beginning of a line have it: 1 to 8.
    int indent = 4;
};

// Looks at the first 64 KB only.
TextHabits habitsOf(QByteArrayView text);

// The bytes of a line end.
QByteArrayView lineEndBytes(LineEnd lineEnd);

// The text with every CR LF, CR and LF turned into the given line end.
QByteArray withLineEnds(QByteArrayView text, LineEnd lineEnd);

} // namespace control
