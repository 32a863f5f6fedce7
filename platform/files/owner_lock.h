// Says that a process lives: a lock on a file that the system takes back when the process ends, however that
// comes about.
#pragma once

#include <QString>

#include <memory>

namespace files {

class OwnerLock
{
public:
    virtual ~OwnerLock() = default; // lets go of the lock; its file goes too

    // Null when somebody has it already, or when no file can be made and locked there.
    static std::unique_ptr<OwnerLock> tryTake(const QString &path);
};

} // namespace files
