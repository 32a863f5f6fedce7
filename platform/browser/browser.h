// What the program asks of its embedded browser. The widget behind it is web_browser.h.
#pragma once

#include <QByteArray>
#include <QString>

namespace browser {

class Browser
{
public:
    virtual ~Browser() = default;

    // Suppresses script-error dialogs (and everything else that a page could pop up).
    virtual void setSilent(bool silent) = 0;

    // Shows the file at path; relative references in it resolve beside it.
    virtual void navigate(const QString &path) = 0;

    // Shows text as if it stood in the file at path, for a folder that cannot be written to.
    virtual void showText(const QByteArray &bytes, const QString &path) = 0;

    virtual void back() = 0;
    virtual void forward() = 0;
    virtual void reload() = 0;
};

} // namespace browser
