#include "platform/files/user_folders.h"

#include "platform/files/file_helpers.h"
#include "platform/files/owner_lock.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <filesystem>

namespace files {

namespace {

namespace fs = std::filesystem;

constexpr int mostWindows = 64;

// The package puts a file of this name into the program folder: what is installed for everybody is left
// alone, even by somebody who could write there.
constexpr const char *installedMark = "installed";

// What a user changes, and what is only called by its place.
constexpr const char *ownFiles[] = {"tdyex/default.tidy", "tdyex/default2.tidy"};
constexpr const char *programs[] = {"tdyex/proclltidy.exe", "tdyex/tidy.exe", "tdyex/transformer.exe"};

fs::path pathOf(const QString &path) { return {QDir(path).filesystemAbsolutePath()}; }

QString inFolder(const QString &folder, const char *name)
{
    return folder + QLatin1Char('/') + QString::fromLatin1(name);
}

bool isUsersOwn(const QString &programFolder)
{
    return !fileExists(inFolder(programFolder, installedMark))
        && QFileInfo(inFolder(programFolder, "tdyex")).isWritable();
}

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/Zelph/Zelph XML Editor");
}

// A link where there are links, so that a newer program is called after an upgrade.
std::error_code provide(const fs::path &program, const fs::path &place)
{
    std::error_code error;
    if (fs::is_symlink(place, error) && fs::read_symlink(place, error) == program)
        return {};
    fs::remove(place, error);
    fs::create_symlink(program, place, error);
    if (error)
        fs::copy_file(program, place, fs::copy_options::overwrite_existing, error);
    return error;
}

} // namespace

UserFolders::UserFolders(const QString &programFolder)
    : data_(isUsersOwn(programFolder) ? programFolder : dataFolder())
{
    if (data_ != programFolder)
        seed(programFolder, data_);
    claimExchange();
    if (exchange_ != data_)
        seed(programFolder, exchange_);
}

UserFolders::~UserFolders() = default;

void UserFolders::seed(const QString &programFolder, const QString &folder)
{
    QDir().mkpath(inFolder(folder, "tdyex"));
    for (const char *name : ownFiles)
        if (const QString mine = inFolder(folder, name); !fileExists(mine)) {
            if (!QFile::copy(inFolder(programFolder, name), mine))
                notes_.append(QStringLiteral("%1 could not be made.").arg(mine));
            // The original may be nobody's to write.
            QFile::setPermissions(mine, QFile::ReadOwner | QFile::WriteOwner);
        }
    for (const char *name : programs)
        if (const auto error = provide(pathOf(inFolder(programFolder, name)), pathOf(inFolder(folder, name))))
            notes_.append(QStringLiteral("%1 could not be made: %2.")
                              .arg(inFolder(folder, name), QString::fromStdString(error.message())));
}

bool UserFolders::claim(const QString &folder)
{
    QDir().mkpath(inFolder(folder, "tdyex"));
    lock_ = OwnerLock::tryTake(inFolder(folder, "tdyex/window"));
    if (!lock_)
        return false;
    exchange_ = folder;
    return true;
}

void UserFolders::claimExchange()
{
    if (claim(data_))
        return;
    for (int window = 2; window <= mostWindows; ++window)
        if (claim(data_ + QStringLiteral("/windows/") + QString::number(window))) {
            window_ = window;
            return;
        }
    exchange_ = data_;
    notes_.append(
        QStringLiteral("%1 cannot be had for this window alone; Tidy runs of several windows may meet.")
            .arg(data_));
}

} // namespace files
