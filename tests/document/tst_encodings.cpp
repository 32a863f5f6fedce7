// Files in every encoding, through the document's life: what is not edited keeps its bytes, what is wrong is
// reported, and what is saved is read by another parser as it was shown.
#include "desk.h"

#include "platform/files/encoding_table.h"

#include <QFile>
#include <QTest>

#include <libxml/parser.h>

#include <memory>

using namespace document_test;
using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(no file)");
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

// What another parser finds in the bytes of a file.
QByteArray readByOthers(const QString &path)
{
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadFile(QFile::encodeName(path).constData(), nullptr,
                    XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
        &xmlFreeDoc);
    if (!document)
        return "(not XML)";
    const std::unique_ptr<xmlChar, decltype(xmlFree)> text(
        xmlNodeGetContent(xmlDocGetRootElement(document.get())), xmlFree);
    return reinterpret_cast<const char *>(text.get());
}

// The bytes of a text, said to be in an encoding whatever it declares.
QByteArray inEncoding(const QByteArray &utf8, const char *name, bool mark)
{
    files::TextEncoding encoding;
    encoding.name = name;
    encoding.byteOrderMark = mark;
    encoding.declared = files::declarationIn(utf8);
    return *files::encodeText(utf8, encoding);
}

// One file in the folder of a desk, opened from the command line.
class Opened
{
public:
    explicit Opened(const QByteArray &bytes, const char *name = "a.xml")
        : path(desk.path(QLatin1String(name)))
    {
        write(path, bytes);
        desk.run({u"start "_s + QLatin1String(name)});
    }

    QByteArray text() { return desk.session.saving().currentText(); }
    void type(const QByteArray &utf8) { desk.editor.replaceText(utf8); }

    Desk desk;
    QString path;
};

} // namespace

