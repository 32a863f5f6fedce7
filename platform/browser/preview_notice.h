// The pages that the preview shows on its own account.
#pragma once

#include <QByteArray>
#include <QString>

namespace browser {

// In place of a page that the engine broke down over.
QString stoppedNotice();

// In place of a document of that many bytes; whole is where the document itself is had in spite of that.
QString largeNotice(qint64 bytes, const QString &whole);

// In place of a document that is not shown at any rate.
QString tooLargeNotice(qint64 bytes, qint64 most);

// Puts a line of text into a page that shows nothing.
QString scriptShowing(const QString &text);

} // namespace browser
