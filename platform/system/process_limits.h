// Bounds that the system itself puts on a process, for work on what strangers wrote.
#pragma once

#include <QtGlobal>

namespace shell {

// This process from now on: so many bytes of memory, so many seconds of computing, and not a byte more in any
// file. Nothing where the system has no such bounds. What goes beyond ends the process, or is refused to it.
void limitThisProcess(qint64 memory, int seconds);

// Bytes of memory for a process of the same user that runs already; false where that cannot be had.
bool limitMemoryOf(qint64 process, qint64 memory);

// The machine's, in bytes; 0 where it is not known.
qint64 physicalMemory();

} // namespace shell
