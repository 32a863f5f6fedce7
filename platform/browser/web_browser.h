// The embedded browser as a widget.
#pragma once

#include "platform/browser/browser.h"
#include "platform/browser/preview_profile.h"

#include <QWebEngineView>
#include <QWidget>
#include <memory>

namespace browser {

class PreviewPage;

class WebBrowser : public QWidget, public Browser
{
    Q_OBJECT

public:
    explicit WebBrowser(std::shared_ptr<PreviewProfile> profile, QWidget *parent = nullptr);
    ~WebBrowser() override;

    void setSilent(bool silent) override;
    void navigate(const QString &path) override;
    void showText(const QByteArray &bytes, const QString &path) override;
    void back() override;
    void forward() override;
    void reload() override;

    // The page shown now; belongs to the browser.
    QWebEnginePage *page() const;

Q_SIGNALS:
    // The page is there, or could not be had.
    void loadFinished(bool ok);

private:
    void showFile(const QString &path);
    void leaveFor(const QUrl &url);
    void onLoadFinished(bool ok);
    void onProcessEnded();
    void addContextMenu();

    // In this order, since a page must go before its profile and a view before its page.
    std::shared_ptr<PreviewProfile> profile_;
    std::unique_ptr<PreviewPage> page_;
    std::unique_ptr<QWebEngineView> view_;
    QString shownPath_; // empty before the first document
    QString overlayPath_;
    bool crashed_ = false;
    bool fresh_ = true; // history may still hold the empty page of a warm start
};

} // namespace browser
