// What an XML document says, whatever its layout.
#pragma once

#include <QByteArray>

#include <optional>

namespace launcher {

struct XmlWords
{
    QByteArray digest; // of elements, attributes, instructions, and text with every blank that means anything
    qint64 elements = 0;

    bool operator==(const XmlWords &) const = default;
};

// Nothing where the text (UTF-8, whatever it declares) is not well-formed. Nothing but the text is read.
// Blanks mean nothing in an element that holds others and no text, unless xml:space preserves them there.
// Whether a text stands in a CDATA section is no difference; comments are a part only withComments.
std::optional<XmlWords> wordsOf(const QByteArray &xml, bool withComments = true);

} // namespace launcher
