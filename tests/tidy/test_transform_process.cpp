// The program that carries out style sheets: it answers, it is ended, and it ends by itself where it must.
#include "tidy/transform_process.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace tidy;
using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60'000; // ms; only ever waited out by a fault

QByteArray sheet(const QByteArray &body)
{
    return "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' "
           "xmlns:str='http://exslt.org/strings' extension-element-prefixes='str'>"
           "<xsl:template match='/'>"
        + body + "</xsl:template></xsl:stylesheet>";
}

TransformJob job(const QByteArray &xsl, const QByteArray &xml = "<r>x</r>")
{
    return {{xml, u"/none/a.xml"_s}, {xsl, u"/none/a.xsl"_s}, {}, {}};
}

// One search takes hours, and none of the library's counts sees it.
TransformJob endless()
{
    return job(sheet("<p><xsl:message>begun</xsl:message><xsl:value-of "
                     "select=\"contains(/r, concat(substring(/r, 2000000), 'b'))\"/></p>"),
               "<r>" + QByteArray(4'000'000, 'a') + "</r>");
}

// What came of it.
Transformation outcome(TransformProcess &process)
{
    Transformation got;
    bool over = false;
    const auto link
        = QObject::connect(&process, &TransformProcess::finished, [&](const Transformation &done) {
              got = done;
              over = true;
          });
    [&] { QTRY_VERIFY_WITH_TIMEOUT(over, patience); }();
    QObject::disconnect(link);
    return got;
}

} // namespace

class TransformProcessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers()
    {
        TransformProcess process(QStringLiteral(XE_TRANSFORMER));
        const std::tuple<QByteArray, QByteArray, const char *> rows[] = {
            {sheet("<p><xsl:value-of select='/r'/></p>"), "<p>x</p>", ""},
            {sheet("<p><xsl:message>m \xc3\xa9</xsl:message></p>"), "<p></p>", "m \xc3\xa9"},
            {sheet("<p><xsl:message terminate='yes'>last words</xsl:message></p>"), {}, "last words"},
            {sheet("<p><xsl:value-of select='nope()'/></p>"), {}, "nope"},
            {"<p>", {}, "p"},
            {sheet("<p><xsl:for-each select=\"str:tokenize(str:padding(1000, 'a '))\"><xsl:value-of "
                   "select=\"str:padding(20000, 'a')\"/></xsl:for-each></p>"),
             "<p>" + QByteArray(10'000'000, 'a') + "</p>", ""},
        };
        for (const auto &[xsl, markup, said] : rows) {
            process.start(job(xsl));
            QVERIFY(process.isRunning());
            const Transformation done = outcome(process);
            QVERIFY(!process.isRunning());
            QCOMPARE(done.markup.ok() ? *done.markup : QByteArray(), markup);
            QCOMPARE(done.markup.reason().isEmpty(), done.markup.ok());
            const QString text = done.messages.empty() ? QString() : done.messages.front().text;
            QVERIFY2(text.contains(QString::fromUtf8(said)) && text.isEmpty() == (*said == 0), said);
        }
    }

    void carriesWhatIsLacking()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(u"d.xml"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("<d>elsewhere</d>") > 0);
        file.close();
        const QByteArray body
            = "<p><xsl:value-of select=\"document('" + file.fileName().toUtf8() + "')\"/></p>";
        TransformJob wanted = job(sheet(body).replace("version='1.0'", "version='2.0'"));
        TransformProcess process(QStringLiteral(XE_TRANSFORMER));
        process.start(wanted);
        QCOMPARE(outcome(process).newerSheets, QStringList{u"a.xsl (version 2.0)"_s});
        wanted.licence.newerSheets = true;
        process.start(wanted);
        wanted.licence.files = outcome(process).refused;
        QCOMPARE(wanted.licence.files.size(), 1);
        process.start(wanted);
        QCOMPARE(*outcome(process).markup, QByteArray("<p>elsewhere</p>"));
    }

    void isEnded()
    {
        enum End
        {
            Cancelled,
            TooLong,
            TooLarge
        };
        const std::tuple<End, const char *> rows[]
            = {{Cancelled, "cancelled"}, {TooLong, "more time"}, {TooLarge, "more memory"}};
        for (const auto &[end, reason] : rows) {
            TransformProcess process(QStringLiteral(XE_TRANSFORMER));
            TransformJob wanted = endless();
            wanted.bounds.seconds = end == TooLong ? 1 : 600;
            if (end == TooLarge) {
                wanted.styleSheet.utf8 = sheet("<p><xsl:value-of select=\"str:padding(9000, 'a')\"/></p>");
                wanted.bounds.output = 5000;
            }
            process.start(wanted);
            if (end == Cancelled)
                process.cancel();
            const Transformation done = outcome(process);
            QVERIFY2(!done.markup.ok() && done.markup.reason().contains(QLatin1String(reason)),
                     qPrintable(done.markup.reason()));
            if (end == TooLong) // what was said before is not lost
                QCOMPARE(done.messages.size(), size_t(1));
            process.start(job(sheet("<p>after</p>")));
            QVERIFY(outcome(process).markup.ok());
        }
    }

    // However the editor ended: nobody listens any more.
    void leavesNothingRunning()
    {
        QProcess alone;
        alone.start(QStringLiteral(XE_TRANSFORMER), QStringList());
        alone.write(jobBlock(endless()));
        QTRY_VERIFY_WITH_TIMEOUT(alone.bytesAvailable() > 0, patience); // it has begun
        alone.closeWriteChannel();
        QVERIFY(alone.waitForFinished(patience));
        QVERIFY(alone.exitCode() != 0);
    }

    void badAnswers()
    {
        const std::tuple<const char *, QString> rows[]
            = {{"none", u"/none/at/all"_s}, {"nothing", u"/bin/true"_s}, {"anything", u"/bin/cat"_s}};
        for (const auto &[name, program] : rows) {
            TransformProcess process(program);
            process.start(job(sheet("<p/>")));
            QVERIFY2(!outcome(process).markup.reason().isEmpty(), name);
        }
        const QByteArray whole
            = messageBlock({Severity::Warning, TransformPlace::OtherFile, 3, u"f"_s, u"t"_s})
            + outcomeBlock({QByteArray("<p/>"), {}, {u"a"_s}, {u"b"_s}});
        TransformAnswer bytewise;
        for (const char byte : whole)
            QVERIFY(!bytewise.isWhole() && bytewise.take(QByteArray(1, byte)));
        QVERIFY(bytewise.isWhole());
        QCOMPARE(bytewise.transformation().messages.front(),
                 (TransformMessage{Severity::Warning, TransformPlace::OtherFile, 3, u"f"_s, u"t"_s}));
        QVERIFY(!TransformAnswer().take(QByteArray(lengthBytes, '\xff')));
    }
};

QTEST_GUILESS_MAIN(TransformProcessTest)
#include "test_transform_process.moc"
