// The embedded browser with real pages, on a private folder of files.
#include "platform/browser/web_browser.h"
#include "platform/system/process_limits.h"
#include "tests/platform/browser/pages.h"

#include <QTemporaryDir>
#include <QWebEngineHistory>
#include <csignal>
#include <functional>

using namespace browser_test;
using browser::WebBrowser;

namespace {

const char kXslt[] = "<?xml version='1.0'?><?xml-stylesheet type='text/xsl' href='a.xsl'?><r><i>one</i></r>";

} // namespace

class TestWebBrowser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        write(QStringLiteral("a.xsl"), kSheet);
        write(QStringLiteral("sub/part.xsl"), kPart);
        if (!profile_)
            profile_ = browser::warmUp();
        browser_ = std::make_unique<WebBrowser>(profile_);
        browser_->setSilent(true);
        browser_->resize(400, 300);
        browser_->show();
    }

    void cleanup() { browser_.reset(); }

    void showsDocuments()
    {
        const QString made = u"Made [one]"_qs;
        const QString inked = u"rgb(1, 2, 3)"_qs;
        const std::tuple<QString, QByteArray, QString, QString> rows[] = {
            {u"doc.xml"_qs, kXslt, made, {}},
            {u"doc.xml0"_qs, kXslt, made, {}},
            {u"doc.xml3"_qs, "<?xml:stylesheet type='text/xsl' href='a.xsl'?><r><i>one</i></r>", made, {}},
            {u"doc.xml0"_qs, "<?xml-stylesheet type='text/css' href='css/a.css'?><r>plain</r>", u"plain"_qs,
             inked},
            {u"page.html0"_qs, "<link rel=stylesheet href='css/a.css'><h1>Head</h1>", u"Head"_qs, inked},
            {u"thing0"_qs, "<?xml-stylesheet type='text/css' href='css/a.css'?><r>any</r>", u"any"_qs, inked},
            {u"notes.txt0"_qs, "just <b>words", u"just <b>words"_qs, {}},
        };
        for (const auto &[name, bytes, shown, colour] : rows) {
            write(QStringLiteral("css/a.css"), ":root { color: rgb(1, 2, 3); display: block }");
            const QString path = write(name, bytes);
            load([&] { browser_->navigate(path); });
            QCOMPARE(text(), shown);
            if (!colour.isEmpty())
                QCOMPARE(run("getComputedStyle(document.documentElement).color").toString(), colour);
        }
    }

    void followsOddNames()
    {
        for (const QString &name : {u"it's \"quoted\""_qs, u"100%25 %41"_qs, u"a#b?c&d;e"_qs, u"Ж日é"_qs,
                                    u"back\\slash"_qs, u"[a]{b}|^`~"_qs, u"<a>!$&(*)+,-.:;=@_"_qs}) {
            write(name + u"/a.xsl"_qs, kSheet);
            write(name + u"/sub/part.xsl"_qs, kPart);
            const QString path = write(name + u'/' + name + u".xml0"_qs, kXslt);
            load([&] { browser_->navigate(path); });
            QCOMPARE(text(), u"Made [one]"_qs);
        }
    }

    void showsTextInPlaceOfAFile()
    {
        const QString path = folder_->filePath(QStringLiteral("doc.xml0"));
        load([&] { browser_->showText(kXslt, path); });
        QCOMPARE(text(), u"Made [one]"_qs);
        load([&] { browser_->showText(QByteArray(kXslt).replace("one", "two"), path); });
        QCOMPARE(text(), u"Made [two]"_qs);
        load([&] { browser_->reload(); });
        QCOMPARE(text(), u"Made [two]"_qs);
        write(QStringLiteral("doc.xml0"), QByteArray(kXslt).replace("one", "file"));
        load([&] { browser_->navigate(path); });
        QCOMPARE(text(), u"Made [file]"_qs);
    }

    void refusesFilesThatPagesAreNotMadeOf()
    {
        write(QStringLiteral("secret.txt"), "document.title = 'taken'");
        write(QStringLiteral("secret"), "document.title = 'taken'");
        write(QStringLiteral("good.js"), "document.body.append('script ran')");
        const QString path = write(QStringLiteral("page.html"),
                                   "<title>kept</title><body><script src='secret.txt'></script>"
                                   "<script src='secret'></script><script src='good.js'></script>");
        load([&] { browser_->navigate(path); });
        QCOMPARE(text(), u"script ran"_qs);
        QCOMPARE(run("document.title").toString(), u"kept"_qs);
    }

    // What a page is made of may lie anywhere; what its scripts read lies beside it or below, links followed.
    void readsNothingFromElsewhere()
    {
        const QByteArray made
            = "new Promise(r => {%1}).then(t => document.title = t, e => document.title = 'no')";
        const QByteArray frame
            = "<%1 src='URL' data='URL' type='text/xml' onerror='document.title=`no`' "
              "onload='document.title = this.contentDocument?.documentElement?.textContent.trim() "
              "|| `no`'></%1>";
        const auto script = [](const QByteArray &code) { return "<body><script>" + code + "</script>"; };
        const auto made_
            = [&](const QByteArray &code) { return script(QByteArray(made).replace("%1", code)); };
        const QByteArray sheet
            = "<x:stylesheet version='1.0' xmlns:x='http://www.w3.org/1999/XSL/Transform'>";
        enum Reach
        {
            Near, // only
            Anywhere,
            Nowhere
        };
        const std::tuple<const char *, QByteArray, const char *, Reach> rows[] = {
            {"frame", "<body>" + QByteArray(frame).replace("%1", "iframe"), "d.xml", Near},
            {"object", "<body>" + QByteArray(frame).replace("%1", "object"), "d.xml", Near},
            {"request",
             made_("const x = new XMLHttpRequest; x.onloadend = () => r(x.responseText ? 'taken' : 'no');"
                   "x.open('GET', 'URL'); x.send()"),
             "d.xml", Nowhere},
            {"fetch", made_("fetch('URL').then(a => a.text()).then(r, () => r('no'))"), "d.xml", Nowhere},
            {"import", made_("import('URL').then(m => r(m.a), () => r('no'))"), "m.js", Near},
            {"module",
             "<body><script type=module>import {a} from 'URL'; document.title = a</script>"
             "<script type=module>document.title ||= 'no'</script>",
             "m.js", Near},
            {"worker",
             made_("const w = new Worker('URL'); w.onmessage = e => r(e.data); w.onerror = () => r('no')"),
             "w.js", Near},
            {"script", "<body><script src='URL' onerror='document.title=`no`'></script>", "c.js", Anywhere},
            {"picture", "<body><img src='URL' onload='document.title=`taken`' onerror='document.title=`no`'>",
             "p.svg", Anywhere},
            {"style",
             "<link rel=stylesheet href='URL' onload='document.title=`taken`' onerror='document.title=`no`'>",
             "a.css", Anywhere},
            {"markup as style",
             "<link rel=stylesheet href='URL' onload='document.title=`taken`' onerror='document.title=`no`'>",
             "d.xml", Near},
            {"markup as script",
             "<body><script src='URL' onload='document.title=`taken`' "
             "onerror='document.title=`no`'></script>",
             "d.xml", Near},
        };
        for (const QString &folder : {u"in/"_qs, u"out/"_qs, u"in/sub/"_qs}) {
            write(folder + u"d.xml"_qs, "<d>taken</d>");
            write(folder + u"m.js"_qs, "export const a = 'taken'");
            write(folder + u"w.js"_qs, "postMessage('taken')");
            write(folder + u"c.js"_qs, "document.title = 'taken'");
            write(folder + u"a.css"_qs, "body { color: red }");
            write(folder + u"p.svg"_qs, "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>");
        }
        QFile::link(folder_->filePath(u"out"_qs), folder_->filePath(u"in/link"_qs));
        for (const auto &[name, page, target, reach] : rows) {
            for (const QByteArray folder : {"./", "./sub/", "../out/", "./link/", "xmlpreview://d99999/"}) {
                const bool isNear
                    = !folder.contains("out") && !folder.contains("li") && !folder.contains(":");
                const QByteArray url
                    = (folder.endsWith("9/") ? folder.chopped(1) + folder_->path().toUtf8() + "/in/" : folder)
                    + target;
                load([&] {
                    browser_->navigate(write(u"in/page.html"_qs, QByteArray(page).replace("URL", url)));
                });
                const bool taken = reach == Anywhere ? !folder.contains(":") : reach == Near && isNear;
                const auto title = [&] { return run("document.title").toString(); };
                QTRY_VERIFY2_WITH_TIMEOUT(title() == (taken ? u"taken"_qs : u"no"_qs),
                                          name + url + title().toUtf8(), kPatience);
            }
        }
        for (const QByteArray folder : {"../in/", "../out/"}) {
            write(u"out/s.xsl"_qs,
                  sheet + "<x:template match='/'><p>made <x:value-of select=\"document('" + folder
                      + "d.xml')\"/></p></x:template></x:stylesheet>");
            load([&] {
                browser_->navigate(
                    write(u"in/d2.xml"_qs, "<?xml-stylesheet type='text/xsl' href='../out/s.xsl'?><r/>"));
            });
            QCOMPARE(text(), folder == "../in/" ? u"made taken"_qs : u"made"_qs);
        }
    }

    // Not the machine's, and the window goes on.
    void memoryIsBounded()
    {
        if (!shell::limitMemoryOf(QCoreApplication::applicationPid(), shell::physicalMemory()))
            QSKIP("this system, or this build, has no such bound");
        browser_ = std::make_unique<WebBrowser>(std::make_shared<browser::PreviewProfile>(qint64{400} << 20));
        browser_->resize(400, 300);
        browser_->show();
        const QString path
            = write(u"page.html"_qs,
                    "<body>page<script>setTimeout(() => { const s = 'x'.repeat(1 << 26), all = [];"
                    "for (let i = 0; i < 20; ++i) all.push(document.createTextNode(s + i)) }, 0)"
                    "</script>");
        load([&] { browser_->navigate(path); });
        QTRY_VERIFY_WITH_TIMEOUT(browser_->page()->history()->count() == 2 && !browser_->page()->isLoading(),
                                 kPatience);
        QVERIFY(text().contains(u"more memory than a page may have"_qs));
        load([&] { browser_->navigate(write(u"next.html"_qs, "<body>next")); });
        QCOMPARE(text(), u"next"_qs);
    }

    void dialogsDoNotBlock()
    {
        const QString path = write(QStringLiteral("page.html"),
                                   "<body><script>alert('a'); window.onbeforeunload = e => 'stay';"
                                   "window.onclick = e => document.title = 'clicked';"
                                   "document.body.append(confirm('b') + ' ' + prompt('c', 'd'))</script>");
        const QString next = write(QStringLiteral("next.html"), "<body>next");
        load([&] { browser_->navigate(path); });
        QCOMPARE(text(), u"false null"_qs);
        QVERIFY(!QApplication::activeModalWidget());
        click(); // a page that nobody touched may not ask to stay
        QTRY_VERIFY_WITH_TIMEOUT(run("document.title").toString() == u"clicked"_qs, kPatience);
        load([&] { browser_->navigate(next); });
        QCOMPARE(text(), u"next"_qs);
    }

    void isAlwaysFresh()
    {
        const QString path = write(QStringLiteral("doc.xml0"), kXslt);
        load([&] { browser_->navigate(path); });
        write(QStringLiteral("doc.xml0"), QByteArray(kXslt).replace("one", "two"));
        write(QStringLiteral("a.xsl"), QByteArray(kSheet).replace("Made", "Anew"));
        write(QStringLiteral("sub/part.xsl"), QByteArray(kPart).replace("[<", "(<"));
        load([&] { browser_->navigate(path); });
        QCOMPARE(text(), u"Anew (two]"_qs);
        QCOMPARE(browser_->page()->history()->count(), 1); // in place of itself
        write(QStringLiteral("a.xsl"), QByteArray(kSheet).replace("Made", "Again"));
        load([&] { browser_->reload(); });
        QCOMPARE(text(), u"Again (two]"_qs);
    }

    void outlivesACrash()
    {
#ifdef Q_OS_UNIX
        const QString path = write(QStringLiteral("page.html"), "<body>page");
        load([&] { browser_->navigate(path); });
        const qint64 process = browser_->page()->renderProcessPid();
        QVERIFY(process > 0 && process != QCoreApplication::applicationPid());
        ::kill(pid_t(process), SIGKILL);
        QTRY_VERIFY_WITH_TIMEOUT(browser_->page()->history()->count() == 2 && !browser_->page()->isLoading(),
                                 kPatience);
        QVERIFY(text().startsWith(u"The preview stopped working."_qs));
        load([&] { browser_->reload(); });
        QCOMPARE(text(), u"page"_qs);
#else
        QSKIP("ends a process the Unix way");
#endif
    }

    void outlivesAHangingScript()
    {
        const QString hangs = write(QStringLiteral("hangs.html"),
                                    "<body>x<script>setTimeout(() => { for (;;) ; }, 0)</script>");
        const QString next = write(QStringLiteral("next.html"), "<body>next");
        load([&] { browser_->navigate(hangs); });
        load([&] { browser_->navigate(next); });
        QCOMPARE(text(), u"next"_qs);
    }

    void tellsWhatIsLacking()
    {
        const QByteArray head = "<x:stylesheet version='1.0' xmlns:x='http://www.w3.org/1999/XSL/Transform'>";
        const QString gone = u"b.xsl, which the page refers to, is not there."_qs;
        const QString unreached = u"was not loaded: Preview takes style sheets by their path alone."_qs;
        const QString fault = u"The style sheet could not be carried out: there is a fault in it."_qs;
        const std::tuple<QString, QByteArray, QString> rows[] = {
            {u"a.xsl"_qs, kSheet, {}},
            {u"b.xsl"_qs, {}, gone},
            {u"b.css"_qs, {}, u"b.css, which the page refers to, is not there."_qs},
            {u"c.xsl"_qs, "<x>\n</b>", u"c.xsl, line 2: Opening and ending tag mismatch: x line 1 and b"_qs},
            {u"d.xsl"_qs, head + "<x:import href='b.xsl'/></x:stylesheet>", gone},
            {u"e.txt"_qs, "x", u"e.txt is not of a kind that Preview lets pages have."_qs},
            {u"http://a.test/f.xsl"_qs, {}, unreached},
            {u"file:///f.css"_qs, {}, unreached},
            {u"g.xsl"_qs,
             head + "<x:template match='/'><x:call-template name='n'/></x:template></x:stylesheet>", fault},
            {u"h.xsl"_qs, head + "<x:template match='/'/></x:stylesheet>",
             u"The style sheet made an empty page."_qs},
        };
        for (const auto &[name, sheet, note] : rows) {
            if (!sheet.isEmpty())
                write(name, sheet);
            const QByteArray type = name.endsWith(u"css"_qs) ? "css" : "xsl";
            const QString path
                = write(u"doc.xml"_qs,
                        "<?xml-stylesheet type='text/" + type + "' href='" + name.toUtf8() + "'?><r/>");
            QSignalSpy notes(browser_.get(), &WebBrowser::noted);
            load([&] { browser_->navigate(path); });
            QTRY_COMPARE_WITH_TIMEOUT(notes.size(), note.isEmpty() ? 0 : 1, kPatience);
            const QString seen = notes.isEmpty() ? QString() : notes.first().first().toString();
            QVERIFY2(seen.endsWith(note) && seen.isEmpty() == note.isEmpty(), qPrintable(seen));
            if (note == fault || note == gone)
                QTRY_COMPARE_WITH_TIMEOUT(text(), seen, kPatience); // in place of nothing
        }
    }

    void leavesNothingRunning()
    {
#ifdef Q_OS_UNIX
        const QString hangs = write(QStringLiteral("hangs.html"),
                                    "<body>x<script>setTimeout(() => { for (;;) ; }, 0)</script>");
        load([&] { browser_->navigate(hangs); });
        const auto process = pid_t(browser_->page()->renderProcessPid());
        QVERIFY(::kill(process, 0) == 0);
        browser_->hide();
        QTRY_VERIFY_WITH_TIMEOUT(::kill(process, 0) != 0, kPatience);
        browser_->show();
        const QString next = write(QStringLiteral("next.html"), "<body>next");
        load([&] { browser_->navigate(next); });
        QCOMPARE(text(), u"next"_qs);
        QVERIFY(!browser_->canGoBack());
#else
        QSKIP("looks for a process the Unix way");
#endif
    }

    void goesBackWithinADocumentOnly()
    {
        const QString page
            = write(u"page.html"_qs, "<body>page<a style='position:fixed;inset:0' href='next.html'></a>");
        const QString next = write(u"next.html"_qs, "<body>next");
        load([&] { browser_->navigate(page); });
        QVERIFY(!browser_->canGoBack() && !browser_->canGoForward());
        load([&] { click(); });
        QCOMPARE(text(), u"next"_qs);
        QVERIFY(browser_->canGoBack());
        load([&] { browser_->back(); });
        QVERIFY(!browser_->canGoBack() && browser_->canGoForward());
        load([&] { browser_->navigate(write(u"other.html"_qs, "<body>other")); });
        QVERIFY(!browser_->canGoBack() && !browser_->canGoForward());
    }

    void takesTheKeyboard()
    {
        const QString page = write(u"page.html"_qs, "<body>top<p style='margin-top:9000px'>end");
        browser_->setFocus();
        load([&] { browser_->navigate(page); });
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
        QTRY_VERIFY_WITH_TIMEOUT(run("scrollY").toDouble() > 0, kPatience);
    }

    void asksBeforeALargeTree()
    {
        const QByteArray end = QByteArray(20'000'000, ' ') + "end</r>";
        load([&] {
            browser_->navigate(
                write(u"a.xml"_qs, "<?xml-stylesheet href='a.css' type='text/css'?><r>" + end));
        });
        QCOMPARE(text(), u"end"_qs);
        load([&] { browser_->navigate(write(u"large.xml"_qs, "<r>" + end)); });
        QVERIFY(text().startsWith(u"This document is large: 20 MB."_qs));
        load([&] { run("document.links[0].click()"); });
        QVERIFY(text().endsWith(u"<r> end</r>"_qs));
    }

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return browser_test::write(folder_->filePath(name), bytes);
    }

    // Waits until what start begins has been loaded, well or not.
    void load(const std::function<void()> &start)
    {
        QSignalSpy finished(browser_.get(), &WebBrowser::loadFinished);
        start();
        QTRY_VERIFY_WITH_TIMEOUT(!finished.isEmpty(), kPatience);
    }

    void click() { QTest::mouseClick(browser_->findChild<QWebEngineView *>()->focusProxy(), Qt::LeftButton); }
    QString text() { return textOf(browser_->page()); }
    QVariant run(const char *script)
    {
        return awaited<QVariant>(
            [&](auto take) { browser_->page()->runJavaScript(QString::fromUtf8(script), take); });
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::shared_ptr<browser::PreviewProfile> profile_;
    std::unique_ptr<WebBrowser> browser_;
};

BROWSER_TEST_MAIN(TestWebBrowser)
#include "test_web_browser.moc"
