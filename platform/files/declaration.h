// What a text says about its own encoding, in its first bytes.
#pragma once

#include "platform/files/encoding_table.h"

#include <QByteArray>
#include <QByteArrayView>

namespace files {

enum class DeclaredBy
{
    Nobody,
    Xml,
    Html
};

struct Declaration
{
    DeclaredBy by = DeclaredBy::Nobody; // Xml also for an XML declaration that names no encoding
    QByteArray name; // as written; empty when none is named
    qsizetype at = -1; // where the name stands in the text

    bool names() const { return !name.isEmpty(); }
    // Says the same, wherever it says it. Who names nothing says nothing.
    bool operator==(const Declaration &other) const
    {
        return name.compare(other.name, Qt::CaseInsensitive) == 0 && (!names() || by == other.by);
    }
};

// Looks at UTF-8 or at bytes of any encoding that holds ASCII as it is. An XML declaration decides; only
// without one, and where the text looks like HTML, a meta element within the first 4 KB is asked.
Declaration declarationIn(QByteArrayView text);

// The encoding that a declaration stands for, or null when it names none or none that is known. A meta
// element cannot declare UTF-16 or UTF-32 (it could not have been read): that is UTF-8 to every browser, and
// ISO-8859-1 and US-ASCII are Windows-1252.
const EncodingEntry *declaredEntry(const Declaration &declaration);

// The text's first character that is not blank opens markup.
bool looksLikeMarkup(QByteArrayView text);

// It begins, after comments and processing instructions, as HTML does.
bool looksLikeHtml(QByteArrayView text);

} // namespace files
