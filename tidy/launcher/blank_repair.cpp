#include "tidy/launcher/blank_repair.h"

#include "tidy/launcher/read_words.h"
#include "tidy/launcher/stand_ins.h"
#include "tidy/launcher/text_alignment.h"

#include <algorithm>
#include <limits>

namespace launcher {

namespace {

struct Edit
{
    qsizetype at;
    qsizetype size;
    QByteArray text;
};

bool anyBlock(const Gap &gap)
{
    return std::any_of(gap.marks.begin(), gap.marks.end(), [](const Mark &mark) { return mark.block; });
}

bool anyExact(const Gap &gap)
{
    return std::any_of(gap.blanks.begin(), gap.blanks.end(), [](const Blanks &one) { return one.exact; });
}

bool anyBlank(const Gap &gap)
{
    return std::any_of(gap.blanks.begin(), gap.blanks.end(),
                       [](const Blanks &one) { return one.size() > 0; });
}

// The gaps of a text one behind the other, from that before a character on.
class GapWalk
{
public:
    GapWalk(const MarkedText &text, qsizetype end, qsizetype first) : text_(text), end_(end)
    {
        const auto isBefore = [](const Gap &gap, qsizetype character) { return gap.before < character; };
        next_ = std::lower_bound(text.gaps.begin(), text.gaps.end(), first, isBefore);
    }

    // The character that the next gap is before.
    qsizetype next() const
    {
        return next_ == text_.gaps.end() ? std::numeric_limits<qsizetype>::max() / 2 : next_->before;
    }

    // The gap before a character; one of nothing where there is none.
    Gap take(qsizetype character)
    {
        if (next_ != text_.gaps.end() && next_->before == character)
            return *next_++;
        const bool last = character >= qsizetype(text_.places.size());
        const qsizetype place = last ? end_ : text_.places[size_t(character)];
        return {character, {Blanks{place, place}}, {}};
    }

private:
    const MarkedText &text_;
    qsizetype end_;
    std::vector<Gap>::const_iterator next_;
};

class Repair
{
public:
    Repair(const ReadText &source, const ReadText &tidied, const QByteArray &lineEnd)
        : source_(source), tidied_(tidied), lineEnd_(lineEnd),
          from_(readMarkedText(source.markup, source.dialect)),
          to_(readMarkedText(tidied.markup, tidied.dialect))
    { }

    QByteArray done()
    {
        for (const Matched &run : matchedRuns(from_.characters, to_.characters))
            repairRun(run);
        return edited();
    }

private:
    void repairRun(const Matched &run)
    {
        GapWalk from(from_, source_.markup.size(), run.from);
        GapWalk to(to_, tidied_.markup.size(), run.to);
        const qsizetype shift = run.to - run.from;
        const qsizetype end = run.from + run.size;
        const auto next = [&] { return std::min(from.next(), to.next() - shift); };
        for (qsizetype before = next(); before <= end; before = next()) {
            const Gap source = from.take(before);
            const Gap tidied = to.take(before + shift);
            if ((before > run.from || run.opens) && (before < end || run.closes))
                repair(source, tidied);
        }
    }

    void repair(const Gap &from, const Gap &to)
    {
        if (source_.dialect == Dialect::Xml || anyExact(from) || anyExact(to))
            repairExactly(from, to);
        if (source_.dialect != Dialect::Xml && !anyBlock(from) && !anyBlock(to))
            repairPresence(from, to);
    }

    // In a line of text a blank is there or not, wherever among the tags.
    void repairPresence(const Gap &from, const Gap &to)
    {
        if (anyExact(from) || anyExact(to) || anyBlank(from) == anyBlank(to))
            return;
        if (anyBlank(to)) {
            for (const Blanks &blanks : to.blanks)
                replace(blanks, {});
            return;
        }
        size_t place = 0;
        while (place < to.marks.size() && to.marks[place].name.startsWith('/'))
            ++place;
        replace(to.blanks[place], " ");
    }

