#include "editor/macro_words.h"

#include "platform/control/editor_commands.h"

#include <QLocale>

namespace editor {

namespace {

constexpr int firstPlayCommand = 214;

QString number(qint64 value) { return QLocale().toString(value); }

QString nameOf(const control::Step &step)
{
    const control::EditorCommand *command = control::findEditorCommand(step.command);
    return command == nullptr ? QStringLiteral("Typing")
                              : QStringLiteral("\"%1\"").arg(QString::fromLatin1(command->name));
}

// What is played does not go round the end of the text.
constexpr std::pair<int, const char *> ends[] = {
    {174, "found nothing more up to the start of the text"},
    {176, "found nothing more up to the end of the text"},
    {205, "found no more up to the start of the text"},
    {206, "found no more up to the end of the text"},
};

QString whyOf(const control::Step &step)
{
    for (const auto &[command, why] : ends)
        if (command == step.command)
            return QString::fromLatin1(why);
    return QStringLiteral("had nothing to do");
}

QString failureText(const control::PlayReport &report)
{
    const QString failed = nameOf(report.failed) + u' ' + whyOf(report.failed);
    if (report.asked == 1)
        return QStringLiteral("The macro ended early: %1.").arg(failed);
    return QStringLiteral("Repeated %1 of %2 times: then %3.")
        .arg(number(report.rounds), number(report.asked), failed);
}

} // namespace

QString macroName(int slot) { return QStringLiteral("Macro %1").arg(slot + 1); }

QString countedSteps(qsizetype steps)
{
    return steps == 1 ? QStringLiteral("1 step") : QStringLiteral("%1 steps").arg(number(steps));
}

QString holdingText(const QByteArray &macroBytes)
{
    const std::optional<control::Macro> macro = control::macroOf(macroBytes);
    return macro ? countedSteps(control::strokesIn(*macro)) : QStringLiteral("empty");
}

QString keysText(const control::EditorLibrary &library, int slot)
{
    const QList<QKeySequence> keys = library.shortcuts.shortcuts(firstPlayCommand + slot);
    return keys.isEmpty() ? QString() : keys.first().toString(QKeySequence::NativeText);
}

QString endText(const control::PlayReport &report)
{
    switch (report.end) {
    case control::PlayEnd::Done:
        return {};
    case control::PlayEnd::StepFailed:
        return failureText(report);
    case control::PlayEnd::Cancelled:
        return QStringLiteral("Stopped after %1. One Undo takes back what they changed.")
            .arg(countedSteps(report.steps));
    case control::PlayEnd::TooManySteps:
        return QStringLiteral("Stopped after %1, the most that is played at once.")
            .arg(countedSteps(report.steps));
    case control::PlayEnd::TextTooLarge:
        return QStringLiteral("Stopped after %1: the text has grown too large.")
            .arg(countedSteps(report.steps));
    }
    return {};
}

} // namespace editor
