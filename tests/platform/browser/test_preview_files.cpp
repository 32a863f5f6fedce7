// How the preview names files, tells their kinds, and reads early style-sheet instructions.
#include "platform/browser/media_type.h"
#include "platform/browser/preview_url.h"
#include "platform/browser/style_instruction.h"

#include <QtTest>

using namespace browser;

class TestPreviewFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kinds_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArray>("asDocument");
        QTest::addColumn<QByteArray>("byPage");
        const auto row
            = [](const char *path, const QByteArray &content, const char *asDocument, const char *byPage) {
                  QTest::newRow(path)
                      << QString::fromLatin1(path) << content << QByteArray(asDocument) << QByteArray(byPage);
              };
        row("/a/doc.xml0", "", "text/xml", "text/xml");
        row("/a/doc.XML12", "", "text/xml", "text/xml");
        row("/a/style.xsl3", "", "text/xml", "text/xml");
        row("/a/page.html0", "<?xml?>", "text/html", "text/html");
        row("/a/c.css0", "<x", "text/css", "text/css");
        row("/a/f.woff2", "", "font/woff2", "font/woff2");
        row("/a/f.woff20", "", "font/woff2", "font/woff2");
        row("/a/d.dtd0", "<!ELEMENT a EMPTY>", "text/plain", "text/plain");
        row("/a/feed.2024", "\xEF\xBB\xBF <?xml version='1.0'?>", "text/xml", "text/xml");
        row("/a/noend0", "<Root/>", "text/xml", "text/xml");
        row("/a/noend1", "\n<!doctype HTML><p>", "text/html", "text/html");
        row("/a/wide", QByteArray("\xFF\xFE<\0?\0x\0", 8), "text/xml", "text/xml");
        row("/etc/passwd", "root:x:0:0", "text/plain", "");
        row("/a/key.pem", "----", "text/plain", "");
        row("/a/xml", "<", "text/plain", "");
        row("/a/a.b/none", "", "text/plain", "");
        row("/a/doc.pdf", "%PDF-1.7", "text/plain", "");
    }
    void kinds()
    {
        QFETCH(QString, path);
        QFETCH(QByteArray, content);
        QTEST(mediaType(path, content, Wanted::AsDocument), "asDocument");
        QTEST(mediaType(path, content, Wanted::ByPage), "byPage");
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

    void styleInstructions_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QByteArray>("modern");
        const auto row = [](const char *name, const char *xml, const char *modern) {
            QTest::newRow(name) << QByteArray(xml) << QByteArray(modern);
        };
        row("alone", "<?xml:stylesheet href='a'?><r/>", "<?xml-stylesheet href='a'?><r/>");
        row("behind the rest",
            "<?xml version='1.0'?>\r\n<!-- > --><!DOCTYPE r [<!ENTITY a '>'>]>\n<?xml:stylesheet b?><r/>",
            "<?xml version='1.0'?>\r\n<!-- > --><!DOCTYPE r [<!ENTITY a '>'>]>\n<?xml-stylesheet b?><r/>");
        row("system type", "<!DOCTYPE r SYSTEM \"r.dtd\"><?xml:stylesheet [?><r/>",
            "<!DOCTYPE r SYSTEM \"r.dtd\"><?xml-stylesheet [?><r/>");
        row("in the root", "<r><?xml:stylesheet a?></r>", "<r><?xml:stylesheet a?></r>");
        row("in a comment", "<!-- <?xml:stylesheet a?> --><r/>", "<!-- <?xml:stylesheet a?> --><r/>");
        row("longer name", "<?xml:stylesheets a?><r/>", "<?xml:stylesheets a?><r/>");
        row("cut off", "<!DOCTYPE r [", "<!DOCTYPE r [");
        row("cut off in it", "<?xml:stylesheet", "<?xml:stylesheet");
        row("nothing", "", "");
    }
    void styleInstructions()
    {
        QFETCH(QByteArray, xml);
        QTEST(withModernStyleInstructions(xml), "modern");
    }
};

QTEST_GUILESS_MAIN(TestPreviewFiles)
#include "test_preview_files.moc"
