#define PCRE2_CODE_UNIT_WIDTH 8
#include "platform/control/compiled_expression.h"

#include <QElapsedTimer>
#include <algorithm>
#include <array>
#include <pcre2.h>

namespace control {

namespace {

// Steps that a single place in the text may cost; an expression that needs more is a runaway one.
constexpr quint32 stepLimit = 4'000'000;
constexpr size_t firstStack = 64 << 10; // bytes
constexpr size_t largestStack = 16 << 20; // bytes

// Places tried in one go: few at first, since one alone may look at the whole text.
constexpr qsizetype firstStride = 8;
constexpr qsizetype largestStride = 4 << 20;
constexpr qint64 quick = 1'000'000; // nanoseconds
constexpr qint64 slow = 20'000'000; // nanoseconds

// Shown to an expression in one go; more when that is not enough to tell.
constexpr qsizetype firstStretch = 64 << 10; // bytes
constexpr qsizetype largestStretch = 4 << 20; // bytes
constexpr qsizetype stretchGrowth = 4;
constexpr qsizetype longestCharacter = 4; // bytes

// No letter on one side, or none on the other.
constexpr char wordEdge[] = "(?:(?<!\\w)|(?!\\w))";
constexpr char closing[] = "\\E)"; // quoting may go on to the end of an expression

bool isContinuation(char byte) { return (quint8(byte) & 0xC0) == 0x80; }

// Never between CR and LF nor inside a character.
qsizetype betweenCharacters(QByteArrayView text, qsizetype place)
{
    for (int back = 0; back < 3 && place > 0 && place < text.size() && isContinuation(text[place]); ++back)
        --place;
    const bool splits = place > 0 && place < text.size() && text[place] == '\n' && text[place - 1] == '\r';
    return splits ? place + 1 : place;
}

// The end of the area, and never between CR and LF.
qsizetype endOf(const SearchArea &area)
{
    const bool splits = area.end > 0 && area.end < area.text.size() && area.text[area.end] == '\n'
        && area.text[area.end - 1] == '\r';
    return splits ? area.end - 1 : area.end;
}

// Where a class that begins at a bracket ends.
qsizetype behindClass(QByteArrayView expression, qsizetype at)
{
    ++at;
    if (at < expression.size() && expression[at] == '^')
        ++at;
    if (at < expression.size() && expression[at] == ']')
        ++at;
    while (at < expression.size() && expression[at] != ']') {
        const bool named = expression[at] == '[' && expression.sliced(at).startsWith("[:");
        const qsizetype end = named ? expression.indexOf(":]", at + 2) : -1;
        at = end >= 0 ? end + 2 : at + (expression[at] == '\\' ? 2 : 1);
    }
    return at + 1;
}

// Who writes "\r\n" means the line end, which is one LF here. What follows must not bind to half of it; the
// length stays, so that faults are where they were.
QByteArray withOneLineEnd(QByteArray expression)
{
    constexpr QByteArrayView both = "\\r\\n";
    constexpr QByteArrayView one = "\\x0a";
    for (qsizetype at = 0; at < expression.size();) {
        const QByteArrayView rest = QByteArrayView(expression).sliced(at);
        if (rest[0] == '[') {
            at = behindClass(expression, at);
        } else if (rest.startsWith("\\Q")) {
            const qsizetype end = expression.indexOf("\\E", at);
            at = end < 0 ? expression.size() : end + 2;
        } else if (rest.startsWith(both)) {
            const char behind = rest.size() > both.size() ? rest[both.size()] : '\0';
            if (behind != '?' && behind != '*' && behind != '{')
                expression.replace(at, one.size(), one.data(), one.size());
            at += one.size();
        } else {
            at += rest[0] == '\\' ? 2 : 1;
        }
    }
    return expression;
}

QByteArray escaped(const QByteArray &plain)
{
    QByteArray result;
    for (const char byte : plain) {
        const bool special = quint8(byte) < 0x80 && !std::isalnum(quint8(byte));
        if (special)
            result.append('\\');
        result.append(byte);
    }
    return result;
}

// Whether it may call itself or a group of its own. Taking a plain text for a call does no harm.
bool mayRecurse(const QByteArray &expression)
{
    static constexpr const char *calls[] = {"(?R", "(?&", "(?P>", "\\g<", "\\g'", "(?+"};
    const auto stands = [&](const char *call) { return expression.contains(call); };
    const auto numbered = [&](const char *opening) {
        const QByteArrayView start(opening);
        for (qsizetype at = expression.indexOf(start); at >= 0; at = expression.indexOf(start, at + 1)) {
            const qsizetype behind = at + start.size();
            if (behind < expression.size() && std::isdigit(quint8(expression[behind])))
                return true;
        }
        return false;
    };
    return std::any_of(std::begin(calls), std::end(calls), stands) || numbered("(?") || numbered("(?-");
}

QString messageOf(int error)
{
    std::array<PCRE2_UCHAR, 256> text{};
    pcre2_get_error_message(error, text.data(), text.size());
    QString message = QString::fromUtf8(reinterpret_cast<const char *>(text.data()));
    if (!message.isEmpty())
        message[0] = message[0].toUpper();
    return message;
}

bool endsLine(const SearchArea &area)
{
    return area.end >= area.text.size() || area.text[area.end] == '\n' || area.text[area.end] == '\r';
}

} // namespace

CompiledExpression::CompiledExpression(const SearchPattern &pattern)
{
    const QByteArray text = pattern.text.toUtf8();
    if (!pattern.expression) {
        compile(escaped(text), 0, pattern.matchCase);
        return;
    }
    const QByteArray expression = withOneLineEnd(text);
    // Judged alone first, so that no bracket of it pairs with one of ours.
    if (compile(expression, 0, pattern.matchCase) && pattern.wholeWord) {
        const QByteArray before = QByteArray(wordEdge) + "(?:";
        pcre2_code_free(std::exchange(code_, nullptr));
        compile(before + expression + closing + wordEdge, before.size(), pattern.matchCase);
    }
    unifies_ = true;
    if (!fault_)
        measureLookBack(expression);
}

CompiledExpression::~CompiledExpression()
{
    pcre2_match_context_free(context_);
    pcre2_jit_stack_free(stack_);
    pcre2_match_data_free(data_);
    pcre2_code_free(code_);
}

bool CompiledExpression::compile(const QByteArray &expression, qsizetype ownStart, bool matchCase)
{
    const quint32 options = PCRE2_UTF | PCRE2_UCP | PCRE2_MATCH_INVALID_UTF | PCRE2_MULTILINE
        | PCRE2_ALT_CIRCUMFLEX | PCRE2_USE_OFFSET_LIMIT | PCRE2_NEVER_BACKSLASH_C
        | (matchCase ? 0 : PCRE2_CASELESS);
    int error = 0;
    PCRE2_SIZE place = 0;
    pcre2_compile_context *settings = pcre2_compile_context_create(nullptr);
    pcre2_set_newline(settings, PCRE2_NEWLINE_ANYCRLF);
    pcre2_set_bsr(settings, PCRE2_BSR_ANYCRLF);
    code_ = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(expression.constData()), size_t(expression.size()),
                          options, &error, &place, settings);
    pcre2_compile_context_free(settings);
    if (code_ == nullptr) {
        const QByteArray before = expression.first(std::min(qsizetype(place), expression.size()));
        fault_ = PatternFault{messageOf(error), QString::fromUtf8(before.mid(ownStart)).size()};
        return false;
    }
    // Where it cannot be translated to machine code it is interpreted, which is slower. So is one that calls
    // itself: only the interpreter counts every step that it takes.
    if (!mayRecurse(expression))
        pcre2_jit_compile(code_, PCRE2_JIT_COMPLETE | PCRE2_JIT_PARTIAL_HARD);
    pcre2_match_data_free(data_);
    data_ = pcre2_match_data_create_from_pattern(code_, nullptr);
    if (context_ == nullptr) {
        context_ = pcre2_match_context_create(nullptr);
        stack_ = pcre2_jit_stack_create(firstStack, largestStack, nullptr);
        pcre2_jit_stack_assign(context_, nullptr, stack_);
        pcre2_set_match_limit(context_, stepLimit);
    }
    return true;
}

