// The column of a place in the text, in characters, counted on from the place asked for before: at the end of
// a long line a key must not count all of it anew.
#pragma once

namespace control {

class CodeEditor;

class ColumnCount
{
public:
    // The text is another one.
    void forget() { position_ = lineStart_ = -1; }
    // The text is about to change from that position on.
    void changing(const CodeEditor &editor, long position);
    long columnOf(const CodeEditor &editor, long position);

private:
    void moveTo(const CodeEditor &editor, long position);

    // The last place asked for; lies before all that has changed since.
    long lineStart_ = -1;
    long position_ = -1;
    long column_ = 0;
};

} // namespace control
