// Searching text for words or expressions: the text is bytes of UTF-8, faulty ones too, and is searched where
// it lies. Lines end with LF, CR LF or CR. To an expression CR LF is one LF: no match begins or ends within.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDeadlineTimer>
#include <QString>
#include <memory>
#include <optional>

namespace control {

// What is searched for, as the user asks for it.
struct SearchPattern
{
    QString text;
    bool matchCase = false;
    bool wholeWord = false; // the match neither begins nor ends inside a word
    // The text is a regular expression: "^" and "$" mean lines, "\n" and "\r\n" an LF or CR LF of the text.
    bool expression = false;

    bool operator==(const SearchPattern &) const = default;
};

// From start to before end, in bytes; may be empty.
struct TextMatch
{
    qsizetype start = 0;
    qsizetype end = 0;

    qsizetype length() const { return end - start; }
    bool operator==(const TextMatch &) const = default;
};

// Why an expression or a replacement cannot be used.
struct PatternFault
{
    QString message;
    qsizetype place = 0; // in characters from its start
};

class LfStretch;

// Where to search: from start to before end. What stands around it in the text is still seen by expressions
// that look back. Good until the text changes.
struct SearchArea
{
    QByteArrayView text;
    qsizetype start = 0;
    qsizetype end = 0;
    // What an expression was shown of it last, for the next one.
    mutable std::shared_ptr<const LfStretch> shown;

    explicit SearchArea(QByteArrayView whole) : text(whole), end(whole.size()) { }
    SearchArea(QByteArrayView whole, const TextMatch &part)
        : text(whole), start(part.start), end(part.end) { }
};

enum class SearchOutcome
{
    Found,
    Missing,
    OutOfTime, // can be continued where it was reached
    GaveUp // the expression is too much for this text
};

struct SearchResult
{
    SearchOutcome outcome = SearchOutcome::Missing;
    TextMatch match; // when found
    qsizetype reached = 0; // no match begins before this, when out of time

    explicit operator bool() const { return outcome == SearchOutcome::Found; }
};

class CompiledExpression;

class TextSearch
{
public:
    explicit TextSearch(const SearchPattern &pattern);
    ~TextSearch();
    TextSearch(TextSearch &&) noexcept;
    TextSearch &operator=(TextSearch &&) noexcept;

    // Without one, and with a pattern that is not empty, there can be matches.
    const std::optional<PatternFault> &fault() const { return fault_; }
    const SearchPattern &pattern() const { return pattern_; }

    // The first match that begins at from or later. No pattern takes much longer than the deadline.
    SearchResult next(const SearchArea &area, qsizetype from,
                      QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever)) const;
    // The last match that begins before a place and does not reach beyond it.
    SearchResult previous(const SearchArea &area, qsizetype before,
                          QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever)) const;
    // Where to search for the match after this one; behind the end of the text when there can be none.
    static qsizetype behind(QByteArrayView text, const TextMatch &match);

    // Groups of an expression, numbered from 1; group 0 is the match.
    int groupCount() const;
    // -1 when no group has that name.
    int groupNumber(const QByteArray &name) const;
    // The part that a group took in what next() found last; empty when it took none.
    TextMatch group(int number) const;

private:
    // Where a match may begin: from first to last, the latter included.
    struct Starts
    {
        qsizetype first;
        qsizetype last;
    };
    SearchResult find(const SearchArea &area, Starts starts, const QDeadlineTimer &deadline) const;
    SearchResult findWord(const SearchArea &area, Starts starts, const QDeadlineTimer &deadline) const;
    SearchResult findBytes(const SearchArea &area, Starts starts, const QDeadlineTimer &deadline) const;
    SearchResult lastOf(const SearchArea &area, Starts starts, qsizetype before,
                        const QDeadlineTimer &deadline) const;

    SearchPattern pattern_;
    QByteArray bytes_; // searched for as they are, without an expression
    qsizetype rarest_ = 0; // the byte among them that is looked for first
    mutable TextMatch found_;
    std::unique_ptr<CompiledExpression> expression_;
    std::optional<PatternFault> fault_;
};

} // namespace control
