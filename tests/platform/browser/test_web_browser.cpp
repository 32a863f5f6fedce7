// The embedded browser with real pages, on a private folder of files.
#include "platform/browser/browser_process.h"
#include "platform/browser/web_browser.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QWebEngineHistory>
#include <QWebEnginePage>
#include <QtTest>
#include <csignal>
#include <functional>
#include <optional>

using browser::WebBrowser;

namespace {

constexpr int kPatience = 10000; // ms; only ever waited out by a fault

const char kSheet[] = "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
                      "<xsl:import href='sub/part.xsl'/>"
                      "<xsl:template match='/'><html><body><h1>Made</h1><xsl:apply-templates/></body></html>"
                      "</xsl:template></xsl:stylesheet>";
const char kPart[] = "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
                     "<xsl:template match='i'>[<xsl:value-of select='.'/>]</xsl:template></xsl:stylesheet>";
const char kXslt[] = "<?xml version='1.0'?><?xml-stylesheet type='text/xsl' href='a.xsl'?><r><i>one</i></r>";

} // namespace

class TestWebBrowser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        if (!profile_)
            profile_ = browser::warmUp();
        browser_ = std::make_unique<WebBrowser>(profile_);
        browser_->setSilent(true);
        browser_->resize(400, 300);
        browser_->show();
    }

    void cleanup() { browser_.reset(); }

    void showsDocuments_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("colour"); // of the root element, empty when it does not matter
        const auto row = [](const char *title, const char *name, const char *bytes, const char *shown,
                            const char *colour = "") {
            QTest::newRow(title) << QString::fromUtf8(name) << QByteArray(bytes) << QString::fromUtf8(shown)
                                 << QString::fromUtf8(colour);
        };
        row("transformed", "doc.xml", kXslt, "Made [one]");
        row("transformed copy", "doc.xml0", kXslt, "Made [one]");
        row("early instruction", "doc.xml3",
            "<?xml:stylesheet type='text/xsl' href='a.xsl'?><r><i>one</i></r>", "Made [one]");
        row("styled copy", "doc.xml0", "<?xml-stylesheet type='text/css' href='css/a.css'?><r>plain</r>",
            "plain", "rgb(1, 2, 3)");
        row("page", "page.html0", "<link rel=stylesheet href='css/a.css'><h1>Head</h1>", "Head",
            "rgb(1, 2, 3)");
        row("copy of anything", "thing0", "<?xml-stylesheet type='text/css' href='css/a.css'?><r>any</r>",
            "any", "rgb(1, 2, 3)");
        row("plain", "notes.txt0", "just <b>words", "just <b>words");
    }
    void showsDocuments()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, colour);
        write(QStringLiteral("a.xsl"), kSheet);
        write(QStringLiteral("sub/part.xsl"), kPart);
        write(QStringLiteral("css/a.css"), ":root { color: rgb(1, 2, 3); display: block }");
        const QString path = write(name, bytes);
        load([&] { browser_->navigate(path); });
        QTEST(text(), "shown");
        if (!colour.isEmpty())
            QCOMPARE(run("getComputedStyle(document.documentElement).color").toString(), colour);
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
        write(QStringLiteral("a.xsl"), kSheet);
        write(QStringLiteral("sub/part.xsl"), kPart);
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

    void linksElsewhereGoNowhere()
    {
        write(QStringLiteral("other.html"), "<body>other");
        const QString path
            = write(QStringLiteral("page.html"),
                    "<body>page<a id=out href='file:///etc/passwd'></a><a id=in href='other.html'></a>");
        load([&] { browser_->navigate(path); });
        run("document.getElementById('out').click()");
        QCOMPARE(text(), u"page"_qs);
        load([&] { run("document.getElementById('in').click()"); });
        QCOMPARE(text(), u"other"_qs);
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
        QWidget *surface = browser_->findChild<QWebEngineView *>()->focusProxy();
        QTest::mouseClick(surface, Qt::LeftButton); // a page that nobody touched may not ask to stay
        QTRY_VERIFY_WITH_TIMEOUT(run("document.title").toString() == u"clicked"_qs, kPatience);
        load([&] { browser_->navigate(next); });
        QCOMPARE(text(), u"next"_qs);
    }

    void isAlwaysFresh()
    {
        const QString path = write(QStringLiteral("doc.xml0"), kXslt);
        write(QStringLiteral("a.xsl"), kSheet);
        write(QStringLiteral("sub/part.xsl"), kPart);
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

    void missingFileAppears()
    {
        const QString path = folder_->filePath(QStringLiteral("late.html"));
        load([&] { browser_->navigate(path); });
        write(QStringLiteral("late.html"), "<body>there");
        load([&] { browser_->reload(); });
        QCOMPARE(text(), u"there"_qs);
    }

    void goesBackAndForward()
    {
        const QString one = write(QStringLiteral("one.html"), "<body>one");
        const QString two = write(QStringLiteral("two.html"), "<body>two");
        load([&] { browser_->navigate(one); });
        browser_->back(); // nowhere to go
        load([&] { browser_->navigate(two); });
        load([&] { browser_->back(); });
        QCOMPARE(text(), u"one"_qs);
        load([&] { browser_->forward(); });
        QCOMPARE(text(), u"two"_qs);
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

private:
    QString write(const QString &name, const QByteArray &bytes)
    {
        const QString path = folder_->filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    // Waits until what start begins has been loaded, well or not.
    void load(const std::function<void()> &start)
    {
        QSignalSpy finished(browser_.get(), &WebBrowser::loadFinished);
        start();
        QTRY_VERIFY_WITH_TIMEOUT(!finished.isEmpty(), kPatience);
    }

    // What ask hands its function, later; maybe when nobody waits any more.
    template <typename T, typename Ask>
    T awaited(Ask ask)
    {
        const auto answer = std::make_shared<std::optional<T>>();
        ask([answer](const T &value) { *answer = value; });
        [&] { QTRY_VERIFY_WITH_TIMEOUT(answer->has_value(), kPatience); }();
        return answer->value_or(T());
    }
    QString text()
    {
        return awaited<QString>([this](auto take) { browser_->page()->toPlainText(take); }).simplified();
    }
    QVariant run(const char *script)
    {
        return awaited<QVariant>(
            [&](auto take) { browser_->page()->runJavaScript(QString::fromUtf8(script), take); });
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::shared_ptr<browser::PreviewProfile> profile_;
    std::unique_ptr<WebBrowser> browser_;
};

int main(int argc, char **argv)
{
    browser::prepareProcess();
    QApplication application(argc, argv);
    TestWebBrowser test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_web_browser.moc"
