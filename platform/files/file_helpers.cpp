#include "platform/files/file_helpers.h"

#include "platform/files/text_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <filesystem>
#include <system_error>

namespace files {

namespace {

QString withSlashes(QString suffix) { return suffix.replace(QLatin1Char('\\'), QLatin1Char('/')); }

QString cleanPath(const QString &path) { return QDir::cleanPath(QDir::fromNativeSeparators(path)); }

// Also true for a link that leads nowhere.
bool isThere(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

} // namespace

QString fullPath(const QString &path)
{
    const QString named = QDir::fromNativeSeparators(path);
    const qsizetype slash = named.lastIndexOf(QLatin1Char('/'));
    const QString before = named.first(qMax(slash, qsizetype(0)));
    const QString name = named.sliced(slash + 1);
    const bool goesUp = before.split(QLatin1Char('/')).contains(QLatin1String(".."));
    const QString folder = goesUp ? QFileInfo(before).canonicalFilePath() : QString();
    if (folder.isEmpty() || name.isEmpty() || name == QLatin1String(".."))
        return QFileInfo(path).absoluteFilePath();
    return QDir(folder).filePath(name);
}

bool fileExists(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isDir();
}

bool folderExists(const QString &path) { return QFileInfo(path).isDir(); }

QString extensionOf(const QString &path)
{
    const QString name = fileNameOf(path);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : name.sliced(dot + 1);
}

QString fileNameOf(const QString &path)
{
    const QString clean = cleanPath(path);
    return clean.sliced(clean.lastIndexOf(QLatin1Char('/')) + 1);
}

QString parentFolderOf(const QString &path)
{
    const QString clean = cleanPath(path);
    const qsizetype slash = clean.lastIndexOf(QLatin1Char('/'));
    if (slash < 0 || clean.size() == 1)
        return {};
    return clean.first(qMax<qsizetype>(slash, 1));
}

platform::Result<QString> createFolder(const QString &path)
{
    const QString clean = cleanPath(path);
    std::error_code error;
    if (std::filesystem::create_directory(QFile::encodeName(clean).toStdString(), error))
        return clean;
    const QString why = error ? QString::fromStdString(error.message()) : QStringLiteral("it exists already");
    return platform::Failure{QStringLiteral("The folder %1 cannot be created: %2.").arg(clean, why)};
}

QStringList nonEmptyLines(const QString &path)
{
    const platform::Result<QByteArray> text = readPlainText(path);
    if (!text)
        return {};
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|\n|\r"));
    // A byte order mark is no part of a line, wherever joined files have left one.
    return QString::fromUtf8(*text).remove(QChar::ByteOrderMark).split(lineEnd, Qt::SkipEmptyParts);
}

bool deleteIfExists(const QString &path) { return !isThere(path) || QFile::remove(path); }

int firstFreeNumber(const QString &path)
{
    for (int number = 0;; ++number) {
        if (!isThere(path + QString::number(number)))
            return number;
    }
}

QString joinPath(const QString &folder, const QString &suffix)
{
    return cleanPath(folder + QLatin1Char('/') + withSlashes(suffix));
}

QString programFolder()
{
    const QString named = qEnvironmentVariable("XMLEDITOR_PROGRAM_FOLDER");
    return QDir::cleanPath(named.isEmpty() ? QCoreApplication::applicationDirPath()
                                           : QDir(named).absolutePath());
}

} // namespace files
