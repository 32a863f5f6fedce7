#include "editor/quick_tags.h"

#include <algorithm>

namespace editor {

namespace {

bool holdsAll(QLatin1StringView entry, const QStringList &words)
{
    return std::all_of(words.begin(), words.end(),
                       [entry](const QString &word) { return entry.contains(word, Qt::CaseInsensitive); });
}

bool beginsLike(QLatin1StringView entry, const QString &search)
{
    if (entry.startsWith(search, Qt::CaseInsensitive))
        return true;
    const auto letter = std::find_if(entry.begin(), entry.end(), [](char c) { return QChar::isLetter(c); });
    return entry.sliced(letter - entry.begin()).startsWith(search, Qt::CaseInsensitive);
}

} // namespace

TagElement elementOf(QLatin1StringView entry)
{
    qsizetype space = entry.indexOf(u' ');
    const qsizetype nameEnd = space < 0 ? entry.indexOf(u'>') : space;
    if (nameEnd < 1)
        return {};
    TagElement element{QString(entry.sliced(1, nameEnd - 1)), {}};
    while (space >= 0 && !entry.sliced(space + 1).startsWith(u'/')) {
        const qsizetype equals = entry.indexOf(u'=', space + 1);
        if (equals < 0)
            break;
        element.attributes.append(QString(entry.sliced(space + 1, equals - space - 1)));
        space = entry.indexOf(u' ', space + 1);
    }
    return element;
}

QByteArray wrapped(QLatin1StringView entry, const QByteArray &text)
{
    const QByteArrayView snippet(entry.data(), entry.size());
    const qsizetype head = snippet.indexOf('>') + 1;
    return snippet.first(head).toByteArray() + text + snippet.sliced(head).toByteArray();
}

QList<int> tagsMatching(const QString &search, int first)
{
    const QStringList words = search.split(u' ', Qt::SkipEmptyParts);
    QList<int> found;
    for (int index = first; index < quickTagCount; ++index) {
        if (holdsAll(quickTag(index), words))
            found.append(index);
    }
    return found;
}

int likeliestTag(const QList<int> &found, const QString &search)
{
    if (found.isEmpty())
        return -1;
    const QString start = search.trimmed();
    const auto likely = std::find_if(found.begin(), found.end(),
                                     [&](int index) { return beginsLike(quickTag(index), start); });
    return likely == found.end() ? found.first() : *likely;
}

} // namespace editor