    // Between two marks that both texts have, the blanks of the source stand first.
    void repairExactly(const Gap &from, const Gap &to)
    {
        const std::vector<size_t> partners = partnersOf(to, from);
        for (size_t begin = 0, source = 0; begin < to.blanks.size();) {
            size_t end = begin;
            while (end < to.marks.size() && partners[end] == none)
                ++end;
            const size_t sourceEnd = end < to.marks.size() ? partners[end] : from.marks.size();
            QByteArray pending = textOf(from, source, sourceEnd);
            for (size_t place = begin; place <= end; ++place)
                repairAt(to.blanks[place], to.marks.empty() && from.blanks[0].exact, pending);
            begin = end + 1;
            source = sourceEnd + 1;
        }
    }

    void repairAt(const Blanks &blanks, bool exact, QByteArray &pending)
    {
        if (!blanks.exact && !exact)
            return;
        if (tidied_.markup.sliced(blanks.begin, blanks.size()) != pending)
            replace(blanks, pending);
        pending.clear();
    }

    // The place of each mark among those of another gap, in the order of both.
    static std::vector<size_t> partnersOf(const Gap &gap, const Gap &other)
    {
        std::vector<size_t> partners;
        auto next = other.marks.begin();
        for (const Mark &mark : gap.marks) {
            const auto is = [&](const Mark &one) { return one.name == mark.name; };
            const auto found = std::find_if(next, other.marks.end(), is);
            partners.push_back(found == other.marks.end() ? none : size_t(found - other.marks.begin()));
            next = found == other.marks.end() ? next : found + 1;
        }
        return partners;
    }

    // The blanks around some marks: those that count, or, where none does, all.
    QByteArray textOf(const Gap &gap, size_t first, size_t last) const
    {
        QByteArray all;
        QByteArray counting;
        bool counts = false;
        for (size_t place = first; place <= last; ++place) {
            const Blanks &blanks = gap.blanks[place];
            const QByteArray text = textOf(blanks);
            all += text;
            counting += blanks.exact ? text : QByteArray();
            counts = counts || blanks.exact;
        }
        return counts && source_.dialect != Dialect::Xml ? counting : all;
    }

    QByteArray textOf(const Blanks &blanks) const
    {
        return withLineEnds(source_.markup.sliced(blanks.begin, blanks.size()).toByteArray(), lineEnd_);
    }

    void replace(const Blanks &blanks, const QByteArray &text)
    {
        if (blanks.size() > 0 || !text.isEmpty())
            edits_.push_back({blanks.begin, blanks.size(), text});
    }

    QByteArray edited() const
    {
        QByteArray out;
        out.reserve(tidied_.markup.size());
        qsizetype at = 0;
        for (const Edit &edit : edits_) {
            if (edit.at < at)
                continue;
            out += tidied_.markup.sliced(at, edit.at - at);
            out += edit.text;
            at = edit.at + edit.size;
        }
        return out + tidied_.markup.sliced(at).toByteArray();
    }

    static constexpr size_t none = std::numeric_limits<size_t>::max();

    ReadText source_;
    ReadText tidied_;
    QByteArray lineEnd_;
    MarkedText from_;
    MarkedText to_;
    std::vector<Edit> edits_;
};

} // namespace

QByteArray withRepairedBlanks(const ReadText &source, const ReadText &tidied, const QByteArray &lineEnd)
{
    return Repair(source, tidied, lineEnd).done();
}

QString differenceInReading(const ReadText &source, const ReadText &result)
{
    const MarkedText before = readMarkedText(source.markup, source.dialect);
    const MarkedText after = readMarkedText(result.markup, result.dialect);
    if (source.dialect == Dialect::Xml)
        return firstDifference(before.characters, after.characters);
    return differenceOfWords(before, after);
}

} // namespace launcher
