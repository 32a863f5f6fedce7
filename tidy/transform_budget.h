// What one transformation may take of the machine: memory, and documents that it loads.
#pragma once

#include <cstddef>

namespace tidy {

// Called once, before the first budget.
void meterLibraryMemory();

// While it lives, counts what libxml2 takes on this thread; one at a time. Beyond the limit it calls what
// stops the transformation; a large piece far beyond it is refused.
class TransformBudget
{
public:
    using Stop = void (*)(void *what);

    // memory: bytes at one time. traffic: bytes in all, freed ones too, since every one costs time.
    TransformBudget(std::size_t memory, std::size_t traffic, int documents);
    ~TransformBudget();
    TransformBudget(const TransformBudget &) = delete;
    TransformBudget &operator=(const TransformBudget &) = delete;

    // The one of this thread; null when there is none.
    static TransformBudget *current();

    void whenSpent(Stop stop, void *what);
    bool isSpent() const { return spent_; }

    // Whether one more may be loaded.
    bool takeDocument();

    // Whether so much more may be had.
    bool take(std::size_t bytes);
    void giveBack(std::size_t bytes) { held_ -= static_cast<long long>(bytes); }

private:
    void spend();

    long long memory_;
    long long held_ = 0; // below zero when what was taken earlier is freed
    std::size_t traffic_;
    std::size_t moved_ = 0;
    int documents_;
    bool spent_ = false;
    Stop stop_ = nullptr;
    void *what_ = nullptr;
};

} // namespace tidy
