// A stretch of an editor's text, looked at where it lies and not copied.
#pragma once

#include <QByteArrayView>

namespace control {

class CodeEditor;

struct TextWindow
{
    QByteArrayView bytes; // good until the text changes
    long start = 0; // where they begin in the whole text
};

// From start to before end, as far as the text goes.
TextWindow textWindow(const CodeEditor &editor, long start, long end);

// What lies within reach on both sides of a position.
TextWindow windowAround(const CodeEditor &editor, long position, long reach);

} // namespace control
