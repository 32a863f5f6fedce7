// Every modal question goes through here, so that a test can answer it.
#pragma once

#include <QString>

namespace dialogs {

enum class Icon
{
    Question,
    Information,
    Exclamation,
    Critical
};
enum class Buttons
{
    Ok,
    YesNo,
    YesNoCancel,
    NoYes // the two of YesNo; who only presses Enter has said No
};
enum class Answer
{
    Ok,
    Yes,
    No,
    Cancel
};

// The answer that does least, which is also what dismissing a box means.
constexpr Answer leastAnswer(Buttons buttons)
{
    if (buttons == Buttons::Ok)
        return Answer::Ok;
    return buttons == Buttons::YesNoCancel ? Answer::Cancel : Answer::No;
}

class Dialogs
{
public:
    virtual ~Dialogs() = default;

    // A modal message box with this title, or the program's. Dismissing it answers Ok, No or Cancel: the
    // answer that does least.
    virtual Answer message(Icon icon, Buttons buttons, const QString &text, const QString &title = {}) = 0;

    // File dialogs: filter is "Name|*.a;*.b|Name|*.c"; the result is a full path, empty when dismissed.
    virtual QString openFile(const QString &title, const QString &filter) = 0;
    virtual QString saveFile(const QString &title, const QString &filter, const QString &proposed) = 0;

    // Where the file dialogs begin, until a file is chosen elsewhere.
    virtual void beginIn(const QString &) { }
};

} // namespace dialogs
