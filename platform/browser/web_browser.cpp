#include "platform/browser/web_browser.h"

#include "platform/browser/preview_handler.h"
#include "platform/browser/preview_notice.h"
#include "platform/browser/preview_page.h"
#include "platform/browser/preview_url.h"

#include <QAction>
#include <QHideEvent>
#include <QVBoxLayout>
#include <QWebEngineHistory>
#include <QWebEngineScript>
#include <utility>

namespace browser {
namespace {

constexpr int kPatience = 700; // ms of loading before the user is told

} // namespace

WebBrowser::WebBrowser(std::shared_ptr<PreviewProfile> profile, QWidget *parent)
    : QWidget(parent), profile_(std::move(profile)), page_(profile_->takePage()),
      view_(std::make_unique<QWebEngineView>(this))
{
    connectPage();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_.get());
    addContextMenu();
    slow_.setSingleShot(true);
    slow_.setInterval(kPatience);
    connect(&slow_, &QTimer::timeout, this, [this] {
        waiting_ = true;
        Q_EMIT noted(tr("The page is being loaded..."));
    });
    connect(&profile_->handler(), &PreviewHandler::lacking, this,
            [this](const QUrl &asked, const QString &reason) {
                if (asked.host() == visit_)
                    tell(reason);
            });
}

void WebBrowser::connectPage()
{
    view_->setPage(page_.get());
    connect(page_.get(), &QWebEnginePage::urlChanged, this, &WebBrowser::historyChanged);
    connect(page_.get(), &QWebEnginePage::loadProgress, this, &WebBrowser::historyChanged);
    connect(page_.get(), &QWebEnginePage::loadStarted, this, &WebBrowser::onLoadStarted);
    connect(page_.get(), &QWebEnginePage::loadFinished, this, &WebBrowser::onLoadFinished);
    // Only after the page has dealt with the end of its process may it load something else.
    connect(page_.get(), &QWebEnginePage::renderProcessTerminated, this, &WebBrowser::onProcessEnded,
            Qt::QueuedConnection);
}

WebBrowser::~WebBrowser()
{
    page_->disconnect(this);
    profile_->handler().disconnect(this);
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

// A look at the history of a page that is not made yet would make it, in the midst of its making even.
bool WebBrowser::canGoBack() const { return !fresh_ && page_->history()->canGoBack(); }

bool WebBrowser::canGoForward() const { return !fresh_ && page_->history()->canGoForward(); }

// The document that is shown already is loaded again in place, so that history does not fill with it. Another
// one leaves no way back: the copy of the one before may be gone.
void WebBrowser::showFile(const QString &path)
{
    profile_->handler().admit(path);
    fresh_ = fresh_ || path != shownPath_;
    shownPath_ = path;
    if (!page_->isLoading() && pathOfPreviewUrl(page_->url()) == path)
        reload();
    else
        leaveFor(previewUrl(path, profile_->nextVisit()));
}

void WebBrowser::leaveFor(const QUrl &url)
{
    crashed_ = false;
    visit_ = url.host();
    page_->aboutToLeave();
    page_->load(url);
}

// A page out of sight must not go on running. Not at once: what hides it may be the end of the window.
void WebBrowser::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        QMetaObject::invokeMethod(this, &WebBrowser::endHiddenPage, Qt::QueuedConnection);
}

void WebBrowser::endHiddenPage()
{
    if (!isVisible() && !shownPath_.isEmpty())
        endPage();
}

// The page goes with its process, and not while it may be asking for this.
void WebBrowser::endPage()
{
    slow_.stop();
    setFocusProxy(nullptr);
    page_->disconnect(this);
    parting_ = std::exchange(page_, profile_->takePage());
    page_->setSilent(parting_->isSilent());
    connectPage();
    shownPath_.clear();
    fresh_ = true;
    // Nor is anything told at once: a window that hides because it ends cannot listen any more.
    QTimer::singleShot(0, this, [this] {
        parting_.reset();
        profile_->warmUp();
        if (std::exchange(waiting_, false))
            Q_EMIT noted({});
        Q_EMIT historyChanged();
    });
}

void WebBrowser::onLoadStarted()
{
    told_.clear();
    slow_.start();
}

void WebBrowser::onLoadFinished(bool ok)
{
    endWaiting();
    if (pathOfPreviewUrl(page_->url()).isEmpty())
        return;
    if (fresh_ && pathOfPreviewUrl(page_->history()->currentItem().url()) == shownPath_) {
        page_->history()->clear();
        fresh_ = false;
    }
    setFocusProxy(view_.get()); // with the focus, now that there is something to give it to
    Q_EMIT historyChanged();
    Q_EMIT loadFinished(ok);
    tellOfEmptyPage();
}

void WebBrowser::endWaiting()
{
    slow_.stop();
    if (std::exchange(waiting_, false) && told_.isEmpty())
        Q_EMIT noted({});
}

// What is wrong with a style sheet that cannot be carried out the engine keeps to itself, and shows nothing.
void WebBrowser::tellOfEmptyPage()
{
    static const QString kLook = QStringLiteral(
        "document.documentElement ? '' : document.contentType == 'text/xml' ? 'fault' : 'empty'");
    page_->runJavaScript(kLook, QWebEngineScript::ApplicationWorld, [this](const QVariant &answer) {
        const QString seen = answer.toString(); // nothing when the page has gone
        if (seen == QStringLiteral("empty"))
            tell(tr("The style sheet made an empty page."));
        if (seen != QStringLiteral("fault"))
            return;
        tell(tr("The style sheet could not be carried out: there is a fault in it."));
        page_->runJavaScript(scriptShowing(told_), QWebEngineScript::ApplicationWorld);
    });
}

// The first trouble is likely the cause of the others.
void WebBrowser::tell(const QString &reason)
{
    if (!told_.isEmpty())
        return;
    told_ = reason;
    Q_EMIT noted(reason);
}

void WebBrowser::onProcessEnded()
{
    if (shownPath_.isEmpty())
        return;
    crashed_ = true;
    page_->setHtml(stoppedNotice());
}

void WebBrowser::addContextMenu()
{
    const auto add = [this](const QString &text, auto run) {
        auto *action = new QAction(text, view_.get());
        connect(action, &QAction::triggered, this, run);
        view_->addAction(action);
        return action;
    };
    auto *toPrevious = add(tr("Back"), [this] { back(); });
    auto *toNext = add(tr("Forward"), [this] { forward(); });
    add(tr("Refresh"), [this] { reload(); });
    add(tr("Copy"), [this] { page_->triggerAction(QWebEnginePage::Copy); });
    add(tr("Select All"), [this] { page_->triggerAction(QWebEnginePage::SelectAll); });
    view_->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(this, &WebBrowser::historyChanged, this, [this, toPrevious, toNext] {
        toPrevious->setEnabled(canGoBack());
        toNext->setEnabled(canGoForward());
    });
}

} // namespace browser
