#include "platform/system/process_limits.h"

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace shell {

namespace {

// A sanitizer takes terabytes of addresses for itself.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool boundsMemory = false;
#else
constexpr bool boundsMemory = true;
#endif

rlimit bound(qint64 most) { return {rlim_t(most), rlim_t(most)}; }

} // namespace

// What can be written to counts, and not addresses that are merely set aside.
void limitThisProcess(qint64 memory, int seconds)
{
    std::signal(SIGXFSZ, SIG_IGN); // the write fails, and that is enough
    const rlimit data = bound(memory);
    const rlimit computing = bound(seconds);
    const rlimit nothing = bound(0);
    if (boundsMemory)
        setrlimit(RLIMIT_DATA, &data);
    setrlimit(RLIMIT_CPU, &computing);
    setrlimit(RLIMIT_FSIZE, &nothing);
    setrlimit(RLIMIT_CORE, &nothing);
}

#if defined(__linux__)
bool limitMemoryOf(qint64 process, qint64 memory)
{
    const rlimit data = bound(memory);
    return boundsMemory && prlimit(pid_t(process), RLIMIT_DATA, &data, nullptr) == 0;
}
#else
bool limitMemoryOf(qint64, qint64) { return false; }
#endif

qint64 physicalMemory()
{
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long size = sysconf(_SC_PAGESIZE);
    return pages > 0 && size > 0 ? qint64(pages) * size : 0;
}

} // namespace shell
