#include "platform/browser/help_view.h"

#include <QFileInfo>
#include <QVBoxLayout>
#include <QWebEngineHistory>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestInfo>
#include <QWebEngineUrlRequestInterceptor>
#include <algorithm>

namespace browser {

namespace {

constexpr double leastZoom = 0.5;
constexpr double greatestZoom = 3;
constexpr double zoomStep = 0.1;

// The file may be gone; the folder's own links were resolved, so the page's are too.
bool isIn(const QString &folder, const QUrl &url)
{
    return url.isLocalFile() && QFileInfo(url.toLocalFile()).canonicalFilePath().startsWith(folder);
}

} // namespace

class HelpView::Guard : public QWebEngineUrlRequestInterceptor
{
public:
    explicit Guard(QString folder) : folder_(std::move(folder)) { }

    void interceptRequest(QWebEngineUrlRequestInfo &info) override
    {
        const QUrl url = info.requestUrl();
        info.block(!isIn(folder_, url) && url.scheme() != QStringLiteral("data"));
    }

private:
    QString folder_;
};

class HelpView::Page : public QWebEnginePage
{
public:
    Page(HelpView &help, QWebEngineProfile *profile) : QWebEnginePage(profile), help_(help)
    {
        settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, false);
        settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
        settings()->setAttribute(QWebEngineSettings::PluginsEnabled, false);
        settings()->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
    }

protected:
    bool acceptNavigationRequest(const QUrl &url, NavigationType type, bool) override
    {
        if (isIn(help_.folder_, url))
            return true;
        if (type == NavigationTypeLinkClicked)
            Q_EMIT help_.leftBy(url.toString());
        return false;
    }

    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString &, int,
                                  const QString &) override
    {
        // Of no use to a reader, and the log is not the place for pages.
    }

private:
    HelpView &help_;
};

HelpView::HelpView(const QString &folder, QWidget *parent)
    : QWidget(parent), folder_(QFileInfo(folder).canonicalFilePath() + QLatin1Char('/')),
      guard_(std::make_unique<Guard>(folder_)), profile_(std::make_unique<QWebEngineProfile>()),
      page_(std::make_unique<Page>(*this, profile_.get())), view_(std::make_unique<QWebEngineView>(this))
{
    profile_->setHttpCacheType(QWebEngineProfile::NoCache);
    profile_->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    profile_->setUrlRequestInterceptor(guard_.get());
    view_->setPage(page_.get());
    view_->setObjectName(QStringLiteral("HelpPages"));
    view_->setContextMenuPolicy(Qt::NoContextMenu);
    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(view_.get());
    setFocusProxy(view_.get());
    connect(page_.get(), &QWebEnginePage::titleChanged, this, &HelpView::pageChanged);
    connect(page_.get(), &QWebEnginePage::loadFinished, this, [this] { Q_EMIT pageChanged(page_->title()); });
}

HelpView::~HelpView() = default;

bool HelpView::show(const QString &path)
{
    const QUrl url = QUrl::fromLocalFile(path);
    if (!isIn(folder_, url))
        return false;
    view_->load(url);
    return true;
}

void HelpView::back() { view_->back(); }

void HelpView::forward() { view_->forward(); }

bool HelpView::canGoBack() const { return page_->history()->canGoBack(); }

bool HelpView::canGoForward() const { return page_->history()->canGoForward(); }

void HelpView::zoom(int steps)
{
    const double wanted = steps == 0 ? 1 : view_->zoomFactor() + steps * zoomStep;
    view_->setZoomFactor(std::clamp(wanted, leastZoom, greatestZoom));
}

void HelpView::find(const QString &text, bool backward)
{
    page_->findText(text, backward ? QWebEnginePage::FindBackward : QWebEnginePage::FindFlags());
}

QUrl HelpView::shownPage() const { return page_->url(); }

} // namespace browser
