// Matching of tags, and the habits read from a text: functions over bytes, without an editor.
#include "platform/control/matching_tag.h"
#include "platform/control/text_habits.h"

#include <QtTest>

using namespace control;

class TestEditorText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The caret is "|"; the partner's name must stand where "^" stands in the second text.
    void tagsMatch_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("partner");
        QTest::addColumn<bool>("html");
        const auto row = [](const char *name, const char *text, const char *partner, bool html = false) {
            QTest::newRow(name) << QByteArray(text) << QByteArray(partner) << html;
        };
        row("end", "<|a>x</a>", "<a>x</^a>");
        row("start", "<a>x</a|>", "<^a>x</a>");
        row("nested", "<a><a|/><a></a></a>", "");
        row("nested same name", "<|a><a/><a></a></a>", "<a><a/><a></a></^a>");
        row("caret between tags", "<a></a>|<b></b>", "<a></a><b></^b>");
        row("caret behind the last", "<a></a>|", "<^a></a>");
        row("comment between", "<|a><!-- </a> --></a>", "<a><!-- </a> --></^a>");
        row("CDATA between", "<|a><![CDATA[</a>]]></a>", "<a><![CDATA[</a>]]></^a>");
        row("instruction between", "<|a><?p </a>?></a>", "<a><?p </a>?></^a>");
        row("quotes", "<|a b='>' c=\"'/>\"></a>", "<a b='>' c=\"'/>\"></^a>");
        row("document type", "<!DOCTYPE a [<!ENTITY e '<a>'><!-- ' -->]><|a></a>",
            "<!DOCTYPE a [<!ENTITY e '<a>'><!-- ' -->]><a></^a>");
        row("other element faulty", "<|a><b></a>", "<a><b></^a>");
        row("unclosed tag", "<|a><b c=' </a>", "<a><b c=' </^a>");
        row("longer name", "<|a><ab></ab></a>", "<a><ab></ab></^a>");
        row("case counts", "<|a></A></a>", "<a></A></^a>");
        row("none", "<|a><a></a>", "");
        row("in text", "<a>t|t</a>", "");
        row("in comment", "<a><!-- <|b></b> --></a>", "");
        row("less-than sign", "<|a> 1 < 2 </a>", "<a> 1 < 2 </^a>");
        row("HTML case", "<|DIV></div>", "<DIV></^div>", true);
        row("HTML void", "<|p><br></p>", "<p><br></^p>", true);
        row("HTML script", "<|div><script>if (a</div>) </script></div>",
            "<div><script>if (a</div>) </script></^div>", true);
        row("HTML quoted less-than", "<|a b='<'></a>", "<a b='<'></^a>", true);
    }
    void tagsMatch()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, partner);
        QFETCH(bool, html);
        const qsizetype caret = text.indexOf('|');
        text.remove(caret, 1);
        const std::optional<TagMatch> match = matchTag({text, true, html}, caret);
        const qsizetype found = match && match->partner ? match->partner->name.start : -1;
        QCOMPARE(found, partner.indexOf('^'));
    }

    void stretchMayBeginInsideAComment()
    {
        for (const QByteArrayView text : {"<a> --> </a>", "<a> ]]> </a>", "<a> <!-- --> </a>"}) {
            const std::optional<TagMatch> match = matchTag({text, false, false}, text.size());
            QVERIFY(match);
            QCOMPARE(match->partner.has_value(), text.contains("<!--"));
        }
    }

    // Whatever the bytes, every piece lies behind the one before and within the text.
    void scannerSurvivesFaultyText()
    {
        const QByteArray pieces[]
            = {"<", "<!--", "<![CDATA[", "<?", "<!D [", "</", "<a", " b='", "\"", ">", "/>", "x"};
        for (const QByteArray &first : pieces)
            for (const QByteArray &second : pieces)
                for (const QByteArray &third : pieces) {
                    const QByteArray text = first + second + third;
                    MarkupScanner scanner(text, (first.size() & 1) != 0);
                    qsizetype end = 0;
                    while (const std::optional<Markup> markup = scanner.next()) {
                        QVERIFY2(markup->whole.start >= end && markup->whole.length > 0, text);
                        end = markup->whole.end();
                        QVERIFY2(end <= text.size() && markup->name.end() <= end, text);
                    }
                }
    }

    void habitsAreRead()
    {
        struct Row
        {
            const char *text, *lineEnd;
            bool tabs;
            int indent;
        };
        const Row rows[] = {{"<a/>", "\n", true, 4},
                            {"<a>\r\n  <b/>", "\r\n", false, 2},
                            {"<a>\r\t<b/>\r    c", "\r", true, 4},
                            {"<a>\n      \n   <b/>", "\n", false, 3},
                            {"<a b=''\n         c=''>\n  <d>\n    <e/>", "\n", false, 2},
                            {"<a>\n <b>\n  <c/>\n </b>\n     <d/>", "\n", false, 1},
                            {"<a>\n    <b/>\n<c>\n\t<d>\n\t\t<e/>", "\n", true, 4},
                            {"<a\n        b=''/>", "\n", true, 4},
                            {"<!--\n --\n\t<b/>", "\n", true, 4},
                            {"a\n            b", "\n", false, 8}};
        for (const Row &row : rows) {
            const TextHabits habits = habitsOf(row.text);
            QCOMPARE(lineEndBytes(habits.lineEnd).toByteArray(), QByteArray(row.lineEnd));
            QCOMPARE(std::pair(habits.tabs, habits.indent), std::pair(row.tabs, row.indent));
        }
    }
};

QTEST_APPLESS_MAIN(TestEditorText)
#include "test_editor_text.moc"
