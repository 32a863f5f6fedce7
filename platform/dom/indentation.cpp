#include "platform/dom/indentation.h"

#include "platform/dom/markup_reader.h"
#include "platform/dom/names.h"

#include <array>
#include <utility>
#include <vector>

namespace dom {

namespace {

constexpr size_t none = size_t(-1);

// Blanks that break the line.
struct Run
{
    qsizetype begin;
    qsizetype end;
    size_t previous; // in the same content
    bool isLayout;
};

// An element under way; what kind of content it has is known at its end.
struct Frame
{
    bool kept;
    bool hasText = false;
    bool hasMarkup = false;
    size_t lastRun = none;
};

class LayoutFinder
{
public:
    LayoutFinder(QByteArrayView element, const KeepsBlanks &keepsBlanks)
        : markup_(element), keepsBlanks_(keepsBlanks)
    { }

    std::vector<Run> run(bool kept)
    {
        MarkupReader reader(markup_);
        qsizetype done = 0;
        while (const auto tag = reader.nextTag()) {
            const qsizetype begin = tag->text.begin() - markup_.begin();
            if (!frames_.empty())
                between(done, begin);
            done = begin + tag->text.size();
            if (!frames_.empty() && tag->kind != MarkupReader::Tag::End)
                frames_.back().hasMarkup = true;
            if (tag->kind == MarkupReader::Tag::Start)
                enter(tag->text, kept);
            else if (tag->kind == MarkupReader::Tag::End)
                leave();
        }
        return std::move(runs_);
    }

private:
    void enter(QByteArrayView tag, bool kept)
    {
        const bool isTop = frames_.empty();
        frames_.push_back({isTop ? kept : keepsBlanks_(tag).value_or(frames_.back().kept)});
    }

    void leave()
    {
        if (frames_.empty())
            return;
        const Frame frame = frames_.back();
        frames_.pop_back();
        const bool isLayout = !frame.kept && !frame.hasText && frame.hasMarkup;
        for (size_t run = frame.lastRun; isLayout && run != none; run = runs_[run].previous)
            runs_[run].isLayout = true;
    }

    // What stands between two tags: blanks, text, and markup that is no element.
    void between(qsizetype at, qsizetype end)
    {
        Frame &frame = frames_.back();
        while (at < end) {
            const qsizetype blanks = at;
            at = qMin(end, skipBlanks(markup_, at));
            if (at == end || markup_[at] == '<')
                addRun(frame, blanks, at);
            if (at == end)
                return;
            frame.hasText = frame.hasText || markup_[at] != '<' || markup_.sliced(at).startsWith("<![CDATA[");
            frame.hasMarkup = frame.hasMarkup || markup_[at] == '<';
            at = markup_[at] == '<' ? pastMarkup(at, end) : endOfText(at, end);
        }
    }

    void addRun(Frame &frame, qsizetype begin, qsizetype end)
    {
        if (lastLineBreak(markup_.sliced(begin, end - begin)) < 0)
            return;
        runs_.push_back({begin, end, frame.lastRun, false});
        frame.lastRun = runs_.size() - 1;
    }

    qsizetype endOfText(qsizetype at, qsizetype end) const
    {
        const qsizetype markup = markup_.indexOf('<', at);
        return markup < 0 ? end : qMin(markup, end);
    }

    qsizetype pastMarkup(qsizetype at, qsizetype end) const
    {
        const QByteArrayView from = markup_.sliced(at);
        const QByteArrayView closing = from.startsWith("<!--") ? QByteArrayView("-->")
            : from.startsWith("<?")                            ? QByteArrayView("?>")
                                                               : QByteArrayView("]]>");
        const qsizetype found = markup_.indexOf(closing, at + 2);
        return found < 0 ? end : qMin(found + closing.size(), end);
    }

    QByteArrayView markup_;
    const KeepsBlanks &keepsBlanks_;
    std::vector<Frame> frames_;
    std::vector<Run> runs_;
};

} // namespace

qsizetype lastLineBreak(QByteArrayView blanks)
{
    qsizetype at = blanks.size() - 1;
    while (at >= 0 && blanks[at] != '\n' && blanks[at] != '\r')
        --at;
    return at > 0 && blanks[at] == '\n' && blanks[at - 1] == '\r' ? at - 1 : at;
}

std::optional<QByteArray> indentIn(QByteArrayView blanks)
{
    qsizetype at = lastLineBreak(blanks);
    if (at < 0)
        return std::nullopt;
    while (at < blanks.size() && (blanks[at] == '\r' || blanks[at] == '\n'))
        ++at;
    return blanks.sliced(at).toByteArray();
}

QByteArray IndentChange::applied(QByteArrayView blanks) const
{
    const std::optional<QByteArray> indent = indentIn(blanks);
    if (!indent || !indent->startsWith(from.base))
        return blanks.toByteArray();
    QByteArrayView rest = QByteArrayView(*indent).sliced(from.base.size());
    QByteArray out = blanks.first(blanks.size() - indent->size()).toByteArray() + to.base;
    while (!from.unit.isEmpty() && from.unit != to.unit && rest.startsWith(from.unit)) {
        out += to.unit;
        rest = rest.sliced(from.unit.size());
    }
    return out + rest.toByteArray();
}

std::optional<QByteArray> reindented(QByteArrayView element, const IndentChange &change, bool kept,
                                     const KeepsBlanks &keepsBlanks)
{
    // The same few blanks come again and again.
    struct Known
    {
        QByteArrayView blanks;
        QByteArray now;
    };
    std::array<Known, 64> known;
    QByteArray out;
    qsizetype done = 0;
    bool changed = false;
    for (const Run &run : LayoutFinder(element, keepsBlanks).run(kept)) {
        if (!run.isLayout)
            continue;
        const QByteArrayView blanks = element.sliced(run.begin, run.end - run.begin);
        Known &last = known[size_t(blanks.size()) % known.size()];
        if (last.blanks != blanks)
            last = {blanks, change.applied(blanks)};
        if (last.now == blanks)
            continue;
        if (!std::exchange(changed, true))
            out.reserve(element.size() + element.size() / 8);
        out += element.sliced(done, run.begin - done);
        out += last.now;
        done = run.end;
    }
    if (!changed)
        return std::nullopt;
    out += element.sliced(done);
    return out;
}

} // namespace dom
