#include "editor/count_all.h"

#include <QtTest>

using namespace editor;

class TestCountAll : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void counts_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("lines");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const QByteArray &text, int lines, const char *message) {
            QTest::newRow(name) << text << lines << QString::fromLatin1(message);
        };
        row("empty", "", 1, "Words: 0\nCharacters:0\nLines: 1");
        row("two spaces", "a  b", 1, "Words: 3\nCharacters:4\nLines: 1");
        row("line break", "a\nb", 2, "Words: 1\nCharacters:3\nLines: 2");
        row("tab, CR LF", "a\tb\r\n", 2, "Words: 1\nCharacters:5\nLines: 2");
        row("one space", " ", 1, "Words: 2\nCharacters:1\nLines: 1");
        row("beyond ASCII", "\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80", 1, "Words: 3\nCharacters:5\nLines: 1");
        row("largest", QByteArray(32767, 'a'), 32767, "Words: 1\nCharacters:32767\nLines: 32767");
        row("one more", QByteArray(32768, 'a'), 32768, "Words: 1\nCharacters:0\nLines: 0");
        row("far more", QByteArray(40000, ' '), 1, "Words: 40001\nCharacters:0\nLines: 1");
    }
    void counts()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, lines);
        QTEST(countMessage(countAll(text, lines)), "message");
    }

    void trueCountsAreToldBeyondTheLimit()
    {
        QLocale::setDefault(QLocale(QLocale::English));
        QCOMPARE(countLine(countAll(QByteArray(40000, ' '), 50000)),
                 QStringLiteral("40,001 words, 40,000 characters, 50,000 lines"));
    }
};

QTEST_GUILESS_MAIN(TestCountAll)
#include "test_count_all.moc"
