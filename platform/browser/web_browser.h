// The embedded browser as a widget.
#pragma once

#include "platform/browser/browser.h"
#include "platform/browser/preview_profile.h"

#include <QTimer>
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

    // The page shown now; belongs to the browser. Once the browser is hidden it is another, empty one.
    QWebEnginePage *page() const;

    // Whether there is a page to go to.
    bool canGoBack() const;
    bool canGoForward() const;

Q_SIGNALS:
    // The page is there, or could not be had.
    void loadFinished(bool ok);

    // What canGoBack() and canGoForward() say may have changed.
    void historyChanged();

    // One line for the user on the page that is loaded: why it may not look as it should, or that it takes
    // long. Empty when it is there after all.
    void noted(const QString &text);

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void showFile(const QString &path);
    void leaveFor(const QUrl &url);
    void connectPage();
    void endHiddenPage();
    void endPage();
    void onLoadStarted();
    void onLoadFinished(bool ok);
    void onProcessEnded();
    void tell(const QString &reason);
    void tellOfEmptyPage();
    void endWaiting();
    void addContextMenu();

    // In this order, since a page must go before its profile and a view before its page.
    std::shared_ptr<PreviewProfile> profile_;
    std::unique_ptr<PreviewPage> parting_; // was shown last
    std::unique_ptr<PreviewPage> page_;
    std::unique_ptr<QWebEngineView> view_;
    QString shownPath_; // empty before the first document
    QString visit_; // the host of its URL
    QString overlayPath_;
    QTimer slow_; // until the user is told to wait
    bool waiting_ = false; // and has been
    QString told_; // about the page that is loaded; empty for nothing
    bool crashed_ = false;
    bool fresh_ = true; // history may still hold another document, or the empty page of a warm start
};

} // namespace browser
