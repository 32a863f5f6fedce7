#include "platform/browser/preview_reach.h"

#include <QFileInfo>
#include <algorithm>
#include <array>

namespace browser {

bool isReadable(QWebEngineUrlRequestInfo::ResourceType type)
{
    using Info = QWebEngineUrlRequestInfo;
    constexpr std::array kLinked = {Info::ResourceTypeMainFrame,
                                    Info::ResourceTypeStylesheet,
                                    Info::ResourceTypeScript,
                                    Info::ResourceTypeImage,
                                    Info::ResourceTypeFontResource,
                                    Info::ResourceTypeMedia,
                                    Info::ResourceTypeFavicon,
                                    Info::ResourceTypeCspReport,
                                    Info::ResourceTypeNavigationPreloadMainFrame};
    return std::find(kLinked.begin(), kLinked.end(), type) == kLinked.end();
}

bool liesWithin(const QString &folder, const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return true;
    const QString root = QFileInfo(folder).canonicalFilePath();
    return !root.isEmpty() && file.canonicalFilePath().startsWith(root.endsWith(u'/') ? root : root + u'/');
}

// Also in UTF-16.
bool looksLikeStyleSheet(const QByteArray &xml)
{
    return QByteArray(xml).replace('\0', QByteArray()).contains("http://www.w3.org/1999/XSL/Transform");
}

} // namespace browser
