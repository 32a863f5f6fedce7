#include "platform/dom/verdict.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace dom;
using namespace Qt::StringLiterals;

namespace {

QByteArray bomb()
{
    QByteArray text = "<!DOCTYPE a [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 12; ++i) {
        const QByteArray below = "&e" + QByteArray::number(i - 1) + ';';
        text += "<!ENTITY e" + QByteArray::number(i) + " \"" + below.repeated(10) + "\">";
    }
    return text + "]>";
}

// That many, each of its own name.
QByteArray attributes(int count, char quote = '\'')
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += " a" + QByteArray::number(i) + '=' + quote + quote;
    return text;
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

class TestVerdict : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void accepted()
    {
        const std::tuple<const char *, QByteArray> rows[] = {
            {"plain", "<a/>"},
            {"declares UTF-16 but is text in memory", "<?xml version='1.0' encoding='UTF-16'?><a>é</a>"},
            {"unknown encoding name", "<?xml version='1.0' encoding='x-none'?><a/>"},
            {"200,000 levels", QByteArray("<a>").repeated(200000) + QByteArray("</a>").repeated(200000)},
            {"one text of 30 MB", "<a>" + QByteArray(30'000'000, 'x') + "</a>"},
            {"entity used often and honestly",
             "<!DOCTYPE a [<!ENTITY e 'value'>]><a>" + QByteArray("<b x='&e;'>&e;</b>").repeated(20000)
                 + "</a>"},
            {"undeclared entity, document type out of reach",
             "<!DOCTYPE a SYSTEM 'http://nowhere.invalid/a.dtd'><a>&nbsp;</a>"},
            {"doubtful namespace name", "<a xmlns='not a uri'/>"},
            {"document type missing locally", "<!DOCTYPE a SYSTEM 'missing.dtd'><a/>"},
            {"entity of a file that is missing", "<!DOCTYPE a [<!ENTITY e SYSTEM 'none'>]><a>&e;</a>"},
            {"undeclared entity, parameter entity out of reach",
             "<!DOCTYPE a [<!ENTITY % p SYSTEM 'none'>%p;]><a>&nbsp;</a>"},
            {"100,000 attributes", "<a" + attributes(100'000) + "/>"},
            {"as many as may be that need a second look",
             "<a" + attributes(10'000).replace("''", "'&lt;'") + "/>"},
            {"what looks like too many is data",
             "<a><!--<a" + attributes(20'000).replace("''", "'&lt;'") + "/>--></a>"},
            {"1.1: controls by their numbers", "<?xml version='1.1'?><a b='&#1;'>&#x1F;</a>"},
            {"1.1: other line ends in text", "<?xml version='1.1'?><a>\xC2\x85\xE2\x80\xA8</a>"},
            {"1.1: a prefix taken back", "<?xml version='1.1'?><p:a xmlns:p='u'><b xmlns:p=''/></p:a>"},
            {"a later 1.x is judged as 1.0", "<?xml version='1.9'?><a/>"},
        };
        for (const auto &[name, text] : rows) {
            const auto error = checkWellFormed(text);
            QVERIFY2(!error, name);
        }
    }

    void refused()
    {
        const std::tuple<const char *, QByteArray, int, int, QString> rows[] = {
            {"empty", "", 1, 1, {}},
            {"text only", "hello", 1, 1, u"hello"_s},
            {"unclosed", "<a>\n <b>\n</a>", 3, 5, u"</a>"_s},
            {"CR LF lines", "<a>\r\n <b>\r\n</a>", 3, 5, u"</a>"_s},
            {"characters, not bytes", "<a>\n<é>ü</b></a>", 2, 9, u"<é>ü</b></a>"_s},
            {"two document elements", "<a/>\n<b/>", 2, 1, u"<b/>"_s},
            {"duplicate attribute", "<a x='1' x='2'/>", 1, 0, u"<a x='1' x='2'/>"_s},
            {"undeclared prefix", "<a>\n<p:b/></a>", 2, 0, u"<p:b/></a>"_s},
            {"one attribute by two prefixes", "<a xmlns:p='u' xmlns:q='u' p:x='' q:x=''/>", 1, 0,
             u"<a xmlns:p='u' xmlns:q='u' p:x='' q:x=''/>"_s},
            {"undeclared entity", "<a>&none;</a>", 1, 0, u"<a>&none;</a>"_s},
            {"NUL", QByteArray("<a>\nx\0y</a>", 11), 2, 2, u"x%1y</a>"_s.arg(QChar(0))},
            {"NUL after the end", QByteArray("<a/>\n\0", 6), 2, 1, QString(QChar(0))},
            {"control character", "<a>\x01</a>", 1, 4, u"<a>\x01</a>"_s},
            {"overlong UTF-8", "<a>\xc0\xbc</a>", 1, 0, {}},
            {"surrogate in UTF-8", "<a>\xed\xa0\x80</a>", 1, 0, {}},
            {"entity in itself", "<!DOCTYPE a [<!ENTITY e '&e;'>]>\n<a>&e;</a>", 2, 0, {}},
            {"truncated", "<a><b>text", 1, 11, u"<a><b>text"_s},
            {"one attribute by an entity in a namespace",
             "<!DOCTYPE a [<!ENTITY e 'u'>]><a xmlns:p='u' xmlns:q='&e;'>\n<b p:x='' q:x=''/></a>",
             2,
             0,
             {}},
            {"too many attributes",
             "<a>\n<b" + attributes(10'001).replace("''", "'&lt;'") + "/></a>",
             2,
             1,
             {}},
            {"twin among very many", "<a>\n<b" + attributes(20'000) + "\na7=''/></a>", 3, 0, {}},
            {"no blank among very many",
             "<a" + attributes(20'000) + "\nx=''y=''" + attributes(2) + "/>",
             2,
             0,
             {}},
            {"no sign among very many", "<a" + attributes(20'000) + "\nx''" + attributes(2) + "/>", 2, 0, {}},
            {"bad value among very many", "<a" + attributes(20'000) + "\nx='<'/>", 2, 0, {}},
            {"bad character among very many", "<a" + attributes(20'000) + "\nx='\xEF\xBF\xBF'/>", 2, 0, {}},
            {"bad name among very many", "<a" + attributes(20'000) + "\n1x=''/>", 2, 0, {}},
            {"undeclared prefix among very many", "<a" + attributes(20'000) + "\np:x=''/>", 2, 0, {}},
            {"too many attributes by an entity",
             "<!DOCTYPE a [\n<!ENTITY e '<b" + attributes(10'001, '"') + "/>'>]><a>&e;</a>",
             2,
             0,
             {}},
            {"too many attributes by the document type",
             "<!DOCTYPE a [<!ATTLIST a" + attributes(10'001).replace("=", " CDATA ") + ">]><a/>",
             1,
             0,
             {}},
            {"too many values to choose from",
             "<!DOCTYPE a [\n<!ATTLIST a b (" + QByteArray("x|").repeated(10'000) + "y) #IMPLIED>]><a/>",
             2,
             0,
             {}},
            {"no blank before standalone",
             "<?xml version='1.0' encoding='UTF-8'standalone='yes'?><a/>",
             1,
             0,
             {}},
            {"control by its number is of 1.1 alone", "<a>&#1;</a>", 1, 0, {}},
            {"1.1: control itself", "<?xml version='1.1'?>\n<a>\xC2\x80</a>", 2, 4, {}},
            {"1.1: line end of its own in a tag",
             "<?xml version='1.1'?>\n<a\xC2\x85"
             "b=''/>",
             2,
             0,
             {}},
            {"version 2", "<?xml version='2.0'?><a/>", 1, 0, {}},
        };
        for (const auto &[name, text, line, position, sourceText] : rows) {
            const auto error = checkWellFormed(text);
            QVERIFY2(error && error->code != 0 && !error->reason.isEmpty(), name);
            QVERIFY2(error->line == line, name);
            QVERIFY(position == 0 || error->position == position);
            QVERIFY2(sourceText.isEmpty() || error->sourceText == sourceText, qPrintable(error->sourceText));
        }
    }

    // What is wrong is said in plain words, with the names involved and lines counted as an editor does.
    void sentences()
    {
        const std::tuple<QByteArray, QString> rows[] = {
            {"<a>\r<b>\r</a>",
             u"The element \"b\" of line 2 is open here, but the end tag is that of \"a\"."_s},
            {"<r>\r\n<b>\r\n<c></c><d/>", u"The element \"b\" of line 2 is never closed."_s},
            {"<a>x & y</a>", u"An \"&\" must begin a reference; as text it is written &amp;."_s},
            {"<a>&x</a>", u"The reference has no closing \";\"; as text \"&\" is written &amp;."_s},
            {"<a>&nbsp;</a>", u"The entity \"nbsp\" is not declared."_s},
            {"<a>\x01</a>", u"XML does not allow the character U+0001."_s},
            {"<a>&#xFFFF;</a>", u"There is no character of this number that XML allows: U+FFFF."_s},
            {"<p:a q:b=''/>",
             u"The prefix \"q\" of the attribute \"b\" in the element \"a\" is not declared."_s},
            {"<a xmlns:p='u' p:b='' p:b=''/>", u"The attribute \"p:b\" stands in one tag more than once."_s},
            {"<a {1}/>", u"The name of an attribute, or the end of the tag, should stand here."_s},
            {"<a b=c/>", u"The value of an attribute must stand in quotes."_s},
            {"<a></a>\n</a>",
             u"Nothing but comments and processing instructions may follow the end of the document element."_s},
            {" <?xml version='1.0'?><a/>",
             u"The XML declaration may stand only at the very beginning of the document, before any blank or "
             u"line."_s},
        };
        for (const auto &[text, sentence] : rows) {
            const auto error = checkWellFormed(text);
            QVERIFY2(error, text);
            QCOMPARE(error->reason, sentence + u'\n');
        }
    }

    void longLineIsCutAroundTheFault()
    {
        const QByteArray filling = QByteArray("é").repeated(500'000);
        const auto error = checkWellFormed("<a>" + filling + "<b></c>" + filling + "</a>");
        QVERIFY(error);
        QVERIFY(error->sourceText.size() < 200);
        QVERIFY(error->sourceText.contains(u"<b></c>"_s));
        QVERIFY(!error->sourceText.contains(QChar::ReplacementCharacter));
        QCOMPARE(error->line, 1);
    }

    void externalSubsetComesFromLocalFilesOnly()
    {
        write(folder_.filePath(u"good one.dtd"_s), "<!ENTITY e 'here'>");
        write(folder_.filePath(u"more.ent"_s), "<!ENTITY f 'there'>");
        Entities entities;
        const auto error = checkWellFormed(
            "<!DOCTYPE a SYSTEM 'good%20one.dtd' [<!ENTITY % m SYSTEM 'more.ent'> %m;]><a>&e;&f;</a>",
            folder_.path(), &entities);
        QVERIFY2(!error, error ? qPrintable(error->reason) : "");
        QCOMPARE(entities.value("e"), QByteArray("here"));
        QCOMPARE(entities.value("f"), QByteArray("there"));
    }

    // Whatever the names of the file and of its folder, which no address could hold as they are. What is not
    // there stands for nothing.
    void filesAreFoundUnderOddNames()
    {
        const QString folder = folder_.filePath(u"a #1%20\u00e9\\b"_s);
        QVERIFY(QDir().mkpath(folder));
        write(folder + u"/my \u00e9.ent"_s, "<cut>");
        const auto text = [](const char *name) {
            return "<!DOCTYPE a [<!ENTITY e SYSTEM '" + QByteArray(name) + "'>]><a>&e;</a>";
        };
        const auto fault = checkWellFormed(text("my \xC3\xA9.ent"), folder);
        QVERIFY(fault && fault->file && fault->file->path.endsWith(u"/my \u00e9.ent"_s));
        for (const char *missing : {"no such.ent", "http://a.example/x y", "/dev/zero"})
            QVERIFY2(!checkWellFormed(text(missing), folder), missing);
    }

    void filesAreReadByTheirOwnDeclaration()
    {
        const std::tuple<const char *, QByteArray> files[] = {
            {"utf8.dtd", "<?xml version='1.0' encoding='UTF-8'?><!ENTITY e 'here'>"},
            {"latin1.ent", "<?xml encoding='ISO-8859-1'?><p:b>\xE9</p:b>"},
            {"utf16.ent", QByteArray("\xFF\xFE<\0b\0/\0>\0", 10)},
            {"cut.dtd", "<!ENTITY % model '(b|c'><!ELEMENT a %model;)>"},
            {"empty.ent", ""},
        };
        for (const auto &[name, bytes] : files)
            write(folder_.filePath(QLatin1String(name)), bytes);
        const QByteArray declaration = "<?xml version='1.0' encoding='UTF-16'?>";
        for (const QByteArray &text : {
                 declaration + "<!DOCTYPE a SYSTEM 'utf8.dtd'><a>&e;</a>",
                 declaration + "<!DOCTYPE a [<!ENTITY % p SYSTEM 'utf8.dtd'>%p;]><a>&e;</a>",
                 declaration + "<!DOCTYPE a [<!ENTITY e SYSTEM 'latin1.ent'>]><a xmlns:p='u'>&e;&e;</a>",
                 QByteArray("<!DOCTYPE a [<!ENTITY e SYSTEM 'utf16.ent'>]><a>&e;</a>"),
                 QByteArray("<!DOCTYPE a [<!ENTITY e SYSTEM 'empty.ent'>]><a>&e;</a>"),
                 QByteArray("<!DOCTYPE a SYSTEM 'cut.dtd'><a/>"),
             }) {
            const auto error = checkWellFormed(text, folder_.path());
            QVERIFY2(!error, error ? qPrintable(QString::fromUtf8(text) + error->reason) : "");
        }
    }

    // The fault is shown where it lies, and the document where it leads there.
    void faultsInFiles()
    {
        const std::tuple<const char *, QByteArray> files[] = {
            {"bad.dtd", "<?xml encoding='UTF-8'?>\r<!ELEMENT a EMPTY>\r<!ELEMENT b>\r"},
            {"bad.ent", "<?xml encoding='UTF-8'?>\n<b>\n  <c></d>\n</b>"},
            {"outer.ent", "<x>\n&inner;</x>"},
            {"bytes.ent", "<b>\n\xE9</b>"},
            {"coding.ent", "<?xml encoding='x-none'?><b/>"},
            {"later.ent", "<?xml version='1.1' encoding='UTF-8'?><b/>"},
            {"open.dtd", "<!ENTITY % p '<!ELEMENT a '>%p; ANY>"},
        };
        for (const auto &[name, bytes] : files)
            write(folder_.filePath(QLatin1String(name)), bytes);
        const QByteArray inner = "<!ENTITY inner SYSTEM 'bad.ent'>";
        // document; line there; file; line in it; what its line holds; what the sentence holds
        const std::tuple<QByteArray, int, const char *, int, QString, QString> rows[] = {
            {"\n<!DOCTYPE a SYSTEM 'bad.dtd'>\n<a/>", 2, "bad.dtd", 3, u"<!ELEMENT b>"_s, u"blank"_s},
            {"<!DOCTYPE a [\n<!ENTITY % p SYSTEM 'bad.dtd'>\n%p;\n]><a/>", 3, "bad.dtd", 3, u"<!ELEMENT b>"_s,
             u"blank"_s},
            {"<!DOCTYPE a [" + inner + "]>\n<a>\n&inner;\n</a>", 3, "bad.ent", 3, u"  <c></d>"_s,
             u"\"c\" of line 3"_s},
            {"<!DOCTYPE a [" + inner + "<!ENTITY e SYSTEM 'outer.ent'>]>\n<a>&e;</a>", 2, "bad.ent", 3,
             u"  <c></d>"_s, u"\"c\""_s},
            {"<!DOCTYPE a [" + inner + "<!ENTITY e '<y>&inner;</y>'>]>\n<a>&e;</a>", 2, "bad.ent", 3,
             u"  <c></d>"_s, u"\"c\""_s},
            {"<!DOCTYPE a [<!ENTITY e SYSTEM 'bytes.ent'>]>\n<a>&e;</a>", 2, "bytes.ent", 2, {}, u"UTF-8"_s},
            {"<!DOCTYPE a [<!ENTITY e SYSTEM 'coding.ent'>]>\n<a>&e;</a>",
             2,
             "coding.ent",
             1,
             {},
             u"x-none"_s},
            {"<!DOCTYPE a [<!ENTITY e SYSTEM 'later.ent'>]>\n<a>&e;</a>", 2, "later.ent", 1, {}, u"1.1"_s},
            {"<!DOCTYPE a SYSTEM 'open.dtd'><a/>", 1, "open.dtd", 1, {}, u"same entity"_s},
        };
        for (const auto &[text, line, file, fileLine, sourceText, words] : rows) {
            const auto error = checkWellFormed(text, folder_.path());
            QVERIFY2(error && error->file, text);
            QCOMPARE(int(error->line), line);
            QCOMPARE(QFileInfo(error->file->path).fileName(), QLatin1String(file));
            QCOMPARE(int(error->file->line), fileLine);
            QVERIFY2(sourceText.isEmpty() || error->file->sourceText == sourceText,
                     qPrintable(error->file->sourceText));
            QVERIFY2(error->reason.contains(words) && error->reason.contains(error->file->path),
                     qPrintable(error->reason));
        }
        const auto value = checkWellFormed("<!DOCTYPE a [<!ENTITY e '<b>'>]>\n<a>\n&e;</a>");
        QVERIFY(value && !value->file);
        QCOMPARE(int(value->line), 3);
        QCOMPARE(int(value->position), 1);
    }

    void canBeStopped()
    {
        const QByteArray wide = "<a>" + QByteArray("<b/>").repeated(200'000) + "</a>";
        const QByteArray inEntity = "<!DOCTYPE a [<!ENTITY e '" + wide + "'>]><a>&e;&none;</a>";
        for (const QByteArray &text : {wide, inEntity}) {
            int asked = 0;
            const auto stopped = checkWellFormed(text, {}, nullptr, [&asked] { return ++asked < 3; });
            QVERIFY(stopped && stopped->stopped);
            QCOMPARE(asked, 3);
        }
        QVERIFY(!checkWellFormed(wide, {}, nullptr, [] { return true; }));
    }

    // Each is short and would go on for hours, or fill any memory.
    void bombsAreRefused()
    {
        QByteArray nested = "<!ENTITY % e0 '0123456789'>";
        for (int i = 1; i < 12; ++i)
            nested += "<!ENTITY % e" + QByteArray::number(i) + " '"
                + ("%e" + QByteArray::number(i - 1) + ';').repeated(10) + "'>";
        write(folder_.filePath(u"nested.dtd"_s), nested);
        write(folder_.filePath(u"choices.dtd"_s),
              "<!ENTITY % p '" + QByteArray("x|").repeated(1000) + "y'><!ENTITY % q '"
                  + QByteArray("%p;|").repeated(2000) + "z'><!ATTLIST a b (%q;) #IMPLIED>");
        write(folder_.filePath(u"blanks"_s), QByteArray(1 << 20, ' '));
        write(folder_.filePath(u"itself"_s), "%e;");
        write(folder_.filePath(u"itself.ent"_s), "&e;");
        for (const QByteArray &text : {
                 bomb() + "<a>&e11;</a>",
                 bomb() + "\n<a x='&e11;'/>",
                 "<!DOCTYPE a [<!ENTITY e '" + QByteArray(100'000, 'x') + "'>]><a>"
                     + QByteArray("&e;").repeated(50'000) + "</a>",
                 QByteArray("<!DOCTYPE a SYSTEM 'nested.dtd'><a/>"),
                 QByteArray("<!DOCTYPE a SYSTEM 'choices.dtd'><a/>"),
                 "<!DOCTYPE a [<!ATTLIST a" + attributes(10'000).replace("=", " CDATA ") + ">]><r>"
                     + QByteArray("<a/>").repeated(100'000) + "</r>",
                 QByteArray("<!DOCTYPE a [<!ENTITY e SYSTEM 'itself.ent'>]><a>&e;</a>"),
                 "<!DOCTYPE a [<!ENTITY % e SYSTEM 'blanks'>" + QByteArray("%e;").repeated(100'000)
                     + "]><a/>",
                 QByteArray("<!DOCTYPE a [<!ENTITY % e SYSTEM 'itself'>%e;]><a/>"),
             })
            QVERIFY2(checkWellFormed(text, folder_.path()), text.left(200));
    }

private:
    QTemporaryDir folder_;
};

QTEST_APPLESS_MAIN(TestVerdict)
#include "test_verdict.moc"
