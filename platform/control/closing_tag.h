// The closing tags that are typed along.
#pragma once

#include <QByteArray>

namespace control {

class CodeEditor;

// What completes "</" into a closing tag: the name of the innermost element open there, and ">". Empty when
// none is open, or when "</" is none at this position.
QByteArray completionOfSlash(const CodeEditor &editor, long lessThan);

// The closing tag that belongs behind a ">" typed at this position: empty when it ends no start tag, or one
// whose element is closed already.
QByteArray completionOfBracket(const CodeEditor &editor, long position);

// The closing tag of the innermost element open at a position; empty when none is.
QByteArray closingTagAt(const CodeEditor &editor, long position);

// Gives the line of a closing tag that stands alone on it the indentation of its start tag's line. For a
// caret behind the tag.
void alignClosingTag(CodeEditor &editor);

// Whether the element of a start tag with this name is closed by what follows its end, rather than that being
// needed to close the elements around it. True when that lies too far ahead to be seen.
bool closedBehind(const CodeEditor &editor, const QByteArray &name, long tagStart, long tagEnd);

} // namespace control
