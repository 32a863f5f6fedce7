#include "platform/system/child_process.h"

#include <QProcess>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace shell {

// In the child, between the fork and the new program, only plain calls of the system are safe. The parent may
// have ended before the tie was made.
void tieToThisProcess(QProcess &process, Group group)
{
    const pid_t parent = getpid();
    process.setChildProcessModifier([parent, group] {
        if (group == Group::OfItsOwn)
            setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent)
            _exit(1);
    });
}

void killGroup(qint64 leader)
{
    if (leader > 1)
        kill(pid_t(-leader), SIGKILL);
}

} // namespace shell
