#include "tidy/transform_budget.h"

#include <libxml/globals.h>
#include <libxml/xmlmemory.h>

#include <cstdlib>
#include <cstring>
#include <utility>

#if defined(__APPLE__)
#include <malloc/malloc.h>
#else
#include <malloc.h>
#endif

namespace tidy {

namespace {

// The library cannot always do without a small piece that it asks for; it can without a large one.
constexpr std::size_t smallPiece = std::size_t{1} << 20;

thread_local TransformBudget *ofThisThread = nullptr;

std::size_t sizeOf(void *piece)
{
#if defined(__APPLE__)
    return malloc_size(piece);
#elif defined(_WIN32)
    return _msize(piece);
#else
    return malloc_usable_size(piece);
#endif
}

void *allocate(std::size_t bytes)
{
    if (ofThisThread && !ofThisThread->take(bytes))
        return nullptr;
    void *piece = std::malloc(bytes);
    if (ofThisThread && piece)
        ofThisThread->take(sizeOf(piece) - bytes);
    return piece;
}

void release(void *piece)
{
    if (ofThisThread && piece)
        ofThisThread->giveBack(sizeOf(piece));
    std::free(piece);
}

void *reallocate(void *piece, std::size_t bytes)
{
    if (!ofThisThread)
        return std::realloc(piece, bytes);
    const std::size_t before = piece ? sizeOf(piece) : 0;
    if (bytes > before && !ofThisThread->take(bytes - before))
        return nullptr;
    void *moved = std::realloc(piece, bytes);
    if (bytes < before && moved)
        ofThisThread->giveBack(before - bytes);
    if (moved)
        ofThisThread->take(sizeOf(moved) - bytes);
    return moved;
}

char *duplicate(const char *text)
{
    const std::size_t size = std::strlen(text) + 1;
    void *piece = allocate(size);
    return piece ? static_cast<char *>(std::memcpy(piece, text, size)) : nullptr;
}

} // namespace

// The pieces are the system's own, metered or not, so that one taken before can be given back afterwards.
void meterLibraryMemory() { xmlGcMemSetup(release, allocate, allocate, reallocate, duplicate); }

TransformBudget::TransformBudget(std::size_t memory, std::size_t traffic, int documents)
    : memory_(static_cast<long long>(memory)), traffic_(traffic), documents_(documents)
{
    ofThisThread = this;
}

TransformBudget::~TransformBudget() { ofThisThread = nullptr; }

TransformBudget *TransformBudget::current() { return ofThisThread; }

void TransformBudget::whenSpent(Stop stop, void *what)
{
    stop_ = stop;
    what_ = what;
    if (spent_ && stop_)
        stop_(what_);
}

bool TransformBudget::takeDocument()
{
    if (documents_ > 0)
        --documents_;
    else
        spend();
    return !spent_;
}

bool TransformBudget::take(std::size_t bytes)
{
    const auto more = static_cast<long long>(bytes);
    if (bytes > smallPiece && (held_ > 2 * memory_ || more > 2 * memory_ - held_)) {
        spend();
        return false;
    }
    held_ += more;
    moved_ += bytes;
    if (held_ > memory_ || moved_ > traffic_)
        spend();
    return true;
}

void TransformBudget::spend()
{
    if (std::exchange(spent_, true))
        return;
    if (stop_)
        stop_(what_);
}

} // namespace tidy
