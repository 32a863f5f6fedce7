#include "platform/dom/verdict.h"

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
        };
        for (const auto &[name, text, line, position, sourceText] : rows) {
            const auto error = checkWellFormed(text);
            QVERIFY2(error && error->code != 0 && !error->reason.isEmpty(), name);
            QCOMPARE(int(error->line), line);
            QVERIFY(position == 0 || error->position == position);
            QVERIFY2(sourceText.isEmpty() || error->sourceText == sourceText, qPrintable(error->sourceText));
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

    // Each is short and would go on for hours, or fill any memory.
    void bombsAreRefused()
    {
        QByteArray nested = "<!ENTITY % e0 '0123456789'>";
        for (int i = 1; i < 12; ++i)
            nested += "<!ENTITY % e" + QByteArray::number(i) + " '"
                + ("%e" + QByteArray::number(i - 1) + ';').repeated(10) + "'>";
        write(folder_.filePath(u"nested.dtd"_s), nested);
        write(folder_.filePath(u"blanks"_s), QByteArray(1 << 20, ' '));
        write(folder_.filePath(u"itself"_s), "%e;");
        for (const QByteArray &text : {
                 bomb() + "<a>&e11;</a>",
                 bomb() + "\n<a x='&e11;'/>",
                 "<!DOCTYPE a [<!ENTITY e '" + QByteArray(100'000, 'x') + "'>]><a>"
                     + QByteArray("&e;").repeated(50'000) + "</a>",
                 QByteArray("<!DOCTYPE a SYSTEM 'nested.dtd'><a/>"),
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
