// Well-formed documents through the launcher and the real Tidy: only their layout changes.
#include "tests/tidy/exchange_folder.h"
#include "tidy/launcher/conversion.h"
#include "tidy/launcher/html_tags.h"
#include "tidy/launcher/run_tidy.h"
#include "tidy/launcher/xml_words.h"

#include <QTest>

using namespace launcher;

class TestXmlShield : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void documents()
    {
        const std::pair<QByteArray, QByteArray> rows[] = {
            {"<!DOCTYPE a [<!ENTITY e \"x\">]><a b=\"&e;&#10;\"><c>&e; &#233; &lt;</c></a>",
             "<!DOCTYPE a [<!ENTITY e \"x\">]>\n<a b=\"&e;&#10;\">\n<c>&e; &#233; &lt;</c>\n</a>\n"},
            {"<!DOCTYPE a [<!-- ] > ' --><?p ]> ?><!ENTITY e \"]>\">]>\n<a/>",
             "<!DOCTYPE a [<!-- ] > ' --><?p ]> ?><!ENTITY e \"]>\">]>\n<a />\n"},
            {"<a><p>un<b>do <i>it</i> text</b>\n new</p><c> <d/> </c></a>",
             "<a>\n<p>un<b>do <i>it</i> text</b>\n new</p>\n<c>\n<d />\n</c>\n</a>\n"},
            {"<a><p xml:space='preserve'>  <b/> </p><s><![CDATA[ 1 ]]></s><q>x<!-- y --></q></a>",
             "<a>\n<p xml:space='preserve'>  <b/> </p>\n<s><![CDATA[ 1 ]]></s>\n<q>x<!-- y --></q>\n</a>\n"},
            {"<x:t xmlns:x='u'><xsl:text xmlns:xsl='v'> </xsl:text><pre>1</pre></x:t>",
             "<x:t xmlns:x='u'>\n<xsl:text xmlns:xsl='v'> </xsl:text>\n<pre>1</pre>\n</x:t>\n"},
            {"<a b='1\n\t\t2'><c d='long enough to be broken behind the tag by the margin that stands'> e "
             "<f/></c></a>",
             "<a b='1\n\t\t2'>\n<c d='long enough to be broken behind the tag by the margin that stands'> e "
             "<f/></c>\n</a>\n"},
            {"<été à=\"1  \"><!-- é --><名前>_0.0_</名前></été>",
             "<été à=\"1  \">\n<!-- é -->\n<名前>_0.0_</名前>\n</été>\n"},
            {"<a><b>\nselect 1\n  from c</b><d> </d><e><![CDATA[x]]></e><f><!-- -a -\n --></f></a>",
             "<a>\n<b>\nselect 1\n  from c</b>\n<d> </d>\n<e><![CDATA[x]]></e>\n<f><!-- -a -\n "
             "--></f>\n</a>\n"},
            {"<!-- -a\n -b --><a><?b  c\n d?><e f='&lt;&gt;  g'/><!-- - h - --></a>",
             "<!-- -a\n -b -->\n<a>\n<?b  c\n d?>\n<e f='&lt;&gt;  g' />\n<!-- - h - -->\n</a>\n"},
            {"<?xml version='1.0' encoding='Shift_JIS'?><a><b>\xE6\x97\xA5\n\xE6\x9C\xAC</b></a>",
             "<?xml version='1.0' encoding='Shift_JIS'?>\n<a>\n<b>\xE6\x97\xA5\n\xE6\x9C\xAC</b>\n</a>\n"},
            // Of what is not well-formed: what can be told all the same; the rest is Tidy's to mend.
            {"<!DOCTYPE é [<!ENTITY e \"x\">]><é>&e;&nbsp;",
             "<!DOCTYPE é [<!ENTITY e \"x\">]>\n<é>&e;&#160;</é>\n"},
            {"<a>The <b>quick</b> brown <i>x</i><i>y</i>\n <u>z</u> <d> </d><c></a>",
             "<a>The <b>quick</b> brown <i>x</i><i>y</i>\n <u>z</u> <d> </d><c></c></a>\n"},
            {"<a>\n<p>f&o & b < c &; \n 1</b> 2</p><q>\n\n<r/><s></q></a>",
             "<a>\n<p>f&amp;o &amp; b &lt; c &amp;; \n 1 2</p>\n<q>\n<r />\n<s></s>\n</q>\n</a>\n"},
            {"<a><b>x</a> y", "<a>\n<b>x y</b>\n</a>\n"},
            {"<a><b><![CDATA[ x\n  y < </b></a>", "<a>\n<b><![CDATA[ x\n  y < </b></a>]]></b>\n</a>\n"},
            {"<a>b<!-- c</a>", "<a>b<!-- c</a>--></a>\n"},
            {"<a>b<?c d</a>", "<a>b<?c d</a>?></a>\n"},
        };
        for (const auto &[text, result] : rows)
            QCOMPARE(converted(text, "output-xml: yes\nindent: no\n"), result);
        QCOMPARE(converted("<a><s><![CDATA[<]]></s></a>", "output-xml: yes\nindent: no\nescape-cdata: yes"),
                 "<a>\n<s>&lt;</s>\n</a>\n");
        QCOMPARE(converted("<a><b><!-- c --><d/>\n e</b><!-- f --></a>",
                           "output-xml: yes\nindent: no\nhide-comments: yes"),
                 "<a>\n<b><d/>\n e</b>\n</a>\n");
        QCOMPARE(
            converted("<a b='\u201C'>\u201C\u00A0\n\u2014</a>", "output-xml: yes\nindent: no\nbare: yes"),
            "<a b='\u201C'>\" \n-</a>\n");
        QCOMPARE(converted("<a>\n<p>b\n<c/></p>\n</a>", "output-xml: yes\nindent: no\nnewline: CRLF"),
                 "<a>\r\n<p>b\r\n<c/></p>\r\n</a>\r\n");
    }

    // The places that Tidy names are those of the document.
    void reports()
    {
        converted("<!DOCTYPE é [\n<!ENTITY e 'x'>\n]>\n<é><b>1\n<c/></b>\n<d></é>", "output-xml: yes\n");
        QVERIFY(exchange_.content("f.txt").startsWith("line 6 column 4 - Error: unexpected </é> in <d>"));
        converted("<a>\n\t<é><![CDATA[ x </é></a>", "output-xml: yes\n");
        QVERIFY(exchange_.content("f.txt").startsWith("line 2 column 5 - Warning: missing ]]>"));
    }

    void damage()
    {
        RunOptions options;
        options.inputXml = true;
        options.output = Output::Xml;
        const std::tuple<QByteArray, QByteArray, bool> rows[] = {
            {"<a><b/><!-- c --><?d e?></a>", "<a>\n<b />\n<!-- c -->\n<?d e?></a>\n", true},
            {"<a>b c<d/></a>", "<a>b\nc\n<d/>\n</a>", false},
            {"<a> </a>", "<a/>", false},
            {"<a xml:space='preserve'> <b/></a>", "<a xml:space='preserve'><b/></a>", false},
            {"<a b='1 '/>", "<a b='1'/>", false},
            {"<a><!-- b - - --></a>", "<a><!-- b = = --></a>", false},
            {"<a><?b  c?></a>", "<a><?b d?></a>", false},
            {"<a>&#32;<b/></a>", "<a><b/></a>", true},
            {"<a>b c</a>", "<a>b</a>", false},
            {"<a><b/></a>", "<a/>", false},
            {"<a>b</a>", "<a>b", false},
            {"<a>b", "<a>", false},
            {"<a>b", "<a>b</a>", true},
            {"<a>b c", "<a>b\nc</a>", true},
            {"<a>b</a>", " \n", false},
        };
        for (const auto &[text, output, good] : rows)
            QCOMPARE(Conversion(text, options).finished(output).ok(), good);
    }

    // What entities amount to is bounded, also for the judgement of what Tidy did.
    void entitiesWithoutEnd()
    {
        QByteArray declared = "<!ENTITY a0 'ha'>";
        for (int level = 1; level < 12; ++level) {
            const QByteArray former = "&a" + QByteArray::number(level - 1) + ';';
            declared += "<!ENTITY a" + QByteArray::number(level) + " '" + former.repeated(10) + "'>";
        }
        for (const QByteArray root : {"<r x='&a11;'/>", "<r>&a11;</r>"}) {
            const QByteArray text = "<!DOCTYPE r [" + declared + "]>" + root;
            QVERIFY(!wordsOf(text));
            QVERIFY(!converted(text, "output-xml: yes\n").isEmpty());
        }
    }

    void htmlTags()
    {
        const std::pair<QByteArray, QByteArray> rows[] = {
            {"<br /></br>", "<br>"},
            {"<BR/>x", "<BR>x"},
            {"<hr></hr>", "<hr>"},
            {"<img a='/>' />", "<img a='/>'>"},
            {"<a /></a>", "<a></a>"},
            {"<x:br b=\"1\"/>", "<x:br b=\"1\"></x:br>"},
            {"<a><b /></a>", "<a><b></b></a>"},
            {"<!-- <br/> --><p>1 < 2", "<!-- <br/> --><p>1 < 2"},
        };
        for (const auto &[xml, html] : rows)
            QCOMPARE(withHtmlTags(xml), html);
        QCOMPARE(converted("<a><br/><b/>x</a>", "output-html: yes\n"), "<a><br><b></b>x</a>\n");
    }

    // Whatever is cut off where, every stand-in gives back what it stands for.
    void cutShort()
    {
        const QByteArray text = "<!DOCTYPE é [<!ENTITY e ''>]><é à='&e;'>&e;<![CDATA[ ]]><?g?><!-- --></é>";
        for (qsizetype size = 0; size <= text.size(); ++size) {
            const XmlShield shield(text.first(size), {});
            QCOMPARE(shield.restored(shield.shielded(), {}), text.first(size));
        }
    }

private:
    QByteArray converted(const QByteArray &text, const QByteArray &options) const
    {
        exchange_.write("default.tidy", "tidy-mark: no\n");
        exchange_.write("default2.tidy", "input-xml: yes\n" + options);
        exchange_.write("i.txt", text);
        return runTidy(exchange_.path(), 60'000) ? exchange_.content("o.txt") : QByteArray();
    }

    ExchangeFolder exchange_;
};

QTEST_GUILESS_MAIN(TestXmlShield)
#include "test_xml_shield.moc"
