#include "app/word_cycle.h"

#include <QStringList>

namespace app {

QString nextWord(const QString &word)
{
    static const QStringList words{QStringLiteral("XML"), QStringLiteral("XSL"), QStringLiteral("XSD"),
                                   QStringLiteral("XSLT"), QStringLiteral("FO")};
    const qsizetype at = words.indexOf(word);
    return at < 0 ? word : words[(at + 1) % words.size()];
}

} // namespace app
