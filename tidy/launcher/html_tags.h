// The tags of empty elements, which XML and HTML write differently.
#pragma once

#include <QByteArray>

namespace launcher {

// Text with XML's tags as HTML reads them: elements that HTML knows to be empty have a start tag alone, all
// others that are empty have a start and an end tag.
QByteArray withHtmlTags(const QByteArray &xml);

} // namespace launcher
