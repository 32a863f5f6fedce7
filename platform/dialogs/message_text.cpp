#include "platform/dialogs/message_text.h"

#include <QStringList>

namespace dialogs {
namespace {

constexpr qsizetype kLongestLine = 600; // characters
constexpr qsizetype kMostLines = 25;
constexpr qsizetype kLongestRun = 50; // characters without a blank, before they may wrap
constexpr QChar kEllipsis(0x2026);
constexpr QChar kWrapHere(0x200B); // zero width space

// Cuts before a character's second half as little as after its first.
qsizetype wholeCharacters(const QString &text, qsizetype count)
{
    return count < text.size() && text[count].isLowSurrogate() ? count - 1 : count;
}

QString cutLine(const QString &line)
{
    return line.size() <= kLongestLine ? line : line.left(wholeCharacters(line, kLongestLine)) + kEllipsis;
}

QString withWrapPlaces(const QString &line)
{
    QString result;
    qsizetype run = 0;
    for (const QChar c : line) {
        run = c.isSpace() ? 0 : run + 1;
        if (run > kLongestRun && !c.isLowSurrogate()) {
            result += kWrapHere;
            run = 1;
        }
        result += c;
    }
    return result;
}

} // namespace

QString fittedText(const QString &text)
{
    QString unified = text;
    unified.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    QStringList lines = unified.split(u'\n');
    if (lines.size() > kMostLines)
        lines = lines.mid(0, kMostLines) << QString(kEllipsis);
    for (QString &line : lines)
        line = withWrapPlaces(cutLine(line));
    return lines.join(u'\n');
}

QString copiedText(QString text) { return text.remove(kWrapHere); }

} // namespace dialogs
