#include "platform/browser/web_browser.h"

#include "platform/browser/preview_handler.h"
#include "platform/browser/preview_page.h"
#include "platform/browser/preview_url.h"

#include <QAction>
#include <QMetaObject>
#include <QVBoxLayout>
#include <QWebEngineHistory>

namespace browser {

WebBrowser::WebBrowser(std::shared_ptr<PreviewProfile> profile, QWidget *parent)
    : QWidget(parent), profile_(std::move(profile)), page_(profile_->takePage()),
      view_(std::make_unique<QWebEngineView>(this))
{
    view_->setPage(page_.get());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_.get());
    addContextMenu();
    connect(page_.get(), &QWebEnginePage::loadFinished, this, &WebBrowser::onLoadFinished);
    // Only after the page has dealt with the end of its process may it load something else.
    connect(page_.get(), &QWebEnginePage::renderProcessTerminated, this, &WebBrowser::onProcessEnded,
            Qt::QueuedConnection);
}

WebBrowser::~WebBrowser()
{
    page_->disconnect(this);
    profile_->handler().dropOverlay(overlayPath_);
}

void WebBrowser::setSilent(bool silent) { page_->setSilent(silent); }

void WebBrowser::navigate(const QString &path)
{
    profile_->handler().dropOverlay(overlayPath_);
    overlayPath_.clear();
    showFile(cleanPreviewPath(path));
}

void WebBrowser::showText(const QByteArray &bytes, const QString &path)
{
    profile_->handler().dropOverlay(overlayPath_);
    overlayPath_ = cleanPreviewPath(path);
    profile_->handler().setOverlay(overlayPath_, bytes);
    showFile(overlayPath_);
}

void WebBrowser::back()
{
    page_->aboutToLeave();
    page_->triggerAction(QWebEnginePage::Back);
}

void WebBrowser::forward()
{
    page_->aboutToLeave();
    page_->triggerAction(QWebEnginePage::Forward);
}

void WebBrowser::reload()
{
    if (shownPath_.isEmpty())
        return;
    if (crashed_) {
        leaveFor(previewUrl(shownPath_, profile_->nextVisit()));
        return;
    }
    page_->aboutToLeave();
    page_->triggerAction(QWebEnginePage::ReloadAndBypassCache);
}

QWebEnginePage *WebBrowser::page() const { return page_.get(); }

// The document that is shown already is loaded again in place, so that history does not fill with it.
void WebBrowser::showFile(const QString &path)
{
    profile_->handler().admit(path);
    shownPath_ = path;
    if (!page_->isLoading() && pathOfPreviewUrl(page_->url()) == path)
        reload();
    else
        leaveFor(previewUrl(path, profile_->nextVisit()));
}

void WebBrowser::leaveFor(const QUrl &url)
{
    crashed_ = false;
    page_->aboutToLeave();
    page_->load(url);
}

void WebBrowser::onLoadFinished(bool ok)
{
    if (pathOfPreviewUrl(page_->url()).isEmpty())
        return;
    if (fresh_)
        page_->history()->clear();
    fresh_ = false;
    Q_EMIT loadFinished(ok);
}

void WebBrowser::onProcessEnded()
{
    if (shownPath_.isEmpty())
        return;
    crashed_ = true;
    page_->setHtml(QStringLiteral("<!DOCTYPE html><title>Preview</title>"
                                  "<body style=\"font-family:sans-serif;margin:3em;max-width:40em\">"
                                  "<h2>The preview stopped working.</h2>"
                                  "<p>The page could not be shown to its end. Your document is not affected. "
                                  "Refresh to load the page again.</p>"));
}

void WebBrowser::addContextMenu()
{
    auto *again = new QAction(tr("Refresh"), this);
    connect(again, &QAction::triggered, this, &WebBrowser::reload);
    view_->addActions({page_->action(QWebEnginePage::Back), page_->action(QWebEnginePage::Forward), again,
                       page_->action(QWebEnginePage::Copy), page_->action(QWebEnginePage::SelectAll)});
    view_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

} // namespace browser
