// Preloaded into a program: calls on files in one folder fail or wait, as a file of rules says that may
// change at any time. XE_FAULTS names it; without it nothing happens. Its first line is the folder; every
// further line is a rule:
//
//   CALL SKIP TIMES ACTION
//
// CALL is open, create, read, write, flush, rename, name, stat, truncate, remove or * for all of these; the
// first SKIP calls pass, the next TIMES meet the ACTION: an error's number, "short" for half of what was to
// be read or written, or "hold": the call waits while somebody has the file of rules locked (flock).
//
// Calls that are held are counted in the file of that name with ".held" behind it, one letter each: "w" in
// the thread of the windows, "o" in another one. Processes that the program starts have a good disk.
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace {

struct Rule
{
    std::string call;
    long skip = 0;
    long times = 0;
    std::string action;
    long met = 0;
};

struct Rules
{
    std::string text;
    std::string folder;
    std::vector<Rule> rules;
};

std::mutex guard; // of what follows

// There before everything else of the program is, and to the last.
Rules &theRules()
{
    static auto *rules = new Rules; // NOLINT: never deleted
    return *rules;
}

[[gnu::constructor]] void spareChildren() { unsetenv("LD_PRELOAD"); }

// Straight to the system: these calls are not to meet rules.
std::string contentOf(const char *path)
{
    std::string text(4096, '\0');
    const long file = syscall(SYS_openat, AT_FDCWD, path, O_RDONLY | O_CLOEXEC);
    const long size = file < 0 ? 0 : syscall(SYS_read, file, text.data(), text.size());
    if (file >= 0)
        syscall(SYS_close, file);
    text.resize(size > 0 ? size_t(size) : 0);
    return text;
}

void readRules(const char *path)
{
    std::string text = contentOf(path);
    Rules &rules = theRules();
    if (text == rules.text)
        return;
    rules = {};
    size_t at = text.find('\n');
    rules.folder = text.substr(0, at);
    while (at != std::string::npos && at + 1 < text.size()) {
        const size_t end = text.find('\n', at + 1);
        char call[16];
        char action[16];
        Rule rule;
        if (sscanf(text.substr(at + 1, end - at - 1).c_str(), "%15s %ld %ld %15s", call, &rule.skip,
                   &rule.times, action)
            == 4) {
            rule.call = call;
            rule.action = action;
            rules.rules.push_back(rule);
        }
        at = end;
    }
    rules.text = std::move(text);
}

// The action that this call meets; empty for none.
std::string meet(const char *call, std::string path)
{
    for (size_t at = path.find("//"); at != std::string::npos; at = path.find("//", at))
        path.erase(at, 1);
    const char *file = getenv("XE_FAULTS");
    if (file == nullptr)
        return {};
    const std::lock_guard lock(guard);
    readRules(file);
    Rules &rules = theRules();
    if (rules.folder.empty() || path.compare(0, rules.folder.size(), rules.folder) != 0)
        return {};
    for (Rule &rule : rules.rules) {
        if (rule.call != "*" && rule.call != call)
            continue;
        const long number = rule.met++;
        if (number >= rule.skip && number < rule.skip + rule.times)
            return rule.action;
    }
    return {};
}

void hold()
{
    const std::string file = getenv("XE_FAULTS");
    const long held
        = syscall(SYS_openat, AT_FDCWD, (file + ".held").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    syscall(SYS_write, held, gettid() == getpid() ? "w" : "o", 1);
    syscall(SYS_close, held);
    const long rulesFile = syscall(SYS_openat, AT_FDCWD, file.c_str(), O_RDONLY | O_CLOEXEC);
    while (flock(int(rulesFile), LOCK_SH) != 0 && errno == EINTR) { }
    syscall(SYS_close, rulesFile);
}

// 0 when the call is to go on, else the error; of so many bytes.
int fault(const char *call, const std::string &path, size_t *bytes = nullptr)
{
    const std::string action = meet(call, path);
    if (action == "hold")
        hold();
    if (action == "short" && bytes != nullptr)
        *bytes = (*bytes + 1) / 2;
    return atoi(action.c_str());
}

std::string nameOf(int file)
{
    if (getenv("XE_FAULTS") == nullptr)
        return {};
    char name[PATH_MAX];
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const long size = syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), name, sizeof name);
    return {name, size > 0 ? size_t(size) : 0};
}

template <typename Call>
Call next(Call, const char *name)
{
    return reinterpret_cast<Call>(dlsym(RTLD_NEXT, name));
}

const char *openingOf(int flags)
{
    return flags & (O_CREAT | (O_TMPFILE & ~O_DIRECTORY)) ? "create" : "open";
}

} // namespace

// The rules say whether the system's own function is asked at all; fault is what they say.
#define PASS_UNLESS(fault, name, ...)                                                                        \
    do {                                                                                                     \
        if (const int error = fault) {                                                                       \
            errno = error;                                                                                   \
            return -1;                                                                                       \
        }                                                                                                    \
        return next(&name, #name)(__VA_ARGS__);                                                              \
    } while (false)

#define PASS(call, path, name, ...) PASS_UNLESS(fault(call, path), name, __VA_ARGS__)

#define OPENING(name)                                                                                        \
    int name(const char *path, int flags, ...)                                                               \
    {                                                                                                        \
        va_list more;                                                                                        \
        va_start(more, flags);                                                                               \
        const mode_t mode = va_arg(more, mode_t);                                                            \
        va_end(more);                                                                                        \
        PASS(openingOf(flags), path, name, path, flags, mode);                                               \
    }

extern "C" {

OPENING(open)
OPENING(open64)

// NOLINTBEGIN: the signatures are the system's
ssize_t write(int file, const void *bytes, size_t size)
{
    PASS_UNLESS(fault("write", nameOf(file), &size), write, file, bytes, size);
}
ssize_t read(int file, void *bytes, size_t size)
{
    PASS_UNLESS(fault("read", nameOf(file), &size), read, file, bytes, size);
}
ssize_t pread(int file, void *bytes, size_t size, off_t at)
{
    PASS_UNLESS(fault("read", nameOf(file), &size), pread, file, bytes, size, at);
}
int fsync(int file) { PASS("flush", nameOf(file), fsync, file); }
int ftruncate(int file, off_t size) noexcept { PASS("truncate", nameOf(file), ftruncate, file, size); }
int rename(const char *from, const char *to) noexcept { PASS("rename", to, rename, from, to); }
int linkat(int oldAt, const char *from, int at, const char *to, int flags) noexcept
{
    PASS("name", to, linkat, oldAt, from, at, to, flags);
}
int unlink(const char *path) noexcept { PASS("remove", path, unlink, path); }
int lstat(const char *path, struct stat *status) noexcept { PASS("stat", path, lstat, path, status); }
int stat(const char *path, struct stat *status) noexcept { PASS("stat", path, stat, path, status); }
int lstat64(const char *path, struct stat64 *status) noexcept { PASS("stat", path, lstat64, path, status); }
int stat64(const char *path, struct stat64 *status) noexcept { PASS("stat", path, stat64, path, status); }
int statx(int at, const char *path, int flags, unsigned mask, struct statx *status) noexcept
{
    PASS("stat", *path != 0 ? std::string(path) : nameOf(at), statx, at, path, flags, mask, status);
}
int access(const char *path, int mode) noexcept { PASS("stat", path, access, path, mode); }
int faccessat(int at, const char *path, int mode, int flags) noexcept
{
    PASS("stat", path, faccessat, at, path, mode, flags);
}
// NOLINTEND

} // extern "C"
