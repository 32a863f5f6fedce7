// What all previews of the program share: a browser profile of its own that keeps nothing, reaches no
// network, and serves the previewed files.
#pragma once

#include <QWebEngineProfile>
#include <memory>

namespace browser {

class PreviewHandler;
class PreviewPage;

// Outlives every page of it: each WebBrowser holds a share.
class PreviewProfile
{
public:
    // Memory is in bytes for each page; one that takes more is ended.
    explicit PreviewProfile(qint64 memory = usualMemory());
    ~PreviewProfile();
    PreviewProfile(const PreviewProfile &) = delete;
    PreviewProfile &operator=(const PreviewProfile &) = delete;

    // A page of this profile, to be deleted before it; the one made ready by warmUp() when it is unused.
    std::unique_ptr<PreviewPage> takePage();

    PreviewHandler &handler() { return *handler_; }

    // A number that no visit had before.
    int nextVisit() { return ++visits_; }

    // Half of the machine's, within reason.
    static qint64 usualMemory();

    // Starts the browser's process ahead of the first use.
    void warmUp();

private:
    class NetworkGuard;

    std::unique_ptr<PreviewPage> makePage();

    std::unique_ptr<PreviewHandler> handler_;
    std::unique_ptr<NetworkGuard> guard_;
    std::unique_ptr<QWebEngineProfile> profile_;
    std::unique_ptr<PreviewPage> ready_;
    qint64 memory_;
    int visits_ = 0;
};

// A profile whose process is already starting; for the start-up window to make and to hand over.
std::shared_ptr<PreviewProfile> warmUp();

} // namespace browser
