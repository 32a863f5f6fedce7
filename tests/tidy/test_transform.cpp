// Style sheets at work: what they may reach, what they may not, and that all of them end.
#include "tidy/transform.h"

#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <sys/stat.h>

using namespace tidy;

namespace {

QByteArray sheet(const QByteArray &body, const QByteArray &more = {})
{
    return "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' "
           "xmlns:exsl='http://exslt.org/common' xmlns:str='http://exslt.org/strings' "
           "xmlns:dyn='http://exslt.org/dynamic' xmlns:f='http://exslt.org/functions' "
           "extension-element-prefixes='exsl str dyn f'>\n"
        + more + "<xsl:template match='/'>" + body + "</xsl:template>\n</xsl:stylesheet>";
}

// A small text, but for what stands beside it.
const QByteArray entityInAFile
    = "<!DOCTYPE r [<!ENTITY e SYSTEM 'big.ent'>]><r>" + QByteArray("&e;").repeated(5000) + "</r>";

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

} // namespace

class TransformTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        const QDir dir(folder_->path());
        QVERIFY(dir.mkpath(QStringLiteral("sub")));
        write(dir.filePath(QStringLiteral("sub/lib.xsl")),
              sheet({},
                    "<xsl:template name='hello'><p>from lib <xsl:value-of "
                    "select=\"document('d.xml')/d\"/></p></xsl:template>"));
        write(dir.filePath(QStringLiteral("sub/d.xml")), "<d>inner</d>");
        write(dir.filePath(QStringLiteral("d.xml")), "<d>outer \xc3\xa9</d>");
    }

    void markup_data()
    {
        QTest::addColumn<QByteArray>("xsl");
        QTest::addColumn<QByteArray>("markup"); // empty where it is to fail
        const auto row = [](const char *title, const QByteArray &xsl, const QByteArray &markup) {
            QTest::newRow(title) << xsl << markup;
        };
        row("lone element", sheet("<html><body><p><xsl:value-of select='/r'/></p></body></html>"),
            "<html><body><p>Zo\xc3\xab &lt; \xf0\x9f\x98\x80</p></body></html>");
        row("second of two", sheet("<xsl:comment>c</xsl:comment><p>x</p>"), "<p>x</p>");
        row("second of three",
            sheet("<p>x</p><xsl:comment>c</xsl:comment><?y z?><xsl:processing-instruction name='q'/>"),
            "<!--c-->");
        row("document type counts",
            sheet("<html/>", "<xsl:output method='html' doctype-public='-//W3C//DTD HTML 4.01//EN'/>"),
            "<html></html>");
        row("lone comment", sheet("<xsl:comment>c</xsl:comment>"), {});
        row("text alone", sheet("x", "<xsl:output method='text'/>"), {});
        row("nothing", sheet({}), {});
        row("void and empty elements", sheet("<div><br/><i/><IMG src='a'/><script src='b'/></div>"),
            "<div><br/><i></i><IMG src=\"a\"/><script src=\"b\"></script></div>");
        row("script as it stands", sheet("<p><script>a &lt; b</script></p>"),
            "<p><script>a < b</script></p>");
        row("import beside the document",
            sheet("<xsl:call-template name='hello'/>", "<xsl:import href='sub/lib.xsl'/>"),
            "<p>from lib inner</p>");
        row("include beside the document",
            sheet("<xsl:call-template name='hello'/>", "<xsl:include href='sub/lib.xsl'/>")
                .replace("match='/'", "match='/r'"),
            {}); // the included sheet's template for the root comes first and gives nothing
        row("document()", sheet("<p><xsl:value-of select=\"document('d.xml')/d\"/></p>"),
            "<p>outer \xc3\xa9</p>");
        row("EXSLT", sheet("<p><xsl:value-of select=\"str:concat(exsl:node-set(/r)|/r)\"/></p>"),
            "<p>Zo\xc3\xab &lt; \xf0\x9f\x98\x80</p>");
        row("simplified sheet", "<p xsl:version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>s</p>",
            "<p>s</p>");
        row("no sheet at all", "<p/>", {});
        row("not well-formed", "<p>", {});
        row("missing import", sheet("<p/>", "<xsl:import href='none.xsl'/>"), {});
        row("ended by itself", sheet("<p><xsl:message terminate='yes'>no</xsl:message></p>"), {});
        row("unknown function", sheet("<p><xsl:value-of select='nope()'/></p>"), {});
        row("damaged expression", sheet("<p><xsl:value-of select='1 +'/></p>"), {});
    }
    void markup()
    {
        QFETCH(QByteArray, xsl);
        QFETCH(QByteArray, markup);
        const Transformation done = run("<r>Zo\xc3\xab &lt; &#128512;</r>", xsl);
        QCOMPARE(done.markup.ok() ? *done.markup : QByteArray(), markup);
        QCOMPARE(done.markup.reason().isEmpty(), done.markup.ok());
    }

    void messages()
    {
        const auto inSheet = TransformPlace::StyleSheet;
        const struct
        {
            QByteArray xml;
            QByteArray xsl;
            Severity severity;
            TransformPlace place;
            int line;
            const char *text;
        } rows[]
            = {{"<r/>", sheet("\n<p><xsl:message>a\n100%s</xsl:message></p>"), Severity::Information, inSheet,
                3, "a\n100%s"},
               {"<r/>", sheet("\n\n<p><xsl:value-of select='nope()'/></p>"), Severity::Error, inSheet, 4,
                "nope"},
               {"<r/>", sheet("\n<p><xsl:value-of select='1 +'/></p>"), Severity::Error, inSheet, 3, "1 +"},
               {"<r/>", "<a>\n</b>", Severity::Error, inSheet, 2, "mismatch"},
               {"<a>\n</b>", sheet("<p/>"), Severity::Error, TransformPlace::Document, 2, "mismatch"},
               {"<r/>", sheet("<p><xsl:value-of select=\"document('none.xml')\"/></p>"), Severity::Warning,
                inSheet, 2, "none.xml"}};
        for (const auto &row : rows) {
            const std::vector<TransformMessage> said = run(row.xml, row.xsl).messages;
            QVERIFY2(std::any_of(said.begin(), said.end(),
                                 [&](const TransformMessage &message) {
                                     return message.severity == row.severity && message.place == row.place
                                         && message.line == row.line
                                         && message.text.contains(QString::fromLatin1(row.text));
                                 }),
                     row.text);
        }
    }

    void loopsEnd_data()
    {
        QTest::addColumn<QByteArray>("xsl");
        QTest::newRow("template within itself") << sheet("<p><xsl:apply-templates select='/'/></p>");
        QTest::newRow("two each") << sheet(
            "<xsl:call-template name='t'/>",
            "<xsl:template name='t'><xsl:param name='n' select='100'/><xsl:if test='$n &gt; 0'>"
            "<xsl:call-template name='t'><xsl:with-param name='n' select='$n - 1'/></xsl:call-template>"
            "<xsl:call-template name='t'><xsl:with-param name='n' select='$n - 1'/></xsl:call-template>"
            "</xsl:if></xsl:template>");
        const QByteArray all
            = "(//node())[count(//node()[count(//node()[count(//node()) &gt; 0]) &gt; 0]) &gt; 0]";
        QTest::newRow("expression") << sheet("<p><xsl:value-of select='count(" + all + ")'/></p>");
        QTest::newRow("made on the spot") << sheet("<p><xsl:value-of select=\"dyn:evaluate('count(" + all
                                                   + ")')\"/><xsl:value-of select='//a'/></p>");
        QTest::newRow("function within itself")
            << sheet("<p xmlns:my='my'><xsl:value-of select='my:f(1)'/></p>",
                     "<f:function xmlns:my='my' name='my:f'><xsl:param name='n'/><f:result select='my:f($n + "
                     "1)'/></f:function>");
        QTest::newRow("keys") << sheet(
            "<p><xsl:for-each select='//a'><xsl:value-of select=\"count(key('k', //a))\"/>"
            "</xsl:for-each></p>",
            "<xsl:key name='k' match='a' use='//a'/>");
    }
    void loopsEnd()
    {
        QFETCH(QByteArray, xsl);
        const QByteArray xml = "<r>" + QByteArray("<a/>").repeated(2000) + "</r>";
        const Transformation done = run(xml, xsl, {500, 100'000, 1'000'000});
        QVERIFY(!done.markup.ok());
        QVERIFY(!done.messages.empty());
    }

    // Sheets that are short, take few instructions, and would fill any memory.
    void growthEnds_data()
    {
        QTest::addColumn<QByteArray>("xsl");
        const auto doubling = [](const QByteArray &next) {
            return sheet("<p><xsl:call-template name='t'/></p>",
                         "<xsl:template name='t'><xsl:param name='s' select=\"'0123456789'\"/><xsl:choose>"
                         "<xsl:when test='string-length($s) &lt; 4000000000'><xsl:call-template name='t'>"
                         "<xsl:with-param name='s' "
                             + next
                             + "</xsl:call-template></xsl:when><xsl:otherwise><xsl:value-of select='$s'/>"
                               "</xsl:otherwise></xsl:choose></xsl:template>");
        };
        QTest::newRow("text doubled") << doubling("select='concat($s, $s)'/>");
        QTest::newRow("text sixteen times itself")
            << doubling("select='concat(" + QByteArray("$s, ").repeated(15) + "$s)'/>");
        QTest::newRow("fragment doubled")
            << doubling("><xsl:value-of select='$s'/><xsl:value-of select='$s'/></xsl:with-param>");
        QTest::newRow("replaced by itself") << doubling("select=\"str:replace($s, '0', '0000000000')\"/>");
        QTest::newRow("cut up") << doubling("select=\"concat($s, str:tokenize($s, ''), $s)\"/>");
        QTest::newRow("entity in a file") << sheet("<p><xsl:value-of select=\"document('bomb.xml')\"/></p>");
        QTest::newRow("nodes") << sheet("<p><xsl:for-each select='//a'><xsl:for-each select='//a'>"
                                        "<xsl:for-each select='//a'><b/></xsl:for-each>"
                                        "</xsl:for-each></xsl:for-each></p>");
        QTest::newRow("copies") << sheet("<p><xsl:for-each select='//a'><xsl:for-each select='//a'>"
                                         "<xsl:copy-of select='/'/></xsl:for-each></xsl:for-each></p>");
    }
    void growthEnds()
    {
        QFETCH(QByteArray, xsl);
        write(folder_->filePath(QStringLiteral("bomb.xml")), entityInAFile);
        write(folder_->filePath(QStringLiteral("big.ent")), QByteArray("<a/>").repeated(10'000));
        TransformBounds bounds;
        bounds.memory = std::size_t{64} << 20;
        const Transformation done = run("<r>" + QByteArray("<a/>").repeated(1000) + "</r>", xsl, bounds);
        QVERIFY(!done.markup.ok());
        QVERIFY(!run(entityInAFile, sheet("<p/>"), bounds).markup.ok());
        QVERIFY(run("<r/>", sheet("<p>after</p>"), bounds).markup.ok());
    }

    // Each sheet imports the next one twice.
    void manyImportsEnd()
    {
        for (int level = 0; level < 24; ++level) {
            const QByteArray import = "<xsl:import href='" + QByteArray::number(level + 1) + ".xsl'/>";
            write(folder_->filePath(QStringLiteral("%1.xsl").arg(level)), sheet("<p/>", import + import));
        }
        write(folder_->filePath(QStringLiteral("24.xsl")), sheet("<p/>"));
        QVERIFY(!run("<r/>", sheet("<p/>", "<xsl:import href='0.xsl'/>")).markup.ok());
    }

    void messagesEnd()
    {
        TransformBounds bounds;
        bounds.messages = 100;
        const Transformation done = run("<r>" + QByteArray("<a/>").repeated(1000) + "</r>",
                                        sheet("<p><xsl:for-each select='//a'><xsl:message>m</xsl:message>"
                                              "</xsl:for-each></p>"),
                                        bounds);
        QVERIFY(done.markup.ok());
        QCOMPARE(done.messages.size(), size_t(101));
        QVERIFY(done.messages.back().text.contains(QStringLiteral("left out")));
    }

    void writesNothing()
    {
        const QByteArray spaces = " xmlns:saxon='http://icl.com/saxon' xmlns:redirect='org.apache.xalan."
                                  "xslt.extensions.Redirect' xmlns:xt='http://www.jclark.com/xt'"
                                  " xsl:extension-element-prefixes='saxon redirect xt'";
        for (const char *element : {"exsl:document", "xsl:document", "xsl:result-document", "saxon:output",
                                    "redirect:write", "xt:document"}) {
            for (const QByteArray href : {"new/out.txt", "out.txt"}) {
                const QByteArray open = element + (" href='" + href) + "' file='" + href + "'";
                const Transformation done
                    = run("<r/>", sheet("<p" + spaces + "><" + open + ">x</" + element + "></p>"));
                QVERIFY(qstrcmp(element, "exsl:document") != 0 || !done.markup.ok());
            }
        }
        QCOMPARE(QDir(folder_->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList({QStringLiteral("d.xml"), QStringLiteral("sub")}));
    }

    void reachesNothingElse_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QByteArray>("xsl"); // URL stands for each of the targets
        const auto row = [](const char *name, const QByteArray &xml, const QByteArray &xsl) {
            QTest::newRow(name) << xml << xsl;
        };
        row("import", "<r/>", sheet("<p/>", "<xsl:import href='URL'/>"));
        row("include", "<r/>", sheet("<p/>", "<xsl:include href='URL'/>"));
        row("document()", "<r/>", sheet("<p><xsl:value-of select=\"document('URL')\"/></p>"));
        row("entity", "<!DOCTYPE r [<!ENTITY e SYSTEM 'URL'>]><r>&e;</r>", sheet("<p/>"));
        row("document type", "<!DOCTYPE r SYSTEM 'URL'><r/>", sheet("<p/>"));
        row("writing", "<r/>", sheet("<exsl:document href='URL'>x</exsl:document>"));
    }
    void reachesNothingElse()
    {
        QFETCH(QByteArray, xml);
        QFETCH(QByteArray, xsl);
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const QByteArray host = "://127.0.0.1:" + QByteArray::number(server.serverPort()) + "/x";
        const QString pipe = folder_->filePath(QStringLiteral("pipe"));
        QVERIFY(mkfifo(QFile::encodeName(pipe).constData(), 0666) == 0);
        for (const QByteArray &target : {"http" + host, "ftp" + host, "file" + host, pipe.toUtf8(),
                                         QByteArray("/dev/zero"), QByteArray("sub")}) {
            const Transformation done
                = run(QByteArray(xml).replace("URL", target), QByteArray(xsl).replace("URL", target));
            QVERIFY2(done.markup.ok() || !done.messages.empty(), target.constData());
        }
        QVERIFY(!server.waitForNewConnection(0));
    }

private:
    Transformation run(const QByteArray &xml, const QByteArray &xsl, const TransformBounds &bounds = {}) const
    {
        const QString folder = folder_->path();
        return transform({xml, folder + QStringLiteral("/a b\u00e9%20.xml")},
                         {xsl, folder + QStringLiteral("/a b\u00e9%20.xsl")}, bounds);
    }

    std::unique_ptr<QTemporaryDir> folder_;
};

QTEST_GUILESS_MAIN(TransformTest)
#include "test_transform.moc"
