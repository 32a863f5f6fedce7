#include "platform/browser/preview_handler.h"

#include "platform/browser/external_subset.h"
#include "platform/browser/markup_check.h"
#include "platform/browser/media_type.h"
#include "platform/browser/preview_notice.h"
#include "platform/browser/preview_reach.h"
#include "platform/browser/preview_url.h"
#include "platform/browser/source_tree.h"
#include "platform/browser/style_instruction.h"
#include "platform/files/private_files.h"

#include <QBuffer>
#include <QFileInfo>
#include <QWebEngineUrlRequestJob>

namespace browser {
namespace {

constexpr qint64 kLargestFile = qint64(256) * 1024 * 1024;

// From here on the engine's own tree of a document may need gigabytes.
constexpr qsizetype kLarge = qsizetype(20) * 1000 * 1000;

// From here on it takes seconds, and ever more of them a byte.
constexpr qsizetype kSlow = qsizetype(200) * 1000;

// The bytes of a regular file of bearable size, links followed. Whatever has taken its place since it was
// looked at is not waited for.
std::optional<QByteArray> readRegularFile(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > kLargestFile)
        return {};
    auto bytes = files::readPrivateFile(info.canonicalFilePath(), kLargestFile);
    return bytes ? std::optional(std::move(*bytes)) : std::nullopt;
}

// The URL of a file, of the same visit as another one.
QUrl siblingUrl(const QUrl &url, const QString &path)
{
    QUrl sibling = previewUrl(path, 0);
    sibling.setHost(url.host());
    return sibling;
}

bool holdsInstructions(const QByteArray &type) { return type == "text/xml" || type.endsWith("+xml"); }

QByteArray wholeLink(const QUrl &url) { return wholeUrl(url).toString(QUrl::FullyEncoded).toUtf8(); }

// What is shown in place of the engine's own tree, where that is slow; nothing where it is not.
std::optional<QByteArray> instead(const QUrl &url, const QByteArray &xml)
{
    if (xml.size() <= kSlow || asksForWhole(url) || !styleSheets(xml).isEmpty())
        return {};
    if (xml.size() > kLarge)
        return largeNotice(xml.size(), QString::fromUtf8(wholeLink(url))).toUtf8();
    return sourceTree(xml, wholeLink(url).replace('&', "&amp;"));
}

// Not by the program, nor by the user.
bool isAskedByPage(const QWebEngineUrlRequestJob &job)
{
    return job.initiator().scheme() == QString::fromLatin1(previewScheme());
}

void reply(QWebEngineUrlRequestJob *job, const QByteArray &type, const QByteArray &bytes)
{
    auto *buffer = new QBuffer(job);
    buffer->setData(bytes);
    job->reply(type, buffer);
}

} // namespace

void PreviewHandler::admit(const QString &path) { chosen_.insert(path); }

void PreviewHandler::setOverlay(const QString &path, const QByteArray &bytes)
{
    overlays_.insert(path, bytes);
}

void PreviewHandler::dropOverlay(const QString &path) { overlays_.remove(path); }

// The file that is meant by a URL whose own path is given.
QString PreviewHandler::destination(const QUrl &asked, const QString &path) const
{
    const QString alias = detours_.aliased(asked);
    if (!alias.isEmpty())
        return alias;
    if (overlays_.contains(path) || QFileInfo::exists(path))
        return path;
    const QString beside = detours_.besideOriginal(path);
    return beside.isEmpty() ? path : beside;
}

std::optional<QByteArray> PreviewHandler::bytesOf(const QString &path) const
{
    const auto overlay = overlays_.constFind(path);
    return overlay != overlays_.constEnd() ? std::optional(*overlay) : readRegularFile(path);
}

QByteArray PreviewHandler::typeOf(const QString &path, const QByteArray &bytes) const
{
    if (const auto original = detours_.originalOf(path))
        return mediaType(*original, bytes, Wanted::AsDocument);
    return mediaType(path, bytes, chosen_.contains(path) ? Wanted::AsDocument : Wanted::ByPage);
}

// XML as today's browsers can read it. A copy may have been given a declaration that only we can find.
QByteArray PreviewHandler::readable(QByteArray xml, const QUrl &url, const QString &path) const
{
    xml = withModernStyleInstructions(std::move(xml));
    if (!detours_.originalOf(path))
        return xml;
    return withExternalSubset(xml, [&](const QString &systemId) -> std::optional<QByteArray> {
        const QUrl asked = url.resolved(QUrl(systemId));
        const QString named = pathOfPreviewUrl(asked);
        return named.isEmpty() ? std::nullopt : bytesOf(destination(asked, named));
    });
}

