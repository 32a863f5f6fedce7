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

// No letter on one side, or none on the other.
constexpr char wordEdge[] = "(?:(?<!\\w)|(?!\\w))";

bool isContinuation(char byte) { return (quint8(byte) & 0xC0) == 0x80; }

// Never between CR and LF nor inside a character.
qsizetype betweenCharacters(QByteArrayView text, qsizetype place)
{
    for (int back = 0; back < 3 && place > 0 && place < text.size() && isContinuation(text[place]); ++back)
        --place;
    const bool splits = place > 0 && place < text.size() && text[place] == '\n' && text[place - 1] == '\r';
    return splits ? place + 1 : place;
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
    // Judged alone first, so that no bracket of it pairs with one of ours.
    if (compile(text, 0, pattern.matchCase) && pattern.wholeWord) {
        const QByteArray before = QByteArray(wordEdge) + "(?:";
        pcre2_code_free(std::exchange(code_, nullptr));
        compile(before + text + ")" + wordEdge, before.size(), pattern.matchCase);
    }
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
        pcre2_jit_compile(code_, PCRE2_JIT_COMPLETE);
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

SearchResult CompiledExpression::find(const SearchArea &area, qsizetype first, qsizetype last,
                                      const QDeadlineTimer &deadline) const
{
    const quint32 options = endsLine(area) ? 0 : PCRE2_NOTEOL;
    // A null pointer is no text to the library, not even an empty one.
    const char *text = area.text.data() == nullptr ? "" : area.text.data();
    qsizetype stride = firstStride;
    QElapsedTimer clock;
    for (qsizetype from = first; from <= last;) {
        const qsizetype stop = last - from <= stride ? last + 1 : betweenCharacters(area.text, from + stride);
        pcre2_set_offset_limit(context_, size_t(stop - 1));
        clock.start();
        const int found = pcre2_match(code_, reinterpret_cast<PCRE2_SPTR>(text), size_t(area.end),
                                      size_t(from), options, data_, context_);
        if (found > 0)
            return {SearchOutcome::Found, group(0), 0};
        if (found != PCRE2_ERROR_NOMATCH)
            return {SearchOutcome::GaveUp, {}, from};
        from = stop;
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
    const PCRE2_SIZE *ends = pcre2_get_ovector_pointer(data_);
    const PCRE2_SIZE start = ends[2 * number];
    const PCRE2_SIZE end = ends[2 * number + 1];
    return start == PCRE2_UNSET || end < start ? TextMatch{} : TextMatch{qsizetype(start), qsizetype(end)};
}

} // namespace control
