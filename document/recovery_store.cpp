#include "document/recovery_store.h"

#include "platform/files/private_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <chrono>

namespace document {

namespace {

constexpr const char *live = ".live";
constexpr const char *kept = ".kept";
constexpr const char *lockSuffix = ".lock";
constexpr const char *part = ".part";

constexpr qint64 beginning = 65536; // bytes, in which the longest path has room

QString freshId() { return QString::number(QRandomGenerator::system()->generate64(), 16); }

// Later ones sort behind earlier ones: a file's own time is too coarse to tell two of the same moment apart.
QString laterId()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return QStringLiteral("%1-%2").arg(qint64(std::chrono::nanoseconds(now).count())).arg(freshId());
}

} // namespace

RecoveryStore::RecoveryStore(const QString &folder) : folder_(folder) { }

QString RecoveryStore::pathOf(const QString &id, const char *suffix) const
{
    return folder_ + QLatin1Char('/') + id + QLatin1String(suffix);
}

// The lock comes before the first file: a file without a lock is nobody's.
platform::Result<void> RecoveryStore::claimOwn()
{
    if (auto made = files::makePrivateFolder(folder_); !made || own_)
        return made;
    const QString id = freshId();
    auto lock = takeLock(pathOf(id, live));
    if (!lock)
        return platform::Failure{QStringLiteral("%1 cannot be written.").arg(folder_)};
    own_ = std::move(lock);
    id_ = id;
    return {};
}

platform::Result<void> RecoveryStore::put(const QString &place, const RecoveryCopy &copy)
{
    const QByteArray head = sealedHead(copy);
    const QByteArrayView pieces[] = {head, copy.text};
    return files::writePrivateFile(place, pathOf(id_, part), pieces);
}

platform::Result<void> RecoveryStore::write(const RecoveryCopy &copy)
{
    if (auto claimed = claimOwn(); !claimed)
        return claimed;
    return put(pathOf(id_, live), copy);
}

void RecoveryStore::drop()
{
    if (own_)
        QFile::remove(pathOf(id_, live));
}

platform::Result<void> RecoveryStore::keep(const RecoveryCopy &copy)
{
    if (auto claimed = claimOwn(); !claimed)
        return claimed;
    auto done = put(pathOf(laterId(), kept), copy);
    expire(QDateTime::currentDateTime());
    return done;
}

QStringList RecoveryStore::filesOf(const char *suffix) const
{
    QStringList paths;
    const auto found = QDir(folder_).entryInfoList({QLatin1Char('*') + QLatin1String(suffix)},
                                                   QDir::Files | QDir::NoSymLinks | QDir::Hidden);
    for (const QFileInfo &info : found)
        paths.append(info.filePath());
    return paths;
}

std::unique_ptr<files::OwnerLock> RecoveryStore::takeLock(const QString &file) const
{
    return files::OwnerLock::tryTake(pathOf(QFileInfo(file).completeBaseName(), lockSuffix));
}

WaitingText RecoveryStore::look(const QString &file, bool abandoned) const
{
    const QFileInfo info(file);
    const auto bytes = files::readPrivateFile(file, beginning);
    const RecoveryBeginning found = bytes ? readBeginning(*bytes) : RecoveryBeginning();
    WaitingText text{file, found.head, info.size(), info.lastModified(), abandoned, false, {}};
    text.damaged = !found.legible || found.fileSize != info.size() || info.size() > longestFile;
    if (text.damaged)
        text.head = {{}, {}, XmlMode, text.since};
    return text;
}

QList<WaitingText> RecoveryStore::waiting() const
{
    QList<WaitingText> texts;
    for (const QString &file : filesOf(kept))
        texts.append(look(file, false));
    for (const QString &file : filesOf(live))
        if (takeLock(file))
            texts.append(look(file, true));
    std::sort(texts.begin(), texts.end(), [](const WaitingText &one, const WaitingText &other) {
        return one.head.changed > other.head.changed;
    });
    return texts;
}

bool RecoveryStore::claim(WaitingText &text) const
{
    std::shared_ptr<files::OwnerLock> lock = takeLock(text.file);
    if (!lock || !QFileInfo::exists(text.file))
        return false;
    text.claim = std::move(lock);
    return true;
}

platform::Result<OpenedCopy> RecoveryStore::open(const WaitingText &text) const
{
    const auto bytes = files::readPrivateFile(text.file, text.damaged ? mostDamaged : longestFile);
    if (!bytes)
        return platform::Failure{bytes.reason()};
    return openCopy(*bytes);
}

bool RecoveryStore::adopt(const WaitingText &text)
{
    if (!claimOwn())
        return false;
    drop();
    return QFile::rename(text.file, pathOf(id_, live));
}

void RecoveryStore::retire(const WaitingText &text) const
{
    const QString place = pathOf(freshId(), kept);
    QFile file(text.file);
    if (file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
    file.close();
    file.rename(place);
}

void RecoveryStore::remove(const WaitingText &text) const { QFile::remove(text.file); }

void RecoveryStore::expire(const QDateTime &now)
{
    clearRemains();
    QList<QFileInfo> all;
    for (const QString &file : filesOf(kept))
        all.append(QFileInfo(file));
    std::sort(all.begin(), all.end(), [](const QFileInfo &one, const QFileInfo &other) {
        return std::pair(one.lastModified(), one.fileName())
            > std::pair(other.lastModified(), other.fileName());
    });
    // What has a size of its own takes no other's room.
    qint64 bytes = 0;
    int count = 0;
    for (const QFileInfo &file : all) {
        const bool foreign = file.size() > longestFile;
        const bool large = file.size() > mostBytes;
        const bool hasRoom = foreign || count == 0 || (count < mostKept && bytes + file.size() <= mostBytes);
        if (!hasRoom || file.lastModified().addDays(mostDays) < now) {
            QFile::remove(file.filePath());
            continue;
        }
        bytes += large ? 0 : file.size();
        count += foreign ? 0 : 1;
    }
}

// A lock that can be had belongs to nobody, and goes when it is let go of.
void RecoveryStore::clearRemains()
{
    for (const char *suffix : {part, lockSuffix})
        for (const QString &file : filesOf(suffix))
            if (const auto lock = takeLock(file))
                QFile::remove(pathOf(QFileInfo(file).completeBaseName(), part));
}

} // namespace document
