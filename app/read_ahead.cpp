#include "app/read_ahead.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QThreadPool>

namespace app {

namespace {

constexpr qint64 blockSize = 1 << 20;
constexpr qint64 mostBlocks = 256; // beyond this the cache would push out what else is needed

} // namespace

void readAhead(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return;
    QThreadPool::globalInstance()->start([path] {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            return;
        QByteArray block(blockSize, Qt::Uninitialized);
        for (qint64 done = 0; done < mostBlocks && file.read(block.data(), blockSize) == blockSize; ++done) {
        }
    });
}

} // namespace app
