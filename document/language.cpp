#include "document/language.h"

#include "platform/files/file_helpers.h"

#include <algorithm>
#include <initializer_list>

namespace document {

using control::Language;

static bool isOneOf(const QString &ending, std::initializer_list<const char *> endings)
{
    return std::any_of(endings.begin(), endings.end(), [&](const char *known) {
        return ending.compare(QLatin1String(known), Qt::CaseInsensitive) == 0;
    });
}

Language languageOf(const QString &path, const QByteArray &text)
{
    const QString ending = files::extensionOf(path);
    const QByteArray start = text.left(4096).trimmed();
    if (isOneOf(ending, {"htm", "html"}) && !start.startsWith("<?xml"))
        return Language::Html;
    if (isOneOf(ending, {"xml", "xsd", "xsl", "xslt", "fo"}) || start.startsWith('<'))
        return Language::Xml;
    return Language::Plain;
}

} // namespace document
