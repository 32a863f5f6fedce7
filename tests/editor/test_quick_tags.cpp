#include "editor/quick_tags.h"

#include <QRegularExpression>
#include <QtTest>

using namespace editor;
using namespace Qt::StringLiterals;

namespace {

const QString legalName = u"^[A-Za-z_][A-Za-z0-9_.-]*(:[A-Za-z_][A-Za-z0-9_.-]*)?$"_s;

QString described(const TagElement &element)
{
    return (QStringList{element.name} + element.attributes).join(u' ');
}

} // namespace

class TestQuickTags : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // What the parts come to, put together again, is the entry's first tag.
    void everyElementHasLegalNames()
    {
        const QRegularExpression legal(legalName);
        for (int index = firstElementTag; index < quickTagCount; ++index) {
            const TagElement element = elementOf(quickTag(index));
            QVERIFY2(legal.match(element.name).hasMatch(), qPrintable(element.name));
            QString tag = u'<' + element.name;
            for (const QString &attribute : element.attributes) {
                QVERIFY2(legal.match(attribute).hasMatch(), qPrintable(attribute));
                tag += u' ' + attribute + u"=\"\""_s;
            }
            QString expected = quickTag(index);
            expected.replace(QRegularExpression(u"\"[^\"]*\""_s), u"\"\""_s);
            QVERIFY2(expected.startsWith(tag + u'>') || expected.startsWith(tag + u" />"_s),
                     qPrintable(expected));
        }
    }

    void makesAnElement()
    {
        const std::pair<const char *, const char *> rows[] = {
            {"<BR>", "BR"},
            {"<br />", "br"},
            {"", ""},
            {"<", ""},
            {"<a ", "a"},
            {"<a b", "a"},
            {"<area shape=\"\" alt=\"\" />", "area shape alt"},
            {"<xsl:element name=\"\"><xsl:element>", "xsl:element name"},
            {"<html xmlns=\"urn:x\" xml:lang=\"en\" lang=\"en\"></html>", "html xmlns xml:lang lang"},
        };
        for (const auto &[entry, element] : rows)
            QCOMPARE(described(elementOf(QLatin1StringView(entry))), QLatin1String(element));
    }

    void isFound()
    {
        const std::tuple<const char *, int, int, int> rows[] = {
            {"", 0, 302, 0}, // all
            {"  ", 66, 236, 66}, {"Br", 66, 3, 93},        {"td", 66, 1, 233}, // begins the name
            {"<td", 66, 1, 233}, {"notation", 0, 11, 61},  {"xsl:sort lang", 0, 1, 285},
            {"zzz", 0, 0, -1},   {"<!DOCTYPE", 66, 0, -1}, // not in the tree
        };
        for (const auto &[text, first, count, likeliest] : rows) {
            const QString search = QLatin1String(text);
            const QList<int> found = tagsMatching(search, first);
            QVERIFY2(found.size() == count && likeliestTag(found, search) == likeliest, text);
            QVERIFY(std::is_sorted(found.begin(), found.end()));
        }
    }
};

QTEST_APPLESS_MAIN(TestQuickTags)
#include "test_quick_tags.moc"
