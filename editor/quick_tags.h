// The catalogue of ready-made markup, and what becomes of an entry in the tree and in the text.
#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QList>
#include <QString>
#include <QStringList>

namespace editor {

constexpr int quickTagCount = 302;
// Before it stand declarations and the like; from it on everything is an element.
constexpr int firstElementTag = 66;

// An entry of the catalogue, ASCII. index is at least 0 and less than quickTagCount.
QLatin1StringView quickTag(int index);

// What an entry makes in the tree. The attributes' values do not count: all begin empty.
struct TagElement
{
    QString name; // as written, legal or not; empty when the entry has none
    QStringList attributes; // in the entry's order
};

TagElement elementOf(QLatin1StringView entry);

// The entry put around a text: its first tag before, the rest behind.
QByteArray wrapped(QLatin1StringView entry, const QByteArray &text);

// The entries from first on that hold every word of the search, whatever the case, in the catalogue's order.
// An empty search finds all.
QList<int> tagsMatching(const QString &search, int first);

// Which of the found entries is most likely meant: the first whose name begins as the search does, else the
// first; -1 when there is none.
int likeliestTag(const QList<int> &found, const QString &search);

} // namespace editor
