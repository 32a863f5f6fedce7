#include "platform/browser/preview_url.h"

#include <QDir>
#include <QWebEngineUrlScheme>

namespace browser {

QByteArray previewScheme() { return QByteArrayLiteral("xmlpreview"); }

void registerPreviewScheme()
{
    // Local, so that nothing from elsewhere may refer to it; and all files of one visit have one origin,
    // since an XSLT style sheet is only ever taken from the document's own.
    QWebEngineUrlScheme scheme(previewScheme());
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    scheme.setFlags(QWebEngineUrlScheme::LocalScheme);
    QWebEngineUrlScheme::registerScheme(scheme);
}

QString cleanPreviewPath(const QString &path) { return QDir::cleanPath(QDir::fromNativeSeparators(path)); }

QUrl previewUrl(const QString &path, int visit)
{
    QString urlPath = cleanPreviewPath(path);
    if (!urlPath.startsWith(u'/')) // "C:/..."
        urlPath.prepend(u'/');
    // Exactly the signs stand bare that the XSLT processor leaves bare when it puts a URL together. Style
    // sheets that import others are found by comparing what it made with what the browser made.
    return QUrl::fromEncoded(previewScheme() + "://d" + QByteArray::number(visit)
                             + QUrl::toPercentEncoding(urlPath, "/;@&=+$,!*'()"));
}

QUrl wholeUrl(QUrl url)
{
    url.setQuery(QStringLiteral("whole"));
    return url;
}

bool asksForWhole(const QUrl &url) { return url.query() == QStringLiteral("whole"); }

QString pathOfPreviewUrl(const QUrl &url)
{
    if (url.scheme() != QString::fromLatin1(previewScheme()))
        return {};
    const QString path = url.path(QUrl::FullyDecoded);
    if (!path.startsWith(u'/') || path.startsWith(QStringLiteral("//")) || path.contains(QChar(u'\0')))
        return {};
    const QString afterSlash = path.mid(1);
    return cleanPreviewPath(QDir::isAbsolutePath(afterSlash) ? afterSlash : path); // "/C:/..." is "C:/..."
}

} // namespace browser
