#include "editor/count_all.h"

#include <QtTest>

using namespace editor;
using namespace Qt::StringLiterals;

class TestCountAll : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void counts()
    {
        const std::tuple<QByteArray, int, const char *> rows[] = {
            {"", 1, "Words: 0\nCharacters:0\nLines: 1"},
            {"a  b", 1, "Words: 3\nCharacters:4\nLines: 1"},
            {"a\nb", 2, "Words: 1\nCharacters:3\nLines: 2"},
            {"a\tb\r\n", 2, "Words: 1\nCharacters:5\nLines: 2"},
            {" ", 1, "Words: 2\nCharacters:1\nLines: 1"},
            {"\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80", 1, "Words: 3\nCharacters:5\nLines: 1"},
            {QByteArray(32767, 'a'), 32767, "Words: 1\nCharacters:32767\nLines: 32767"},
            {QByteArray(32768, 'a'), 32768, "Words: 1\nCharacters:0\nLines: 0"},
            {QByteArray(40000, ' '), 1, "Words: 40001\nCharacters:0\nLines: 1"},
        };
        for (const auto &[text, lines, message] : rows)
            QCOMPARE(countMessage(countAll(text, lines)), QLatin1String(message));
    }

    void trueCountsAreToldBeyondTheLimit()
    {
        QLocale::setDefault(QLocale(QLocale::English));
        QCOMPARE(countLine(countAll(QByteArray(40000, ' '), 50000)),
                 u"40,001 words, 40,000 characters, 50,000 lines"_s);
    }
};

QTEST_GUILESS_MAIN(TestCountAll)
#include "test_count_all.moc"
