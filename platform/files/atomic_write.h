// Replacing a file's content so that at every moment either the old or the new one stands there.
#pragma once

#include "platform/result.h"

#include <QByteArrayView>
#include <QString>

#include <functional>
#include <span>

namespace files {

// Writes the pieces one behind the other. A new file takes the old one's place in one step; only where that
// would cost the file its other names or its owner, or where the folder takes no new file, is the old file
// written over, with a copy kept until that has succeeded. Fails for what is no regular file and for a file
// that is write-protected; on failure the old content stands. writesOver is called before the old file is
// written over: only then can a process that is killed leave half of it. What killed processes left of this
// file's content beside it goes when it has been written.
platform::Result<void> replaceFile(const QString &path, std::span<const QByteArrayView> pieces,
                                   const std::function<void()> &writesOver = {});

// Where a process that was killed while it wrote over this file left what the file held before; else empty.
QString leftOfCutShort(const QString &path);

} // namespace files