class TestEncodings : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void unedited_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        struct Row
        {
            const char *encoding;
            const char *content;
            bool marks;
        };
        const Row rows[] = {
            {"UTF-8", "\xC3\xA4\xE2\x82\xAC", true},
            {"UTF-16LE", "\xC3\xA4\xF0\x9F\x98\x80", true},
            {"UTF-16BE", "\xC3\xA4", true},
            {"UTF-32LE", "\xC3\xA4", true},
            {"US-ASCII", "x", false},
            {"ISO-8859-1", "\xC3\xA4\xC3\xB6", false},
            {"Windows-1252", "\xE2\x82\xAC", false},
            {"KOI8-R", "\xD0\xB0", false},
            {"Shift_JIS", "\xE6\x97\xA5", false},
            {"ISO-2022-JP", "\xE6\x97\xA5", false},
            {"GB18030", "\xE6\x97\xA5", false},
        };
        const QByteArray ends[] = {"\r\n", "\n", "\r"};
        int count = 0;
        for (const Row &row : rows) {
            for (const char *declared : {row.encoding, "utf-16", "utf-8", "ISO-8859-1", "none-such", ""}) {
                const QByteArray declaration
                    = *declared != 0 ? " encoding='" + QByteArray(declared) + '\'' : QByteArray();
                for (int form = 0; form < (row.marks ? 4 : 2); ++form) {
                    const QByteArray &end = ends[count++ % 3];
                    const QByteArray text = "<?xml version='1.0'" + declaration + "?>" + end + "<q>"
                        + row.content + end + "</q>" + ((form & 1) != 0 ? end : QByteArray());
                    QTest::addRow("%s said to be %s, %d", row.encoding, declared, form)
                        << inEncoding(text, row.encoding, form > 1);
                }
            }
        }
    }

    void unedited()
    {
        QFETCH(QByteArray, bytes);
        Opened file(bytes);
        const QByteArray shown = file.text();
        file.desk.run("save | choose b.xml | saveas");
        QCOMPARE(contentOf(file.path), bytes);
        QCOMPARE(contentOf(file.desk.path(u"b.xml"_s)), bytes);
        file.desk.run("xml");
        const qsizetype at = shown.indexOf("</q");
        file.type(QByteArray(shown).replace(at + 2, 1, "w"));
        file.desk.dialogs.answers = {dialogs::Answer::No}; // it is to stay as it is, where that is asked
        file.desk.run("save");
        const QByteArray saved = contentOf(file.desk.path(u"b.xml"_s));
        QCOMPARE(saved.size(), bytes.size());
        qsizetype different = 0;
        for (qsizetype i = 0; i < saved.size(); ++i)
            different += saved[i] != bytes[i];
        QCOMPARE(different, 1);
        QVERIFY2(file.desk.seen(u"unanswered"_s).isEmpty(), qPrintable(file.desk.seen(u"unanswered"_s)));
    }

    void faults_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("report"); // what it says behind the reason's label
        QTest::addColumn<QByteArray>("mended"); // nothing: the letter at fault is taken out
        const auto row = [](const char *name, const QByteArray &bytes, const QString &reason,
                            const QString &place, const QByteArray &mended = {}) {
            QTest::newRow(name) << bytes << reason + u"\\l\\nLine              :  "_s + place << mended;
        };
        row("one byte", "<a>\n\xC3\xA4 \xE4</a>\n", u"The byte E4 is no character in UTF-8."_s,
            u"2\\nLine Position :  3"_s);
        row("one byte, declared", "<?xml version='1.0' encoding='utf-8'?>\n<a>\xC3\xA4\xFF</a>",
            u"The byte FF is no character in UTF-8."_s, u"2\\nLine Position :  5"_s);
        row("undeclared", "<a>\r\n \xE4</a>",
            u"This is not UTF-8, and the document names no other encoding; it is shown as Windows-1252."_s,
            u"2\\nLine Position :  2"_s, "<?xml version='1.0' encoding='Windows-1252'?>\r\n<a>\xC3\xA4</a>");
        row("half a pair", QByteArray("\xFF\xFE<\0a\0>\0\n\0\x34\xD8<\0/\0a\0>\0", 20),
            u"The bytes 34 D8 are no characters in UTF-16LE."_s, u"2\\nLine Position :  1"_s);
        row("says otherwise", "<?xml version='1.0' encoding='utf-16'?><a/>",
            u"The document declares the encoding \"utf-16\", but it is not in it; it is shown as UTF-8."_s,
            u"1\\nLine Position :  31"_s, "<a/>");
        row("unknown", "<?xml version='1.0' encoding='x-mine'?><a/>",
            u"The encoding \"x-mine\" is not known."_s, u"1\\nLine Position :  31"_s,
            "<?xml version='1.0'?><a/>");
    }

    // On each way into the program; for as long as the fault is there.
    void faults()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, report);
        QFETCH(QByteArray, mended);
        const QString start = u"Error!\\n\\nPossible Reason:  "_s + report;
        const auto reported = [&](Desk &desk, int times) {
            QCOMPARE(desk.dialogs.messages.size(), times);
            const QString message = desk.seen(u"message"_s);
            QVERIFY2(message.startsWith(start), qPrintable(message));
            QCOMPARE(desk.seen(u"tab"_s) + desk.seen(u"errors"_s), u"11"_s);
        };
        Opened file(bytes);
        reported(file.desk, 1);
        file.desk.run("check");
        reported(file.desk, 2);
        file.desk.run("normal"); // which is not for such a text
        reported(file.desk, 3);
        file.desk.run("reload");
        reported(file.desk, 4);
        const QByteArray shown = file.text();
        const files::FileForm form = file.desk.session.state().form;
        file.type(
            mended.isEmpty()
                ? QByteArray(shown).replace(shown.indexOf("\xF4"), 4, "").replace("\xF4\x8F\xBB\x98", "")
                : mended);
        file.desk.run("check | save");
        QCOMPARE(file.desk.seen(u"message"_s), u"No Errors found"_s);
        QVERIFY2(readByOthers(file.path) != "(not XML)", contentOf(file.path).toHex(' ').constData());
        QVERIFY2(file.desk.seen(u"unanswered"_s).isEmpty(), qPrintable(file.desk.seen(u"unanswered"_s)));

        // As an unsaved text of a window that ended: saving it gives the bytes back.
        Desk later;
        later.run("start");
        QVERIFY(later.session.life().recover(later.path(u"c.xml"_s), shown, form, document::NormalMode));
        QCOMPARE(later.seen(u"tab"_s) + later.seen(u"errors"_s), u"11"_s);
        later.dialogs.answers = {dialogs::Answer::No};
        later.run("save");
        QCOMPARE(contentOf(later.path(u"c.xml"_s)), bytes);
    }

    void whatIsSavedIsXml_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("typed");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<QByteArray>("content");
        const QByteArray a = "\xC3\xA4";
        const QByteArray latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>";
        const auto row
            = [](const char *name, const QByteArray &bytes, const QByteArray &typed, bool asked,
                 const QByteArray &content) { QTest::newRow(name) << bytes << typed << asked << content; };
        row("declaration deleted", latin1, "<a>" + a + "</a>", false, a);
        row("encoding deleted", latin1, "<?xml version='1.0'?><a>" + a + "</a>", false, a);
        row("declaration changed", latin1, "<?xml version='1.0' encoding='koi8-r'?><a>\xD0\xB0" + a + "</a>",
            false, "\xD0\xB0" + a);
        row("undeclared", "<a>\xE4</a>", "<a>" + a + "!</a>", true, a + '!');
        row("declared as what it is not", "<?xml version='1.0' encoding='utf-8'?><a>\xE4</a>",
            "<?xml version='1.0' encoding='utf-8'?><a>" + a + "!</a>", true, a + '!');
        row("UTF-8 said to be UTF-16", "<?xml version='1.0' encoding='utf-16'?><a/>",
            "<?xml version='1.0' encoding='utf-16'?><a>" + a + "</a>", true, a);
        row("a page that became XML", "<html><p>\xE4<br></html>", "<html><p>" + a + "<br/></p></html>", true,
            a);
        row("a page with a meta that became XML", "<html><meta charset=iso-8859-1><p>\xE4</html>",
            "<?xml version=\"1.0\"?><html><p>" + a + "</p></html>", false, a);
        row("what the encoding lacks", latin1,
            "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE2\x82\xAC</a>", false, "\xE2\x82\xAC");
    }

    void whatIsSavedIsXml()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, typed);
        QFETCH(bool, asked);
        QFETCH(QByteArray, content);
        Opened file(bytes);
        file.desk.run("xml");
        file.type(typed);
        if (asked) {
            const QByteArray before = contentOf(file.path);
            file.desk.run("answer Cancel | answer Yes | leave"); // the one after the save question
            QCOMPARE(file.desk.seen(u"left"_s), u"0"_s);
            file.desk.dialogs.answers = {dialogs::Answer::Yes, dialogs::Answer::Cancel};
            file.desk.run("leave");
            QCOMPARE(file.desk.seen(u"left"_s), u"0"_s);
            QCOMPARE(contentOf(file.path), before);
            file.desk.dialogs.answers = {dialogs::Answer::Yes};
        }
        file.desk.run("save");
        QVERIFY2(file.desk.seen(u"unanswered"_s).isEmpty(), qPrintable(file.desk.seen(u"unanswered"_s)));
        QVERIFY(file.desk.dialogs.answers.isEmpty());
        QCOMPARE(readByOthers(file.path), content);
        QVERIFY(file.desk.session.life().fileIsAsSaved());
        file.desk.run("leave");
        QCOMPARE(file.desk.seen(u"left"_s), u"1"_s);
    }

    void refusedBeforeAnythingIsWritten()
    {
        const QByteArray bytes = "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>\n";
        Opened file(bytes);
        file.desk.run("xml");
        file.type("<?xml version='1.0' encoding='ISO-8859-99'?><a>\xC3\xA4</a>");
        file.desk.run("answer No | save");
        QVERIFY2(file.desk.seen(u"message"_s).contains(u"\"ISO-8859-99\", which is not known"_s),
                 qPrintable(file.desk.seen(u"message"_s)));
        QCOMPARE(contentOf(file.path), bytes);
    }

    // Every encoding that is offered, in one mode or another.
    void savedWith_data()
    {
        QTest::addColumn<QByteArray>("encoding");
        QTest::addColumn<QString>("mode");
        const QString modes[] = {u"normal"_s, u"xml"_s, u"preview"_s};
        int count = 0;
        for (const files::EncodingEntry &entry : files::encodingTable()) {
            const bool offered = !files::isUtf32(entry.codec) && entry.codec != files::Codec::Utf16
                && QByteArrayView(entry.name) != "ISO-2022-KR";
            if (offered)
                QTest::newRow(entry.name) << QByteArray(entry.name) << modes[count++ % 3];
        }
    }

    void savedWith()
    {
        QFETCH(QByteArray, encoding);
        QFETCH(QString, mode);
        Opened file("<?xml version='1.0' encoding='utf-8'?>\n<a>\xC3\xA4</a>");
        file.desk.run({mode});
        const int tab = file.desk.workspace.tab;
        QCOMPARE(file.desk.session.encodings().saveWith({encoding, encoding.startsWith("UTF-16")}),
                 document::SaveResult::Saved);
        QCOMPARE(file.desk.workspace.tab, tab);
        QCOMPARE(readByOthers(file.path), QByteArray("\xC3\xA4"));
        QCOMPARE(file.desk.seen(u"messages"_s) + file.desk.seen(u"errors"_s), u"00"_s);
        QVERIFY(!file.desk.session.saving().isChanged());
        QVERIFY(file.desk.session.life().fileIsAsSaved());
    }

    void cannotBeSavedWith()
    {
        for (const QByteArray &bytes :
             {QByteArray("<a><!-- \xD0\xB0 --></a>"), QByteArray("<a>\xC3\xA4\xFF</a>")}) {
            Opened file(bytes);
            const QByteArray shown = file.text();
            const qsizetype told = file.desk.dialogs.messages.size();
            QCOMPARE(file.desk.session.encodings().saveWith({"ISO-8859-1", false}),
                     document::SaveResult::Failed);
            QCOMPARE(file.desk.dialogs.messages.size(), told + 1);
            QCOMPARE(file.text(), shown);
            QCOMPARE(contentOf(file.path), bytes);
        }
    }

    void openedAgain()
    {
        Opened file("<?xml version='1.0' encoding='ISO-8859-5'?><a>\xC1</a>");
        QVERIFY(file.text().endsWith("<a>\xD0\xA1</a>"));
        file.desk.run("edit | answer No");
        QVERIFY(!file.desk.session.encodings().reopen("KOI8-R"));
        QVERIFY(file.desk.session.saving().isChanged());
        file.desk.run("answer Yes");
        QVERIFY(file.desk.session.encodings().reopen("KOI8-R"));
        QVERIFY(file.text().endsWith("<a>\xD0\xB0</a>"));
        QCOMPARE(file.desk.seen(u"tab"_s) + file.desk.seen(u"errors"_s), u"11"_s); // it says something else
        QVERIFY(file.desk.session.life().fileIsAsSaved());
        QCOMPARE(file.desk.session.encodings().saveWith({"KOI8-R", false}), document::SaveResult::Saved);
        QCOMPARE(contentOf(file.path), QByteArray("<?xml version='1.0' encoding='KOI8-R'?><a>\xC1</a>"));
        QCOMPARE(file.desk.seen(u"errors"_s), u"0"_s);
        Desk fresh;
        fresh.run("start");
        QVERIFY(!fresh.session.encodings().canReopen());
    }
};

QTEST_GUILESS_MAIN(TestEncodings)
#include "tst_encodings.moc"
