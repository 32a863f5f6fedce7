// The preview's own URLs, "xmlpreview://d7/home/me/a.xml", and the file paths that they stand for.
//
// Files are not shown under "file:", because there Chromium tells the kind of a file by the end of its
// name alone, and a preview copy ends in a digit. The host is a number that grows with each visit, so that
// nothing the page refers to comes out of a cache.
#pragma once

#include <QString>
#include <QUrl>

namespace browser {

// The scheme's name.
QByteArray previewScheme();

// Tells the browser engine about the scheme; to be called once, before the application object is made.
void registerPreviewScheme();

// A path as the preview compares it: forward slashes, no "." or ".." or doubled slashes.
QString cleanPreviewPath(const QString &path);

// The URL of the file at path (absolute) for one visit; every name survives, whatever it is made of.
QUrl previewUrl(const QString &path, int visit);

// Of a document that is first told about in its place: the URL that asks for it all the same.
QUrl wholeUrl(QUrl url);
bool asksForWhole(const QUrl &url);

// The path behind a preview URL; empty for every other URL and for one that points to another computer.
QString pathOfPreviewUrl(const QUrl &url);

} // namespace browser
