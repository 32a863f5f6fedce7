// How far a page reaches. What a page is made of (style sheets, pictures, fonts and scripts that it links)
// may lie anywhere on this machine; what can be read in it (frames, modules, what a style sheet takes in)
// lies in the folder of the document or below.
#pragma once

#include <QString>
#include <QUrl>
#include <QWebEngineUrlRequestInfo>

namespace browser {

// Whether what comes of such a request can be read by a script, or shown as a page of its own in the page.
bool isReadable(QWebEngineUrlRequestInfo::ResourceType type);

// Whether the file at path lies in the folder or below it, links followed. What is not there lies nowhere,
// and counts as if it did: it can only be missed.
bool liesWithin(const QString &folder, const QString &path);

// Whether markup is a style sheet, at first sight. Only such may be had as one from elsewhere: in any other a
// page could look for what it can make of it.
bool looksLikeStyleSheet(const QByteArray &xml);

} // namespace browser
