// The last step to XML: what is mended, and that everything else stays.
#include "tidy/launcher/well_formed.h"

#include <QTest>

using launcher::wellFormed;

class TestWellFormed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mended()
    {
        const std::tuple<const char *, QByteArray, QByteArray> rows[] = {
            {"conditional section", "<a><![if !x]>b<![endif]></a>", "<a><!--[if !x]-->b<!--[endif]--></a>"},
            {"instruction with a colon", "<a><?xml:namespace prefix = o /?></a>",
             "<a><!--?xml:namespace prefix = o /?--></a>"},
            {"declaration inside", "<a><?xml version='1.0'?></a>", "<a><!--?xml version='1.0'?--></a>"},
            {"server code", "<a><% b -- %><# c #><? d ?></a>",
             "<a><!--% b == %--><!--# c #--><!--? d ?--></a>"},
            {"server code in a tag", "<a <?php b ?> c='1'><d/></a>", "<!--?php b ?--><a  c='1'><d/></a>"},
            {"brackets in a value", "<a b='<% c %>'/>", "<a b='&lt;% c %>'/>"},
            {"lone bracket", "<a>1 < 2</a>", "<a>1 &lt; 2</a>"},
            {"hyphens in a comment", "<a><!-- -- ---></a>", "<a><!-- == =--></a>"},
            {"public identifier alone", "<!doctype html PUBLIC \"-//A\"><html/>",
             "<!DOCTYPE html PUBLIC \"-//A\" \"\"><html/>"},
            {"characters", "<a>\f\x01\xEF\xBF\xBF</a>", "<a> \xEF\xBF\xBD\xEF\xBF\xBD</a>"},
            {"usual prefix", "<a v:b='1'/>", "<a xmlns:v=\"urn:schemas-microsoft-com:vml\" v:b='1'/>"},
            {"other prefix", "<!-- --><a><q:b/></a>", "<!-- --><a xmlns:q=\"urn:undeclared:q\"><q:b/></a>"},
            {"out of scope", "<a><b xmlns:q='u' q:c=''><q:d/></b><q:e/></a>",
             "<a xmlns:q=\"urn:undeclared:q\"><b xmlns:q='u' q:c=''><q:d/></b><q:e/></a>"},
            {"scope of an empty element", "<a><b xmlns:q='u'/><q:e/></a>",
             "<a xmlns:q=\"urn:undeclared:q\"><b xmlns:q='u'/><q:e/></a>"},
            {"colons that part nothing", "<a b:c:d='1' e:='2' f:1='3' :g='4'/>",
             "<a xmlns:b=\"urn:undeclared:b\" b:c-d='1' e-='2' f-1='3' -g='4'/>"},
        };
        for (const auto &[name, text, xml] : rows)
            QCOMPARE(wellFormed(text), xml);
    }

    void kept()
    {
        const std::tuple<const char *, QByteArray> rows[] = {
            {"prolog", "<?xml version='1.0'?>\r\n<!DOCTYPE a [<!ENTITY b '>'>]>\n<?c d?><a/>\n"},
            {"identifiers", "<!DOCTYPE a PUBLIC \"b\" \"c\">\n<a/>"},
            {"sections", "<a><![CDATA[<b> <![if x]> <% -- ]]><!-- <c> --></a>"},
            {"namespaces", "<q:a xmlns:q='u' xml:lang='en'><b q:c=\"'>\"/></q:a>"},
            {"no markup", "\xE6\x97\xA5 & text"},
            {"nothing", {}},
        };
        for (const auto &[name, xml] : rows)
            QCOMPARE(wellFormed(xml), xml);
    }

    // Whatever is cut off where, the rest is gone through to its end.
    void cutShort()
    {
        const QByteArray text
            = "<!DOCTYPE a [<!ENTITY b ''>]><a <?c?> q:d='e' f=\"<% %>\"><!-- -- --><![CDATA[ ]]>"
              "<![if x]><?g h?><% i %></a>";
        for (qsizetype size = 0; size <= text.size(); ++size) {
            const QByteArray cut = text.first(size);
            QVERIFY2(size == 0 || !wellFormed(cut).isEmpty(), cut.constData());
        }
    }
};

QTEST_GUILESS_MAIN(TestWellFormed)
#include "test_well_formed.moc"
