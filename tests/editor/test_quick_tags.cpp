#include "editor/quick_tags.h"

#include <QRegularExpression>
#include <QSet>
#include <QtTest>

using namespace editor;
using namespace Qt::StringLiterals;

namespace {

const QString legalName = QStringLiteral("^[A-Za-z_][A-Za-z0-9_.-]*(:[A-Za-z_][A-Za-z0-9_.-]*)?$");

QString described(const TagElement &element)
{
    return (QStringList{element.name} + element.attributes).join(u' ');
}

} // namespace

class TestQuickTags : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasItsEntries_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("entry");
        const auto row = [](int index, const char *entry) {
            QTest::addRow("%d", index) << index << QString::fromLatin1(entry);
        };
        row(0, "<!-- comments -->");
        row(3, "<![INCLUDE[\\nmarkup declarations\\n]]>");
        row(34,
            "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Frameset//EN\" "
            "\"http://www.w3.org/TR/html4/frameset.dtd\">");
        row(36,
            "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01//EN\" \"http://www.w3.org/TR/html4/strict.dtd\">");
        row(40, "<!DOCTYPE root_element [\\ninsert DTD here\\n]>");
        row(65, "<?xml version=\"\" encoding=\"\" standalone=\"\" ?>");
        row(66, "<a></a>");
        row(104, "<colgroup span=\"1\"></colgroup>");
        row(145, "<html xmlns=\"http://www.w3.org/1999/xhtml\" xml:lang=\"en\" lang=\"en\"></html>");
        row(265, "<xsl:element name=\"\"><xsl:element>");
        row(301, "<xsl:with-param name=\"\"></xsl:with-param>");
    }
    void hasItsEntries()
    {
        QFETCH(int, index);
        QTEST(QString(quickTag(index)), "entry");
    }

    void isSplitIntoDeclarationsAndElements()
    {
        const QRegularExpression element(QStringLiteral("^<[A-Za-z]"));
        QSet<QString> all;
        int elements = 0;
        for (int index = 0; index < quickTagCount; ++index) {
            const QString entry = quickTag(index);
            all.insert(entry);
            const bool isElement = element.match(entry).hasMatch();
            QCOMPARE(isElement, index >= firstElementTag);
            elements += isElement ? 1 : 0;
        }
        QCOMPARE(elements, 236);
        QCOMPARE(all.size(), 302);
    }

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
                tag += u' ' + attribute + QStringLiteral("=\"\"");
            }
            QString expected = quickTag(index);
            expected.replace(QRegularExpression(QStringLiteral("\"[^\"]*\"")), QStringLiteral("\"\""));
            QVERIFY2(expected.startsWith(tag + u'>') || expected.startsWith(tag + QStringLiteral(" />")),
                     qPrintable(expected));
        }
    }

    void makesAnElement_data()
    {
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<QString>("element");
        const auto row = [](const char *entry, const char *element) {
            QTest::newRow(*entry == '\0' ? "empty" : entry)
                << QByteArray(entry) << QString::fromLatin1(element);
        };
        row("<p></p>", "p");
        row("<BR>", "BR");
        row("<br />", "br");
        row("<area shape=\"\" alt=\"\" />", "area shape alt");
        row("<colgroup span=\"1\"></colgroup>", "colgroup span");
        row("<xsl:element name=\"\"><xsl:element>", "xsl:element name");
        row("<html xmlns=\"urn:x\" xml:lang=\"en\" lang=\"en\"></html>", "html xmlns xml:lang lang");
        row("", "");
        row("<", "");
        row("<a ", "a");
        row("<a b", "a");
    }
    void makesAnElement()
    {
        QFETCH(QByteArray, entry);
        QTEST(described(elementOf(QLatin1StringView(entry))), "element");
    }

    void goesAroundText_data()
    {
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("whole");
        const auto row = [](const char *entry, const char *text, const char *whole) {
            QTest::newRow(whole) << QByteArray(entry) << QByteArray(text) << QByteArray(whole);
        };
        row("<p></p>", "abc", "<p>abc</p>");
        row("<p></p>", "", "<p></p>");
        row("<p></p>", "a>b", "<p>a>b</p>");
        row("<p></p>", "\xc3\xa9", "<p>\xc3\xa9</p>");
        row("<br />", "abc", "<br />abc");
        row("<!-- comments -->", "abc", "<!-- comments -->abc");
        row("<![IGNORE[\\nx\\n]]>", "abc", "<![IGNORE[\\nx\\n]]>abc");
        row("<xsl:element name=\"\"><xsl:element>", "abc", "<xsl:element name=\"\">abc<xsl:element>");
    }
    void goesAroundText()
    {
        QFETCH(QByteArray, entry);
        QFETCH(QByteArray, text);
        QTEST(wrapped(QLatin1StringView(entry), text), "whole");
    }

    void isFound_data()
    {
        QTest::addColumn<QString>("search");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("likeliest");
        QTest::newRow("all") << QString() << 0 << 302 << 0;
        QTest::newRow("elements") << QStringLiteral("  ") << 66 << 236 << 66;
        QTest::newRow("any case") << QStringLiteral("Br") << 66 << 3 << 93;
        QTest::newRow("begins the name") << QStringLiteral("td") << 66 << 1 << 233;
        QTest::newRow("with its bracket") << QStringLiteral("<td") << 66 << 1 << 233;
        QTest::newRow("declaration") << QStringLiteral("notation") << 0 << 11 << 61;
        QTest::newRow("words") << QStringLiteral("xsl:sort lang") << 0 << 1 << 285;
        QTest::newRow("nothing") << QStringLiteral("zzz") << 0 << 0 << -1;
        QTest::newRow("not in the tree") << QStringLiteral("<!DOCTYPE") << 66 << 0 << -1;
    }
    void isFound()
    {
        QFETCH(QString, search);
        QFETCH(int, first);
        const QList<int> found = tagsMatching(search, first);
        QTEST(int(found.size()), "count");
        QTEST(likeliestTag(found, search), "likeliest");
        QVERIFY(std::is_sorted(found.begin(), found.end()));
    }
};

QTEST_APPLESS_MAIN(TestQuickTags)
#include "test_quick_tags.moc"
