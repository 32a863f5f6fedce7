#include "platform/browser/preview_detours.h"

#include "platform/browser/preview_url.h"

#include <QDir>
#include <QFileInfo>

namespace browser {
namespace {

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = char(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// A "%" that begins no escape stands for itself.
QByteArray unescapedOnce(const QByteArray &text)
{
    QByteArray plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = high < 0 ? -1 : hexDigit(text[i + 2]);
        plain += low < 0 ? text[i] : char(high * 16 + low);
        i += low < 0 ? 0 : 2;
    }
    return plain;
}

// Words without any escape. On their way through the engine some signs are escaped, others not, and a stray
// "%" makes it escape all of them once more; so one form stands for all that may come of a path.
QString unescaped(const QString &words)
{
    QByteArray text = words.toUtf8();
    for (QByteArray plain = unescapedOnce(text); plain != text; plain = unescapedOnce(text))
        text = plain;
    return QString::fromUtf8(text);
}

// All of a URL behind its host: the path as somebody wrote it who did not know of URLs.
QString wordsOf(const QUrl &url)
{
    QString words = url.path(QUrl::FullyDecoded);
    if (url.hasQuery())
        words += u'?' + url.query(QUrl::FullyDecoded);
    if (url.hasFragment())
        words += u'#' + url.fragment(QUrl::FullyDecoded);
    return words;
}

QString keyOf(const QString &written)
{
    return unescaped(written.startsWith(u'/') ? written : u'/' + written);
}

QString folderOf(const QString &path) { return QFileInfo(path).path(); }

} // namespace

void PreviewDetours::setAlias(const QString &written, const QString &path)
{
    aliases_.insert(keyOf(written), cleanPreviewPath(path));
}

void PreviewDetours::dropAlias(const QString &written) { aliases_.remove(keyOf(written)); }

void PreviewDetours::setOriginal(const QString &copy, const QString &original)
{
    originals_.insert(cleanPreviewPath(copy), original.isEmpty() ? original : cleanPreviewPath(original));
}

void PreviewDetours::dropOriginal(const QString &copy) { originals_.remove(cleanPreviewPath(copy)); }

QString PreviewDetours::aliased(const QUrl &asked) const
{
    return aliases_.isEmpty() ? QString() : aliases_.value(keyOf(wordsOf(asked)));
}

std::optional<QString> PreviewDetours::originalOf(const QString &path) const
{
    const auto found = originals_.constFind(path);
    return found == originals_.constEnd() ? std::nullopt : std::optional(*found);
}

QString PreviewDetours::besideOriginal(const QString &path) const
{
    for (auto it = originals_.constBegin(); it != originals_.constEnd(); ++it) {
        const QString way = QDir(folderOf(it.key())).relativeFilePath(path);
        QString beside = cleanPreviewPath(folderOf(it.value()) + u'/' + way);
        if (!it.value().isEmpty() && QFileInfo(beside).isFile())
            return beside;
    }
    return {};
}

} // namespace browser