// A copy stands for what it was made of; and what the program itself refers to by another name is meant to be
// read.
bool PreviewHandler::isNear(const QUrl &asked, const QUrl &page) const
{
    const QString path = pathOfPreviewUrl(page);
    const QString original = detours_.originalOf(path).value_or(QString());
    return !detours_.aliased(asked).isEmpty()
        || liesWithin(QFileInfo(original.isEmpty() ? path : original).path(),
                      destination(asked, pathOfPreviewUrl(asked)));
}

bool PreviewHandler::letsRead(const QUrl &asked, const QUrl &page)
{
    if (isNear(asked, page))
        return true;
    Q_EMIT lacking(asked,
                   tr("%1 was not given to the page, which reads only what lies in its own folder or below.")
                       .arg(pathOfPreviewUrl(asked)));
    return false;
}

// Of what is linked the kind of request says whether it can be read all the same: modules come with their
// origin, and a style sheet from elsewhere must be one.
bool PreviewHandler::refuses(const QWebEngineUrlRequestJob &job, const QByteArray &type,
                             const QByteArray &bytes)
{
    const auto headers = job.requestHeaders();
    const bool isModule = type == "text/javascript" && headers.contains("Origin");
    const bool isMarkup = headers.value("Accept").startsWith("text/css") && holdsInstructions(type)
        && !looksLikeStyleSheet(bytes);
    return (isModule || isMarkup) && !letsRead(job.requestUrl(), shown_.value(job.requestUrl().host()));
}

void PreviewHandler::requestStarted(QWebEngineUrlRequestJob *job)
{
    const QUrl url = job->requestUrl();
    const QString path = pathOfPreviewUrl(url);
    if (path.isEmpty() || job->requestMethod() != "GET") {
        job->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    // Told the file's own URL, the browser finds from there what the file refers to.
    if (const QString meant = destination(url, path); meant != path) {
        job->redirect(siblingUrl(url, meant));
        return;
    }
    if (const std::optional<QByteArray> bytes = bytesOf(path)) {
        serve(job, path, *bytes);
        return;
    }
    if (const qint64 size = QFileInfo(path).size(); chosen_.contains(path) && size > kLargestFile) {
        reply(job, "text/html", tooLargeNotice(size, kLargestFile).toUtf8());
        return;
    }
    tellMissing(url, path);
    job->fail(QWebEngineUrlRequestJob::UrlNotFound);
}

void PreviewHandler::serve(QWebEngineUrlRequestJob *job, const QString &path, const QByteArray &bytes)
{
    const QUrl url = job->requestUrl();
    const QString name = QFileInfo(path).fileName();
    const QByteArray type = typeOf(path, bytes);
    if (type.isEmpty()) {
        Q_EMIT lacking(url, tr("%1 is not of a kind that Preview lets pages have.").arg(name));
        job->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    if (refuses(*job, type, bytes))
        return job->fail(QWebEngineUrlRequestJob::RequestDenied);
    if (!holdsInstructions(type))
        return reply(job, type, bytes);
    if (chosen_.contains(path) && type == "text/xml")
        if (const auto page = instead(url, bytes))
            return reply(job, "text/html", *page);
    const QByteArray xml = readable(bytes, url, path);
    tellUnreachable(url, xml);
    if (isAskedByPage(*job))
        if (const QString fault = markupFault(xml); !fault.isEmpty())
            Q_EMIT lacking(url, tr("%1, %2").arg(name, fault));
    reply(job, type, xml);
}

void PreviewHandler::tellUnreachable(const QUrl &url, const QByteArray &xml)
{
    for (const QString &sheet : styleSheets(xml))
        if (QUrl(sheet).scheme().size() > 1) // one letter names a drive
            Q_EMIT lacking(
                url, tr("%1 was not loaded: Preview takes style sheets by their path alone.").arg(sheet));
}

// What can be seen to be missing, such as a picture, is not told.
void PreviewHandler::tellMissing(const QUrl &url, const QString &path)
{
    const QByteArray type = mediaType(path, {}, Wanted::ByPage);
    if (!chosen_.contains(path) && (type.isEmpty() || type == "text/css" || holdsInstructions(type)))
        Q_EMIT lacking(url, tr("%1, which the page refers to, is not there.").arg(path));
}

} // namespace browser
