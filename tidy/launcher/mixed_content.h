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

// The contents of elements that hold text, or no element at all, and of those that are to preserve blanks; of
// nested ones the outermost, in order. The text is well-formed XML.
std::vector<Range> contentsNotToLayOut(QByteArrayView xml);

} // namespace launcher
