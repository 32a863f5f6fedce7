#include "tidy/launcher/text_alignment.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace launcher {

namespace {

constexpr size_t anchor = 8; // so many equal characters are no accident
constexpr size_t reach = 400; // how far an anchor is looked for
constexpr int mostLosses = 200;

using View = std::u32string_view;

bool anchored(View from, View to)
{
    if (!from.empty() && !to.empty() && from.front() != to.front())
        return false;
    const size_t size = std::min({anchor, from.size(), to.size()});
    const bool ends = from.size() == to.size() && from.size() < anchor;
    return (size == anchor || ends) && from.substr(0, size) == to.substr(0, size);
}

// The nearest place behind a difference where both go on alike.
std::optional<std::pair<size_t, size_t>> nextAnchor(View from, View to)
{
    for (size_t total = 1; total <= reach; ++total) {
        for (size_t skipped = 0; skipped <= total; ++skipped) {
            const size_t other = total - skipped;
            if (skipped <= from.size() && other <= to.size()
                && anchored(from.substr(skipped), to.substr(other)))
                return std::pair(skipped, other);
        }
    }
    return std::nullopt;
}

} // namespace

std::vector<Matched> matchedRuns(const std::u32string &from, const std::u32string &to)
{
    std::vector<Matched> runs;
    size_t one = 0;
    size_t other = 0;
    for (int losses = 0; losses < mostLosses; ++losses) {
        const size_t most = std::min(from.size() - one, to.size() - other);
        size_t size = 0;
        while (size < most && from[one + size] == to[other + size])
            ++size;
        const bool closes = one + size == from.size() && other + size == to.size();
        runs.push_back({qsizetype(one), qsizetype(other), qsizetype(size), one == 0 && other == 0, closes});
        one += size;
        other += size;
        const auto next = nextAnchor(View(from).substr(one), View(to).substr(other));
        if (closes || !next)
            break;
        one += next->first;
        other += next->second;
    }
    return runs;
}

} // namespace launcher
