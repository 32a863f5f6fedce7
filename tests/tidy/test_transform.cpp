// Style sheets at work: what they may reach, what they may not, and that all of them end.
#include "tidy/transform.h"

#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace tidy;
using namespace Qt::StringLiterals;

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
    // The catalogs of this machine are none of ours: the library reads one of our own, and once.
    void initTestCase()
    {
        const QDir dir(elsewhere_.path());
        QVERIFY(dir.mkpath(u"types/more"_s));
        write(dir.filePath(u"types/known.dtd"_s),
              "<!ENTITY mdash '&#8212;'><!ENTITY % more PUBLIC '-//x//more' 'more/more.ent'>%more;");
        write(dir.filePath(u"types/more/more.ent"_s), "<!ENTITY hellip '&#8230;'>");
        write(dir.filePath(u"types/known.xml"_s), "<d>catalogued</d>");
        write(dir.filePath(u"secret.txt"_s), "secret");
        write(dir.filePath(u"secret.xml"_s), "<d>secret</d>");
        write(dir.filePath(u"secret.dtd"_s), "<!ENTITY mdash 'secret'>");
        write(dir.filePath(u"lib.xsl"_s),
              sheet({}, "<xsl:template name='hello'><p>from elsewhere</p></xsl:template>"));
        write(dir.filePath(u"catalog.xml"_s),
              "<catalog xmlns='urn:oasis:names:tc:entity:xmlns:xml:catalog'>"
              "<public publicId='-//x//known' uri='types/known.dtd'/>"
              "<system systemId='http://x.test/known.dtd' uri='types/known.dtd'/>"
              "<rewriteURI uriStartString='http://x.test/' rewritePrefix='types/'/>"
              "<rewriteSystem systemIdStartString='http://x.test/' rewritePrefix='types/'/></catalog>");
        qputenv("XML_CATALOG_FILES", QUrl::fromLocalFile(dir.filePath(u"catalog.xml"_s)).toEncoded());
    }

    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        const QDir dir(folder_->path());
        QVERIFY(dir.mkpath(u"sub"_s));
        write(dir.filePath(u"sub/lib.xsl"_s),
              sheet({},
                    "<xsl:template name='hello'><p>from lib <xsl:value-of "
                    "select=\"document('d.xml')/d\"/></p></xsl:template>"));
        write(dir.filePath(u"sub/d.xml"_s), "<d>inner</d>");
        write(dir.filePath(u"d.xml"_s), "<d>outer \xc3\xa9</d>");
    }

    void markup()
    {
        const std::tuple<const char *, QByteArray, QByteArray> rows[] = {
            {"lone element", sheet("<html><body><p><xsl:value-of select='/r'/></p></body></html>"),
             "<html><body><p>Zo\xc3\xab &lt; \xf0\x9f\x98\x80</p></body></html>"},
            {"second of two", sheet("<xsl:comment>c</xsl:comment><p>x</p>"), "<p>x</p>"},
            {"second of three",
             sheet("<p>x</p><xsl:comment>c</xsl:comment><?y z?><xsl:processing-instruction name='q'/>"),
             "<!--c-->"},
            {"document type counts",
             sheet("<html/>", "<xsl:output method='html' doctype-public='-//W3C//DTD HTML 4.01//EN'/>"),
             "<html></html>"},
            {"lone comment", sheet("<xsl:comment>c</xsl:comment>"), {}},
            {"text alone", sheet("x", "<xsl:output method='text'/>"), {}},
            {"nothing", sheet({}), {}},
            {"void and empty elements", sheet("<div><br/><i/><IMG src='a'/><script src='b'/></div>"),
             "<div><br/><i></i><IMG src=\"a\"/><script src=\"b\"></script></div>"},
            {"script as it stands", sheet("<p><script>a &lt; b</script></p>"),
             "<p><script>a < b</script></p>"},
            {"import beside the document",
             sheet("<xsl:call-template name='hello'/>", "<xsl:import href='sub/lib.xsl'/>"),
             "<p>from lib inner</p>"},
            {"include beside the document, whose template for the root comes first and gives nothing",
             sheet("<xsl:call-template name='hello'/>", "<xsl:include href='sub/lib.xsl'/>")
                 .replace("match='/'", "match='/r'"),
             {}},
            {"document()", sheet("<p><xsl:value-of select=\"document('d.xml')/d\"/></p>"),
             "<p>outer \xc3\xa9</p>"},
            {"EXSLT", sheet("<p><xsl:value-of select=\"str:concat(exsl:node-set(/r)|/r)\"/></p>"),
             "<p>Zo\xc3\xab &lt; \xf0\x9f\x98\x80</p>"},
            {"simplified sheet",
             "<p xsl:version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>s</p>", "<p>s</p>"},
            {"no sheet at all", "<p/>", {}},
            {"not well-formed", "<p>", {}},
            {"missing import", sheet("<p/>", "<xsl:import href='none.xsl'/>"), {}},
            {"ended by itself", sheet("<p><xsl:message terminate='yes'>no</xsl:message></p>"), {}},
            {"unknown function", sheet("<p><xsl:value-of select='nope()'/></p>"), {}},
            {"damaged expression", sheet("<p><xsl:value-of select='1 +'/></p>"), {}},
        };
        for (const auto &[title, xsl, markup] : rows) {
            const Transformation done = run("<r>Zo\xc3\xab &lt; &#128512;</r>", xsl);
            QCOMPARE(done.markup.ok() ? *done.markup : QByteArray(), markup);
            QCOMPARE(done.markup.reason().isEmpty(), done.markup.ok());
        }
    }

    void messages()
    {
        const auto inSheet = TransformPlace::StyleSheet;
        const std::tuple<QByteArray, QByteArray, Severity, TransformPlace, int, const char *> rows[] = {
            {"<r/>", sheet("\n<p><xsl:message>a\n100%s</xsl:message></p>"), Severity::Information, inSheet, 3,
             "a\n100%s"},
            {"<r/>", sheet("\n\n<p><xsl:value-of select='nope()'/></p>"), Severity::Error, inSheet, 4,
             "nope"},
            {"<r/>", sheet("\n<p><xsl:value-of select='1 +'/></p>"), Severity::Error, inSheet, 3, "1 +"},
            {"<r/>", "<a>\n</b>", Severity::Error, inSheet, 2, "end tag is that of"},
            {"<a>\n</b>", sheet("<p/>"), Severity::Error, TransformPlace::Document, 2, "end tag is that of"},
            {"<r/>", sheet("<p><xsl:value-of select=\"document('none.xml')\"/></p>"), Severity::Warning,
             inSheet, 2, "none.xml"}};
        for (const auto &[xml, xsl, severity, place, line, text] : rows) {
            bool said = false;
            for (const TransformMessage &message : run(xml, xsl).messages)
                said = said
                    || (message.severity == severity && message.place == place && message.line == line
                        && message.text.contains(QLatin1String(text)));
            QVERIFY2(said, text);
        }
    }

    // What a text refers to is in the result, or there is none; and no file from elsewhere is.
    void references()
    {
        const QByteArray copying = sheet("<p><xsl:value-of select='/r'/></p>");
        const auto loading = [](const QByteArray &reference) {
            return sheet("<p><xsl:value-of select=\"document('" + reference + "')/d\"/></p>");
        };
        const auto typed = [](const QByteArray &type, const QByteArray &text) {
            return "<!DOCTYPE r " + type + ">\n<r>" + text + "</r>";
        };
        enum Outcome
        {
            Made,
            Lacking,
            Refused
        };
        const std::tuple<QByteArray, QByteArray, Outcome, QByteArray> rows[] = {
            {typed("PUBLIC '-//x//known' 'none.dtd'", "a&mdash;b&hellip;"), copying, Made, "a\u2014b\u2026"},
            {typed("SYSTEM 'http://x.test/known.dtd'", "a&mdash;b"), copying, Made, "a\u2014b"},
            {typed("SYSTEM 'none.dtd'", "a&mdash;b"), copying, Lacking, "line 2: the entity \"mdash\""},
            {typed("SYSTEM 'http://y.test/known.dtd'", "a&mdash;b"), copying, Lacking, "y.test"},
            {typed("SYSTEM 'none.dtd' [<!ENTITY e '&mdash;'>]", "&e;"), copying, Lacking, "mdash"},
            {typed("SYSTEM 'none.dtd'", "<a b='&mdash;'/>"), copying, Lacking, "mdash"},
            {typed("SYSTEM 'none.dtd'", "ab"), copying, Made, "ab"},
            {typed("[<!ENTITY e SYSTEM 'sub/e.txt'>]", "&e;"), copying, Made, "beside"},
            {typed("[<!ENTITY e SYSTEM 'my \u00e9.txt'>]", "&e;"), copying, Made, "blank"},
            {typed("[<!ENTITY e SYSTEM 'none.txt'>]", "&e;"), copying, Lacking, "line 2: the entity \"e\""},
            {typed("[<!ENTITY e SYSTEM 'http://x.test/../secret.txt'>]", "&e;"), copying, Lacking, "e"},
            {typed("[<!ENTITY e SYSTEM 'ELSEWHERE/secret.txt'>]", "&e;"), copying, Refused, "secret.txt"},
            {typed("[<!ENTITY e SYSTEM 'linked.txt'>]", "&e;"), copying, Refused, "secret.txt"},
            {typed("[<!ENTITY e SYSTEM 'ELSEWHERE/secret.txt'>]", "none used"), copying, Made, "none used"},
            {typed("SYSTEM 'ELSEWHERE/secret.dtd'", "&mdash;"), copying, Refused, "secret.dtd"},
            {"<r/>",
             typed("[<!ENTITY e SYSTEM 'ELSEWHERE/secret.txt'>]", "").replace("<r></r>", "")
                 + QByteArray(copying).replace("<p>", "<p>&e;"),
             Refused, "secret.txt"},
            {"<r/>", loading("my data.xml"), Made, "blank"},
            {"<r/>", loading("M\u00fcll.xml"), Made, "accent"},
            {"<r/>", loading("my%20data.xml"), Made, "blank"},
            {"<r><f>my data.xml</f><f>M\u00fcll.xml</f></r>",
             sheet("<p><xsl:for-each select='document(/r/f)'><xsl:value-of select='.'/>,</xsl:for-each></p>"),
             Made, "blank,accent,"},
            {"<r/>", sheet("<p><xsl:value-of select=\"document('d.xml', document('sub/d.xml'))/d\"/></p>"),
             Made, "inner"},
            {"<r/>", sheet("<p><xsl:value-of select=\"count(document('')/*/*)\"/></p>"), Made, "1"},
            {"<r/>", loading("http://x.test/known.xml"), Made, "catalogued"},
            {"<r/>", loading("http://x.test/more/%2E%2E/../../secret.xml"), Lacking, "x.test"},
            {"<r/>", loading("ELSEWHERE/secret.xml"), Refused, "secret.xml"},
            {"<r/>", loading("../WITHOUT/secret.xml"), Refused, "secret.xml"},
            {"<r/>", loading("lacking.xml"), Lacking, "mdash"},
            {"<r/>", sheet("<xsl:call-template name='hello'/>", "<xsl:import href='ELSEWHERE/lib.xsl'/>"),
             Made, "from elsewhere"},
            {"<r/>", sheet("<xsl:call-template name='hello'/>", "<xsl:include href='my lib.xsl'/>"), Made,
             "blank"},
        };
        write(folder_->filePath(u"sub/e.txt"_s), "beside");
        write(folder_->filePath(u"my \u00e9.txt"_s), "blank");
        write(folder_->filePath(u"my data.xml"_s), "<d>blank</d>");
        write(folder_->filePath(u"M\u00fcll.xml"_s), "<d>accent</d>");
        write(folder_->filePath(u"lacking.xml"_s), "<!DOCTYPE d SYSTEM 'none.dtd'><d>&mdash;</d>");
        write(folder_->filePath(u"my lib.xsl"_s),
              sheet({}, "<xsl:template name='hello'><p>blank</p></xsl:template>"));
        QVERIFY(QFile::link(elsewhere_.filePath(u"secret.txt"_s), folder_->filePath(u"linked.txt"_s)));
        for (auto [xml, xsl, outcome, text] : rows) {
            for (QByteArray *input : {&xml, &xsl})
                input->replace("ELSEWHERE", elsewhere_.path().toUtf8())
                    .replace("WITHOUT", QFileInfo(elsewhere_.path()).fileName().toUtf8());
            TransformJob wanted = job(xml, xsl);
            const Transformation done = transform(wanted);
            const QByteArray shown = done.markup ? *done.markup : done.markup.reason().toUtf8();
            QVERIFY2(done.markup.ok() == (outcome == Made), shown + xml + xsl);
            QVERIFY2(shown.toLower().contains(text.toLower()), shown + xml + xsl);
            QCOMPARE(done.refused.isEmpty(), outcome != Refused);
            if (outcome != Refused)
                continue;
            QVERIFY2(!QByteArray(shown).replace("secret.", "").contains("secret"), shown);
            wanted.licence.files = done.refused;
            QVERIFY2(transform(wanted).markup.ok(), xml + xsl);
        }
    }

    void versions()
    {
        const std::tuple<QByteArray, QStringList> rows[]
            = {{sheet("<p/>"), {}},
               {sheet("<p/>").replace("'1.0'", "'1.1'"), {}},
               {sheet("<p/>").replace("'1.0'", "'2.0'"), {u"a b\u00e9%20.xsl (version 2.0)"_s}},
               {"<p xsl:version='3.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'/>",
                {u"a b\u00e9%20.xsl (version 3.0)"_s}},
               {sheet("<p/>", "<xsl:import href='two.xsl'/>"), {u"two.xsl (version 2.0)"_s}}};
        write(folder_->filePath(u"two.xsl"_s),
              sheet({}, "<xsl:template name='two'/>").replace("'1.0'", "'2.0'"));
        for (const auto &[xsl, newer] : rows) {
            TransformJob wanted = job("<r/>", xsl);
            Transformation done = transform(wanted);
            QCOMPARE(done.newerSheets, newer);
            QCOMPARE(done.markup.ok(), newer.isEmpty());
            wanted.licence.newerSheets = true;
            QVERIFY(transform(wanted).markup.ok());
        }
    }

    void loopsEnd()
    {
        const QByteArray all
            = "(//node())[count(//node()[count(//node()[count(//node()) &gt; 0]) &gt; 0]) &gt; 0]";
        const std::tuple<const char *, QByteArray> rows[] = {
            {"template within itself", sheet("<p><xsl:apply-templates select='/'/></p>")},
            {"two each",
             sheet(
                 "<xsl:call-template name='t'/>",
                 "<xsl:template name='t'><xsl:param name='n' select='100'/><xsl:if test='$n &gt; 0'>"
                 "<xsl:call-template name='t'><xsl:with-param name='n' select='$n - 1'/></xsl:call-template>"
                 "<xsl:call-template name='t'><xsl:with-param name='n' select='$n - 1'/></xsl:call-template>"
                 "</xsl:if></xsl:template>")},
            {"expression", sheet("<p><xsl:value-of select='count(" + all + ")'/></p>")},
            {"made on the spot",
             sheet("<p><xsl:value-of select=\"dyn:evaluate('count(" + all
                   + ")')\"/><xsl:value-of select='//a'/></p>")},
            {"function within itself",
             sheet("<p xmlns:my='my'><xsl:value-of select='my:f(1)'/></p>",
                   "<f:function xmlns:my='my' name='my:f'><xsl:param name='n'/><f:result select='my:f($n + "
                   "1)'/></f:function>")},
            {"keys",
             sheet("<p><xsl:for-each select='//a'><xsl:value-of select=\"count(key('k', //a))\"/>"
                   "</xsl:for-each></p>",
                   "<xsl:key name='k' match='a' use='//a'/>")},
        };
        for (const auto &[title, xsl] : rows) {
            const QByteArray xml = "<r>" + QByteArray("<a/>").repeated(2000) + "</r>";
            const Transformation done = run(xml, xsl, {500, 100'000, 1'000'000});
            QVERIFY2(!done.markup.ok() && !done.messages.empty(), title);
        }
    }

    // Sheets that are short, take few instructions, and would fill any memory.
    void growthEnds()
    {
        const auto doubling = [](const QByteArray &next) {
            return sheet("<p><xsl:call-template name='t'/></p>",
                         "<xsl:template name='t'><xsl:param name='s' select=\"'0123456789'\"/><xsl:choose>"
                         "<xsl:when test='string-length($s) &lt; 4000000000'><xsl:call-template name='t'>"
                         "<xsl:with-param name='s' "
                             + next
                             + "</xsl:call-template></xsl:when><xsl:otherwise><xsl:value-of select='$s'/>"
                               "</xsl:otherwise></xsl:choose></xsl:template>");
        };
        const std::tuple<const char *, QByteArray> rows[] = {
            {"text doubled", doubling("select='concat($s, $s)'/>")},
            {"text sixteen times itself",
             doubling("select='concat(" + QByteArray("$s, ").repeated(15) + "$s)'/>")},
            {"fragment doubled",
             doubling("><xsl:value-of select='$s'/><xsl:value-of select='$s'/></xsl:with-param>")},
            {"replaced by itself", doubling("select=\"str:replace($s, '0', '0000000000')\"/>")},
            {"cut up", doubling("select=\"concat($s, str:tokenize($s, ''), $s)\"/>")},
            {"entity in a file", sheet("<p><xsl:value-of select=\"document('bomb.xml')\"/></p>")},
            {"nodes",
             sheet("<p><xsl:for-each select='//a'><xsl:for-each select='//a'>"
                   "<xsl:for-each select='//a'><b/></xsl:for-each>"
                   "</xsl:for-each></xsl:for-each></p>")},
            {"copies",
             sheet("<p><xsl:for-each select='//a'><xsl:for-each select='//a'>"
                   "<xsl:copy-of select='/'/></xsl:for-each></xsl:for-each></p>")},
        };
        for (const auto &[title, xsl] : rows) {
            write(folder_->filePath(u"bomb.xml"_s), entityInAFile);
            write(folder_->filePath(u"big.ent"_s), QByteArray("<a/>").repeated(10'000));
            TransformBounds bounds;
            bounds.memory = std::size_t{64} << 20;
            const Transformation done = run("<r>" + QByteArray("<a/>").repeated(1000) + "</r>", xsl, bounds);
            QVERIFY2(!done.markup.ok(), title);
            QVERIFY(!run(entityInAFile, sheet("<p/>"), bounds).markup.ok());
            QVERIFY(run("<r/>", sheet("<p>after</p>"), bounds).markup.ok());
        }
    }

    // Each sheet imports the next one twice.
    void manyImportsEnd()
    {
        for (int level = 0; level < 24; ++level) {
            const QByteArray import = "<xsl:import href='" + QByteArray::number(level + 1) + ".xsl'/>";
            write(folder_->filePath(u"%1.xsl"_s.arg(level)), sheet("<p/>", import + import));
        }
        write(folder_->filePath(u"24.xsl"_s), sheet("<p/>"));
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
        QVERIFY(done.messages.back().text.contains(u"left out"_s));
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
                 QStringList({u"d.xml"_s, u"sub"_s}));
    }

    void reachesNothingElse()
    {
        const std::tuple<const char *, QByteArray, QByteArray> rows[] = {
            {"import", "<r/>", sheet("<p/>", "<xsl:import href='URL'/>")},
            {"include", "<r/>", sheet("<p/>", "<xsl:include href='URL'/>")},
            {"document()", "<r/>", sheet("<p><xsl:value-of select=\"document('URL')\"/></p>")},
            {"entity", "<!DOCTYPE r [<!ENTITY e SYSTEM 'URL'>]><r>&e;</r>", sheet("<p/>")},
            {"document type", "<!DOCTYPE r SYSTEM 'URL'><r/>", sheet("<p/>")},
            {"writing", "<r/>", sheet("<exsl:document href='URL'>x</exsl:document>")},
        };
        for (const auto &[name, xml, xsl] : rows) {
            init();
            QTcpServer server;
            QVERIFY(server.listen(QHostAddress::LocalHost));
            const QByteArray host = "://127.0.0.1:" + QByteArray::number(server.serverPort()) + "/x";
            const QString pipe = folder_->filePath(u"pipe"_s);
            QVERIFY(mkfifo(QFile::encodeName(pipe).constData(), 0666) == 0);
            for (const QByteArray &target : {"http" + host, "ftp" + host, "file" + host, pipe.toUtf8(),
                                             QByteArray("/dev/zero"), QByteArray("sub")}) {
                const Transformation done
                    = run(QByteArray(xml).replace("URL", target), QByteArray(xsl).replace("URL", target));
                QVERIFY2(done.markup.ok() || !done.messages.empty(), target.constData());
            }
            QVERIFY2(!server.waitForNewConnection(0), name);
        }
    }

private:
    TransformJob job(const QByteArray &xml, const QByteArray &xsl) const
    {
        const QString folder = folder_->path();
        return {{xml, folder + u"/a b\u00e9%20.xml"_s}, {xsl, folder + u"/a b\u00e9%20.xsl"_s}, {}, {}};
    }

    Transformation run(const QByteArray &xml, const QByteArray &xsl, const TransformBounds &bounds = {}) const
    {
        TransformJob wanted = job(xml, xsl);
        wanted.bounds = bounds;
        return transform(wanted);
    }

    QTemporaryDir elsewhere_; // what does not lie with the document
    std::unique_ptr<QTemporaryDir> folder_;
};

QTEST_GUILESS_MAIN(TransformTest)
#include "test_transform.moc"
