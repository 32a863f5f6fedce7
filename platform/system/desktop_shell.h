// The shell of the desktop that the program runs on.
#pragma once

#include "platform/system/shell.h"

namespace shell {

class DesktopShell : public Shell
{
public:
    platform::Result<void> open(const QString &pathOrAddress) override;
    StartedHelper start(const QString &program, const QString &workingFolder) override;
    platform::Result<void> openWindow(const QString &path) override;
};

} // namespace shell
