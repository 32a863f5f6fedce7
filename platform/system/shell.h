// The desktop around the program: opening things with what is installed for them, starting helpers.
#pragma once

#include "platform/result.h"

#include <QString>
#include <QStringList>

namespace shell {

class Shell
{
public:
    virtual ~Shell() = default;

    // The "Open" verb on a file or a web address, with the program that the user has for it. Fails when
    // there is no such file or no program took it.
    virtual platform::Result<void> open(const QString &pathOrAddress) = 0;

    // Starts a program without arguments in a working folder and does not wait for it; it outlives this
    // program. Fails when it cannot be started.
    virtual platform::Result<void> start(const QString &program, const QString &workingFolder) = 0;

    // Opens a file with this program in a window of its own, which is a process of its own.
    virtual platform::Result<void> openWindow(const QString &path) = 0;
};

// What Shell::start does, for those who need no desktop, and with arguments for who has some.
platform::Result<void> startDetached(const QString &program, const QString &workingFolder,
                                     const QStringList &arguments = {});

} // namespace shell
