#include "tidy/launcher/read_words.h"

#include <QHash>
#include <QStringList>

#include <algorithm>

namespace launcher {

namespace {

constexpr qsizetype mostNamed = 3;
constexpr qsizetype longestNamed = 40;
constexpr char32_t wordMark = 0xFFFC;

using Counts = QHash<QString, int>;

bool isCharacter(char32_t c) { return c >= 0x20 && c != 0xFFFD && (c < 0x7F || c > 0x9F); }

bool parts(const Gap &gap)
{
    const auto isBlock = [](const Mark &mark) { return mark.block; };
    const auto isAny = [](const Blanks &blanks) { return blanks.size() > 0; };
    return std::any_of(gap.marks.begin(), gap.marks.end(), isBlock)
        || std::any_of(gap.blanks.begin(), gap.blanks.end(), isAny);
}

QStringList wordsOf(const MarkedText &text)
{
    QStringList words;
    QString word;
    auto gap = text.gaps.begin();
    const auto end = [&] {
        if (!word.isEmpty())
            words << word;
        word.clear();
    };
    for (size_t at = 0; at < text.characters.size(); ++at) {
        if (gap != text.gaps.end() && gap->before == qsizetype(at) && parts(*gap++))
            end();
        const char32_t c = text.characters[at];
        if (c == wordMark)
            end();
        else if (isCharacter(c))
            word += QString::fromUcs4(&c, 1);
    }
    end();
    return words;
}

QString named(QStringList words)
{
    const bool more = words.size() > mostNamed;
    words = words.first(std::min(words.size(), mostNamed));
    for (QString &word : words)
        word = QStringLiteral("\"%1%2\"")
                   .arg(word.first(std::min(word.size(), longestNamed)),
                        word.size() > longestNamed ? QStringLiteral("\u2026") : QString());
    return words.join(QStringLiteral(", ")) + (more ? QStringLiteral(" and more") : QString());
}

} // namespace

QString differenceOfWords(const MarkedText &before, const MarkedText &after)
{
    const QStringList had = wordsOf(before);
    const QStringList has = wordsOf(after);
    Counts left;
    for (const QString &word : had)
        ++left[word];
    QStringList added;
    for (const QString &word : has) {
        if (--left[word] < 0)
            added << word;
    }
    QStringList gone;
    for (const QString &word : had) {
        if (left[word]-- > 0)
            gone << word;
    }
    if (gone.isEmpty() && added.isEmpty())
        return {};
    if (added.isEmpty())
        return QStringLiteral("%1 would be gone").arg(named(gone));
    if (gone.isEmpty())
        return QStringLiteral("%1 would be new").arg(named(added));
    return QStringLiteral("%1 would become %2").arg(named(gone), named(added));
}

QString firstDifference(const std::u32string &before, const std::u32string &after)
{
    const auto [one, other] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    if (one == before.end() && other == after.end())
        return {};
    const auto from = [](auto at, auto end) {
        const std::u32string rest(at, at + std::min<qptrdiff>(end - at, longestNamed / 2));
        return rest.empty() ? QStringLiteral("the end")
                            : QStringLiteral("\"%1\"").arg(QString::fromStdU32String(rest));
    };
    return QStringLiteral("%1 would become %2").arg(from(one, before.end()), from(other, after.end()));
}

} // namespace launcher