// The library tells of the longest look back alone, but one may stand in another. The start of a line is told
// by what stands before it as well.
void CompiledExpression::measureLookBack(const QByteArray &expression)
{
    quint32 longest = 0;
    pcre2_pattern_info(code_, PCRE2_INFO_MAXLOOKBEHIND, &longest);
    const qsizetype nested = 1 + expression.count("(?<") + expression.count("(*");
    lookBack_ = longestCharacter * (qsizetype(longest) * nested + 1);
}

// From before a place on, with what may decide there, for at least so many bytes behind the place. All of the
// rest where a stretch of faulty bytes might end differently from the text.
CompiledExpression::Stretch CompiledExpression::stretchOf(const SearchArea &area, qsizetype from,
                                                          qsizetype length) const
{
    const qsizetype areaEnd = endOf(area);
    qsizetype start = std::max<qsizetype>(0, from - lookBack_);
    for (int back = 0; back < 3 && start > 0 && isContinuation(area.text[start]); ++back)
        --start;
    if (start > 0 && start < area.text.size() && area.text[start] == '\n' && area.text[start - 1] == '\r')
        --start;
    const qsizetype end = areaEnd - from <= length ? areaEnd : betweenCharacters(area.text, from + length);
    auto stretch = std::make_shared<LfStretch>(area.text, start, std::min(end, areaEnd));
    if (stretch->end() < areaEnd && !stretch->bytes().isValidUtf8())
        stretch = std::make_shared<LfStretch>(area.text, start, areaEnd);
    return stretch;
}

