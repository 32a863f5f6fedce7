#include "platform/browser/preview_handler.h"

#include "platform/browser/media_type.h"
#include "platform/browser/preview_url.h"
#include "platform/browser/style_instruction.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QWebEngineUrlRequestJob>
#include <optional>

namespace browser {
namespace {

constexpr qint64 kLargestFile = qint64(256) * 1024 * 1024;

// The bytes of a regular file of bearable size.
std::optional<QByteArray> readRegularFile(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > kLargestFile)
        return {};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray bytes = file.read(kLargestFile);
    return file.error() == QFile::NoError ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace

void PreviewHandler::admit(const QString &path) { chosen_.insert(path); }

void PreviewHandler::setOverlay(const QString &path, const QByteArray &bytes)
{
    overlays_.insert(path, bytes);
}

void PreviewHandler::dropOverlay(const QString &path) { overlays_.remove(path); }

void PreviewHandler::requestStarted(QWebEngineUrlRequestJob *job)
{
    const QString path = pathOfPreviewUrl(job->requestUrl());
    if (path.isEmpty() || job->requestMethod() != "GET") {
        job->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    const auto overlay = overlays_.constFind(path);
    std::optional<QByteArray> bytes
        = overlay != overlays_.constEnd() ? std::optional(*overlay) : readRegularFile(path);
    if (!bytes) {
        job->fail(QWebEngineUrlRequestJob::UrlNotFound);
        return;
    }
    const QByteArray type
        = mediaType(path, *bytes, chosen_.contains(path) ? Wanted::AsDocument : Wanted::ByPage);
    if (type.isEmpty()) {
        job->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    if (type == "text/xml")
        bytes = withModernStyleInstructions(std::move(*bytes));
    auto *buffer = new QBuffer(job);
    buffer->setData(*bytes);
    job->reply(type, buffer);
}

} // namespace browser
