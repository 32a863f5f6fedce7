// What the caret stands in: text, a tag and which part of it, or something where nothing is typed along.
#pragma once

#include "platform/control/matching_tag.h"

#include <vector>

namespace control {

enum class Place
{
    Text, // between tags
    RawText, // in an HTML script, style sheet or the like
    ElementName, // just behind "<" and the letters of a name
    EndName, // just behind "</" and the letters of a name
    AttributeName, // in a start tag, where an attribute's name begins or is being written
    AttributeValue, // behind the opening quote
    InTag, // anywhere else in a start tag
    Elsewhere // comment, CDATA section, instruction, declaration, end tag
};

struct CaretPlace
{
    Place place = Place::Text;
    // Where the name or value being written begins; the end of the bytes when there is none.
    qsizetype word = 0;
    // The tag that the caret stands in.
    Markup tag;
    // The name of the attribute whose value the caret stands in.
    Span attribute;
    // The start tags of the elements that are open at the caret, outermost first.
    std::vector<Markup> open;
};

// For a caret at the end of the bytes, which are what stands before it.
CaretPlace caretPlace(const MatchText &before);

// Of the same element, as far as names tell.
bool sameName(const MatchText &text, QByteArrayView one, QByteArrayView other);

// How many end tags of this name, beyond those of elements that begin there, follow in the bytes; counts no
// further than wanted.
int unmatchedEndTags(const MatchText &behind, QByteArrayView name, int wanted);

} // namespace control
