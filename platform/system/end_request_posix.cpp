#include "platform/system/end_request.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace shell {

namespace {

constexpr int endings[] = {SIGTERM, SIGHUP, SIGINT};

// A handler of signals may do little more than write, and knows nothing but what is global.
int pipeEnds[2] = {-1, -1};

void tell(int)
{
    const char sign = 0;
    (void)!write(pipeEnds[1], &sign, 1);
}

} // namespace

EndRequest::EndRequest()
{
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto *heard = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(heard, &QSocketNotifier::activated, this, [this, heard] {
        heard->setEnabled(false);
        Q_EMIT asked();
    });
    struct sigaction action = {};
    action.sa_handler = tell;
    action.sa_flags = SA_RESTART;
    for (const int ending : endings)
        sigaction(ending, &action, nullptr);
}

EndRequest::~EndRequest()
{
    for (const int ending : endings)
        std::signal(ending, SIG_DFL);
    for (int &end : pipeEnds) {
        if (end >= 0)
            close(end);
        end = -1;
    }
}

} // namespace shell
