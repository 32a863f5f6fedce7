#include "tidy/tidy_messages.h"

#include <QRegularExpression>

#include <algorithm>

namespace tidy {

namespace {

constexpr QLatin1StringView failureMark("Error: ");

Severity severityNamed(const QString &word)
{
    if (word == QLatin1StringView("Error"))
        return Severity::Error;
    return word == QLatin1StringView("Warning") ? Severity::Warning : Severity::Information;
}

Message messageIn(const QString &line)
{
    static const QRegularExpression plain(QStringLiteral("^line (\\d+) column (\\d+) - (\\w+): (.*)$"));
    static const QRegularExpression emacs(QStringLiteral("^.*?:(\\d+):(\\d+): (\\w+): (.*)$"));
    for (const QRegularExpression &form : {plain, emacs}) {
        const QRegularExpressionMatch match = form.match(line);
        if (match.hasMatch()) {
            const int number = match.captured(1).toInt();
            const int column = number > 0 ? match.captured(2).toInt() : 0;
            return {number, column, severityNamed(match.captured(3)), match.captured(4)};
        }
    }
    if (line.startsWith(failureMark))
        return {0, 0, Severity::Error, line.sliced(failureMark.size())};
    return {0, 0, Severity::Information, line};
}

Message moreMessage(size_t lines)
{
    return {0, 0, Severity::Information, QStringLiteral("%1 lines more are left out.").arg(lines)};
}

// Where Tidy has said all and goes on about itself; the report's end where it does not.
qsizetype endOfMatter(const QByteArray &report)
{
    const qsizetype found = report.indexOf("\nAbout HTML Tidy: ");
    return found < 0 ? report.size() : found;
}

// Tidy writes the line ends that it was told to write in the text.
QByteArray withPlainLineEnds(QByteArray report) { return report.replace("\r\n", "\n").replace('\r', '\n'); }

QString countOf(int count, const QString &one)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(one, count == 1 ? QString() : QStringLiteral("s"));
}

// The lines that say anything.
QList<QByteArrayView> linesOf(const QByteArray &report)
{
    QList<QByteArrayView> lines;
    const QByteArrayView matter = QByteArrayView(report).first(endOfMatter(report));
    for (qsizetype at = 0; at < matter.size();) {
        const qsizetype found = matter.indexOf('\n', at);
        const qsizetype end = found < 0 ? matter.size() : found;
        const QByteArrayView line = matter.sliced(at, end - at).trimmed();
        if (!line.empty())
            lines << line;
        at = end + 1;
    }
    return lines;
}

bool tellsOfError(QByteArrayView line)
{
    return line.startsWith("Error: ") || line.contains(" - Error: ") || line.contains(": Error: ");
}

} // namespace

std::vector<Message> messagesIn(const QByteArray &given)
{
    const QByteArray report = withPlainLineEnds(given);
    const QList<QByteArrayView> lines = linesOf(report);
    const size_t errors = size_t(std::count_if(lines.begin(), lines.end(), tellsOfError));
    size_t errorsLeft = std::min<size_t>(errors, mostMessages);
    size_t othersLeft = mostMessages - errorsLeft;
    std::vector<Message> messages;
    for (const QByteArrayView line : lines) {
        size_t &left = tellsOfError(line) ? errorsLeft : othersLeft;
        if (left == 0)
            continue;
        --left;
        messages.push_back(messageIn(QString::fromUtf8(line)));
    }
    if (const size_t all = size_t(lines.size()); all > messages.size())
        messages.push_back(moreMessage(all - messages.size()));
    return messages;
}

Counts countsIn(const QByteArray &given)
{
    static const QRegularExpression total(QStringLiteral("^Tidy found (\\d+) warnings? and (\\d+) errors?"));
    const QByteArray report = withPlainLineEnds(given);
    Counts counts;
    Counts counted;
    for (const QByteArrayView line : linesOf(report)) {
        const QString said = QString::fromUtf8(line);
        const Severity severity = messageIn(said).severity;
        counts.errors += severity == Severity::Error ? 1 : 0;
        counts.warnings += severity == Severity::Warning ? 1 : 0;
        const QRegularExpressionMatch match = total.match(said);
        if (match.hasMatch())
            counted = {match.captured(2).toInt(), match.captured(1).toInt()};
    }
    return {std::max(counts.errors, counted.errors), std::max(counts.warnings, counted.warnings)};
}

Counts countsOf(const std::vector<Message> &messages)
{
    const auto of = [&](Severity severity) {
        return int(std::count_if(messages.begin(), messages.end(), [severity](const Message &message) {
            return message.severity == severity;
        }));
    };
    return {of(Severity::Error), of(Severity::Warning)};
}

bool saysFailure(const std::vector<Message> &messages)
{
    return !messages.empty() && messages.front().line == 0 && messages.front().severity == Severity::Error;
}

QString summaryOf(const Counts &counts)
{
    return countOf(counts.errors, QStringLiteral("error")) + QStringLiteral(", ")
        + countOf(counts.warnings, QStringLiteral("warning"));
}

} // namespace tidy
