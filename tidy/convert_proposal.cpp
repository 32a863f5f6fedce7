#include "tidy/convert_proposal.h"

#include "platform/files/file_helpers.h"

#include <QRegularExpression>
#include <QUrl>

namespace tidy {

namespace {

constexpr qsizetype longestStart = 64 * 1024; // bytes looked at; licences stand before root elements

// The text up to the end of its first tag, without its comments.
QString startOf(const QByteArray &text)
{
    static const QRegularExpression comments(QStringLiteral("<!--.*?(-->|$)"),
                                             QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression firstTag(QStringLiteral("<[A-Za-z_:][^>]*>?"));
    QString start = QString::fromUtf8(text.left(longestStart)).remove(comments);
    const QRegularExpressionMatch tag = firstTag.match(start);
    return tag.hasMatch() ? start.left(tag.capturedEnd()) : start;
}

QString attribute(const QString &instruction, const char *name)
{
    const QRegularExpression pattern(
        QStringLiteral("\\s%1\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)')").arg(QLatin1StringView(name)));
    const QRegularExpressionMatch found = pattern.match(instruction);
    QString value = found.captured(1) + found.captured(2);
    return value.replace(QLatin1StringView("&amp;"), QLatin1StringView("&"));
}

bool isXsl(const QString &instruction)
{
    static const QRegularExpression xsl(QStringLiteral("^(text/xsl|text/xml|application/(xslt?\\+)?xml)$"));
    return xsl.match(attribute(instruction, "type").toLower()).hasMatch();
}

} // namespace

InputKind kindOfText(const QByteArray &text)
{
    static const QRegularExpression page(QStringLiteral("<!doctype\\s+html\\b|<(html|head|body)[\\s/>]"),
                                         QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression xhtml(
        QStringLiteral("DTD XHTML|xmlns\\s*=\\s*[\"']http://www\\.w3\\.org/1999/xhtml[\"']"));
    const QString start = startOf(text);
    if (xhtml.match(start).hasMatch())
        return InputKind::Xhtml;
    const bool declared = start.trimmed().startsWith(QLatin1StringView("<?xml"));
    return !declared && page.match(start).hasMatch() ? InputKind::Html : InputKind::Xml;
}

QString namedStyleSheet(const QByteArray &text, const QString &document)
{
    static const QRegularExpression instructions(QStringLiteral("<\\?xml[-:]stylesheet(\\s.*?)\\?>"),
                                                 QRegularExpression::DotMatchesEverythingOption);
    const QString start = startOf(text);
    for (auto each = instructions.globalMatch(start); each.hasNext();) {
        const QString instruction = each.next().captured(1);
        const QUrl target = QUrl::fromLocalFile(document).resolved(QUrl(attribute(instruction, "href")));
        if (isXsl(instruction) && target.isLocalFile() && files::fileExists(target.toLocalFile()))
            return target.toLocalFile();
    }
    return {};
}

} // namespace tidy
