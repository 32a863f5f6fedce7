#include "tidy/transform_access.h"

#include "platform/dom/addresses.h"

#include <QFileInfo>
#include <QUrl>

#include <libxml/catalog.h>

#include <algorithm>
#include <memory>

namespace tidy {

namespace {

// The local path that an address names; empty for everything that would leave this machine.
QString localPath(const QByteArray &address)
{
    const QUrl url = QUrl::fromEncoded(address);
    if (!url.isLocalFile() && !url.scheme().isEmpty())
        return {};
    if (!url.host().isEmpty() && url.host() != QStringLiteral("localhost"))
        return {};
    return url.isLocalFile() ? url.toLocalFile() : url.path(QUrl::FullyDecoded);
}

// A catalog replaces the beginning of an address. What climbs out behind that leads anywhere.
bool climbs(const char *address)
{
    const QString path = QUrl::fromPercentEncoding(QByteArray(address)).replace(u'\\', u'/');
    return path.split(u'/').contains(QStringLiteral(".."));
}

const xmlChar *chars(const char *text) { return reinterpret_cast<const xmlChar *>(text); }

} // namespace

TransformAccess::TransformAccess(const TransformJob &job) : allowed_(job.licence.files)
{
    for (const TransformInput &input : {job.document, job.styleSheet}) {
        const QString folder = QFileInfo(QFileInfo(input.path).path()).canonicalFilePath();
        if (!folder.isEmpty())
            folders_.append(folder);
        given_.insert(dom::addressOfPath(input.path), input.utf8);
    }
}

const QByteArray *TransformAccess::given(const QByteArray &address) const
{
    const auto found = given_.constFind(address);
    return found == given_.constEnd() ? nullptr : &*found;
}

Located TransformAccess::locate(const char *address, const char *publicId, Wanted wanted)
{
    const QFileInfo direct(address ? localPath(address) : QString());
    const QString path = direct.isFile() ? direct.canonicalFilePath() : QString();
    if (!path.isEmpty() && (wanted == Wanted::StyleSheet || isWithin(path)))
        return {Reach::Readable, path};
    const QString elsewhere = catalogued(address, publicId);
    if (!elsewhere.isEmpty())
        return {Reach::Readable, elsewhere};
    if (path.isEmpty())
        return {direct.filePath().isEmpty() ? Reach::NotLocal : Reach::NotThere, {}};
    if (!refused_.contains(path))
        refused_.append(path);
    return {Reach::Elsewhere, path};
}

bool TransformAccess::isWithin(const QString &path) const
{
    const auto holds = [&path](const QString &folder) {
        return path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
    };
    return allowed_.contains(path) || std::any_of(folders_.begin(), folders_.end(), holds);
}

// A document type in the catalogs is made of several files, so those beside it and below may be read as well.
QString TransformAccess::catalogued(const char *address, const char *publicId)
{
    if (address && climbs(address))
        return {};
    using Text = std::unique_ptr<xmlChar, void (*)(void *)>;
    Text found(xmlCatalogResolve(chars(publicId), chars(address)), xmlFree);
    if (!found && address)
        found.reset(xmlCatalogResolveURI(chars(address)));
    if (!found)
        return {};
    const QFileInfo file(localPath(reinterpret_cast<const char *>(found.get())));
    if (!file.isFile())
        return {};
    folders_.append(QFileInfo(file.canonicalFilePath()).path());
    return file.canonicalFilePath();
}

} // namespace tidy