// The one shown last goes on to do as long as the place has something behind it there.
CompiledExpression::Stretch CompiledExpression::stretchAt(const SearchArea &area, qsizetype from,
                                                          qsizetype length) const
{
    if (!unifies_)
        return std::make_shared<LfStretch>(area.text, 0, endOf(area), LfStretch::Lines::AsTheyAre);
    const Stretch last = area.shown;
    const bool fits = last && (last->start() == 0 || last->start() + lookBack_ + longestCharacter <= from)
        && (last->end() >= from + length || last->end() == endOf(area));
    if (!fits) {
        const qsizetype before = last ? last->end() - last->start() : 0;
        const qsizetype usual = std::clamp(before * stretchGrowth, firstStretch, largestStretch);
        area.shown = stretchOf(area, from, std::max(length, usual));
    }
    return area.shown;
}

// What reaches the end of a stretch that is not the whole is no match yet, and no miss either.
int CompiledExpression::match(const LfStretch &stretch, bool whole, qsizetype from, qsizetype stop,
                              quint32 options) const
{
    const QByteArrayView bytes = stretch.bytes();
    qsizetype last = stop > stretch.end() ? bytes.size() : stretch.inBytes(stop) - 1;
    // Machine code misses a limit within a character, and tries the first place whatever the limit is.
    for (int back = 0; back < 3 && last > 0 && last < bytes.size() && isContinuation(bytes[last]); ++back)
        --last;
    if (stretch.inBytes(from) > last)
        return PCRE2_ERROR_NOMATCH;
    pcre2_set_offset_limit(context_, size_t(last));
    // A null pointer is no text to the library, not even an empty one.
    const char *text = bytes.data() == nullptr ? "" : bytes.data();
    return pcre2_match(code_, reinterpret_cast<PCRE2_SPTR>(text), size_t(bytes.size()),
                       size_t(stretch.inBytes(from)), whole ? options : PCRE2_PARTIAL_HARD, data_, context_);
}

void CompiledExpression::takeGroups(const LfStretch &stretch, int count) const
{
    const PCRE2_SIZE *ends = pcre2_get_ovector_pointer(data_);
    groups_.assign(size_t(groupCount()) + 1, {});
    for (size_t group = 0; group < size_t(count); ++group) {
        const PCRE2_SIZE start = ends[2 * group];
        const PCRE2_SIZE end = ends[2 * group + 1];
        if (start != PCRE2_UNSET && end >= start)
            groups_[group] = {stretch.inText(qsizetype(start)), stretch.inText(qsizetype(end))};
    }
}

SearchResult CompiledExpression::find(const SearchArea &area, qsizetype first, qsizetype last,
                                      const QDeadlineTimer &deadline) const
{
    const quint32 options = endsLine(area) ? 0 : PCRE2_NOTEOL;
    const qsizetype areaEnd = endOf(area);
    last = std::min(last, areaEnd);
    qsizetype stride = firstStride;
    qsizetype needed = 1; // bytes to be seen from a place on
    QElapsedTimer clock;
    for (qsizetype from = first; from <= last;) {
        const Stretch shown = stretchAt(area, from, needed);
        const LfStretch &stretch = *shown;
        const bool whole = stretch.end() == areaEnd;
        qsizetype stop = last - from <= stride ? last + 1 : betweenCharacters(area.text, from + stride);
        if (!whole)
            stop = std::min(stop, stretch.end());
        clock.start();
        const int found = match(stretch, whole, from, stop, options);
        if (found > 0) {
            takeGroups(stretch, found);
            return {SearchOutcome::Found, group(0), 0};
        }
        if (found == PCRE2_ERROR_PARTIAL) {
            from = std::max(from, stretch.inText(qsizetype(pcre2_get_ovector_pointer(data_)[0])));
            needed = stretchGrowth * (stretch.end() - from);
            continue;
        }
        if (found != PCRE2_ERROR_NOMATCH)
            return {SearchOutcome::GaveUp, {}, from};
        from = stop;
        needed = 1;
        if (from <= last && deadline.hasExpired())
            return {SearchOutcome::OutOfTime, {}, from};
        const qint64 taken = clock.nsecsElapsed();
        if (taken < quick)
            stride = std::min(stride * 8, largestStride);
        else if (taken > slow)
            stride = std::max<qsizetype>(stride / 8, 4);
    }
    return {};
}

int CompiledExpression::groupCount() const
{
    quint32 count = 0;
    if (code_ != nullptr)
        pcre2_pattern_info(code_, PCRE2_INFO_CAPTURECOUNT, &count);
    return int(count);
}

int CompiledExpression::groupNumber(const QByteArray &name) const
{
    if (code_ == nullptr)
        return -1;
    const int number
        = pcre2_substring_number_from_name(code_, reinterpret_cast<PCRE2_SPTR>(name.constData()));
    return number > 0 ? number : -1;
}

TextMatch CompiledExpression::group(int number) const
{
    return size_t(number) < groups_.size() ? groups_[size_t(number)] : TextMatch{};
}

} // namespace control
