#include "platform/browser/preview_profile.h"

#include "platform/browser/media_type.h"
#include "platform/browser/preview_handler.h"
#include "platform/browser/preview_page.h"
#include "platform/browser/preview_reach.h"
#include "platform/browser/preview_url.h"
#include "platform/system/process_limits.h"

#include <QUrl>
#include <QWebEngineDownloadRequest>
#include <QWebEngineUrlRequestInfo>
#include <QWebEngineUrlRequestInterceptor>
#include <algorithm>
#include <array>

namespace browser {

// Lets through what comes from the preview itself, except what a script would read or send, and what a page
// may not reach.
class PreviewProfile::NetworkGuard : public QWebEngineUrlRequestInterceptor
{
public:
    explicit NetworkGuard(PreviewHandler &handler) : handler_(handler) { }

    void interceptRequest(QWebEngineUrlRequestInfo &info) override
    {
        info.block(!isOwn(info.requestUrl()) || isScripted(info.resourceType()) || isOutOfReach(info));
    }

private:
    // Another visit's address would give a page a process more for every frame.
    bool isOutOfReach(const QWebEngineUrlRequestInfo &info)
    {
        const QUrl asked = info.requestUrl();
        const QUrl page = info.firstPartyUrl();
        if (info.resourceType() == QWebEngineUrlRequestInfo::ResourceTypeMainFrame
            || pathOfPreviewUrl(asked).isEmpty())
            return false;
        if (asked.host() != page.host())
            return true;
        handler_.setShown(page);
        const bool isCode = info.resourceType() == QWebEngineUrlRequestInfo::ResourceTypeScript
            && mediaType(pathOfPreviewUrl(asked), {}, Wanted::ByPage) == "text/javascript";
        const bool isLinked = !isReadable(info.resourceType())
            && (isCode || info.resourceType() != QWebEngineUrlRequestInfo::ResourceTypeScript);
        return !isLinked && !handler_.letsRead(asked, page);
    }

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

    PreviewHandler &handler_;
};

// A profile without a name is off the record.
PreviewProfile::PreviewProfile(qint64 memory)
    : handler_(std::make_unique<PreviewHandler>()), guard_(std::make_unique<NetworkGuard>(*handler_)),
      profile_(std::make_unique<QWebEngineProfile>()), memory_(memory)
{
    profile_->setHttpCacheType(QWebEngineProfile::NoCache);
    profile_->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    profile_->setUrlRequestInterceptor(guard_.get());
    profile_->installUrlSchemeHandler(previewScheme(), handler_.get());
    QObject::connect(profile_.get(), &QWebEngineProfile::downloadRequested, profile_.get(),
                     [](QWebEngineDownloadRequest *download) { download->cancel(); });
}

PreviewProfile::~PreviewProfile() = default;

std::unique_ptr<PreviewPage> PreviewProfile::takePage() { return ready_ ? std::move(ready_) : makePage(); }

// A page may change its process with every document, and is not told of its first one.
std::unique_ptr<PreviewPage> PreviewProfile::makePage()
{
    auto page = std::make_unique<PreviewPage>(profile_.get());
    const auto limit = [made = page.get(), memory = memory_] {
        const qint64 process = made->renderProcessPid();
        if (process > 0)
            shell::limitMemoryOf(process, memory);
    };
    QObject::connect(page.get(), &QWebEnginePage::renderProcessPidChanged, page.get(), limit);
    QObject::connect(page.get(), &QWebEnginePage::loadStarted, page.get(), limit);
    QObject::connect(page.get(), &QWebEnginePage::loadProgress, page.get(), limit);
    return page;
}

qint64 PreviewProfile::usualMemory()
{
    constexpr qint64 least = qint64{1} << 30;
    constexpr qint64 most = qint64{4} << 30;
    return std::clamp(shell::physicalMemory() / 2, least, most);
}

void PreviewProfile::warmUp()
{
    if (ready_)
        return;
    ready_ = makePage();
    ready_->load(QUrl(QStringLiteral("about:blank")));
}

std::shared_ptr<PreviewProfile> warmUp()
{
    auto profile = std::make_shared<PreviewProfile>();
    profile->warmUp();
    return profile;
}

} // namespace browser
