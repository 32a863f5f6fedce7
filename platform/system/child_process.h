// Programs that run for this one and must not outlive it.
#pragma once

#include <QtGlobal>

class QProcess;

namespace shell {

enum class Group
{
    OfThisProcess,
    OfItsOwn // so that it can be ended with all that it starts
};

// A process that is yet to be started ends as soon as the thread that starts it does, however that comes
// about: being killed included. What it starts itself is not tied by that.
void tieToThisProcess(QProcess &process, Group group);

// Ends the process that leads a group of its own, and what else is in it, at once.
void killGroup(qint64 leader);

} // namespace shell
