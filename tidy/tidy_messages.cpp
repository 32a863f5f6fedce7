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

Message moreMessage(const QByteArray &report, qsizetype from)
{
    const auto lines = std::count(report.begin() + from, report.end(), '\n');
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

QString countOf(const std::vector<Message> &messages, Severity severity, const QString &one)
{
    const auto count = std::count_if(messages.begin(), messages.end(), [severity](const Message &message) {
        return message.severity == severity;
    });
    return QStringLiteral("%1 %2%3").arg(count).arg(one, count == 1 ? QString() : QStringLiteral("s"));
}

} // namespace

std::vector<Message> messagesIn(const QByteArray &given)
{
    const QByteArray plain = withPlainLineEnds(given);
    const QByteArray report = plain.first(endOfMatter(plain));
    std::vector<Message> messages;
    for (qsizetype at = 0; at < report.size();) {
        if (messages.size() == mostMessages) {
            messages.push_back(moreMessage(report, at));
            break;
        }
        const qsizetype found = report.indexOf('\n', at);
        const qsizetype end = found < 0 ? report.size() : found;
        const QString said = QString::fromUtf8(QByteArrayView(report).sliced(at, end - at)).trimmed();
        if (!said.isEmpty())
            messages.push_back(messageIn(said));
        at = end + 1;
    }
    return messages;
}

bool saysFailure(const std::vector<Message> &messages)
{
    return !messages.empty() && messages.front().line == 0 && messages.front().severity == Severity::Error;
}

QString summaryOf(const std::vector<Message> &messages)
{
    if (messages.empty())
        return QStringLiteral("No messages.");
    return countOf(messages, Severity::Error, QStringLiteral("error")) + QStringLiteral(", ")
        + countOf(messages, Severity::Warning, QStringLiteral("warning"));
}

} // namespace tidy
