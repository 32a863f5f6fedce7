#include "platform/browser/media_type.h"

#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cctype>

namespace browser {
namespace {

struct Kind
{
    const char *ending;
    const char *type;
};

// Only what can do no harm in a page. Formatting objects, schemas and style sheets are shown as markup.
constexpr std::array kKinds = {
    Kind{"xml", "text/xml"},
    Kind{"xsd", "text/xml"},
    Kind{"xsl", "text/xml"},
    Kind{"xslt", "text/xml"},
    Kind{"fo", "text/xml"},
    Kind{"rng", "text/xml"},
    Kind{"sch", "text/xml"},
    Kind{"wsdl", "text/xml"},
    Kind{"rdf", "text/xml"},
    Kind{"rss", "text/xml"},
    Kind{"atom", "text/xml"},
    Kind{"htm", "text/html"},
    Kind{"html", "text/html"},
    Kind{"xhtml", "application/xhtml+xml"},
    Kind{"xht", "application/xhtml+xml"},
    Kind{"mml", "text/mathml"},
    Kind{"css", "text/css"},
    Kind{"js", "text/javascript"},
    Kind{"mjs", "text/javascript"},
    Kind{"dtd", "text/plain"}, // under its own name it would be downloaded
    Kind{"ent", "text/plain"},
    Kind{"mod", "text/plain"},
    Kind{"svg", "image/svg+xml"},
    Kind{"png", "image/png"},
    Kind{"jpg", "image/jpeg"},
    Kind{"jpeg", "image/jpeg"},
    Kind{"gif", "image/gif"},
    Kind{"webp", "image/webp"},
    Kind{"avif", "image/avif"},
    Kind{"bmp", "image/bmp"},
    Kind{"ico", "image/x-icon"},
    Kind{"ttf", "font/ttf"},
    Kind{"otf", "font/otf"},
    Kind{"woff", "font/woff"},
    Kind{"woff2", "font/woff2"},
};

QByteArray typeOfEnding(const QString &ending)
{
    const auto found = std::find_if(kKinds.begin(), kKinds.end(), [&](const Kind &kind) {
        return ending.compare(QLatin1String(kind.ending), Qt::CaseInsensitive) == 0;
    });
    return found == kKinds.end() ? QByteArray() : QByteArray(found->type);
}

// The longest known ending counts: "woff20" is a copy of "woff2".
QByteArray typeOfName(const QString &path)
{
    QString ending = QFileInfo(path).suffix();
    QByteArray type = typeOfEnding(ending);
    while (type.isEmpty() && !ending.isEmpty() && ending.back().isDigit()) {
        ending.chop(1);
        type = typeOfEnding(ending);
    }
    return type;
}

// The first characters of the text, whichever of the usual encodings it is in, without leading blanks.
QByteArray beginning(const QByteArray &content)
{
    QByteArray head = content.left(1024);
    if (head.startsWith("\xEF\xBB\xBF"))
        head.remove(0, 3);
    if (head.startsWith("\xFF\xFE") || head.startsWith("\xFE\xFF"))
        head.remove(0, 2);
    head.replace('\0', QByteArray());
    return head.trimmed().left(32).toLower();
}

QByteArray typeOfContent(const QByteArray &content)
{
    const QByteArray head = beginning(content);
    if (head.startsWith("<!doctype html") || head.startsWith("<html"))
        return QByteArrayLiteral("text/html");
    const bool markup = head.size() > 1 && head[0] == '<'
        && (head[1] == '?' || head[1] == '!' || head[1] == '_'
            || std::isalpha(static_cast<unsigned char>(head[1])));
    return markup ? QByteArrayLiteral("text/xml") : QByteArray();
}

} // namespace

QByteArray mediaType(const QString &path, const QByteArray &content, Wanted wanted)
{
    QByteArray type = typeOfName(path);
    if (type.isEmpty())
        type = typeOfContent(content);
    if (type.isEmpty() && wanted == Wanted::AsDocument)
        type = QByteArrayLiteral("text/plain");
    return type;
}

} // namespace browser
