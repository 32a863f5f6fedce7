#include "platform/dom/document.h"
#include "tree/label.h"

#include <QTest>

using namespace tree;

class LabelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startTags()
    {
        const std::tuple<QByteArray, const char *, const char *> rows[] = {
            {"<a>", "", "a"},
            {"<b/>", "", "b"},
            {"<a x=\"1\">", "", "a x=\"1\""},
            {"<a x='1' \n />", "", "a x='1'"},
            {"<a x=\"1\"><b/></a>", "", "a x=\"1\""},
            {"<a x=\"1>2\" y=\"3\">", "", "a x=\"1"},
            {"<a x=\"1/>2\">", "", "a x=\"1"},
            {"<a x=\"1 >2\">", "", "a x=\"1 "},
            {"<a\r\n   x=\"1\"\n\ty=\"2\"\n>", "", "a x=\"1\" y=\"2\""},
            {"<a  x=\"1\">", "", "a  x=\"1\""},
            {"<p:a xmlns:p=\"urn:x\"/>", "urn:x", "p:a"},
            {"<a xmlns='urn:x' b='1'>", "urn:x", "a b='1'"},
            {"<p:a b=\"1\" xmlns:p=\"urn:x\">", "urn:x", "p:a b=\"1\""},
            {"<a xmlns = \"urn:x\" b=\"1\"/>", "urn:x", "a b=\"1\""},
            {"<a\n  xmlns=\"urn:x\"\n  b=\"1\"/>", "urn:x", "a b=\"1\""},
            {"<p:a xmlns:q=\"urn:x\" xmlns:p=\"urn:x\"/>", "urn:x", "p:a xmlns:p=\"urn:x\""},
            {"<p:a xmlns:q=\"urn:y\"/>", "urn:x", "p:a xmlns:q=\"urn:y\""},
            {"<p:a href=\"urn:x\"/>", "urn:x", "p:a href=\"urn:x\""},
            {"<a b=\"urn:x\" xmlns=\"urn:x\"/>", "urn:x", "a b=\"urn:x\""},
            {"<a xmlns=\"u?a&amp;b\"/>", "u?a&b", "a"},
            {"<a xmlns=\"u>v\" b=\"1\"/>", "u>v", "a b=\"1\""},
        };
        for (const auto &[tag, uri, shown] : rows)
            QCOMPARE(startTagLabel(withoutNamespace(tag, QLatin1String(uri))), QLatin1String(shown));
    }

    void nodes()
    {
        const std::tuple<QByteArray, int, const char *, const char *> rows[] = {
            {"<p:a xmlns:p=\"urn:x\" b=\"\xC3\xA4\"><c/></p:a>", 1, "p:a b=\"ä\"", "p:a b=\"ä\""},
            {"<b xmlns:q=\"urn:q\"/>", 1, "b xmlns:q=\"urn:q\"", "b xmlns:q=\"urn:q\""},
            {"<?go  a=\"b\"\n c?>", 2, "go  a=\"b\"\n c", "go  a=\"b\" c"},
            {"<?go?>", 2, "go", "go"},
            {"<!-- note -->", 3, " note ", " note "},
            {"<!---->", 3, "", ""},
            {"<![CDATA[a < b && c]]>", 4, "a < b && c", "a < b && c"},
            {"a &lt;&#x20AC;&gt; b", 5, "a <€> b", "a <€> b"},
            {"one\n    two\n\nthree", 5, "one\n    two\n\nthree", "one two three"},
            {"&e;", 0, "", ""},
        };
        for (const auto &[markup, image, whole, shown] : rows) {
            dom::Document document;
            QVERIFY(!document.load("<!DOCTYPE r [<!ENTITY e \"x\">]><r xmlns=\"urn:r\">" + markup + "</r>"));
            const dom::Node *node = document.documentElement()->child(0);
            QCOMPARE(int(imageOf(node->kind())), image);
            QCOMPARE(label(*node, TagRule::WithoutOwnNamespace), QString::fromUtf8(whole));
            QCOMPARE(shortLabel(*node, TagRule::WithoutOwnNamespace), QString::fromUtf8(shown));
        }
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
