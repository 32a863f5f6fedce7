#include "platform/dom/local_entities.h"

#include "platform/files/private_files.h"

#include <QFileInfo>
#include <QUrl>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <mutex>

namespace dom {

namespace {

constexpr qint64 largestEntity = 64 << 20;

// The local path that an address names; empty for everything that would leave this machine.
QString localPath(const char *address)
{
    const QString text = QString::fromUtf8(address);
    const QUrl url(text);
    if (url.isLocalFile())
        return url.host().isEmpty() ? url.toLocalFile() : QString();
    if (text.contains(QStringLiteral("://")))
        return {};
    return QUrl::fromPercentEncoding(text.toUtf8());
}

// What cannot be had locally is left out, without an error: a document does not become faulty by where its
// document type is kept. Whatever has taken the file's place since it was looked at is not waited for.
xmlParserInputPtr loadLocally(const char *address, const char *, xmlParserCtxtPtr context)
{
    const auto bytes = readLocalEntity(localEntityPath(address));
    if (!bytes)
        return nullptr;
    xmlParserInputBufferPtr buffer
        = xmlParserInputBufferCreateMem(bytes->constData(), int(bytes->size()), XML_CHAR_ENCODING_NONE);
    xmlParserInputPtr input = buffer ? xmlNewIOInputStream(context, buffer, XML_CHAR_ENCODING_NONE) : nullptr;
    if (input)
        input->filename = reinterpret_cast<char *>(xmlStrdup(reinterpret_cast<const xmlChar *>(address)));
    return input;
}

} // namespace

// A relative address has nothing to be relative to any more: it would be looked for wherever the program was
// started.
QString localEntityPath(const char *address)
{
    const QFileInfo info(address ? localPath(address) : QString());
    const bool isReadable = info.isAbsolute() && info.isFile() && info.size() <= largestEntity;
    return isReadable ? info.canonicalFilePath() : QString();
}

std::optional<QByteArray> readLocalEntity(const QString &path)
{
    if (path.isEmpty())
        return std::nullopt;
    auto bytes = files::readPrivateFile(path, largestEntity);
    return bytes ? std::optional(std::move(*bytes)) : std::nullopt;
}

void allowLocalEntitiesOnly()
{
    // libxml2 knows one loader for the whole process; it is set once and never changed again.
    static std::once_flag once;
    std::call_once(once, [] {
        xmlInitParser();
        xmlSetExternalEntityLoader(loadLocally);
    });
}

} // namespace dom
