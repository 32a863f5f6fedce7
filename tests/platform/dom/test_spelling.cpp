// Values that change in places: what they mean then, and what keeps its spelling.
#include "platform/dom/characters.h"
#include "platform/dom/entity_references.h"
#include "platform/dom/spelling.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

using namespace dom;

namespace {

const Entities entities{{"co", "Company &e;"},
                        {"e", "&#38;e;"},
                        {"m", "<m/>"},
                        {"loop", "&loop;"},
                        {"big", QByteArray(200, 'x')}};

// What may stand in each place, markup and meaning apart.
const std::initializer_list<QByteArray> pieces[] = {
    {"a", "&#160;", "&gt;", "&#x20AC;", "\xF0\x9F\x98\x80", "\r\n", "\n", "\r", "]", "]]", ">", "&amp;",
     "&#13;", "\uFEFF", "&#xFEFF;"},
    {"a", "\xC3\xA4", "\r\n", "\n", "\r", "]", "&", "<", "&amp;"},
    {"a", "&#10;", "&quot;", "'", " ", "\r\n", "\t", "&co;", "&amp;", "co;", "&gone;", "&#9;", "amp;", "&e;",
     "\uFEFF"},
};

QString meaning(const QByteArray &raw, Place place)
{
    return place == Place::Text    ? decodeText(raw)
        : place == Place::Verbatim ? decodeVerbatim(raw)
                                   : shownAttribute(raw, entities);
}

QByteArray changed(const QByteArray &raw, const QString &wanted, Place place)
{
    if (place == Place::Attribute)
        return respelledAttribute(raw, wanted, entities, '"');
    return respelled(raw, Value(wanted), {.place = place, .lineEnd = "\r\n"});
}

class Maker
{
public:
    explicit Maker(quint32 seed) : random_(seed) { }

    int below(int bound) { return int(random_.bounded(bound)); }

    QByteArray value(Place place, int most)
    {
        const auto &from = pieces[size_t(place)];
        QByteArray out;
        for (int count = below(most); count > 0; --count)
            out += from.begin()[below(int(from.size()))];
        return place == Place::Text ? out.replace("]]>", "]]&gt;") : out;
    }

private:
    QRandomGenerator random_;
};

} // namespace

class TestSpelling : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void meansWhatIsWanted()
    {
        Maker maker(1);
        for (int round = 0; round < 30'000; ++round) {
            const auto place = Place(round % 3);
            const QByteArray raw = maker.value(place, 12);
            const QString before = meaning(raw, place);
            QCOMPARE(changed(raw, before, place), raw);
            QString wanted = meaning(maker.value(place, 12), place);
            if (maker.below(3) != 0) { // an edit of it rather than another value
                const int at = maker.below(int(before.size()) + 1);
                wanted = before.left(at) + wanted.left(3) + before.mid(at + maker.below(3));
            }
            wanted = QString::fromUtf8(wanted.toUtf8()); // no half of a character
            const QByteArray after = changed(raw, wanted, place);
            const QString meant = meaning(after, place);
            if (place == Place::Attribute) // a reference that came by chance is shown as one more or less
                QCOMPARE(valueShownAs(meant, entitiesOfAttribute(entities, raw)).items,
                         valueShownAs(wanted, entitiesOfAttribute(entities, raw)).items);
            else
                QCOMPARE(meant, wanted.contains(u'\r') ? meant : wanted);
            QVERIFY(place == Place::Verbatim || !after.contains("]]>"));
        }
    }

    // Many words change, any number of them: each of the others keeps its bytes.
    void keepsWhatIsBetween()
    {
        Maker maker(2);
        for (const int words : {5, 60, 3000}) {
            QByteArray raw;
            QByteArray expected;
            QString wanted;
            for (int word = 0; word < words; ++word) {
                const QByteArray name = QByteArray::number(word) + '_';
                const QByteArray written = "&#160;" + name + "&gt;&#8212;\r\n";
                raw += written;
                const bool changes = maker.below(4) == 0;
                const QByteArray other = changes ? "new" + QByteArray(maker.below(40), '!') : written;
                expected += other;
                wanted += changes ? QString::fromLatin1(other) : decodeText(written);
            }
            const QByteArray after = changed(raw, wanted, Place::Text);
            QCOMPARE(decodeText(after), wanted);
            qsizetype kept = 0;
            for (qsizetype at = after.indexOf("&#160;"); at >= 0; at = after.indexOf("&#160;", at + 1))
                ++kept;
            QCOMPARE(kept, expected.count("&#160;"));
            QCOMPARE(after.count("&#8212;\r\n"), expected.count("&#8212;\r\n"));
        }
    }

    // No text is taken for a reference, and no reference for a text.
    void references()
    {
        const std::tuple<QByteArray, const char *> rows[] = {
            {"&co; Ltd", "&co; Ltd"},
            {"&amp;co; Ltd", "&amp;co; Ltd"},
            {"&amp;amp;co;", "&amp;amp;co;"},
            {"R&amp;D &amp;lt;", "R&D &lt;"},
            {"&amp;m;&amp;loop;", "&m;&loop;"},
            {"&amp;&co;&amp;", "&&co;&"},
            {"&gone;&amp;gone;", "&gone;&amp;gone;"},
            {"&amp;gone;", "&gone;"},
            {"&big;&#38;big;", "&big;&amp;big;"},
        };
        for (const auto &[raw, shown] : rows) {
            QCOMPARE(shownAttribute(raw, entities), QLatin1String(shown));
            QCOMPARE(respelledAttribute(raw, QLatin1String(shown), entities, '"'), raw);
        }
        // Typed anew, only what is known and fits is a reference.
        QCOMPARE(respelledAttribute({}, QStringLiteral("&co;&gone;&m;&loop;&amp;co;&"), entities, '"'),
                 QByteArray("&co;&amp;gone;&amp;m;&amp;loop;&amp;co;&amp;"));
    }
};

QTEST_APPLESS_MAIN(TestSpelling)
#include "test_spelling.moc"
