// The lines by which another file refers to the document that is being edited.
#pragma once

#include <QString>
#include <array>

namespace editor {

struct HeaderLineRow
{
    const char *caption;
    const char *kind; // what the document is to the other file
    const char *before; // the location
    const char *after;
};

inline constexpr std::array headerLineTable = {
    HeaderLineRow{"Assign as DTD:", "DTD", "<!DOCTYPE Element_1 SYSTEM \"", "\">"},
    HeaderLineRow{"Assign as XSLT:", "XSLT", "<?xml:stylesheet type=\"text/xsl\" href=\"", "\"?>"},
    HeaderLineRow{"Assign as CSS:", "CSS", "<?xml:stylesheet type=\"text/css\" href=\"", "\"?>"},
};

// A file's path as a URL's path: with forward slashes, "%20" for blanks, and "%5C" for a backslash
// that belongs to a name. No other sign is escaped.
QString urlLocation(const QString &path);

// The line of one row of the table for a location.
QString headerLine(const HeaderLineRow &row, const QString &location);

} // namespace editor
