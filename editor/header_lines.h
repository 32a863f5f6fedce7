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
    bool escaped; // the location, with "&" as a reference
};

// The spelling with a colon is for early browsers and for Preview, which reads both; the one with a hyphen is
// what everything else obeys.
inline constexpr std::array headerLineTable = {
    HeaderLineRow{"Assign as DTD:", "DTD", "<!DOCTYPE Element_1 SYSTEM \"", "\">", false},
    HeaderLineRow{"Assign as XSLT:", "XSLT", "<?xml:stylesheet type=\"text/xsl\" href=\"", "\"?>", false},
    HeaderLineRow{"Assign as CSS:", "CSS", "<?xml:stylesheet type=\"text/css\" href=\"", "\"?>", false},
    HeaderLineRow{"XSLT, for other programs too:", "XSLT (for other programs too)",
                  "<?xml-stylesheet type=\"text/xsl\" href=\"", "\"?>", true},
    HeaderLineRow{"CSS, for other programs too:", "CSS (for other programs too)",
                  "<?xml-stylesheet type=\"text/css\" href=\"", "\"?>", true},
};

// A file's path as a URL's path: with forward slashes, "%20" for blanks, and "%5C" for a backslash
// that belongs to a name. No other sign is escaped.
QString urlLocation(const QString &path);

// The line of one row of the table for a location.
QString headerLine(const HeaderLineRow &row, const QString &location);

} // namespace editor
