#include "platform/dom/common_runs.h"

#include <QHash>

#include <algorithm>
#include <optional>
#include <utility>

namespace dom {

namespace {

constexpr qsizetype mostEdits = 200; // characters that came or went, up to which they are told apart exactly
constexpr int mostDepth = 8; // words within words that hold their places

// A part of both rows.
struct Area
{
    qsizetype before;
    qsizetype beforeEnd;
    qsizetype after;
    qsizetype afterEnd;

    bool isEmpty() const { return before == beforeEnd || after == afterEnd; }
};

// A word that stands once in each row.
struct Word
{
    qsizetype before = -1;
    qsizetype after = -1;
    qsizetype length = 0;
    bool repeats = false;
};

using Words = QHash<std::u32string_view, Word>;

class Comparison
{
public:
    Comparison(std::u32string_view before, std::u32string_view after) : before_(before), after_(after) { }

    std::vector<CommonRun> run()
    {
        compare({0, qsizetype(before_.size()), 0, qsizetype(after_.size())}, 0);
        return std::move(runs_);
    }

private:
    bool same(qsizetype before, qsizetype after) const
    {
        return before_[size_t(before)] == after_[size_t(after)];
    }

    void add(qsizetype before, qsizetype after, qsizetype length)
    {
        if (length == 0)
            return;
        CommonRun *last = runs_.empty() ? nullptr : &runs_.back();
        if (last && last->before + last->length == before && last->after + last->length == after)
            last->length += length;
        else
            runs_.push_back({before, after, length});
    }

    void compare(Area area, int depth)
    {
        const Area whole = area;
        while (!area.isEmpty() && same(area.before, area.after))
            ++area.before, ++area.after;
        add(whole.before, whole.after, area.before - whole.before);
        while (!area.isEmpty() && same(area.beforeEnd - 1, area.afterEnd - 1))
            --area.beforeEnd, --area.afterEnd;
        if (!area.isEmpty() && !compareExactly(area) && depth < mostDepth)
            compareBetweenWords(area, depth);
        add(area.beforeEnd, area.afterEnd, whole.beforeEnd - area.beforeEnd);
    }

    // The shortest way from the one to the other: after each number of edits, how far each diagonal leads.
    // False when it takes too many of them.
    bool compareExactly(const Area &area)
    {
        const qsizetype beforeSize = area.beforeEnd - area.before;
        const qsizetype afterSize = area.afterEnd - area.after;
        const qsizetype most = std::min(mostEdits, beforeSize + afterSize);
        if (qAbs(beforeSize - afterSize) > most)
            return false;
        std::vector<qsizetype> reach(size_t(2 * most + 3), 0); // by diagonal, before minus after
        std::vector<std::vector<qsizetype>> reached;
        const auto at = [most](qsizetype diagonal) { return size_t(diagonal + most + 1); };
        for (qsizetype edits = 0; edits <= most; ++edits) {
            for (qsizetype diagonal = -edits; diagonal <= edits; diagonal += 2) {
                const bool inserts = diagonal == -edits
                    || (diagonal != edits && reach[at(diagonal - 1)] < reach[at(diagonal + 1)]);
                qsizetype x = inserts ? reach[at(diagonal + 1)] : reach[at(diagonal - 1)] + 1;
                while (x < beforeSize && x - diagonal < afterSize
                       && same(area.before + x, area.after + x - diagonal))
                    ++x;
                reach[at(diagonal)] = x;
                if (x >= beforeSize && x - diagonal >= afterSize) {
                    addWay(area, reached, beforeSize, afterSize);
                    return true;
                }
            }
            reached.emplace_back(reach.begin() + qsizetype(at(-edits)),
                                 reach.begin() + qsizetype(at(edits)) + 1);
        }
        return false;
    }

