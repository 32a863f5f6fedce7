#include "platform/browser/preview_page.h"

#include "platform/browser/preview_url.h"

#include <QWebEngineFileSystemAccessRequest>
#include <QWebEngineFullScreenRequest>
#include <QWebEngineQuotaRequest>
#include <QWebEngineRegisterProtocolHandlerRequest>
#include <QWebEngineSettings>
#include <array>

namespace browser {
namespace {

struct Setting
{
    QWebEngineSettings::WebAttribute attribute;
    bool on;
};

constexpr std::array kSettings = {
    Setting{QWebEngineSettings::LocalContentCanAccessRemoteUrls, false},
    Setting{QWebEngineSettings::LocalContentCanAccessFileUrls, true}, // the files beside the document
    Setting{QWebEngineSettings::LocalStorageEnabled, false},
    Setting{QWebEngineSettings::JavascriptCanOpenWindows, false},
    Setting{QWebEngineSettings::JavascriptCanAccessClipboard, false},
    Setting{QWebEngineSettings::JavascriptCanPaste, false},
    Setting{QWebEngineSettings::AllowWindowActivationFromJavaScript, false},
    Setting{QWebEngineSettings::AllowGeolocationOnInsecureOrigins, false},
    Setting{QWebEngineSettings::AllowRunningInsecureContent, false},
    Setting{QWebEngineSettings::HyperlinkAuditingEnabled, false},
    Setting{QWebEngineSettings::DnsPrefetchEnabled, false},
    Setting{QWebEngineSettings::AutoLoadIconsForPage, false},
    Setting{QWebEngineSettings::WebRTCPublicInterfacesOnly, true},
    Setting{QWebEngineSettings::PluginsEnabled, false},
    Setting{QWebEngineSettings::PdfViewerEnabled, false},
    Setting{QWebEngineSettings::FullScreenSupportEnabled, false},
    Setting{QWebEngineSettings::ScreenCaptureEnabled, false},
    Setting{QWebEngineSettings::WebGLEnabled, false},
    Setting{QWebEngineSettings::NavigateOnDropEnabled, false},
    Setting{QWebEngineSettings::PlaybackRequiresUserGesture, true},
};

} // namespace

PreviewPage::PreviewPage(QWebEngineProfile *profile) : QWebEnginePage(profile)
{
    applySettings();
    refuseRequests();
    connect(this, &QWebEnginePage::loadStarted, this, [this] { leaving_ = false; });
}

void PreviewPage::applySettings()
{
    for (const Setting &setting : kSettings)
        settings()->setAttribute(setting.attribute, setting.on);
    settings()->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
}

void PreviewPage::refuseRequests()
{
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl &origin, Feature feature) {
                setFeaturePermission(origin, feature, PermissionDeniedByUser);
            });
    connect(this, &QWebEnginePage::fullScreenRequested, this,
            [](QWebEngineFullScreenRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::quotaRequested, this,
            [](QWebEngineQuotaRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::registerProtocolHandlerRequested, this,
            [](QWebEngineRegisterProtocolHandlerRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::fileSystemAccessRequested, this,
            [](QWebEngineFileSystemAccessRequest request) { request.reject(); });
}

// Uploading has nowhere to go to.
QStringList PreviewPage::chooseFiles(FileSelectionMode, const QStringList &, const QStringList &)
{
    return {};
}

void PreviewPage::javaScriptAlert(const QUrl &origin, const QString &text)
{
    if (!silent_)
        QWebEnginePage::javaScriptAlert(origin, text);
}

bool PreviewPage::javaScriptConfirm(const QUrl &origin, const QString &text)
{
    if (leaving_) // also the question whether a page may be left comes here
        return true;
    return !silent_ && QWebEnginePage::javaScriptConfirm(origin, text);
}

bool PreviewPage::javaScriptPrompt(const QUrl &origin, const QString &text, const QString &proposed,
                                   QString *result)
{
    return !silent_ && QWebEnginePage::javaScriptPrompt(origin, text, proposed, result);
}

void PreviewPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString &message,
                                           int line, const QString &source)
{
    if (!silent_)
        QWebEnginePage::javaScriptConsoleMessage(level, message, line, source);
}

// Typed is what the program itself loads. Frames may also hold what is made on the spot.
bool PreviewPage::acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame)
{
    if (type == NavigationTypeTyped || !pathOfPreviewUrl(url).isEmpty())
        return true;
    const QString scheme = url.scheme();
    return scheme == QStringLiteral("about") || (!isMainFrame && scheme == QStringLiteral("data"))
        || (!isMainFrame && scheme == QStringLiteral("blob"));
}

} // namespace browser
