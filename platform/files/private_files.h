// Files that nobody but this user may read, in folders that nobody else may enter. Links are never followed.
#pragma once

#include "platform/result.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <span>

namespace files {

// Makes the folder where it is missing and closes it to others. Fails for a link and for what belongs to
// somebody else.
platform::Result<void> makePrivateFolder(const QString &path);

// Puts a file of these pieces at path, in one step and so that it survives a power failure: they are written
// to draft, a name in the same folder that nobody else uses, flushed, and renamed. On failure what stood at
// path stands there still, and no draft is left.
platform::Result<void> writePrivateFile(const QString &path, const QString &draft,
                                        std::span<const QByteArrayView> pieces);

// The first bytes of a file, at most that many. Fails for what is no regular file.
platform::Result<QByteArray> readPrivateFile(const QString &path, qint64 most);

} // namespace files
