// Any expression on any text: found or not, in time, and where it says.
#include "fuzz/require.h"
#include "platform/control/text_search.h"

#include <fuzzer/FuzzedDataProvider.h>

using namespace control;
using fuzz::require;

namespace {

constexpr int patience = 100; // ms for one search
constexpr int mostMatches = 50;

bool isBetweenLineEnds(QByteArrayView text, qsizetype place)
{
    return place > 0 && place < text.size() && text[place - 1] == '\r' && text[place] == '\n';
}

void checkResult(const SearchResult &result, const SearchArea &area)
{
    if (!result)
        return;
    require(result.match.start >= area.start && result.match.end <= area.end, "a match lies in the area");
    require(result.match.start <= result.match.end, "a match has an end");
}

// A text with CR LF is the same text as with LF, but for verbs and "\\G", which tell where a search began.
void checkLineEnds(const TextSearch &search, const QByteArray &text)
{
    const QString &expression = search.pattern().text;
    if (!search.pattern().expression || !text.contains("\r\n") || text.contains("\r\r\n")
        || expression.contains(QStringLiteral("(*")) || expression.contains(QStringLiteral("\\G")))
        return;
    QByteArray other = text;
    other.replace("\r\n", "\n");
    const SearchResult one = search.next(SearchArea(text), 0, QDeadlineTimer(patience));
    const SearchResult same = search.next(SearchArea(other), 0, QDeadlineTimer(patience));
    const auto told = [](const SearchResult &result) {
        return result.outcome == SearchOutcome::Found || result.outcome == SearchOutcome::Missing;
    };
    if (!told(one) || !told(same))
        return;
    require(bool(one) == bool(same), "a line end is found as one or not at all");
    if (!one)
        return;
    const QByteArrayView whole(text);
    require(!isBetweenLineEnds(whole, one.match.start) && !isBetweenLineEnds(whole, one.match.end),
            "a match holds no half of a line end");
    require(one.match.start - whole.first(one.match.start).count("\r\n") == same.match.start,
            "a line end counts as one before a match");
    require(one.match.end - whole.first(one.match.end).count("\r\n") == same.match.end,
            "a line end counts as one in a match");
}

void searchOn(const TextSearch &search, const SearchArea &area)
{
    qsizetype from = area.start;
    for (int count = 0; count < mostMatches && from <= area.end; ++count) {
        const SearchResult result = search.next(area, from, QDeadlineTimer(patience));
        checkResult(result, area);
        if (!result)
            return;
        require(result.match.start >= from, "a search goes on");
        for (int group = 0; group <= search.groupCount(); ++group) {
            const TextMatch part = search.group(group);
            require(part.start >= 0 && part.start <= part.end && part.end <= area.text.size(),
                    "a group lies in the text");
        }
        const qsizetype behind = TextSearch::behind(area.text, result.match);
        require(behind > from || behind > result.match.start, "the next one is another");
        from = behind;
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    SearchPattern pattern;
    pattern.matchCase = input.ConsumeBool();
    pattern.wholeWord = input.ConsumeBool();
    pattern.expression = input.ConsumeBool();
    const auto one = input.ConsumeIntegral<quint16>();
    const auto other = input.ConsumeIntegral<quint16>();
    pattern.text = QString::fromUtf8(QByteArray::fromStdString(input.ConsumeRandomLengthString(200)));
    const QByteArray text = QByteArray::fromStdString(input.ConsumeRemainingBytesAsString());
    const TextSearch search(pattern);
    if (search.fault()) {
        require(!search.fault()->message.isEmpty(), "a fault is named");
        require(search.fault()->place >= 0 && search.fault()->place <= pattern.text.size(),
                "a fault lies in the expression");
        return 0;
    }
    const SearchArea whole(text);
    searchOn(search, whole);
    checkLineEnds(search, text);
    checkResult(search.previous(whole, text.size(), QDeadlineTimer(patience)), whole);
    const qsizetype start = std::min<qsizetype>(one, text.size());
    const SearchArea part(text, TextMatch{start, start + other % (text.size() - start + 1)});
    searchOn(search, part);
    checkResult(search.previous(part, part.end, QDeadlineTimer(patience)), part);
    return 0;
}
