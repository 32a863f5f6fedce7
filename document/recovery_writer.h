// Writes unsaved texts behind the user's back: the one thread beside the window's. It is handed texts, which
// it shares and never changes, and touches nothing but its store.
#pragma once

#include "document/recovery_store.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace document {

class RecoveryWriter
{
public:
    // Is told, in the writer's thread, how each write went.
    using Told = std::function<void(const platform::Result<void> &)>;

    RecoveryWriter(RecoveryStore &store, Told told);
    // Returns when all that was asked for is done.
    ~RecoveryWriter();
    RecoveryWriter(const RecoveryWriter &) = delete;
    RecoveryWriter &operator=(const RecoveryWriter &) = delete;

    // The window's unsaved text. Of several that wait only the newest is written.
    void write(const RecoveryCopy &copy);
    // The window has nothing unsaved; what waits to be written need not be any more.
    void drop();
    // A text that was given up; each of them is written.
    void keep(const RecoveryCopy &copy);

    // Waits until what was given up is written; texts that are not may still be on their way.
    void finishKeeping();
    // Waits until all is done; until the next order the store may then be used by the caller.
    void finish();

private:
    // What is to be done, in this order.
    struct Orders
    {
        QList<RecoveryCopy> keep;
        std::optional<RecoveryCopy> write;
        bool drop = false;

        bool none() const { return keep.isEmpty() && !write && !drop; }
    };

    template <typename Change>
    void order(const Change &change);
    void run(const std::stop_token &stop);
    void kept();
    void carryOut(const Orders &orders);

    RecoveryStore &store_;
    Told told_;
    std::mutex guard_; // of what follows
    Orders orders_;
    bool busy_ = false;
    bool keeping_ = false;
    std::condition_variable_any changed_;
    std::jthread thread_; // last: begun when all else is there, joined before it goes
};

} // namespace document
