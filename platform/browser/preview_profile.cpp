#include "platform/browser/preview_profile.h"

#include "platform/browser/preview_handler.h"
#include "platform/browser/preview_page.h"
#include "platform/browser/preview_url.h"

#include <QUrl>
#include <QWebEngineDownloadRequest>
#include <QWebEngineUrlRequestInfo>
#include <QWebEngineUrlRequestInterceptor>
#include <algorithm>
#include <array>

namespace browser {

// Lets through what comes from the preview itself, except what a script would read or send.
class PreviewProfile::NetworkGuard : public QWebEngineUrlRequestInterceptor
{
public:
    void interceptRequest(QWebEngineUrlRequestInfo &info) override
    {
        info.block(!isOwn(info.requestUrl()) || isScripted(info.resourceType()));
    }

private:
    static bool isOwn(const QUrl &url)
    {
        static const std::array kMadeOnTheSpot
            = {QStringLiteral("data"), QStringLiteral("blob"), QStringLiteral("about")};
        return !pathOfPreviewUrl(url).isEmpty()
            || std::find(kMadeOnTheSpot.begin(), kMadeOnTheSpot.end(), url.scheme()) != kMadeOnTheSpot.end();
    }

    static bool isScripted(QWebEngineUrlRequestInfo::ResourceType type)
    {
        constexpr std::array kScripted
            = {QWebEngineUrlRequestInfo::ResourceTypeXhr, QWebEngineUrlRequestInfo::ResourceTypePing,
               QWebEngineUrlRequestInfo::ResourceTypeWebSocket,
               QWebEngineUrlRequestInfo::ResourceTypeServiceWorker};
        return std::find(kScripted.begin(), kScripted.end(), type) != kScripted.end();
    }
};

// A profile without a name is off the record.
PreviewProfile::PreviewProfile()
    : handler_(std::make_unique<PreviewHandler>()), guard_(std::make_unique<NetworkGuard>()),
      profile_(std::make_unique<QWebEngineProfile>())
{
    profile_->setHttpCacheType(QWebEngineProfile::NoCache);
    profile_->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    profile_->setUrlRequestInterceptor(guard_.get());
    profile_->installUrlSchemeHandler(previewScheme(), handler_.get());
    QObject::connect(profile_.get(), &QWebEngineProfile::downloadRequested, profile_.get(),
                     [](QWebEngineDownloadRequest *download) { download->cancel(); });
}

PreviewProfile::~PreviewProfile() = default;

std::unique_ptr<PreviewPage> PreviewProfile::takePage()
{
    return ready_ ? std::move(ready_) : std::make_unique<PreviewPage>(profile_.get());
}

void PreviewProfile::warmUp()
{
    if (ready_)
        return;
    ready_ = std::make_unique<PreviewPage>(profile_.get());
    ready_->load(QUrl(QStringLiteral("about:blank")));
}

std::shared_ptr<PreviewProfile> warmUp()
{
    auto profile = std::make_shared<PreviewProfile>();
    profile->warmUp();
    return profile;
}

} // namespace browser
