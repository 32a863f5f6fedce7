#include "platform/browser/preview_notice.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>

namespace browser {
namespace {

QString notice(const QString &heading, const QString &body)
{
    return QStringLiteral("<!DOCTYPE html><meta charset=\"utf-8\"><title>Preview</title>"
                          "<body style=\"font-family:sans-serif;margin:3em;max-width:40em\"><h2>%1</h2>%2")
        .arg(heading, body);
}

QString sizeText(qint64 bytes) { return QLocale::c().formattedDataSize(bytes, 0, QLocale::DataSizeSIFormat); }

QString sizeHeading(qint64 bytes)
{
    return QStringLiteral("This document is large: %1.").arg(sizeText(bytes));
}

} // namespace

QString stoppedNotice()
{
    return notice(
        QStringLiteral("The preview stopped working."),
        QStringLiteral("<p>The page could not be shown to its end, or took more memory than a page may "
                       "have. Your document is not affected. Refresh to load the page again.</p>"));
}

QString largeNotice(qint64 bytes, const QString &whole)
{
    return notice(
        sizeHeading(bytes),
        QStringLiteral("<p>It names no style sheet. The browser then makes a tree of its own of it, "
                       "which takes long and may need more memory than there is.</p>"
                       "<p><a href=\"%1\" autofocus>Show it anyway</a></p>")
            .arg(whole.toHtmlEscaped()));
}

QString tooLargeNotice(qint64 bytes, qint64 most)
{
    return notice(sizeHeading(bytes),
                  QStringLiteral("<p>Preview shows documents of up to %1.</p>").arg(sizeText(most)));
}

QString scriptShowing(const QString &text)
{
    const QByteArray quoted = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QStringLiteral(
               "const make = name => document.createElementNS('http://www.w3.org/1999/xhtml', name);"
               "const page = make('html'), body = make('body');"
               "body.style = 'font-family:sans-serif;margin:3em;max-width:40em';"
               "body.textContent = %1[0]; page.append(body); document.append(page);")
        .arg(QString::fromUtf8(quoted));
}

} // namespace browser
