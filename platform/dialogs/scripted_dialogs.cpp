#include "platform/dialogs/scripted_dialogs.h"

namespace dialogs {
namespace {

bool offers(Buttons buttons, Answer answer)
{
    switch (answer) {
    case Answer::Ok:
        return buttons == Buttons::Ok;
    case Answer::Yes:
    case Answer::No:
        return buttons != Buttons::Ok;
    case Answer::Cancel:
        return buttons == Buttons::YesNoCancel;
    }
    return false;
}

} // namespace

Answer ScriptedDialogs::message(Icon icon, Buttons buttons, const QString &text, const QString &title)
{
    messages_.append({icon, buttons, text, title});
    if (!answers_.isEmpty() && offers(buttons, answers_.first()))
        return answers_.takeFirst();
    unanswered_.append(text);
    return leastAnswer(buttons);
}

QString ScriptedDialogs::openFile(const QString &title, const QString &filter)
{
    return nextPath({title, filter, {}});
}

QString ScriptedDialogs::saveFile(const QString &title, const QString &filter, const QString &proposed)
{
    return nextPath({title, filter, proposed});
}

QString ScriptedDialogs::nextPath(const AskedFile &asked)
{
    files_.append(asked);
    if (!paths_.isEmpty())
        return paths_.takeFirst();
    unanswered_.append(asked.title);
    return {};
}

} // namespace dialogs
