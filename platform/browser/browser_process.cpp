#include "platform/browser/browser_process.h"

#include "platform/browser/preview_url.h"
#include "platform/browser/superuser.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <array>

namespace browser {
namespace {

constexpr char kFlagsVariable[] = "QTWEBENGINE_CHROMIUM_FLAGS";

// Requests are refused one by one elsewhere. These close the ways that are no requests: look-ups and
// connections of every other kind find no address, and calls between browsers may not go around that.
constexpr std::array kFlags = {
    "--disable-background-networking",
    "--host-resolver-rules=\"MAP * ~NOTFOUND\"",
    "--force-webrtc-ip-handling-policy=disable_non_proxied_udp",
};

void addFlags()
{
    QByteArray flags = qgetenv(kFlagsVariable);
    for (const char *flag : kFlags)
        flags += (flags.isEmpty() ? "" : " ") + QByteArray(flag);
    qputenv(kFlagsVariable, flags);
}

// Without a screen there is nothing that could draw for the engine.
void drawInSoftwareWithoutScreen()
{
    if (qgetenv("QT_QPA_PLATFORM").startsWith("offscreen") && !qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
}

} // namespace

void prepareProcess()
{
    registerPreviewScheme();
    addFlags();
    // The engine tells its whole start-up in the log; QT_LOGGING_RULES still switches it on.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.webenginecontext.info=false"));
    drawInSoftwareWithoutScreen();
    if (runsAsSuperuser())
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

} // namespace browser
