#include "platform/files/text_file.h"

#include "platform/files/atomic_write.h"
#include "platform/files/encode_text.h"
#include "platform/files/file_helpers.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <limits>
#include <system_error>

namespace files {

namespace {

constexpr qint64 largestFile = std::numeric_limits<qint32>::max();
constexpr QByteArrayView lineEnds[] = {"\r\n", "\n", "\r", ""}; // by FileEnd

platform::Failure cannotRead(const QString &path, const QString &why)
{
    return {QStringLiteral("%1 cannot be read: %2.").arg(path, why)};
}

platform::Result<QByteArray> readBytes(const QString &path)
{
    const QString tooLarge = QStringLiteral("it is larger than 2 GiB");
    // A folder that may not be entered tells nothing of what is in it: then it is the opening that fails.
    using Type = std::filesystem::file_type;
    std::error_code unknown;
    const Type type = std::filesystem::status(QFile::encodeName(path).toStdString(), unknown).type();
    if (type == Type::not_found)
        return cannotRead(path, QStringLiteral("there is no such file"));
    if (type != Type::regular && type != Type::none)
        return cannotRead(path,
                          type == Type::directory ? QStringLiteral("it is a folder")
                                                  : QStringLiteral("it is not a file"));
    if (QFileInfo(path).size() > largestFile)
        return cannotRead(path, tooLarge);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return cannotRead(path, file.errorString());
    QByteArray bytes = file.readAll();
    // A file that fails in its midst says so only when it is read on.
    for (char more = 0; file.error() == QFileDevice::NoError && file.read(&more, 1) > 0;)
        bytes += more + file.readAll();
    if (file.error() != QFileDevice::NoError)
        return cannotRead(path, file.errorString());
    if (bytes.size() > largestFile)
        return cannotRead(path, tooLarge);
    return bytes;
}

// Takes the file's final line end off the text and says which it was, so that the same is put back.
FileEnd takeFileEnd(QByteArray &utf8)
{
    for (const FileEnd end : {FileEnd::CrLf, FileEnd::Lf, FileEnd::Cr}) {
        const QByteArrayView lineEnd = lineEnds[int(end)];
        if (!utf8.endsWith(lineEnd))
            continue;
        utf8.chop(lineEnd.size());
        return end;
    }
    return FileEnd::None;
}

} // namespace

platform::Result<LoadedText> readTextFile(const QString &path, const QByteArray &encoding)
{
    LoadedText loaded;
    loaded.stamp = stampOf(path).value_or(FileStamp());
    platform::Result<QByteArray> bytes = readBytes(path);
    if (!bytes)
        return platform::Failure{bytes.reason()};
    auto decoded = encoding.isEmpty() ? platform::Result<DecodedText>(decodeText(std::move(*bytes)))
                                      : decodeTextAs(std::move(*bytes), encoding);
    if (!decoded)
        return platform::Failure{decoded.reason()};
    loaded.utf8 = std::move(decoded->utf8);
    loaded.form = {std::move(decoded->encoding), takeFileEnd(loaded.utf8)};
    loaded.note = decoded->note;
    return loaded;
}

platform::Result<QByteArray> readPlainText(const QString &path)
{
    platform::Result<QByteArray> bytes = readBytes(path);
    if (!bytes)
        return bytes;
    return decodePlainText(std::move(*bytes));
}

platform::Result<WrittenText> writeDocumentFile(const QString &path, const QByteArray &utf8,
                                                const FileForm &form, const std::function<void()> &writesOver)
{
    auto pieces = encodePieces(utf8, form.encoding, lineEnds[int(form.end)]);
    if (!pieces)
        return platform::Failure{pieces.reason()};
    if (const auto replaced = replaceFile(path, pieces->all(), writesOver); !replaced)
        return platform::Failure{replaced.reason()};
    return WrittenText{{std::move(pieces->encoding), form.end}, pieces->note};
}

bool isWrittenAs(const QString &path, const QByteArray &utf8, const FileForm &form)
{
    const auto bytes = readBytes(path);
    const auto pieces = encodePieces(utf8, form.encoding, lineEnds[int(form.end)]);
    if (!bytes || !pieces)
        return false;
    QByteArrayView rest(*bytes);
    for (const QByteArrayView piece : pieces->all()) {
        if (!rest.startsWith(piece))
            return false;
        rest = rest.sliced(piece.size());
    }
    return rest.isEmpty();
}

platform::Result<void> writeTextFile(const QString &path, const QByteArray &utf8)
{
    const QByteArrayView pieces[] = {utf8, lineEnds[int(FileEnd::CrLf)]};
    return replaceFile(path, pieces);
}

platform::Result<void> writeAtomically(const QString &path, const QByteArray &bytes)
{
    const QByteArrayView pieces[] = {bytes};
    return replaceFile(path, pieces);
}

} // namespace files
