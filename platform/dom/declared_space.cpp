#include "platform/dom/declared_space.h"

#include <QRegularExpression>

namespace dom {

QHash<QByteArray, bool> declaredSpaces(QByteArrayView documentType)
{
    QHash<QByteArray, bool> spaces;
    if (documentType.indexOf("xml:space") < 0)
        return spaces;
    static const QRegularExpression comment(QStringLiteral("<!--.*?-->"),
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression list(
        QStringLiteral(R"re(<!ATTLIST\s+([^\s>]+)((?:[^>"']|"[^"]*"|'[^']*')*)>)re"));
    static const QRegularExpression space(
        QStringLiteral(R"re(\sxml:space\s+\([^)]*\)\s*(?:#FIXED\s+)?["'](preserve|default)["'])re"));
    const QString text = QString::fromUtf8(documentType).remove(comment);
    for (auto lists = list.globalMatch(text); lists.hasNext();) {
        const QRegularExpressionMatch found = lists.next();
        const QByteArray element = found.captured(1).toUtf8();
        const QRegularExpressionMatch declared = space.match(found.captured(2));
        if (declared.hasMatch() && !spaces.contains(element)) // the first declaration holds
            spaces.insert(element, declared.captured(1) == QStringLiteral("preserve"));
    }
    return spaces;
}

bool isPreformatted(QByteArrayView elementName)
{
    const QByteArrayView name = elementName.sliced(elementName.lastIndexOf(':') + 1);
    return name == QByteArrayView("pre") || name == QByteArrayView("textarea");
}

} // namespace dom
