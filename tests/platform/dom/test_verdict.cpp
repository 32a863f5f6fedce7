#include "platform/dom/verdict.h"

#include <QTemporaryDir>
#include <QTest>

using namespace dom;

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
    void accepted_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("plain") << QByteArray("<a/>");
        QTest::newRow("declares UTF-16 but is text in memory")
            << QByteArray("<?xml version='1.0' encoding='UTF-16'?><a>é</a>");
        QTest::newRow("unknown encoding name") << QByteArray("<?xml version='1.0' encoding='x-none'?><a/>");
        QTest::newRow("5,000 levels") << QByteArray("<a>").repeated(5000) + QByteArray("</a>").repeated(5000);
        QTest::newRow("200,000 levels")
            << QByteArray("<a>").repeated(200000) + QByteArray("</a>").repeated(200000);
        QTest::newRow("one text of 30 MB") << "<a>" + QByteArray(30'000'000, 'x') + "</a>";
        QTest::newRow("entity used often and honestly") << "<!DOCTYPE a [<!ENTITY e 'value'>]><a>"
                + QByteArray("<b x='&e;'>&e;</b>").repeated(20000) + "</a>";
        QTest::newRow("undeclared entity, document type out of reach")
            << QByteArray("<!DOCTYPE a SYSTEM 'http://nowhere.invalid/a.dtd'><a>&nbsp;</a>");
        QTest::newRow("doubtful namespace name") << QByteArray("<a xmlns='not a uri'/>");
        QTest::newRow("document type missing locally") << QByteArray("<!DOCTYPE a SYSTEM 'missing.dtd'><a/>");
    }
    void accepted()
    {
        QFETCH(QByteArray, text);
        const auto error = checkWellFormed(text);
        QVERIFY2(!error, error ? qPrintable(error->reason) : "");
    }

    void refused_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("position"); // 0: not looked at
        QTest::addColumn<QString>("sourceText");
        const auto row
            = [](const char *name, const QByteArray &text, int line, int position, const QString &source) {
                  QTest::newRow(name) << text << line << position << source;
              };
        row("empty", "", 1, 1, {});
        row("text only", "hello", 1, 1, QStringLiteral("hello"));
        row("unclosed", "<a>\n <b>\n</a>", 3, 5, QStringLiteral("</a>"));
        row("CR LF lines", "<a>\r\n <b>\r\n</a>", 3, 5, QStringLiteral("</a>"));
        row("characters, not bytes", "<a>\n<é>ü</b></a>", 2, 9, QStringLiteral("<é>ü</b></a>"));
        row("two document elements", "<a/>\n<b/>", 2, 1, QStringLiteral("<b/>"));
        row("duplicate attribute", "<a x='1' x='2'/>", 1, 0, QStringLiteral("<a x='1' x='2'/>"));
        row("undeclared prefix", "<a>\n<p:b/></a>", 2, 0, QStringLiteral("<p:b/></a>"));
        row("one attribute by two prefixes", "<a xmlns:p='u' xmlns:q='u' p:x='' q:x=''/>", 1, 0,
            QStringLiteral("<a xmlns:p='u' xmlns:q='u' p:x='' q:x=''/>"));
        row("undeclared entity", "<a>&none;</a>", 1, 0, QStringLiteral("<a>&none;</a>"));
        row("NUL", QByteArray("<a>\nx\0y</a>", 11), 2, 2, QStringLiteral("x%1y</a>").arg(QChar(0)));
        row("NUL after the end", QByteArray("<a/>\n\0", 6), 2, 1, QString(QChar(0)));
        row("control character", "<a>\x01</a>", 1, 4, QStringLiteral("<a>\x01</a>"));
        row("overlong UTF-8", "<a>\xc0\xbc</a>", 1, 0, {});
        row("surrogate in UTF-8", "<a>\xed\xa0\x80</a>", 1, 0, {});
        row("entity in itself", "<!DOCTYPE a [<!ENTITY e '&e;'>]>\n<a>&e;</a>", 2, 0, {});
        row("truncated", "<a><b>text", 1, 11, QStringLiteral("<a><b>text"));
    }
    void refused()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, position);
        QFETCH(QString, sourceText);
        const auto error = checkWellFormed(text);
        QVERIFY(error && error->code != 0 && !error->reason.isEmpty());
        QTEST(int(error->line), "line");
        QVERIFY(position == 0 || error->position == position);
        QVERIFY2(sourceText.isEmpty() || error->sourceText == sourceText, qPrintable(error->sourceText));
    }

    void longLineIsCutAroundTheFault()
    {
        const QByteArray filling = QByteArray("é").repeated(500'000);
        const auto error = checkWellFormed("<a>" + filling + "<b></c>" + filling + "</a>");
        QVERIFY(error);
        QVERIFY(error->sourceText.size() < 200);
        QVERIFY(error->sourceText.contains(QStringLiteral("<b></c>")));
        QVERIFY(!error->sourceText.contains(QChar::ReplacementCharacter));
        QCOMPARE(error->line, 1);
    }

    void entitiesAreCollected()
    {
        Entities entities;
        QVERIFY(!checkWellFormed(
            "<!DOCTYPE a [<!ENTITY x 'one'><!ENTITY x 'two'><!ENTITY y '&#60;b/>'>]><a/>", {}, &entities));
        QCOMPARE(entities.size(), 2);
        QCOMPARE(entities.value("x"), QByteArray("one"));
        QCOMPARE(entities.value("y"), QByteArray("<b/>"));
    }

    void externalSubsetComesFromLocalFilesOnly()
    {
        write(folder_.filePath(QStringLiteral("good one.dtd")), "<!ENTITY e 'here'>");
        write(folder_.filePath(QStringLiteral("more.ent")), "<!ENTITY f 'there'>");
        Entities entities;
        const auto error = checkWellFormed(
            "<!DOCTYPE a SYSTEM 'good%20one.dtd' [<!ENTITY % m SYSTEM 'more.ent'> %m;]><a>&e;&f;</a>",
            folder_.path(), &entities);
        QVERIFY2(!error, error ? qPrintable(error->reason) : "");
        QCOMPARE(entities.value("e"), QByteArray("here"));
        QCOMPARE(entities.value("f"), QByteArray("there"));
    }

    // Each is short and would go on for hours, or fill any memory.
    void bombsAreRefused_data()
    {
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const char *name, const QByteArray &text) { QTest::newRow(name) << text; };
        QByteArray nested = "<!ENTITY % e0 '0123456789'>";
        for (int i = 1; i < 12; ++i)
            nested += "<!ENTITY % e" + QByteArray::number(i) + " '"
                + ("%e" + QByteArray::number(i - 1) + ';').repeated(10) + "'>";
        row("in content", bomb() + "<a>&e11;</a>");
        row("in an attribute", bomb() + "\n<a x='&e11;'/>");
        row("quadratic",
            "<!DOCTYPE a [<!ENTITY e '" + QByteArray(100'000, 'x') + "'>]><a>"
                + QByteArray("&e;").repeated(50'000) + "</a>");
        row("of parameter entities", "<!DOCTYPE a SYSTEM 'nested.dtd'><a/>");
        row("one file again and again",
            "<!DOCTYPE a [<!ENTITY % e SYSTEM 'blanks'>" + QByteArray("%e;").repeated(100'000) + "]><a/>");
        row("a file in itself", "<!DOCTYPE a [<!ENTITY % e SYSTEM 'itself'>%e;]><a/>");
        write(folder_.filePath(QStringLiteral("nested.dtd")), nested);
        write(folder_.filePath(QStringLiteral("blanks")), QByteArray(1 << 20, ' '));
        write(folder_.filePath(QStringLiteral("itself")), "%e;");
    }
    void bombsAreRefused()
    {
        QFETCH(QByteArray, text);
        QVERIFY(checkWellFormed(text, folder_.path()));
    }

private:
    QTemporaryDir folder_;
};

QTEST_APPLESS_MAIN(TestVerdict)
#include "test_verdict.moc"
