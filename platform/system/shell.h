// The desktop around the program: opening things with what is installed for them, starting helpers.
#pragma once

#include "platform/result.h"

#include <QString>

#include <memory>

namespace shell {

// A program at work for this one. It ends with the object at the latest, and whatever it started with it.
class Helper
{
public:
    virtual ~Helper() = default;

    // Whether it is over, by itself or not; known from the event loop.
    virtual bool hasEnded() const = 0;
};

using StartedHelper = platform::Result<std::unique_ptr<Helper>>;

class Shell
{
public:
    virtual ~Shell() = default;

    // The "Open" verb on a file or a web address, with the program that the user has for it. Fails when
    // there is no such file or no program took it.
    virtual platform::Result<void> open(const QString &pathOrAddress) = 0;

    // Starts a program without arguments in a working folder and does not wait for it. It does not outlive
    // this program either, however that ends. Fails when it cannot be started.
    virtual StartedHelper start(const QString &program, const QString &workingFolder) = 0;

    // Opens a file with this program in a window of its own, which is a process of its own and stays when
    // this one ends.
    virtual platform::Result<void> openWindow(const QString &path) = 0;
};

// What Shell::start does, for those who need no desktop.
StartedHelper startHelper(const QString &program, const QString &workingFolder);

} // namespace shell
