// Bytes to text and back: the same bytes, whatever encoding they were in and whatever they say about it.
#include "platform/files/encoding_fault.h"
#include "platform/files/redeclare.h"
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

// What stands in a text for a byte that is no character.
QByteArray raw(int byte, char32_t block = 0x10FE00)
{
    const char32_t c = block + char32_t(byte);
    return QString::fromUcs4(&c, 1).toUtf8();
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

    // What a file says of itself and what it is are two things: it comes back as it was, and the fault is
    // told.
    void disagreement_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("utf8");
        QTest::addColumn<QString>("inReason");
        QTest::addColumn<QByteArray>("atFault"); // what the text goes on with there
        const QByteArray none;
        const QByteArray utf16 = xml("UTF-16", "x");
        QTest::newRow("says UTF-16, is 8-bit")
            << utf16 << utf16 << QStringLiteral("shown as UTF-8") << QByteArray("UTF-16");
        QTest::newRow("says UTF-8, is not")
            << xml("UTF-8", "\xE4") << xml("UTF-8", "\xC3\xA4") << QStringLiteral("shown as Windows-1252")
            << QByteArray("\xC3\xA4'>");
        QTest::newRow("mark says otherwise")
            << "\xEF\xBB\xBF" + xml("ISO-8859-1", "\xC3\xA4") << xml("ISO-8859-1", "\xC3\xA4")
            << QStringLiteral("\"ISO-8859-1\"") << QByteArray("ISO-8859-1");
        QTest::newRow("mark says otherwise, all ASCII")
            << "\xEF\xBB\xBF" + xml("ISO-8859-1", "x") << xml("ISO-8859-1", "x") << QString() << none;
        const QByteArray utf8 = xml("UTF-8", "x");
        QTest::newRow("says UTF-8, is UTF-16")
            << "\xFE\xFF" + wide(utf8, 2, true) << utf8 << QStringLiteral("UTF-16BE") << QByteArray("UTF-8");
        QTest::newRow("unknown name") << xml("EBCDIC-77", "\xC3\xA4") << xml("EBCDIC-77", "\xC3\xA4")
                                      << QStringLiteral("not known") << QByteArray("EBCDIC-77");
        QTest::newRow("says ASCII, is UTF-8") << xml("us-ascii", "\xC3\xA4") << xml("us-ascii", "\xC3\xA4")
                                              << QStringLiteral("us-ascii") << QByteArray("us-ascii");
        QTest::newRow("broken Shift_JIS") << xml("Shift_JIS", "\xFD") << xml("Shift_JIS", "\xC3\xBD")
                                          << QStringLiteral("Shift_JIS") << QByteArray("Shift_JIS");
        QTest::newRow("undeclared, not UTF-8")
            << QByteArray("<a>x\xE4</a>") << QByteArray("<a>x\xC3\xA4</a>")
            << QStringLiteral("names no other") << QByteArray("\xC3\xA4</a>");
        QTest::newRow("undeclared, one byte of many")
            << QByteArray("<a>\xC3\xA4\xC3\xA4\xE4</a>") << "<a>\xC3\xA4\xC3\xA4" + raw(0xE4) + "</a>"
            << QStringLiteral("The byte E4 is no character in UTF-8.") << raw(0xE4) + "</a>";
        QTest::newRow("two bytes, and the block is taken")
            << "<a>\xC3\xA4\xC3\xA4" + raw(0) + "\xED\xA0</a>"
            << "<a>\xC3\xA4\xC3\xA4" + raw(0) + raw(0xED, 0x10FD00) + raw(0xA0, 0x10FD00) + "</a>"
            << QStringLiteral("The bytes ED A0 are no characters") << raw(0xED, 0x10FD00);
        QTest::newRow("UTF-8 mark, not UTF-8")
            << QByteArray("\xEF\xBB\xBF<a>\xE4") << "<a>" + raw(0xE4) << QStringLiteral("E4") << raw(0xE4);
        QTest::newRow("Shift_JIS with one byte too many")
            << xml("Shift_JIS", "\x93\xFA\xFD") << xml("Shift_JIS", "\xE6\x97\xA5" + raw(0xFD))
            << QStringLiteral("The byte FD is no character in Shift_JIS.") << raw(0xFD) + "'>";
        QTest::newRow("page that says UTF-8") << QByteArray("<html><meta charset=utf-8>\xE4")
                                              << QByteArray("<html><meta charset=utf-8>\xC3\xA4")
                                              << QStringLiteral("utf-8") << QByteArray("\xC3\xA4");
        QTest::newRow("lone surrogates, and a byte over")
            << QByteArray("\xFF\xFE\x00\xD8x\0\x00\xDC\x00\xD8?", 11)
            << raw(0) + raw(0xD8) + 'x' + raw(0) + raw(0xDC) + raw(0) + raw(0xD8) + raw('?')
            << QStringLiteral("The bytes 00 D8 are no characters in UTF-16LE.") << raw(0) + raw(0xD8);
        QTest::newRow("UTF-32 beyond the last character")
            << QByteArray("\0\0\xFE\xFF\0\0\0<\0\x11\0\0", 12) << '<' + raw(0) + raw(0x11) + raw(0) + raw(0)
            << QStringLiteral("00 11 00 00") << raw(0);
    }

    void disagreement()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, utf8);
        QFETCH(QString, inReason);
        QFETCH(QByteArray, atFault);
        const DecodedText text = decodeText(bytes);
        QCOMPARE(text.utf8, utf8);
        const auto again = encodeText(text.utf8, text.encoding);
        QVERIFY2(again.ok(), qPrintable(again.reason()));
        QCOMPARE(*again, bytes);
        const auto fault = encodingFault(text.utf8, text.encoding);
        QCOMPARE(fault.has_value(), !atFault.isEmpty());
        if (!fault)
            return;
        QVERIFY2(fault->reason.contains(inReason), qPrintable(fault->reason));
        QVERIFY2(text.utf8.sliced(fault->offset).startsWith(atFault),
                 text.utf8.sliced(fault->offset).constData());
        QCOMPARE(fault->readable, text.encoding.block == 0);
    }

    // Rare codes and needless escapes stay where nobody edited.
    void unusualSpellings_data()
    {
        QTest::addColumn<QByteArray>("encoding");
        QTest::addColumn<QByteArray>("bytes");
        const auto row = [](const char *name, const char *encoding, const QByteArray &bytes) {
            QTest::newRow(name) << QByteArray(encoding) << bytes;
        };
        // 81 CA and FA 54, 81 E6 and 87 9A are one character each; so are the twins of the rows ED and FA.
        row("Shift_JIS, one line", "Shift_JIS", "<a>\x81\xCA\xFA\x54\x87\x9A\x81\xE6\xED\x40</a>");
        row("Shift_JIS, a byte that is none", "Shift_JIS", "<a>\x93\xFA\xFD\xFA\x54</a>");
        row("ISO-2022-JP", "ISO-2022-JP", "<a>\n\x1B$BF|\x1B(B\x1B(B\n</a>\n\x1B(J\x1B(B\n</b>\n");
        row("ISO-2022-JP, old set", "ISO-2022-JP", "<a>\r\x1B$@F|\x1B(B\r</a>\r<b/>\r");
        row("Big5-HKSCS, two characters in one code", "Big5-HKSCS", "<a>\x88\x62\xA4\xE9</a>");
    }

    void unusualSpellings()
    {
        QFETCH(QByteArray, encoding);
        QFETCH(QByteArray, bytes);
        const QByteArray plain = xml(encoding, "") + bytes;
        const DecodedText text = decodeText(plain);
        const auto untouched = encodeText(text.utf8, text.encoding);
        QCOMPARE(untouched.ok() ? *untouched : QByteArray(), plain);
        // Behind each character, or at the ends of lines where an escape would reach over the edit.
        const bool lines = encoding.startsWith("ISO-2022");
        int edits = 0;
        for (qsizetype at = xml(encoding, "").size(); at < text.utf8.size(); ++at) {
            const uchar next = uchar(text.utf8[at]);
            const bool within
                = (next & 0xC0) == 0x80 || next == 0xCC; // a character, or two that are one code
            if (within || (lines && next != '\n' && next != '\r' && next != '<'))
                continue;
            if (lines && uchar(text.utf8[at - 1]) >= 0x80)
                continue;
            const auto edited = encodeText(QByteArray(text.utf8).insert(at, 'x'), text.encoding);
            QVERIFY2(edited.ok(), qPrintable(edited.reason()));
            QCOMPARE(edited->size(), plain.size() + 1);
            const qsizetype place
                = std::mismatch(plain.begin(), plain.end(), edited->begin()).first - plain.begin();
            QCOMPARE(QByteArray(*edited).remove(place, 1), plain);
            ++edits;
        }
        QVERIFY(edits > 3);
        const auto twice
            = encodeText(QByteArray(text.utf8).append("y").insert(plain.indexOf("<a "), "z"), text.encoding);
        QCOMPARE(twice.ok() ? *twice : QByteArray(),
                 QByteArray(plain).append("y").insert(plain.indexOf("<a "), "z"));
    }

    // What is written is what the text says then; else what others take it for.
    void changedDeclaration_data()
    {
        QTest::addColumn<QByteArray>("read");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("written"); // nothing: refused
        const QByteArray mark("\xEF\xBB\xBF");
        const QByteArray a = "\xC3\xA4";
        QTest::newRow("another one") << xml("ISO-8859-1", "\xE4") << xml("ISO-8859-15", a)
                                     << xml("ISO-8859-15", "\xE4");
        QTest::newRow("another name")
            << xml("ISO-8859-1", "\xE4") << xml("latin1", a) << xml("latin1", "\xE4");
        QTest::newRow("a first one") << QByteArray("<a>" + a + "</a>") << xml("ISO-8859-1", a)
                                     << xml("ISO-8859-1", "\xE4");
        QTest::newRow("mended") << xml("UTF-8", "\xE4") << xml("Windows-1252", a)
                                << xml("Windows-1252", "\xE4");
        QTest::newRow("none any more")
            << xml("ISO-8859-1", "\xE4") << QByteArray("<a>" + a + "</a>") << QByteArray("<a>" + a + "</a>");
        QTest::newRow("none in the declaration any more")
            << xml("Shift_JIS", "\x93\xFA") << QByteArray("<?xml version='1.0'?><a>" + a + "</a>")
            << QByteArray("<?xml version='1.0'?><a>" + a + "</a>");
        QTest::newRow("none, but a mark") << "\xFE\xFF" + wide(xml("UTF-16", "x"), 2, true)
                                          << QByteArray("<a/>") << "\xFE\xFF" + wide("<a/>", 2, true);
        QTest::newRow("none and no mark")
            << wide(xml("UTF-16", "x"), 2, true) << QByteArray("<a/>") << QByteArray("<a/>");
        QTest::newRow("a page without its meta") << QByteArray("<html><meta charset=koi8-r>\xC1")
                                                 << QByteArray("<html>\xD0\xB0") << mark + "<html>\xD0\xB0";
        QTest::newRow("unknown") << xml("UTF-8", a) << xml("UTF-9", a) << QByteArray();
        QTest::newRow("in front of the declaration")
            << xml("EUC-KR", "x") << xml("ISO-2022-KR", "x") << QByteArray();
        QTest::newRow("unknown, of a page") << QByteArray("<html><meta charset=utf-8>")
                                            << QByteArray("<html><meta charset=utf-9>") << QByteArray();
        QTest::newRow("a mark goes with its encoding")
            << mark + xml("UTF-8", a) << xml("ISO-8859-1", a) << xml("ISO-8859-1", "\xE4");
        QTest::newRow("UTF-16 needs its mark")
            << xml("UTF-8", "x") << xml("UTF-16", "x") << "\xFF\xFE" + wide(xml("UTF-16", "x"), 2, false);
        QTest::newRow("a byte that is no character goes nowhere else")
            << xml("UTF-8", a + "\xE4") << xml("ISO-8859-1", a + raw(0xE4)) << QByteArray();
        QTest::newRow("units stay in step")
            << QByteArray("\xFF\xFE<\0a\0/\0>\0\0\xDC", 12) << "<a>" + raw(0) + "</a>" << QByteArray();
    }

    void changedDeclaration()
    {
        QFETCH(QByteArray, read);
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, written);
        const DecodedText former = decodeText(read);
        const auto bytes = encodeText(text, former.encoding);
        QCOMPARE(bytes.ok(), !written.isEmpty());
        if (!bytes)
            return;
        QCOMPARE(*bytes, written);
        const DecodedText again = decodeText(*bytes);
        QCOMPARE(again.utf8, text);
        QVERIFY(!encodingFault(again.utf8, again.encoding));
    }

    // Every text in every encoding that can be asked for is one that others read.
    void redeclared_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("wish");
        QTest::addColumn<bool>("mark");
        QTest::addColumn<QByteArray>("expected"); // nothing: refused
        const auto row = [](const char *text, const char *wish, bool mark, const char *expected) {
            const QString name = QStringLiteral("%1 in %2%3").arg(QLatin1String(text), QLatin1String(wish));
            QTest::newRow(qPrintable(name.arg(mark ? QStringLiteral(" with mark") : QString())))
                << QByteArray(text) << QByteArray(wish) << mark << QByteArray(expected);
        };
        row("<?xml version='1.0' encoding='utf-16'?><a/>", "UTF-8", false,
            "<?xml version='1.0' encoding='UTF-8'?><a/>");
        row("<?xml version='1.0' standalone='yes'?><a/>", "ISO-8859-2", false,
            "<?xml version='1.0' encoding=\"ISO-8859-2\" standalone='yes'?><a/>");
        row("<?xml version='1.0'?><a/>", "UTF-8", false, "<?xml version='1.0'?><a/>");
        row("<?xml version='1.0' encoding='x'?><a/>", "UTF-16BE", true,
            "<?xml version='1.0' encoding='UTF-16'?><a/>");
        row("<a>\n</a>", "KOI8-R", false, "<?xml version=\"1.0\" encoding=\"KOI8-R\"?>\n<a>\n</a>");
        row("<a/>", "UTF-16LE", true, "<a/>");
        row("<html><head></head></html>", "Windows-1252", false,
            "<html><head><meta charset=\"Windows-1252\" /></head></html>");
        row("<html><p></p></html>", "Windows-1252", false, "");
        row("<html><p></p></html>", "UTF-8", false, "<html><p></p></html>");
        row("<html><meta charset='koi8-r'/></html>", "UTF-8", false, "<html><meta charset='UTF-8'/></html>");
        row("no markup", "ISO-8859-1", false, "no markup");
    }

    void redeclared()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, wish);
        QFETCH(bool, mark);
        QFETCH(QByteArray, expected);
        const auto changed = redeclare(text, {wish, mark});
        QCOMPARE(changed.ok() ? changed->utf8 : QByteArray(), expected);
        if (!changed)
            return;
        QVERIFY(!encodingFault(changed->utf8, changed->encoding));
        const auto bytes = encodeText(changed->utf8, changed->encoding);
        const DecodedText again = decodeText(*bytes);
        QCOMPARE(again.utf8, expected);
        if (again.utf8.startsWith('<') && !wish.startsWith("ISO") && !wish.startsWith("W"))
            QCOMPARE(again.encoding.name, wish);
    }

    // What a user knows better than the file.
    void readAs()
    {
        const QByteArray bytes = "<a>\xB1\xE4</a>";
        const auto text = decodeTextAs(bytes, "ISO-8859-5");
        QVERIFY(text.ok());
        QCOMPARE(text->utf8, QByteArray("<a>\xD0\x91\xD1\x84</a>"));
        QCOMPARE(encodeText(text->utf8, text->encoding).ok(), true);
        QCOMPARE(*encodeText(text->utf8, text->encoding), bytes);
        QVERIFY(encodingFault(text->utf8, text->encoding).has_value());
        QVERIFY(!decodeTextAs(bytes, "UTF-9").ok());
        const QByteArray marked("\xFF\xFE<\0a\0/\0>\0", 10);
        QCOMPARE(decodeTextAs(marked, "UTF-16LE")->utf8, QByteArray("<a/>"));
        for (const char *name :
             {"UTF-8", "UTF-16BE", "Shift_JIS", "ISO-2022-JP", "US-ASCII", "GB18030", "UTF-32"}) {
            const auto other = decodeTextAs(marked, name);
            QVERIFY2(other.ok() && other->utf8.isValidUtf8(), name);
            QVERIFY2(*encodeText(other->utf8, other->encoding) == marked, name);
        }
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
        row("<html><meta charset=\"utf-16\">", "UTF-8");
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
        const QByteArray starts[] = {"\xFF\xFE",
                                     "\xFE\xFF<",
                                     "\xEF\xBB\xBF<a>",
                                     QByteArray("\0\0\xFE\xFF", 4),
                                     "<a>\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4",
                                     xml("Shift_JIS", "\x93\xFA"),
                                     xml("ISO-2022-JP", "\x1B$BF|\x1B(B")};
        QRandomGenerator random(20240607);
        for (int round = 0; round < 2000; ++round) {
            QByteArray bytes(int(random.bounded(1, 400)), Qt::Uninitialized);
            for (char &c : bytes)
                c = char(random.bounded(256));
            if (round % 4 != 0) // half a text, and sometimes one that says what it is
                bytes.replace(0, bytes.size() / 2, starts[round % 7]);
            const DecodedText text = decodeText(bytes);
            QVERIFY(text.utf8.isValidUtf8());
            const auto again = encodeText(text.utf8, text.encoding);
            QVERIFY2(again.ok(), qPrintable(again.reason()));
            QCOMPARE(*again, bytes);
        }
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
