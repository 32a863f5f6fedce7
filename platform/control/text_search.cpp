#include "platform/control/text_search.h"

#include "platform/control/compiled_expression.h"

#include <QChar>
#include <QList>
#include <algorithm>
#include <cstring>

namespace control {

namespace {

// Looked at between two looks at the clock.
constexpr qsizetype clockStride = 16 << 20; // bytes

// Searched backwards piece by piece, each searched forwards.
constexpr qsizetype firstPiece = 4 << 10; // bytes
constexpr qsizetype largestPiece = 16 << 20; // bytes
constexpr qsizetype longestLine = 64 << 10; // bytes a piece is made longer to begin with a line

bool isContinuation(char byte) { return (quint8(byte) & 0xC0) == 0x80; }

bool isWordCharacter(char32_t character)
{
    return character == U'_' || QChar::isLetterOrNumber(character) || QChar::isMark(character);
}

// Nothing for a faulty sequence.
bool beginsWithWord(QByteArrayView text, qsizetype place)
{
    if (place >= text.size())
        return false;
    if (quint8(text[place]) < 0x80)
        return isWordCharacter(quint8(text[place]));
    const QList<uint> characters
        = QString::fromUtf8(text.sliced(place, std::min<qsizetype>(4, text.size() - place))).toUcs4();
    return !characters.isEmpty() && isWordCharacter(characters.first());
}

qsizetype characterBefore(QByteArrayView text, qsizetype place)
{
    qsizetype start = place - 1;
    while (start > 0 && place - start < 4 && isContinuation(text[start]))
        --start;
    return start;
}

bool isInsideWord(QByteArrayView text, qsizetype place)
{
    return place > 0 && beginsWithWord(text, place) && beginsWithWord(text, characterBefore(text, place));
}

bool standsAlone(QByteArrayView text, const TextMatch &match)
{
    return !isInsideWord(text, match.start) && !isInsideWord(text, match.end);
}

// How common a byte is in markup: the further to the front, the commoner.
int rarity(char byte)
{
    constexpr std::string_view common = " etaoinsrlhdcump<>/=\"\nfgyb0v1wk-.:2\tTSACI53\r,'";
    const size_t place = common.find(byte);
    return place == std::string_view::npos ? int(common.size()) : int(place);
}

qsizetype rarestIn(const QByteArray &bytes)
{
    const auto rarer = [](char left, char right) { return rarity(left) < rarity(right); };
    return std::max_element(bytes.begin(), bytes.end(), rarer) - bytes.begin();
}

// The start of the line around a place, or a place between two characters where that is far away.
qsizetype pieceStart(const SearchArea &area, qsizetype place)
{
    if (place <= area.start)
        return area.start;
    const qsizetype nearest = std::max(area.start, place - longestLine);
    for (qsizetype start = place; start > nearest; --start) {
        const char before = area.text[start - 1];
        if (before == '\n' || (before == '\r' && area.text[start] != '\n'))
            return start;
    }
    if (nearest == area.start)
        return area.start;
    while (place > area.start && isContinuation(area.text[place]))
        --place;
    return place;
}

} // namespace

TextSearch::TextSearch(const SearchPattern &pattern) : pattern_(pattern)
{
    if (pattern.text.isEmpty())
        return;
    if (pattern.matchCase && !pattern.expression) {
        bytes_ = pattern.text.toUtf8();
        rarest_ = rarestIn(bytes_);
        return;
    }
    expression_ = std::make_unique<CompiledExpression>(pattern);
    fault_ = expression_->fault();
}

TextSearch::~TextSearch() = default;
TextSearch::TextSearch(TextSearch &&) noexcept = default;
TextSearch &TextSearch::operator=(TextSearch &&) noexcept = default;

SearchResult TextSearch::next(const SearchArea &area, qsizetype from, QDeadlineTimer deadline) const
{
    if (pattern_.text.isEmpty() || fault_)
        return {};
    return find(area, {std::max(from, area.start), area.end}, deadline);
}

SearchResult TextSearch::find(const SearchArea &area, Starts starts, const QDeadlineTimer &deadline) const
{
    SearchResult result;
    if (pattern_.wholeWord && !pattern_.expression)
        result = findWord(area, starts, deadline);
    else if (expression_)
        result = expression_->find(area, starts.first, starts.last, deadline);
    else
        result = findBytes(area, starts, deadline);
    if (result)
        found_ = result.match;
    return result;
}

SearchResult TextSearch::findWord(const SearchArea &area, Starts starts, const QDeadlineTimer &deadline) const
{
    for (;;) {
        const SearchResult result = expression_ ? expression_->find(area, starts.first, starts.last, deadline)
                                                : findBytes(area, starts, deadline);
        if (!result || standsAlone(area.text, result.match))
            return result;
        starts.first = behind(area.text, {result.match.start, result.match.start});
        if (starts.first <= starts.last && deadline.hasExpired())
            return {SearchOutcome::OutOfTime, {}, starts.first};
    }
}

// Looks for the rarest of the bytes, which the machine does many at a time, and compares the rest there.
SearchResult TextSearch::findBytes(const SearchArea &area, Starts starts,
                                   const QDeadlineTimer &deadline) const
{
    const char *text = area.text.data();
    const qsizetype last = std::min(starts.last, area.end - bytes_.size());
    for (qsizetype from = starts.first; from <= last;) {
        const qsizetype stop = std::min(last, from + clockStride) + 1;
        while (from < stop) {
            const void *hit = std::memchr(text + from + rarest_, bytes_[rarest_], size_t(stop - from));
            if (hit == nullptr)
                break;
            const qsizetype start = static_cast<const char *>(hit) - text - rarest_;
            if (std::memcmp(text + start, bytes_.constData(), size_t(bytes_.size())) == 0)
                return {SearchOutcome::Found, {start, start + bytes_.size()}, 0};
            from = start + 1;
        }
        from = stop;
        if (from <= last && deadline.hasExpired())
            return {SearchOutcome::OutOfTime, {}, from};
    }
    return {};
}

SearchResult TextSearch::previous(const SearchArea &area, qsizetype before, QDeadlineTimer deadline) const
{
    if (pattern_.text.isEmpty() || fault_)
        return {};
    qsizetype top = std::min(before, area.end + 1);
    for (qsizetype piece = firstPiece; top > area.start; piece = std::min(piece * 4, largestPiece)) {
        const qsizetype start = pieceStart(area, top - piece);
        const SearchResult result = lastOf(area, {start, top - 1}, before, deadline);
        if (result.outcome != SearchOutcome::Missing)
            return result;
        top = start;
    }
    return {};
}

SearchResult TextSearch::lastOf(const SearchArea &area, Starts starts, qsizetype before,
                                const QDeadlineTimer &deadline) const
{
    SearchResult last;
    while (starts.first <= starts.last) {
        const SearchResult result = find(area, starts, deadline);
        if (result.outcome == SearchOutcome::Missing)
            break;
        if (!result)
            return result;
        if (result.match.end <= before)
            last = result;
        starts.first = behind(area.text, result.match);
    }
    return last;
}

qsizetype TextSearch::behind(QByteArrayView text, const TextMatch &match)
{
    if (match.length() > 0 || match.end >= text.size())
        return match.length() > 0 ? match.end : match.end + 1;
    qsizetype place = match.end;
    if (text[place] == '\r' && place + 1 < text.size() && text[place + 1] == '\n')
        return place + 2;
    ++place;
    while (place < text.size() && isContinuation(text[place]))
        ++place;
    return place;
}

int TextSearch::groupCount() const { return expression_ ? expression_->groupCount() : 0; }

int TextSearch::groupNumber(const QByteArray &name) const
{
    return expression_ ? expression_->groupNumber(name) : -1;
}

TextMatch TextSearch::group(int number) const
{
    return number == 0 ? found_ : expression_ ? expression_->group(number) : TextMatch{};
}

} // namespace control
