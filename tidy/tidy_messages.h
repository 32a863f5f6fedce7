// What Tidy said about a text, out of its report.
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace tidy {

enum class Severity
{
    Information, // summaries, advice, and what was said of the options
    Warning,
    Error
};

struct Message
{
    int line = 0; // 1-based in the text that was given to Tidy; 0 when it is about no place
    int column = 0; // 1-based; 0 with line 0
    Severity severity = Severity::Information;
    QString text;

    bool operator==(const Message &) const = default;
};

// A large text of many faults fills a report beyond what anybody reads.
inline constexpr int mostMessages = 10'000;

// How many faults there are, shown or not.
struct Counts
{
    int errors = 0;
    int warnings = 0;
};

// The messages of a report (UTF-8), in its order, in either of the two formats that Tidy writes. Blank lines
// are left out, and what Tidy says of itself at the end. Where there are more than the most, errors come
// before others, and a last message says how many lines more there are.
std::vector<Message> messagesIn(const QByteArray &report);

// What a report tells of the faults: as they are listed, or as Tidy has counted them where that is more,
// since options may keep it from listing them all.
Counts countsIn(const QByteArray &report);

Counts countsOf(const std::vector<Message> &messages);

// Whether the first message says that the run failed, so that there is no output.
bool saysFailure(const std::vector<Message> &messages);

// How many errors and warnings there are, in words.
QString summaryOf(const Counts &counts);

} // namespace tidy
