// Where in a document a blank more or less is a change.
#pragma once

#include <QByteArrayView>

#include <vector>

namespace launcher {

struct Range
{
    qsizetype begin;
    qsizetype end;
};

// Whether Tidy takes a name, of an element or an attribute, for a sign that blanks count, and puts line ends
// into the content all the same.
bool isNameOfPreserved(QByteArrayView name);

// The contents of elements in which text stands beside markup, and of those whose blanks count; of nested
// ones the outermost, in order. With sections also those that hold a CDATA section. The text is
// well-formed XML.
std::vector<Range> contentsNotToLayOut(QByteArrayView xml, bool sections);

} // namespace launcher
