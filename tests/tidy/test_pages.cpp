// Broken pages of the kinds that people have, through the launcher and the real Tidy: what comes out is
// accepted by our own parser, and nothing that was to be read is lost.
#include "platform/dom/verdict.h"
#include "platform/files/text_file.h"
#include "tests/tidy/exchange_folder.h"
#include "tidy/config_files.h"
#include "tidy/launcher/blank_repair.h"
#include "tidy/launcher/html_shield.h"
#include "tidy/launcher/run_tidy.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

class TestPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pages_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<int>("output");
        const QFileInfoList pages = QDir(QStringLiteral(XE_PAGES))
                                        .entryInfoList({QStringLiteral("*.html")}, QDir::Files, QDir::Name);
        QVERIFY(pages.size() >= 30);
        for (const QFileInfo &page : pages) {
            const QByteArray name = page.baseName().toUtf8();
            QTest::newRow(name + " to XML") << page.filePath() << int(tidy::OutputKind::Xml);
            QTest::newRow(name + " to XHTML") << page.filePath() << int(tidy::OutputKind::Xhtml);
        }
    }
    // The words that must come through are marked by "keep".
    void pages()
    {
        QFETCH(QString, page);
        QFETCH(int, output);
        const auto text = files::readTextFile(page);
        QVERIFY(text);
        const QByteArray result = converted(text->utf8, tidy::InputKind::Html, tidy::OutputKind(output));
        const auto fault = dom::checkWellFormed(result);
        QVERIFY2(!fault, fault ? qPrintable(fault->reason + fault->sourceText) : "");
        static const QRegularExpression marked(QStringLiteral("keep\\w+"),
                                               QRegularExpression::UseUnicodePropertiesOption);
        const QString after = QString::fromUtf8(result);
        const QString before = QString::fromUtf8(text->utf8);
        for (const QRegularExpressionMatch &word : marked.globalMatch(before))
            QVERIFY2(after.contains(word.captured()), qPrintable(word.captured()));
    }

    // Nothing that a browser shows differs; what is in the result of each row in each of three outputs.
    void reading()
    {
        struct Row
        {
            QByteArray page;
            QByteArray html;
            QByteArray xhtml;
            QByteArray xml;
        };
        const QByteArray xhtml = "<!DOCTYPE html><html xmlns=\"http://www.w3.org/1999/xhtml\"><head>"
                                 "<title>t</title></head><body>";
        const QByteArray end = "</body></html>";
        const auto same = [](const QByteArray &page, const QByteArray &made) {
            return Row{page, made, made, made};
        };
        const Row rows[] = {
            same("<p>a<b>b</b>c(<i>d</i>)<img src=x alt=y>e</p>",
                 "<p>a<b>b</b>c(<i>d</i>)<img src=\"x\" alt=\"y\""),
            same("<p>a<b>b</b> <i>c</i> <button> d </button>e</p>", "<button>d</button>e</p>"),
            {"<pre>\n  a\tb\n\n\t<b>c</b><i>d </i>\n e</pre>",
             "<pre>\n  a\tb\n\n\t<b>c</b><i>d </i>\n e</pre>", "<pre>  a\tb\n\n\t<b>c</b><i>d </i>\n e</pre>",
             "<pre>  a\tb\n\n\t<b>c</b><i>d </i>\n e</pre>"},
            {"<p>a<textarea>\n b\n\t<p>c & d</textarea>e", "a<textarea>\n b\n\t&lt;p&gt;c & d</textarea>e",
             "a<textarea> b\n\t&lt;p&gt;c &amp; d</textarea>e",
             "a<textarea> b\n\t&lt;p&gt;c &amp; d</textarea>e"},
            same("<p>a<i class=\"x\"></i>b", "a<i class=\"x\"></i>b"),
            same("<p>a&;b&copy c&#xD800;", "a&amp;;b\xC2\xA9 c"),
            same("<p>a<!-->b<!--->c", "a<!---->b<!---->c"),
            same("<input value=\"a  b\" value=\"c\">", "value=\"a  b\""),
            same("<p>a<math xmlns=\"m\"><mi>b&lt;c</mi></math>d",
                 "a<math xmlns=\"m\"><mi>b&lt;c</mi></math>d"),
            {"<svg viewBox=\"0 0 1 1\"><linearGradient xlink:href='#a'/></svg>",
             "<svg viewBox=\"0 0 1 1\"><linearGradient xlink:href='#a'/></svg>",
             "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1 1\"><linearGradient "
             "xlink:href='#a'/></svg>",
             "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1 1\"><linearGradient "
             "xlink:href='#a'/></svg>"},
            {"<script>if (a<b)\n\tc()</script>", "<script>if (a<b)\n\tc()</script>",
             "<script>//<![CDATA[\nif (a<b)\n\tc()\n//]]></script>",
             "<script>//<![CDATA[\nif (a<b)\n\tc()\n//]]></script>"},
            {"<style>a>b{}</style>", "<style>a>b{}</style>", "<style>a>b{}</style>", "<style>a>b{}</style>"},
            {"<style><!-- a{} --></style>", "<style><!-- a{} --></style>",
             "<style>/*<![CDATA[*/<!-- a{} -->/*]]>*/</style>",
             "<style>/*<![CDATA[*/<!-- a{} -->/*]]>*/</style>"},
            {"<script type='text/x-t'><b>&nbsp;</b></script>", "'text/x-t'><b>&nbsp;</b></script>",
             "><![CDATA[<b>&nbsp;</b>]]></script>", "><![CDATA[<b>&nbsp;</b>]]></script>"},
            {"<a href=\"<?php f($a[\"x\"]) ?>\" title=\"<%= b %>\">c</a>",
             "<a href=\"<?php f($a[\"x\"]) ?>\" title=\"<%= b %>\">c</a>",
             "<a href=\"&lt;?php f($a[&quot;x&quot;]) ?&gt;\" title=\"&lt;%= b %&gt;\">c</a>",
             "<a href=\"&lt;?php f($a[&quot;x&quot;]) ?&gt;\" title=\"&lt;%= b %&gt;\">c</a>"},
            same(xhtml + "<p>a<a id=\"b\"/>c<script src=\"d\"/><textarea/><i/><br></br>e</p>" + end,
                 "<p>a<a id=\"b\"></a>c<script src=\"d\"></script><textarea></textarea><i></i><br"),
            same(xhtml + "<p>a<![CDATA[<b>]]></p>" + end, "<p>a&lt;b&gt;</p>"),
            same(xhtml + "<svg xmlns=\"s\"><style><![CDATA[a>b]]></style><g/></svg>" + end,
                 "<svg xmlns=\"s\"><style><![CDATA[a>b]]></style><g/></svg>"),
            {xhtml + "<script><![CDATA[a<b]]></script>" + end, "<script>a<b</script>",
             "<script><![CDATA[a<b]]></script>", "<script><![CDATA[a<b]]></script>"},
            same(xhtml + "<script>//<![CDATA[\na<b//]]>\n</script>" + end,
                 "<script>//<![CDATA[\na<b//]]>\n</script>"),
            // What Tidy would drop or add is worth more than its layout.
            same("<select>kept<option>a</option></select>", "<select>kept<option>a</option></select>\r\n"),
        };
        for (const Row &row : rows) {
            QVERIFY2(converted(row.page, tidy::InputKind::Html, tidy::OutputKind::Html).contains(row.html),
                     exchange_.content("o.txt").constData());
            QVERIFY2(converted(row.page, tidy::InputKind::Html, tidy::OutputKind::Xhtml).contains(row.xhtml),
                     exchange_.content("o.txt").constData());
            QVERIFY2(converted(row.page, tidy::InputKind::Html, tidy::OutputKind::Xml).contains(row.xml),
                     exchange_.content("o.txt").constData());
        }
        QVERIFY2(exchange_.content("f.txt").startsWith(
                     "Error: Tidy would have changed what is read: \"kept\" would be gone; the text stays"),
                 exchange_.content("f.txt").constData());
    }

    // Whatever is cut off where: a text that Tidy leaves alone is left alone.
    void cutShort()
    {
        const QByteArray text
            = "<!DOCTYPE a><p title='<? ? >'>a<b> c</b>\n<pre>\n\n d\t<i/></pre><textarea>\n e&lt;"
              "</textarea><svg><svg/> f</svg><script>g</script> <!-- h --><% i %>&#32;j<![CDATA[ k ]]>"
              "<button> l </button><br></p>";
        for (qsizetype size = 0; size <= text.size(); ++size) {
            const QByteArray cut = text.first(size);
            for (const auto dialect :
                 {launcher::Dialect::Xml, launcher::Dialect::Html, launcher::Dialect::Xhtml})
                QCOMPARE(launcher::withRepairedBlanks({cut, dialect}, {cut, dialect}, {}), cut);
            const launcher::HtmlShield shield(cut, {});
            QCOMPARE(shield.restored(shield.shielded(), {}), cut);
        }
    }

private:
    QByteArray converted(const QByteArray &utf8, tidy::InputKind input, tidy::OutputKind output) const
    {
        const bool ready = bool(tidy::writeConversionOptions(exchange_.path(), input, output));
        exchange_.write("i.txt", utf8 + "\r\n");
        return ready && launcher::runTidy(exchange_.path(), 60'000) ? exchange_.content("o.txt")
                                                                    : QByteArray();
    }

    ExchangeFolder exchange_;
};

QTEST_GUILESS_MAIN(TestPages)
#include "test_pages.moc"
