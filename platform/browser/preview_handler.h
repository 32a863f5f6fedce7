// Serves local files to the preview, under the kind that they are.
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QWebEngineUrlSchemeHandler>

namespace browser {

// A page gets files of the kinds that pages are made of, from any folder, and nothing else. It cannot pass
// them on, because the preview has no network.
class PreviewHandler : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    using QWebEngineUrlSchemeHandler::QWebEngineUrlSchemeHandler;

    // The file at path was chosen to be looked at: it is served whatever its kind. Paths are clean.
    void admit(const QString &path);

    // Serves bytes in place of the file at path, until they are dropped.
    void setOverlay(const QString &path, const QByteArray &bytes);
    void dropOverlay(const QString &path);

    void requestStarted(QWebEngineUrlRequestJob *job) override;

private:
    QSet<QString> chosen_;
    QHash<QString, QByteArray> overlays_;
};

} // namespace browser
