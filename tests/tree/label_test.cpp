#include "platform/dom/document.h"
#include "tree/label.h"

#include <QTest>

using namespace tree;

class LabelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startTags_data()
    {
        QTest::addColumn<QByteArray>("tag");
        QTest::addColumn<QString>("uri");
        QTest::addColumn<QString>("label");

        const auto row = [](const char *name, const char *tag, const char *uri, const char *label) {
            QTest::newRow(name) << QByteArray(tag) << QString::fromLatin1(uri) << QString::fromLatin1(label);
        };
        row("plain", "<a>", "", "a");
        row("empty", "<b/>", "", "b");
        row("attribute", "<a x=\"1\">", "", "a x=\"1\"");
        row("blanks before the end", "<a x='1' \n />", "", "a x='1'");
        row("whole element", "<a x=\"1\"><b/></a>", "", "a x=\"1\"");
        row("greater-than in a value", "<a x=\"1>2\" y=\"3\">", "", "a x=\"1");
        row("slash greater-than in a value", "<a x=\"1/>2\">", "", "a x=\"1");
        row("blank before it, in a value", "<a x=\"1 >2\">", "", "a x=\"1 ");
        row("several lines", "<a\r\n   x=\"1\"\n\ty=\"2\"\n>", "", "a x=\"1\" y=\"2\"");
        row("blanks on one line", "<a  x=\"1\">", "", "a  x=\"1\"");
        row("own prefix", "<p:a xmlns:p=\"urn:x\"/>", "urn:x", "p:a");
        row("own default", "<a xmlns='urn:x' b='1'>", "urn:x", "a b='1'");
        row("declaration last", "<p:a b=\"1\" xmlns:p=\"urn:x\">", "urn:x", "p:a b=\"1\"");
        row("blanks in the declaration", "<a xmlns = \"urn:x\" b=\"1\"/>", "urn:x", "a b=\"1\"");
        row("declaration on its line", "<a\n  xmlns=\"urn:x\"\n  b=\"1\"/>", "urn:x", "a b=\"1\"");
        row("only the first", "<p:a xmlns:q=\"urn:x\" xmlns:p=\"urn:x\"/>", "urn:x", "p:a xmlns:p=\"urn:x\"");
        row("another's stays", "<p:a xmlns:q=\"urn:y\"/>", "urn:x", "p:a xmlns:q=\"urn:y\"");
        row("inherited", "<p:a href=\"urn:x\"/>", "urn:x", "p:a href=\"urn:x\"");
        row("same value earlier", "<a b=\"urn:x\" xmlns=\"urn:x\"/>", "urn:x", "a b=\"urn:x\"");
        row("uri with a reference", "<a xmlns=\"u?a&amp;b\"/>", "u?a&b", "a");
        row("greater-than in the uri", "<a xmlns=\"u>v\" b=\"1\"/>", "u>v", "a b=\"1\"");
    }

    void startTags()
    {
        QFETCH(QByteArray, tag);
        QFETCH(QString, uri);
        QTEST(startTagLabel(withoutNamespace(tag, uri)), "label");
    }

    void nodes_data()
    {
        QTest::addColumn<QByteArray>("markup");
        QTest::addColumn<int>("image");
        QTest::addColumn<QString>("whole");
        QTest::addColumn<QString>("shown");

        const auto row
            = [](const char *name, const char *markup, int image, const char *whole, const char *shown) {
                  QTest::newRow(name)
                      << QByteArray(markup) << image << QString::fromUtf8(whole) << QString::fromUtf8(shown);
              };
        row("element", "<p:a xmlns:p=\"urn:x\" b=\"\xC3\xA4\"><c/></p:a>", 1, "p:a b=\"ä\"", "p:a b=\"ä\"");
        row("in its parent's namespace", "<b xmlns:q=\"urn:q\"/>", 1, "b xmlns:q=\"urn:q\"",
            "b xmlns:q=\"urn:q\"");
        row("instruction", "<?go  a=\"b\"\n c?>", 2, "go  a=\"b\"\n c", "go  a=\"b\" c");
        row("instruction without data", "<?go?>", 2, "go", "go");
        row("comment", "<!-- note -->", 3, " note ", " note ");
        row("empty comment", "<!---->", 3, "", "");
        row("cdata", "<![CDATA[a < b && c]]>", 4, "a < b && c", "a < b && c");
        row("text", "a &lt;&#x20AC;&gt; b", 5, "a <€> b", "a <€> b");
        row("text on lines", "one\n    two\n\nthree", 5, "one\n    two\n\nthree", "one two three");
        row("reference", "&e;", 0, "", "");
    }

    void nodes()
    {
        QFETCH(QByteArray, markup);
        dom::Document document;
        QVERIFY(!document.load("<!DOCTYPE r [<!ENTITY e \"x\">]><r xmlns=\"urn:r\">" + markup + "</r>"));
        const dom::Node *node = document.documentElement()->child(0);
        QTEST(int(imageOf(node->kind())), "image");
        QTEST(label(*node, TagRule::WithoutOwnNamespace), "whole");
        QTEST(shortLabel(*node, TagRule::WithoutOwnNamespace), "shown");
        QCOMPARE(label(*document.documentElement(), TagRule::AsItStands),
                 QStringLiteral("r xmlns=\"urn:r\""));
    }

    void hugeTextIsCut()
    {
        dom::Document document;
        QVERIFY(!document.load("<r>" + QByteArray(2'000'000, 'x') + "</r>"));
        const dom::Node *text = document.documentElement()->child(0);
        QCOMPARE(label(*text, TagRule::AsItStands).size(), 2'000'000);
        QCOMPARE(shortLabel(*text, TagRule::AsItStands), QString(500, u'x') + QChar(0x2026));
    }

    void cutsBetweenCharacters()
    {
        // Neither a surrogate pair, nor the bytes of a character, nor a reference is shown by halves.
        dom::Document document;
        for (const QByteArray &piece :
             {QByteArray("\xF0\x9F\x98\x80"), QByteArray("&#x1F600;"), QByteArray("&amp;")}) {
            for (int lead = 0; lead < 8; ++lead) {
                QVERIFY(!document.load("<r>" + QByteArray(lead, 'x') + piece.repeated(500) + "</r>"));
                const dom::Node *text = document.documentElement()->child(0);
                const QString whole = label(*text, TagRule::AsItStands);
                QString cut = shortLabel(*text, TagRule::AsItStands, 10 + lead);
                cut.chop(1);
                QVERIFY(cut.size() >= 8 && whole.startsWith(cut) && !cut.back().isHighSurrogate());
            }
        }
    }
};

QTEST_GUILESS_MAIN(LabelTest)
#include "label_test.moc"
