// What kind of thing a file is, as the browser names it.
#pragma once

#include <QByteArray>
#include <QString>

namespace browser {

// How a file came to be asked for.
enum class Wanted
{
    AsDocument, // somebody chose to look at it
    ByPage, // a page refers to it
};

// The media type under which a file is served; empty when a page may not have it. The name decides first
// (digits at its end are those of a preview copy), then how the content begins. What somebody chose to
// look at is always served, as plain text when it is nothing better.
QByteArray mediaType(const QString &path, const QByteArray &content, Wanted wanted);

} // namespace browser
