// Has the system bring a file into its cache while nobody waits for it yet.
#pragma once

#include <QString>

namespace app {

// Reads the file in the background and forgets it; anything but a regular file is left alone.
void readAhead(const QString &path);

} // namespace app
