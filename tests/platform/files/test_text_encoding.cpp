// Bytes to text and back: the same bytes, whatever encoding they were in and whatever they say about it.
#include "platform/files/text_encoding.h"

#include <QRandomGenerator>
#include <QTest>

using namespace files;

namespace {

QByteArray xml(const QByteArray &encoding, const QByteArray &content)
{
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>\r\n<a b='" + content + "'>" + content
        + "</a>";
}

// The ASCII text as wide characters.
QByteArray wide(const QByteArray &ascii, int width, bool big)
{
    QByteArray bytes;
    for (char c : ascii)
        bytes += big ? QByteArray(width - 1, '\0') + c : c + QByteArray(width - 1, '\0');
    return bytes;
}

} // namespace

class TestTextEncoding : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void roundTrip_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("utf8");
        QTest::addColumn<QByteArray>("name");
        const auto declaredRow = [](const char *name, const QByteArray &inEncoding, const char *utf8) {
            QTest::newRow(name) << xml(name, inEncoding) << xml(name, utf8) << QByteArray(name);
        };
        const QByteArray utf8 = "<a>\xE2\x82\xAC \xF0\x9F\x98\x80 \0 z</a>";
        QTest::newRow("empty") << QByteArray() << QByteArray() << QByteArray("UTF-8");
        QTest::newRow("plain UTF-8") << utf8 << utf8 << QByteArray("UTF-8");
        QTest::newRow("NUL kept") << QByteArray("<a>\0</a>", 8) << QByteArray("<a>\0</a>", 8)
                                  << QByteArray("UTF-8");
        QTest::newRow("UTF-8 mark") << "\xEF\xBB\xBF" + utf8 << utf8 << QByteArray("UTF-8");
        QTest::newRow("a mark only") << QByteArray("\xEF\xBB\xBF") << QByteArray() << QByteArray("UTF-8");
        QTest::newRow("UTF-16LE mark") << QByteArray("\xFF\xFE<\0\x3D\xD8\x00\xDE", 8)
                                       << QByteArray("<\xF0\x9F\x98\x80") << QByteArray("UTF-16LE");
        QTest::newRow("UTF-16BE mark") << QByteArray("\xFE\xFF\0<\xD8\x3D\xDE\x00", 8)
                                       << QByteArray("<\xF0\x9F\x98\x80") << QByteArray("UTF-16BE");
        QTest::newRow("UTF-32LE mark") << QByteArray("\xFF\xFE\0\0\x00\xF6\x01\x00", 8)
                                       << QByteArray("\xF0\x9F\x98\x80") << QByteArray("UTF-32LE");
        QTest::newRow("UTF-32BE mark") << QByteArray("\0\0\xFE\xFF\0\x01\xF6\0", 8)
                                       << QByteArray("\xF0\x9F\x98\x80") << QByteArray("UTF-32BE");
        const QByteArray plain = "<?xml version='1.0'?><a/>";
        for (const char *name : {"UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"})
            QTest::newRow(qPrintable(QLatin1String(name) + QStringLiteral(" no mark")))
                << wide(plain, name[4] == '1' ? 2 : 4, name[6] == 'B') << plain << QByteArray(name);
        const QByteArray big = xml("UTF-16", "x");
        QTest::newRow("UTF-16 declared, BE")
            << "\xFE\xFF" + wide(big, 2, true) << big << QByteArray("UTF-16BE");
        const QByteArray little = xml("UTF-16LE", "x");
        QTest::newRow("UTF-16LE declared") << wide(little, 2, false) << little << QByteArray("UTF-16LE");
        declaredRow("US-ASCII", "x", "x");
        declaredRow("ISO-8859-1", "\xE4\x80\x9F", "\xC3\xA4\xC2\x80\xC2\x9F");
        declaredRow("ISO-8859-5", "\xB1", "\xD0\x91");
        declaredRow("ISO-8859-15", "\xA4", "\xE2\x82\xAC");
        declaredRow("Windows-1251", "\xC0", "\xD0\x90");
        declaredRow("Windows-1252", "\x80\x81\x9F", "\xE2\x82\xAC\xC2\x81\xC5\xB8");
        declaredRow("KOI8-R", "\xC1", "\xD0\xB0");
        declaredRow("Shift_JIS", "\x93\xFA\x5C~", "\xE6\x97\xA5\\~");
        declaredRow("EUC-JP", "\xC6\xFC", "\xE6\x97\xA5");
        declaredRow("ISO-2022-JP", "\x1B$BF|\x1B(B", "\xE6\x97\xA5");
        declaredRow("GB18030", "\xC8\xD5\x94\x39\xFC\x36", "\xE6\x97\xA5\xF0\x9F\x98\x80");
        declaredRow("Big5", "\xA4\xE9", "\xE6\x97\xA5");
        const QByteArray html = "<!-- > --><!DOCTYPE html><html><meta charset=iso-8859-1><p>";
        QTest::newRow("HTML") << html + "\x80" << html + "\xE2\x82\xAC" << QByteArray("Windows-1252");
        const QByteArray http
            = "<html><META http-equiv=\"Content-Type\" content=\"text/html; charset=koi8-r\"><p>";
        QTest::newRow("HTML http-equiv") << http + "\xC1" << http + "\xD0\xB0" << QByteArray("KOI8-R");
        const QByteArray xhtml = "<?xml version='1.0'?><html><meta charset='koi8-r'/>\xC3\xA4</html>";
        QTest::newRow("XML before meta") << xhtml << xhtml << QByteArray("UTF-8");
        QTest::newRow("no markup") << QByteArray("na\xEFve") << QByteArray("na\xC3\xAFve")
                                   << QByteArray("Windows-1252");
    }

    void roundTrip()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, utf8);
        QFETCH(QByteArray, name);
        const DecodedText text = decodeText(bytes);
        QCOMPARE(text.utf8, utf8);
        QCOMPARE(text.encoding.name, name);
        QCOMPARE(text.note, QString());
        const auto again = encodeText(text.utf8, text.encoding);
        QVERIFY2(again.ok(), qPrintable(again.reason()));
        QCOMPARE(*again, bytes);
    }

    void disagreement_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("utf8");
        QTest::addColumn<QString>("inNote");
        QTest::addColumn<QByteArray>("saved");
        const QByteArray utf16 = xml("UTF-16", "x");
        QTest::newRow("says UTF-16, is 8-bit")
            << utf16 << utf16 << QStringLiteral("UTF-16") << "\xFF\xFE" + wide(utf16, 2, false);
        QTest::newRow("says UTF-8, is not") << xml("UTF-8", "\xE4") << xml("UTF-8", "\xC3\xA4")
                                            << QStringLiteral("saved as UTF-8") << xml("UTF-8", "\xC3\xA4");
        QTest::newRow("mark says otherwise")
            << "\xEF\xBB\xBF" + xml("ISO-8859-1", "\xC3\xA4") << xml("ISO-8859-1", "\xC3\xA4")
            << QStringLiteral("ISO-8859-1") << xml("ISO-8859-1", "\xE4");
        const QByteArray utf8 = xml("UTF-8", "x");
        QTest::newRow("says UTF-8, is UTF-16")
            << "\xFE\xFF" + wide(utf8, 2, true) << utf8 << QStringLiteral("UTF-16BE") << utf8;
        QTest::newRow("unknown name") << xml("EBCDIC-77", "\xC3\xA4") << xml("EBCDIC-77", "\xC3\xA4")
                                      << QStringLiteral("EBCDIC-77") << xml("EBCDIC-77", "\xC3\xA4");
        QTest::newRow("says ASCII, is UTF-8") << xml("us-ascii", "\xC3\xA4") << xml("us-ascii", "\xC3\xA4")
                                              << QStringLiteral("US-ASCII") << xml("us-ascii", "&#xE4;");
        QTest::newRow("broken Shift_JIS") << xml("Shift_JIS", "\xFD") << xml("Shift_JIS", "\xC3\xBD")
                                          << QStringLiteral("Shift_JIS") << xml("Shift_JIS", "&#xFD;");
        QTest::newRow("undeclared, not UTF-8") << QByteArray("<a>\xE4</a>") << QByteArray("<a>\xC3\xA4</a>")
                                               << QStringLiteral("Windows-1252") << QByteArray("<a>\xE4</a>");
        QTest::newRow("UTF-8 mark, not UTF-8")
            << QByteArray("\xEF\xBB\xBF<a>\xE4") << QByteArray("\xC3\xAF\xC2\xBB\xC2\xBF<a>\xC3\xA4")
            << QString() << QByteArray("\xEF\xBB\xBF<a>\xE4");
        QTest::newRow("needless escapes")
            << xml("ISO-2022-JP", "\x1B$BF|\x1B(B\x1B(B") << xml("ISO-2022-JP", "\xE6\x97\xA5")
            << QStringLiteral("other bytes") << xml("ISO-2022-JP", "\x1B$BF|\x1B(B");
    }

    void disagreement()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, utf8);
        QFETCH(QString, inNote);
        QFETCH(QByteArray, saved);
        const DecodedText text = decodeText(bytes);
        QCOMPARE(text.utf8, utf8);
        QVERIFY2(text.note.contains(inNote), qPrintable(text.note));
        QCOMPARE(text.note.isEmpty(), inNote.isEmpty());
        const auto again = encodeText(text.utf8, text.encoding);
        QVERIFY2(again.ok(), qPrintable(again.reason()));
        QCOMPARE(*again, saved);
    }

    // Each row is a document in Latin-1 with one euro sign, written "@" here; what it is saved as, or
    // nothing.
    void lackingCharacter_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("saved");
        const auto allowed = [](const char *name, const QByteArray &text) {
            QTest::newRow(name) << text << QByteArray(text).replace('@', "&#x20AC;");
        };
        const auto refused = [](const char *name, const char *text) {
            QTest::newRow(name) << QByteArray(text) << QByteArray();
        };
        allowed("content", "<a>@</a>");
        allowed("value", "<a b=\"x>@\">");
        allowed("single quotes", "<a b = '\"@' c='d'/>");
        allowed("second value", "<a b='<!--' c='@'/>");
        allowed("unquoted value", "<a b=x@>");
        allowed("behind comment", "<!-- <a> -->@");
        allowed("behind CDATA", "<a><![CDATA[ <b ]] > ]]>@");
        allowed("behind DOCTYPE", "<!DOCTYPE a [ <!ENTITY b \"]>\"> <!-- ' --> <?p > ?> ]><a>@");
        allowed("stray less-than", "<a>x < y @</a>");
        allowed("less-than at a tag's end", "<a <b>@</b>");
        allowed("unclosed value", "<a b=\"c><d>@</d>");
        allowed("behind an ampersand", "<a>a & @; b</a>");
        allowed("script in XML", "<script>@</script>");
        allowed("behind a script", "<html><script>'<p>'</script>@");
        refused("element name", "<a@/>");
        refused("attribute name", "<a @='b'/>");
        refused("end tag", "<a></a@>");
        refused("comment", "<a><!-- @ --></a>");
        refused("unclosed comment", "<a><!-- <b>@</b>");
        refused("CDATA", "<a><![CDATA[ <b> @ ]]></a>");
        refused("PI", "<a><?p <b>@?></a>");
        refused("DOCTYPE", "<!DOCTYPE a [ <!ENTITY b \"@\"> ]><a/>");
        refused("entity name", "<a>&a@b;</a>");
        refused("script in HTML", "<html><script>if (a < b) @</script>");
        refused("no markup", "only @ text");
    }

    void lackingCharacter()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, saved);
        // Lines end in every way there is and are counted as a person counts them.
        const QByteArray lines = text.startsWith('<') ? QByteArray(" \n\r\n\r") : QByteArray("a\n\r\n\r");
        const TextEncoding latin1{"ISO-8859-1", false};
        const auto bytes = encodeText(lines + QByteArray(text).replace('@', "\xE2\x82\xAC"), latin1);
        QCOMPARE(bytes.ok(), !saved.isEmpty());
        if (bytes.ok())
            QCOMPARE(*bytes, lines + saved);
        else
            QCOMPARE(bytes.reason(),
                     QStringLiteral("The character U+20AC in line 4 cannot be written in ISO-8859-1."));
    }

    void declared_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("name");
        const auto row = [](const char *text, const char *name) {
            QTest::newRow(text) << QByteArray(text) << QByteArray(name);
        };
        row("<?xml version='1.0' encoding='latin1'?>", "ISO-8859-1");
        row("<?xml version = \"1.0\"\n encoding = \"cp1252\" standalone='yes'?>", "Windows-1252");
        row("\n <?xml version='1.0' encoding='sjis'?>", "Shift_JIS");
        row("<?xml version='1.0' standalone='encoding=\"koi8-r\"'?>", "");
        row("<?xml version='1.0'?><a encoding='koi8-r'/>", "");
        row("<?xml-stylesheet encoding='koi8-r'?><a/>", "");
        row("<?xml version='1.0' encoding=koi8-r?>", "");
        row("<?xml version='1.0' encoding='koi8-r", "");
        row("<?xml version='1.0' encoding='nothing-known'?>", "");
        row("<html><meta charset=\"utf-16\">", "");
        row("<html><!-- <meta charset='koi8-r'> --><meta name=charset><meta charset = 'utf8' />", "UTF-8");
        row("<doc><meta charset='koi8-r'/></doc>", "");
        row("", "");
    }

    void declared()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, name);
        QCOMPARE(declaredEncoding(text), name);
    }

    // Whatever is opened and saved untouched keeps its bytes, and shows as valid text.
    void anyBytesComeBack()
    {
        QRandomGenerator random(20240607);
        for (int round = 0; round < 2000; ++round) {
            QByteArray bytes(int(random.bounded(1, 400)), Qt::Uninitialized);
            for (char &c : bytes)
                c = char(random.bounded(256));
            // The one start that stands for wide characters, of which some are none.
            if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
                continue;
            const DecodedText text = decodeText(bytes);
            QVERIFY(text.utf8.isValidUtf8());
            const auto again = encodeText(text.utf8, text.encoding);
            QVERIFY2(again.ok(), qPrintable(again.reason()));
            QCOMPARE(*again, bytes);
        }
    }

    void loneSurrogates()
    {
        const QByteArray replacement = "\xEF\xBF\xBD";
        const DecodedText text = decodeText(QByteArray("\xFF\xFE\x00\xD8x\0\x00\xDC\x00\xD8?", 11));
        QCOMPARE(text.utf8, replacement + 'x' + replacement + replacement + replacement);
        QVERIFY2(text.note.startsWith(QLatin1String("4 places")), qPrintable(text.note));
    }

    void utf8IsShared()
    {
        const QByteArray bytes = "<a>\xC3\xA4</a>";
        const DecodedText text = decodeText(bytes);
        QCOMPARE(static_cast<const void *>(text.utf8.constData()),
                 static_cast<const void *>(bytes.constData()));
        const auto again = encodeText(text.utf8, text.encoding);
        QCOMPARE(static_cast<const void *>(again->constData()), static_cast<const void *>(bytes.constData()));
    }
};

QTEST_GUILESS_MAIN(TestTextEncoding)
#include "test_text_encoding.moc"
