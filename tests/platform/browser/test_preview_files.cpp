// How the preview names files, tells their kinds, and reads early style-sheet instructions.
#include "platform/browser/media_type.h"
#include "platform/browser/preview_url.h"
#include "platform/browser/source_tree.h"
#include "platform/browser/style_instruction.h"

#include <QtTest>

using namespace browser;

class TestPreviewFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kinds()
    {
        const std::tuple<const char *, QByteArray, QByteArray, QByteArray> rows[] = {
            {"/a/doc.xml0", "", "text/xml", "text/xml"},
            {"/a/page.html0", "<?xml?>", "text/html", "text/html"},
            {"/a/c.css0", "<x", "text/css", "text/css"},
            {"/a/f.woff20", "", "font/woff2", "font/woff2"},
            {"/a/d.dtd0", "<!ELEMENT a EMPTY>", "text/plain", "text/plain"},
            {"/a/feed.2024", "\xEF\xBB\xBF <?xml version='1.0'?>", "text/xml", "text/xml"},
            {"/a/noend0", "<Root/>", "text/xml", "text/xml"},
            {"/a/noend1", "\n<!doctype HTML><p>", "text/html", "text/html"},
            {"/a/wide", QByteArray("\xFF\xFE<\0?\0x\0", 8), "text/xml", "text/xml"},
            {"/etc/passwd", "root:x:0:0", "text/plain", ""},
            {"/a/key.pem", "----", "text/plain", ""},
            {"/a/xml", "<", "text/plain", ""},
            {"/a/a.b/none", "", "text/plain", ""},
            {"/a/doc.pdf", "%PDF-1.7", "text/plain", ""},
        };
        for (const auto &[path, content, asDocument, byPage] : rows) {
            QCOMPARE(mediaType(QLatin1String(path), content, Wanted::AsDocument), asDocument);
            QCOMPARE(mediaType(QLatin1String(path), content, Wanted::ByPage), byPage);
        }
    }

    void ownTree()
    {
        const std::tuple<QByteArray, const char *> rows[] = {
            {"<r a='\"&lt;'>x &lt; y</r>",
             "<i>a</i>=\"<u>&quot;&lt;</u>\"<b>></b>x &lt; y<b>&lt;/r></b></div>"},
            {"<r>x<b/>y</r>",
             "<div>x</div><div><b>&lt;b</b><b>/></b></div><div>y</div><b>&lt;/r></b></details>"},
            {"<r><script>alert(1)</script></r>", "<b>&lt;script</b><b>></b>alert(1)"},
            {"<!DOCTYPE r [<!ENTITY e 'f'>]><r>&e;</r>", "<div>&amp;e;</div>"},
            {"<?xml version='1.0' encoding='ISO-8859-1'?><!--\xE9--><r/>", "&lt;!--\xC3\xA9-->"},
            {"<?p?><r/>", "&lt;?p ?>"},
        };
        for (const auto &[xml, shown] : rows) {
            const auto page = sourceTree(xml, "whole");
            QVERIFY(page && !page->contains("whole"));
            QVERIFY2(page->contains(shown), page->constData());
        }
        for (const QByteArray none : {"<r>", "", "<r><h xmlns='http://www.w3.org/1999/xhtml'/></r>"})
            QVERIFY(!sourceTree(none, ""));
        const auto cut = sourceTree("<r>" + QByteArray("<a/>").repeated(500'000) + "</r>", "whole");
        QVERIFY(cut && cut->contains("href=\"whole\"") && cut->size() < 5'000'000);
        QVERIFY(sourceTree(QByteArray("<a>").repeated(200) + "x" + QByteArray("</a>").repeated(200), "")
                    ->contains(">x<"));
        const auto deep
            = sourceTree(QByteArray("<a><b/>").repeated(250) + "x" + QByteArray("</a>").repeated(250), "");
        QVERIFY(deep && deep->count("<details") == 250);
    }

    void urls()
    {
        const std::pair<QString, QByteArray> rows[]
            = {{u"/home/me/a.xml"_qs, "xmlpreview://d7/home/me/a.xml"},
               {u"/b c/50%20 #1?'\".xml"_qs, "xmlpreview://d7/b%20c/50%2520%20%231%3F'%22.xml"},
               {u"/Ж/日.xml"_qs, "xmlpreview://d7/%D0%96/%E6%97%A5.xml"},
               {u"/a;b&c=d+e/[x].xml"_qs, {}},
               {u"/c:/a.xml"_qs, {}}};
        for (const auto &[path, url] : rows) {
            const QByteArray made = previewUrl(path, 7).toEncoded();
            QCOMPARE(made, url.isEmpty() ? made : url);
            QCOMPARE(pathOfPreviewUrl(QUrl::fromEncoded(made)), path);
        }
        for (const char *foreign : {"file:///etc/passwd", "http://d1/a.xml", "xmlpreview:", "xmlpreview://d1",
                                    "xmlpreview://d1//server/share/a.xml", "xmlpreview://d1/%2Fserver/a.xml",
                                    "xmlpreview://d1/a%00.xml", "about:blank"})
            QCOMPARE(pathOfPreviewUrl(QUrl(QString::fromLatin1(foreign))), QString());
    }

    void styleInstructions()
    {
        const std::tuple<const char *, QByteArray, QByteArray> rows[] = {
            {"alone", "<?xml:stylesheet href='a'?><r/>", "<?xml-stylesheet href='a'?><r/>"},
            {"behind the rest",
             "<?xml version='1.0'?>\r\n<!-- > --><!DOCTYPE r [<!ENTITY a '>'>]>\n<?xml:stylesheet b?><r/>",
             "<?xml version='1.0'?>\r\n<!-- > --><!DOCTYPE r [<!ENTITY a '>'>]>\n<?xml-stylesheet b?><r/>"},
            {"system type", "<!DOCTYPE r SYSTEM \"r.dtd\"><?xml:stylesheet [?><r/>",
             "<!DOCTYPE r SYSTEM \"r.dtd\"><?xml-stylesheet [?><r/>"},
            {"in the root", "<r><?xml:stylesheet a?></r>", "<r><?xml:stylesheet a?></r>"},
            {"in a comment", "<!-- <?xml:stylesheet a?> --><r/>", "<!-- <?xml:stylesheet a?> --><r/>"},
            {"longer name", "<?xml:stylesheets a?><r/>", "<?xml:stylesheets a?><r/>"},
            {"cut off", "<!DOCTYPE r [", "<!DOCTYPE r ["},
            {"cut off in it", "<?xml:stylesheet", "<?xml:stylesheet"},
            {"nothing", "", ""},
        };
        for (const auto &[name, xml, modern] : rows)
            QCOMPARE(withModernStyleInstructions(xml), modern);
    }
};

QTEST_GUILESS_MAIN(TestPreviewFiles)
#include "test_preview_files.moc"
