// Serves local files to the preview, under the kind that they are.
#pragma once

#include "platform/browser/preview_detours.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QWebEngineUrlSchemeHandler>
#include <optional>

namespace browser {

// A page gets files of the kinds that pages are made of, and nothing else; what it can read of them lies in
// its own folder or below. It cannot pass them on, because the preview has no network.
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

    // What is asked for by another URL than its own is found all the same, and the browser told its own.
    PreviewDetours &detours() { return detours_; }

    // Whether a page may have what it asks for as something that it can read; told where not.
    bool letsRead(const QUrl &asked, const QUrl &page);

    // A visit shows this page; until another is shown in the same visit.
    void setShown(const QUrl &page) { shown_.insert(page.host(), page); }

    void requestStarted(QWebEngineUrlRequestJob *job) override;

Q_SIGNALS:
    // A page may lack what it is made of; reason is one line for the user.
    void lacking(const QUrl &asked, const QString &reason);

private:
    void serve(QWebEngineUrlRequestJob *job, const QString &path, const QByteArray &bytes);
    bool isNear(const QUrl &asked, const QUrl &page) const;
    bool refuses(const QWebEngineUrlRequestJob &job, const QByteArray &type, const QByteArray &bytes);
    void tellUnreachable(const QUrl &url, const QByteArray &xml);
    void tellMissing(const QUrl &url, const QString &path);
    QString destination(const QUrl &asked, const QString &path) const;
    std::optional<QByteArray> bytesOf(const QString &path) const;
    QByteArray typeOf(const QString &path, const QByteArray &bytes) const;
    QByteArray readable(QByteArray xml, const QUrl &url, const QString &path) const;

    PreviewDetours detours_;
    QSet<QString> chosen_;
    QHash<QString, QByteArray> overlays_;
    QHash<QString, QUrl> shown_; // by visit
};

} // namespace browser
