#include "document/recovery_writer.h"

#include <utility>

namespace document {

RecoveryWriter::RecoveryWriter(RecoveryStore &store, Told told)
    : store_(store), told_(std::move(told)), thread_([this](const std::stop_token &stop) { run(stop); })
{ }

RecoveryWriter::~RecoveryWriter() { finish(); }

template <typename Change>
void RecoveryWriter::order(const Change &change)
{
    {
        const std::lock_guard lock(guard_);
        change(orders_);
    }
    changed_.notify_all();
}

void RecoveryWriter::write(const RecoveryCopy &copy)
{
    order([&](Orders &orders) {
        orders.write = copy;
        orders.drop = false;
    });
}

void RecoveryWriter::drop()
{
    order([](Orders &orders) {
        orders.write.reset();
        orders.drop = true;
    });
}

void RecoveryWriter::keep(const RecoveryCopy &copy)
{
    order([&](Orders &orders) { orders.keep.append(copy); });
}

void RecoveryWriter::finish()
{
    std::unique_lock lock(guard_);
    changed_.wait(lock, [this] { return orders_.none() && !busy_; });
}

void RecoveryWriter::finishKeeping()
{
    std::unique_lock lock(guard_);
    changed_.wait(lock, [this] { return orders_.keep.isEmpty() && !keeping_; });
}

void RecoveryWriter::run(const std::stop_token &stop)
{
    std::unique_lock lock(guard_);
    while (changed_.wait(lock, stop, [this] { return !orders_.none(); })) {
        const Orders orders = std::exchange(orders_, {});
        busy_ = true;
        keeping_ = true;
        lock.unlock();
        carryOut(orders);
        lock.lock();
        busy_ = false;
        changed_.notify_all();
    }
}

void RecoveryWriter::kept()
{
    {
        const std::lock_guard lock(guard_);
        keeping_ = false;
    }
    changed_.notify_all();
}

void RecoveryWriter::carryOut(const Orders &orders)
{
    for (const RecoveryCopy &copy : orders.keep)
        told_(store_.keep(copy));
    kept();
    if (orders.write)
        told_(store_.write(*orders.write));
    else if (orders.drop)
        store_.drop();
}

} // namespace document
