// Documents that want out: to other files, to the network, into memory without end. None gets there, none
// hangs the window, and what they would have reached is as it was.
#include "window_fixture.h"

#include "platform/browser/web_browser.h"
#include "platform/files/file_helpers.h"

#include <QApplication>
#include <QDir>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>
#include <QWebEnginePage>

#include <sys/stat.h>

using namespace app_test;
using namespace Qt::StringLiterals;

namespace {

constexpr int kPatience = 60'000; // ms; only ever waited out by a fault

// A server that nobody may call.
class Server
{
public:
    Server()
    {
        if (!tcp_.listen(QHostAddress::LocalHost) || !udp_.bind(QHostAddress::LocalHost, tcp_.serverPort()))
            qFatal("no server");
    }
    QByteArray host() const { return "127.0.0.1:" + QByteArray::number(tcp_.serverPort()); }

    // Calls it as the last one, and sees whether it is the first.
    bool wasCalled()
    {
        QTcpSocket own;
        own.connectToHost(QHostAddress::LocalHost, tcp_.serverPort());
        if (!own.waitForConnected(kPatience) || !tcp_.waitForNewConnection(kPatience))
            qFatal("no connection");
        return tcp_.nextPendingConnection()->peerPort() != own.localPort() || udp_.hasPendingDatagrams();
    }

private:
    QTcpServer tcp_;
    QUdpSocket udp_;
};

// Everything that a reference may name and that must not be read, waited for or called.
QList<QByteArray> targets(const Folders &folders, const QByteArray &host)
{
    const auto at = [&](const char *name) { return folders.document(QString::fromLatin1(name)); };
    QDir().mkpath(at("folder"));
    write(at("closed"), " "); // which a superuser can read
    write(at("huge"), {});
    QFile::setPermissions(at("closed"), {});
    if (mkfifo(QFile::encodeName(at("pipe")).constData(), 0666) != 0
        || !QFile::resize(at("huge"), qint64(1) << 30) || !QFile::link(u"/dev/zero"_s, at("link"))
        || !QFile::link(at("pipe"), at("piped")))
        qFatal("cannot lay out the targets");
    QList<QByteArray> all{"/dev/zero", "/dev/tty", "file:///dev/random", "file://" + host + "/x",
                          "/proc/self/mem"};
    for (const char *name :
         {"folder", "closed", "huge", "pipe", "link", "piped", "none", "../documents/./pipe"})
        all << name;
    for (const char *scheme : {"http", "https", "ftp", "HTTP", "smb", "jar:http", "xmlpreview"})
        all << scheme + ("://" + host) + "/x";
    return all << "//" + host + "/x";
}

// % stands for the server's host and port.
const char kPage[] = R"(<link rel="stylesheet" href="http://%/a.css"/><link rel="preconnect" href="http://%"/>
<link rel="dns-prefetch" href="http://%"/><link rel="prefetch" href="http://%/a"/><link rel="prerender" href="http://%/c"/>
<link rel="preload" as="image" href="http://%/b.png"/><link rel="icon" href="http://%/i.ico"/>
<link rel="manifest" href="http://%/m"/><link rel="modulepreload" href="http://%/m.js"/>
<meta http-equiv="Content-Security-Policy-Report-Only" content="img-src 'none'; report-uri http://%/csp"/>
<style>@import url(http://%/b.css); @font-face { font-family: f; src: url(http://%/f.woff2) }
p { font-family: f; background: url(http://%/p.png); cursor: url(http://%/c.cur), auto; filter: url(http://%/f.svg#f) }</style>
<p>text</p><img src="http://%/a.png"/><script src="http://%/a.js"></script><iframe src="http://%/a.html"></iframe>
<object data="http://%/a.svg"></object><embed src="http://%/a.swf"/><video src="http://%/a.webm" poster="http://%/p.png"/>
<audio src="http://%/a.ogg"/><input type="image" src="http://%/i.png"/><iframe id="local" src="file:///etc/passwd"></iframe>
<iframe id="named" src="/etc/passwd"></iframe><form id="f" action="http://%/c" method="post"/><a id="d" download="x" href="data:,x"/>
<script>//<![CDATA[
const event = (thing, good, bad) => new Promise((y, n) => { thing[good] = y; thing[bad] = n; });
const request = url => { const x = new XMLHttpRequest(); x.open('GET', url); x.send(); return event(x, 'onload', 'onerror'); };
const frame = id => document.getElementById(id).contentDocument.documentElement.textContent.includes('root:') || Promise.reject();
const sure = answer => answer === true || answer === 'granted' || Promise.reject();
const probes = {
    none: () => true,
    fetch: () => fetch('http://%/a', {mode: 'no-cors'}), fetchFile: () => fetch('file:///etc/passwd'),
    fetchBeside: () => fetch('beside.xml').then(r => r.text()), request: () => request('http://%/e'),
    requestFile: () => request('file:///etc/passwd'), requestBeside: () => request('beside.xml'),
    frame: () => frame('local'), frameNamed: () => frame('named'), module: () => import('http://%/m.js'),
    worker: () => event(new Worker('http://%/w.js'), 'onmessage', 'onerror'),
    shared: () => event(new SharedWorker('http://%/w.js').port, 'onmessage', 'onmessageerror'),
    service: () => navigator.serviceWorker.register('w.js'),
    socket: () => event(new WebSocket('ws://%/b'), 'onopen', 'onerror'),
    events: () => event(new EventSource('http://%/d'), 'onopen', 'onerror'),
    transport: () => new WebTransport('https://%/t').ready,
    window: () => open('http://%/b') || Promise.reject(), blank: () => open('about:blank') || Promise.reject(),
    place: () => new Promise((y, n) => navigator.geolocation.getCurrentPosition(y, n)),
    notice: () => Notification.requestPermission().then(sure),
    camera: () => navigator.mediaDevices.getUserMedia({video: true, audio: true}),
    screen: () => navigator.mediaDevices.getDisplayMedia(), clipboard: () => navigator.clipboard.readText(),
    midi: () => navigator.requestMIDIAccess({sysex: true}), usb: () => navigator.usb.requestDevice({filters: []}),
    files: () => showOpenFilePicker(), storage: () => localStorage.setItem('a', 'b'),
    persistence: () => navigator.storage.persist().then(sure), full: () => document.documentElement.requestFullscreen(),
    call: async () => {
        const c = new RTCPeerConnection({iceServers: [{urls: 'stun:%'},
            {urls: ['turn:%?transport=tcp', 'turn:%?transport=udp'], username: 'u', credential: 'p'}]});
        c.createDataChannel('a');
        await c.setLocalDescription(await c.createOffer());
        await event(c, 'onicecandidate', 'onicecandidateerror').then(e => e.candidate || Promise.reject());
    },
};
navigator.sendBeacon('http://%/c', 'x');
for (let i = 0; i < 200; ++i) { alert(i); confirm(i); prompt(i); }
onload = async () => {
    const late = () => new Promise((y, n) => setTimeout(n, 3000));
    const names = Object.keys(probes);
    const ends = await Promise.allSettled(names.map(n => Promise.race([(async () => probes[n]())(), late()])));
    const done = names.filter((n, i) => ends[i].status === 'fulfilled');
    for (const url of ['http://%/go', 'file:///etc/passwd', 'data:text/html,x', 'ftp://%/x', 'mailto:x', 'x-unknown:x'])
        location = url;
    document.getElementById('f').submit();
    document.getElementById('d').click();
    print();
    setTimeout(() => document.title = 'done ' + done, 0);
};
//]]></script>)";

} // namespace

class HostileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pointsElsewhere()
    {
        const std::tuple<const char *, QByteArray> rows[] = {
            {"document type", "<!DOCTYPE r SYSTEM '@'><r/>"},
            {"public document type", "<!DOCTYPE r PUBLIC 'p' '@'><r/>"},
            {"declarations", "<!DOCTYPE r [<!ENTITY % p SYSTEM '@'> %p;]><r/>"},
            {"entity", "<!DOCTYPE r [<!ENTITY e SYSTEM '@'>]><r>&e;</r>"},
            {"unparsed", "<!DOCTYPE r [<!NOTATION n SYSTEM '@'><!ENTITY e SYSTEM '@' NDATA n>]><r/>"},
            {"inclusion",
             "<r xmlns:i='http://www.w3.org/2001/XInclude'><i:include href='@'/><i:include parse='text' "
             "href='@'/></r>"},
            {"base", "<r xml:base='@' xmlns:i='http://www.w3.org/2001/XInclude'><i:include href='x'/></r>"},
            {"style sheet", "<?xml-stylesheet type='text/xsl' href='@'?><r/>"},
            {"styles", "<?xml-stylesheet type='text/css' href='@'?><r/>"},
            {"model and schema",
             "<?xml-model href='@'?><r xmlns:x='http://www.w3.org/2001/XMLSchema-instance' "
             "x:schemaLocation='u @' x:noNamespaceSchemaLocation='@'/>"},
            {"what a style sheet loads", "<?xml-stylesheet type='text/xsl' href='sheet.xsl'?><r/>"},
        };
        for (const auto &[name, document] : rows) {
            Server server;
            const Folders folders;
            const QString path = folders.document(u"a.xml"_s);
            const QList<QByteArray> all = targets(folders, server.host());
            Window window(folders);
            QSignalSpy shown(window.main->findChild<browser::WebBrowser *>(u"WebBrowser1"_s),
                             &browser::WebBrowser::loadFinished);
            for (const QByteArray &target : all) {
                write(folders.document(u"sheet.xsl"_s),
                      "<xsl:stylesheet version='1.0' "
                      "xmlns:xsl='http://www.w3.org/1999/XSL/Transform'><xsl:import href='"
                          + target + "'/><xsl:template match='/'><p><xsl:value-of select=\"document('"
                          + target + "')\"/></p></xsl:template></xsl:stylesheet>");
                write(path, QByteArray(document).replace("@", target));
                window.dialogs.answerFile(path);
                window.choose("mnuOpen");
                QVERIFY2(window.treeRoot().startsWith(u'r'), target.constData());
                shown.clear();
                window.choose("mnupreview");
                QTRY_VERIFY2_WITH_TIMEOUT(!shown.isEmpty(), target.constData(), kPatience);
                window.choose("mnunormalmod");
            }
            QVERIFY2(!server.wasCalled(), name);
        }
    }

    void bytes()
    {
        QByteArray attributes;
        QByteArray spaces;
        for (int i = 0; i < 20'000; ++i) {
            attributes += " a" + QByteArray::number(i) + "=''";
            spaces += "<r xmlns:a" + QByteArray::number(i) + "='u'>";
        }
        const std::tuple<const char *, QByteArray, bool> rows[] = {
            {"UTF-7", "<?xml version='1.0' encoding='UTF-7'?><r>+ADw-b+AD4-</r>", false},
            {"EBCDIC declared", "<?xml version='1.0' encoding='IBM037'?><r/>", false},
            {"lone surrogate", QByteArray("\xff\xfe<\0r\0>\0\0\xd8<\0/\0r\0>\0", 18), false},
            {"surrogate by number", "<r>&#xD800;</r>", false},
            {"overlong", "<r>\xc0\xbc/r></r>", false},
            {"NUL in a name", QByteArray("<r\0x/>", 6), false},
            {"wide without a mark", QByteArray("<\0\0\0r\0\0\0/\0\0\0>\0\0\0", 16), true},
            {"a million levels",
             QByteArray("<r>").repeated(1'000'000) + QByteArray("</r>").repeated(1'000'000), true},
            {"attributes", "<r" + attributes + "/>", true},
            {"namespaces", spaces + QByteArray("</r>").repeated(20'000), true},
            {"one name of a megabyte", "<r" + QByteArray(1 << 20, 'x') + "/>", true},
        };
        for (const auto &[name, content, wellFormed] : rows) {
            const Folders folders;
            const QString path = folders.document(u"a.xml"_s);
            write(path, content);
            Window window(folders, {path},
                          wellFormed ? QList<dialogs::Answer>() : QList{dialogs::Answer::Ok});
            QCOMPARE(window.tabs()->currentIndex(), wellFormed ? 0 : 1);
            if (wellFormed) {
                window.choose("mnuxmlmode");
                window.choose("mnunormalmod");
            }
            window.main->close();
            QVERIFY2(window.left, name);
            QVERIFY2(contentOf(path) == content, name);
        }
    }

    void pages()
    {
        const QByteArray html
            = "<html xmlns='http://www.w3.org/1999/xhtml'><head><title>-</title></head><body>";
        const QByteArray end = "</body></html>";
        const std::tuple<QString, QByteArray, QByteArray> rows[] = {
            {u"page.xhtml"_s, html, end},
            {u"picture.svg"_s,
             "<svg xmlns='http://www.w3.org/2000/svg'><title>-</title><foreignObject>" + html,
             end + "</foreignObject></svg>"},
            {u"made.xml"_s,
             "<?xml-stylesheet type='text/xsl' href='made.xml'?><xsl:stylesheet version='1.0' "
             "xmlns:xsl='http://www.w3.org/1999/XSL/Transform'><xsl:output method='html'/><xsl:template "
             "match='/'>"
                 + html,
             end + "</xsl:template></xsl:stylesheet>"},
        };
        for (const auto &[name, before, behind] : rows) {
            Server server;
            const Folders folders;
            write(folders.document(u"beside.xml"_s), "<beside/>");
            write(folders.document(u"w.js"_s), "postMessage('on')");
            const QString path = folders.document(name);
            write(path, before + QByteArray(kPage).replace("%", server.host()) + behind);
            Window window(folders, {path});
            window.choose("mnupreview");
            const auto *page = window.main->findChild<browser::WebBrowser *>(u"WebBrowser1"_s)->page();
            QTRY_VERIFY_WITH_TIMEOUT(page->title().startsWith(u"done"_s), kPatience);
            QCOMPARE(page->title(), u"done none"_s);
            QCOMPARE(page->url().path(), path + u'0');
            QVERIFY(!server.wasCalled());
            QVERIFY(!QApplication::activeModalWidget());
            QCOMPARE(QDir(folders.document({})).entryList(QDir::Files).size(), 4); // the copy is the fourth
        }
    }

    // Whoever can put links into the temporary folder does not choose what the program writes over.
    void plantedLinks()
    {
        const Folders folders;
        const auto temporary = files::privateTempFolder();
        QVERIFY(temporary);
        const QString victim = folders.document(u"victim"_s);
        write(victim, "mine");
        for (const char *name :
             {"zelphedit.xml", "prev.xml", "zelphedit.xml.part", "prev.xml.part", "prev.xml0"})
            QVERIFY(QFile::link(victim, *temporary + u'/' + QLatin1StringView(name)));
        const Window window(folders);
        QCOMPARE(window.treeRoot(), u"Element"_s);
        QCOMPARE(contentOf(victim), QByteArray("mine"));
        QVERIFY(!QFileInfo(*temporary + u"/zelphedit.xml"_s).isSymLink());
    }
};

APP_TEST_MAIN(HostileTest)
#include "hostile_test.moc"