    // Back along the way that was found; reached[edits] begins with diagonal -edits.
    void addWay(const Area &area, const std::vector<std::vector<qsizetype>> &reached, qsizetype x,
                qsizetype y)
    {
        std::vector<CommonRun> way;
        for (auto edits = qsizetype(reached.size()); edits > 0; --edits) {
            const std::vector<qsizetype> &former = reached[size_t(edits - 1)];
            const auto reach = [&former, edits](qsizetype diagonal) {
                const qsizetype index = diagonal + edits - 1;
                return index >= 0 && index < qsizetype(former.size()) ? former[size_t(index)] : -1;
            };
            const qsizetype diagonal = x - y;
            const bool inserts
                = diagonal == -edits || (diagonal != edits && reach(diagonal - 1) < reach(diagonal + 1));
            const qsizetype from = inserts ? reach(diagonal + 1) : reach(diagonal - 1);
            const qsizetype begin = inserts ? from : from + 1; // where the common run began
            way.push_back({area.before + begin, area.after + begin - diagonal, x - begin});
            x = from;
            y = from - (inserts ? diagonal + 1 : diagonal - 1);
        }
        way.push_back({area.before, area.after, x});
        for (auto run = way.rbegin(); run != way.rend(); ++run)
            add(run->before, run->after, run->length);
    }

    template <typename Visit>
    static void forEachWord(std::u32string_view text, qsizetype from, qsizetype end, Visit visit)
    {
        while (from < end) {
            qsizetype next = from;
            while (next < end && QChar::isLetterOrNumber(text[size_t(next)]))
                ++next;
            if (next > from)
                visit(text.substr(size_t(from), size_t(next - from)), from);
            from = next + 1;
        }
    }

    Words wordsOf(const Area &area) const
    {
        Words words;
        forEachWord(before_, area.before, area.beforeEnd, [&words](std::u32string_view text, qsizetype at) {
            Word &word = words[text];
            word.repeats = word.before >= 0;
            word.before = at;
            word.length = qsizetype(text.size());
        });
        forEachWord(after_, area.after, area.afterEnd, [&words](std::u32string_view text, qsizetype at) {
            const auto word = words.find(text);
            if (word == words.end())
                return;
            word->repeats = word->repeats || word->after >= 0;
            word->after = at;
        });
        return words;
    }

    // The longest row of them that rises in both.
    static std::vector<Word> risingWords(const Words &words)
    {
        std::vector<Word> all;
        std::copy_if(words.begin(), words.end(), std::back_inserter(all),
                     [](const Word &word) { return !word.repeats && word.after >= 0; });
        std::sort(all.begin(), all.end(), [](auto &a, auto &b) { return a.before < b.before; });
        std::vector<size_t> ends; // of the rows of each length, the one that ends lowest
        std::vector<std::optional<size_t>> previous(all.size());
        for (size_t i = 0; i < all.size(); ++i) {
            const auto place
                = std::lower_bound(ends.begin(), ends.end(), all[i].after,
                                   [&all](size_t end, qsizetype after) { return all[end].after < after; });
            if (place != ends.begin())
                previous[i] = *std::prev(place);
            if (place == ends.end())
                ends.push_back(i);
            else
                *place = i;
        }
        std::vector<Word> row;
        for (std::optional<size_t> i = ends.empty() ? std::nullopt : std::optional(ends.back()); i;
             i = previous[*i])
            row.push_back(all[*i]);
        std::reverse(row.begin(), row.end());
        return row;
    }

    void compareBetweenWords(const Area &area, int depth)
    {
        Area left = area;
        const std::vector<Word> words = risingWords(wordsOf(area));
        for (const Word &word : words) {
            compare({left.before, word.before, left.after, word.after}, depth + 1);
            add(word.before, word.after, word.length);
            left.before = word.before + word.length;
            left.after = word.after + word.length;
        }
        if (!words.empty())
            compare(left, depth + 1);
    }

    std::u32string_view before_;
    std::u32string_view after_;
    std::vector<CommonRun> runs_;
};

} // namespace

std::vector<CommonRun> commonRuns(std::u32string_view before, std::u32string_view after)
{
    return Comparison(before, after).run();
}

} // namespace dom
