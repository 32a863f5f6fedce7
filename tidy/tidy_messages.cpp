#include "tidy/tidy_messages.h"

#include <QRegularExpression>

#include <algorithm>

namespace tidy {

namespace {

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
    return {0, 0, Severity::Information, line};
}

Message moreMessage(const QByteArray &report, qsizetype from)
{
    const auto lines = std::count(report.begin() + from, report.end(), '\n');
    return {0, 0, Severity::Information, QStringLiteral("%1 lines more are left out.").arg(lines)};
}

} // namespace

std::vector<Message> messagesIn(const QByteArray &report)
{
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

} // namespace tidy
