// What an XML document says, whatever its layout.
#pragma once

#include <QByteArray>

#include <optional>

namespace launcher {

struct XmlWords
{
    QByteArray digest; // of all text, blanks left out
    qint64 elements = 0;

    bool operator==(const XmlWords &) const = default;
};

// Nothing where the text (UTF-8, whatever it declares) is not well-formed. Nothing but the text is read.
std::optional<XmlWords> wordsOf(const QByteArray &xml);

} // namespace launcher
