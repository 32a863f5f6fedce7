#include "case_runner.h"

#include "platform/files/file_helpers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace document_test;
using namespace Qt::StringLiterals;

#define TEMPLATE "<?xml version=\"1.0\"?>\\n<Element/>"

class TestLife : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void start()
    {
        runRows({
            {"named", "file a b.xml=<a/>\\n | start a b.xml",
             "name=a b.xml | new=0 | tab=0 | dom=<a/> | messages=0 | /a b.xml=<a/>\\n"},
            {"faulty, as by Open", "file bad.xml=<a>\\n | start bad.xml",
             "name=bad.xml | new=0 | tab=1 | tag=1 | editor=<a> | errors=1 | line=0 | messages=1 | dom="},
            {"faulty, then saved", "file bad.htm=<p>\\n | start bad.htm | type <p>x | save | leave",
             "/bad.htm=<p>x\\n | left=1 | messages=1"},
            {"faulty, then previewed", "file bad.htm=<p>\\n | start bad.htm | preview",
             "browser=bad.htm0 | /bad.htm0=<p>\\n"},
            {"not there: a new document of that name", "start n.xml",
             "name=n.xml | new=0 | tab=0 | dom=" TEMPLATE " | messages=0 | /n.xml=(no file)"},
            {"which nobody edited", "start n.xml | leave", "left=1 | messages=0 | /n.xml=(no file)"},
            {"and is written by Save", "start n.xml | save | leave", "/n.xml=" TEMPLATE "\\n | left=1"},
            {"a link to what is not there", "link l.xml=n.xml | start l.xml | edit | save",
             "name=l.xml | /n.xml=<?xml version=\"1.0\"?>\\n<Element x=\"1\"/>\\n"},
            {"not there, nor its folder", "start d/n.xml | answer Yes | choose n.xml | save",
             "name=n.xml | /n.xml=" TEMPLATE "\\n | proposed=n.xml"},
            {"quotes in its name", "file pq.xml=<pq/> | file p\"q.xml=<other/> | start p\"q.xml",
             "dom=<other/>"},
            {"a folder", "file d/x= | start d", "name=zelphedit.xml | tab=0 | dom=" TEMPLATE " | messages=1"},
        });
    }

    void newAndOpen()
    {
        runRows({
            {"open", "start | file a.xml=<a/>\\n | choose a.xml | open",
             "name=a.xml | new=0 | dom=<a/> | editor=" TEMPLATE " | tab=0 | messages=0 | asign=1"},
            {"open from XML Mode shows the tree", "start | file a.xml=<a/> | xml | choose a.xml | open",
             "tab=0 | tag=0 | dom=<a/> | modes=011"},
            {"open after a faulty text",
             "start | file a.xml=<a/> | xml | type <b | check | answer No | choose a.xml | open",
             "tab=0 | dom=<a/> | errors=0 | line=-1"},
            {"open asks again for what does not exist",
             "start | file a.xml=<a/> | choose none.xml | choose a.xml | open", "name=a.xml | messages=0"},
            {"open cancelled at the question",
             "start | edit | file a.xml=<a/> | choose a.xml | answer Cancel | open",
             "name=zelphedit.xml | dom=<?xml version=\"1.0\"?>\\n<Element x=\"1\"/>"},
            {"open again what the question saves",
             "file a.xml=<a/>\\n | start a.xml | edit | choose a.xml | answer Yes | open",
             "dom=<a x=\"1\"/> | /a.xml=<a x=\"1\"/>\\n"},
            {"open a faulty file", "start | file bad.xml=<a>\\n</b>\\n | choose bad.xml | open",
             "name=bad.xml | tab=1 | tag=1 | modes=101 | menus=1 | editor=<a>\\n</b> | errors=1 | line=1 | "
             "messages=1 | dom= | undo=0 | /bad.xml=<a>\\n</b>\\n"},
            {"a faulty file left as it was", "start | file bad.htm=<p>\\n | choose bad.htm | open | leave",
             "left=1 | messages=1 | /bad.htm=<p>\\n"},
            {"a faulty file corrected",
             "start | file bad.xml=<a>\\n | choose bad.xml | open | type <a/> | save | normal | leave",
             "tab=0 | dom=<a/> | messages=1 | /bad.xml=<a/>\\n | left=1"},
            {"written by another while it is parsed",
             "file a.xml=<a/> | meanwhile a.xml=<abc/> | start a.xml", "dom=<a/> | overtaken=1"},
            {"and then saved over", "file a.xml=<a/> | meanwhile a.xml=<abc/> | start a.xml | edit | save",
             "overtaken=0 | /a.xml=<a x=\"1\"/>"},
            {"drop what is not there keeps the document",
             "file a.xml=<a/> | start a.xml | edit | drop none.xml",
             "name=a.xml | dom=<a x=\"1\"/> | messages=1 | tab=0"},
            {"drop a folder keeps the document",
             "file a.xml=<a/> | start a.xml | xml | type <b/> | file d/x= | drop d",
             "name=a.xml | editor=<b/> | messages=1 | tab=1"},
            {"new after open", "file a.xml=<a/>\\n | start | drop a.xml | xml | new",
             "name=zelphedit.xml | new=1 | tab=0 | dom=" TEMPLATE " | editor=" TEMPLATE
             " | undo=0 | messages=0"},
            {"new forgets the form of the file",
             "file a.xml=<a>\\l</a>\\l | start | drop a.xml | new | choose b.xml | saveas",
             "/b.xml=" TEMPLATE "\\n"},
        });
    }

    void reload()
    {
        runRows({
            {"in Normal Mode", "file a.xml=<a/>\\n | start a.xml | edit | file a.xml=<c/>\\l | reload | save",
             "tab=0 | dom=<c/> | /a.xml=<c/>\\l"},
            {"in XML Mode", "file a.xml=<a/> | start a.xml | xml | file a.xml=<c/> | reload | leave",
             "tab=1 | editor=<c/> | left=1 | messages=0 | undo=1"},
            {"and taken back",
             "file a.xml=<a/> | start a.xml | xml | type <b/> | file a.xml=<c/> | reload | undo | "
             "normal",
             "dom=<b/>"},
            {"in a preview of XML Mode",
             "file a.xml=<a/> | start a.xml | xml | preview | file a.xml=<c/> | reload",
             "tab=2 | tag=1 | editor=<c/> | /a.xml0=<c/>\\n"},
            {"what does not parse",
             "file a.xml=<a/> | start a.xml | preview | file a.xml=<c | reload | leave",
             "tab=1 | editor=<c | messages=1 | left=1"},
        });
    }

    void save()
    {
        runRows({
            {"a file of LF keeps them", "file a.xml=<a>\\l</a>\\l | start a.xml | edit | save",
             "/a.xml=<a x=\"1\">\\l</a>\\l"},
            {"the editor's text in XML Mode",
             "file a.xml=<a/>\\n | start a.xml | xml | type <b> | save | leave",
             "/a.xml=<b>\\n | left=1 | messages=0"},
            {"a preview of XML Mode saves the editor's text",
             "file a.xml=<a/>\\n | start a.xml | xml | type <b/> | preview | save | leave",
             "/a.xml=<b/>\\n | left=1"},
            {"a preview of Normal Mode saves the DOM's",
             "file a.xml=<a/>\\n | start a.xml | xml | normal | edit | preview | save | leave",
             "/a.xml=<a x=\"1\"/>\\n | left=1"},
            {"saved in XML Mode is saved in Normal Mode",
             "file a.xml=<a/> | start a.xml | xml | type <b/> | save | normal | leave",
             "left=1 | messages=0 | dom=<b/>"},
            {"save as", "start | edit | choose b.xml | saveas | leave",
             "name=b.xml | new=0 | left=1 | /b.xml=<?xml version=\"1.0\"?>\\n<Element x=\"1\"/>\\n"},
            {"save as asks before it overwrites",
             "start | file b.xml=old | choose b.xml | answer No | choose c.xml | saveas",
             "name=c.xml | /b.xml=old | message=b.xml already exits, would you like to overwrite it? | "
             "proposed=b.xml"},
            {"save as keeps the form", "file a.xml=<a>\\l</a>\\l | start a.xml | choose b.xml | saveas",
             "/b.xml=<a>\\l</a>\\l"},
            {"save as over the preview copy keeps what was saved",
             "file a.xml=<a/> | start a.xml | preview | choose a.xml0 | answer Yes | saveas",
             "name=a.xml0 | /a.xml0=<a/>"},
            {"save on a new document leads to save as", "start | edit | choose b.xml | save | save | leave",
             "name=b.xml | left=1 | /b.xml=<?xml version=\"1.0\"?>\\n<Element x=\"1\"/>\\n"},
        });
    }

    // A box says why, and offers another place.
    void failedSave()
    {
        runRows({
            {"the folder has gone", "file d/a.xml=<a/> | start d/a.xml | edit | remove d | answer No | save",
             "told=Not saved: ~/d/a.xml cannot be written: its folder does not exist. | messages=1 | "
             "name=a.xml | changed=1"},
            {"and the document goes elsewhere",
             "file d/a.xml=<a/> | start d/a.xml | edit | remove d | answer Yes | choose b.xml | save | leave",
             "told= | proposed=a.xml | name=b.xml | /b.xml=<a x=\"1\"/> | left=1"},
            {"or stays, when that is dismissed",
             "file d/a.xml=<a/> | start d/a.xml | edit | remove d | answer Yes | choose  | save",
             "name=a.xml | changed=1"},
            {"save as into a folder that is not there",
             "file a.xml=<a/> | start a.xml | choose none/b.xml | answer No | saveas",
             "told=Not saved: ~/none/b.xml cannot be written: its folder does not exist. | name=a.xml"},
            {"and then into one that is",
             "file a.xml=<a/> | start a.xml | choose none/b.xml | answer Yes | choose c.xml | saveas",
             "told= | proposed=b.xml | name=c.xml | /c.xml=<a/>"},
            {"a character that the encoding lacks is not lost",
             "file a.xml=<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a/>\\n | start a.xml | xml | type "
             "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><\u65e5/> | answer No | save",
             "messages=1 | changed=1 | /a.xml=<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a/>\\n"},
            {"what failed stands until it is written",
             "file d/a.xml=<a/> | start d/a.xml | edit | remove d | answer No | save | file d/x= | save",
             "told= | changed=0 | /d/a.xml=<a x=\"1\"/>"},
            {"or another document is opened",
             "file d/a.xml=<a/> | start d/a.xml | edit | remove d | answer No | save | answer No | new",
             "told= | new=1"},
        });
    }

    void question()
    {
        runRows({
            {"an edit taken back is no change", "start | edit | unedit | leave", "left=1 | messages=0"},
            {"typing taken back is no change", "start | xml | type <b/> | undo | leave",
             "left=1 | messages=0"},
            {"names the file", "file a.xml=<a/> | start a.xml | edit | answer No | leave",
             "message=Save changes to a.xml? | /a.xml=<a/>"},
            {"yes on a new document saves as", "start | edit | answer Yes | choose b.xml | leave",
             "left=1 | /b.xml=<?xml version=\"1.0\"?>\\n<Element x=\"1\"/>\\n"},
            {"yes, and save as dismissed, goes on", "start | edit | answer Yes | choose  | leave", "left=1"},
            {"yes, and the file cannot be written, stays",
             "file d/a.xml=<a/> | start d/a.xml | edit | remove d | answer Yes | answer No | leave",
             "left=0 | messages=2 | dom=<a x=\"1\"/>"},
            {"yes, not written, and save as dismissed, stays",
             "file d/a.xml=<a/> | start d/a.xml | edit | remove d | answer Yes | answer Yes | choose  | "
             "leave",
             "left=0 | changed=1"},
            {"yes, and written elsewhere",
             "file d/a.xml=<a/> | start d/a.xml | edit | remove d | answer Yes | answer Yes | choose b.xml | "
             "leave",
             "left=1 | /b.xml=<a x=\"1\"/>"},
            {"yes on new, and the file cannot be written, stays",
             "start | edit | answer Yes | choose none/b.xml | answer No | leave", "left=0 | new=1"},
            {"another load of the same document does not pass for the saved one",
             "file a.xml=<a/> | start a.xml | xml | type <b/> | normal | answer No | leave",
             "message=Save changes to a.xml?"},
            {"a preview asks for the mode it came from",
             "start | xml | type <b | preview | answer Cancel | leave", "left=0 | messages=1"},
            {"the tree's edits do not count in XML Mode", "start | xml | edit | leave",
             "left=1 | messages=0"},
        });
    }

    // What is made of a document is another one, and undo leads back to the first.
    void results()
    {
#define MADE "file a.xml=<a/>\\l | start a.xml | xml | "
        runRows({
            {"is new", MADE "result a.html=<p/>",
             "new=1 | title=a.html | editor=<p/> | changed=1 | /a.xml=<a/>\\l | messages=0 | given="},
            {"is saved where the user wants it", MADE "result a.html=<p/> | choose b.html | save",
             "name=b.html | new=0 | changed=0 | proposed=a.html | /b.html=<p/>\\n | /a.xml=<a/>\\l"},
            {"not saved at all", MADE "result a.html=<p/> | choose  | save",
             "new=1 | proposed=a.html | /a.html=(no file) | /a.xml=<a/>\\l"},
            {"undo", MADE "result a.html=<p/> | undo",
             "name=a.xml | new=0 | title=a.xml | editor=<a/> | changed=0"},
            {"undo, and on as before", MADE "result a.html=<p/> | undo | type <b/> | save", "/a.xml=<b/>\\l"},
            {"undo and redo", MADE "result a.html=<p/> | undo | redo",
             "new=1 | title=a.html | editor=<p/> | changed=1"},
            {"what was saved stays saved", MADE "result a.html=<p/> | choose b.html | save | undo | redo",
             "name=b.html | changed=0 | editor=<p/>"},
            {"edited before and after", MADE "type <b/> | result a.html=<p/> | type <q/> | undo | undo",
             "name=a.xml | editor=<b/> | changed=1 | given=<b/>"},
            {"further back", MADE "type <b/> | result a.html=<p/> | undo | undo",
             "name=a.xml | editor=<a/> | changed=0"},
            {"of a result", MADE "result a.html=<p/> | result b.html=<q/> | undo",
             "title=a.html | editor=<p/> | changed=1"},
            {"of a result and back", MADE "result a.html=<p/> | result b.html=<q/> | undo | undo | redo",
             "title=a.html | editor=<p/>"},
            {"another result after undo", MADE "result a.html=<p/> | undo | result b.html=<q/> | undo | redo",
             "title=b.html | editor=<q/>"},
            {"of a new document", "start | xml | result tmp/none.html=<p/>", "new=1 | changed=1"},
            {"left", MADE "result a.html=<p/> | answer No | leave", "left=1 | messages=1 | given=<p/>"},
            {"left with both unsaved", MADE "type <b/> | result a.html=<p/> | answer No | answer Yes | leave",
             "left=1 | message=Save changes to a.xml? | messages=2 | /a.xml=<b/>\\l"},
            {"left with the first unsaved, shown again",
             MADE "type <b/> | result a.html=<p/> | choose p.html | save | normal | answer Cancel | leave",
             "left=0 | name=a.xml | tab=1 | editor=<b/> | messages=1 | /p.html=<p/>\\n"},
            {"with three",
             MADE "type <b/> | result a.html=<p/> | result b.html=<q/> | answer No | answer No "
                  "| answer No | leave",
             "left=1 | messages=3 | message=Save changes to a.xml?"},
            {"another document opened",
             MADE "type <b/> | result a.html=<p/> | file c.xml=<c/> | answer No | "
                  "answer No | drop c.xml | xml | type <d/> | undo",
             "name=c.xml | editor=<c/> | changed=0 | messages=2"},
            {"its copy for Preview stands where it would", MADE "result a.html=<p/> | preview",
             "copy=a.html0 | browser=a.html0 | /a.html0=<p/>\\n"},
            {"and goes when undone", MADE "result a.html=<p/> | preview | xml | undo", "/a.html0=(no file)"},
        });
#undef MADE
    }

    void previewCopy()
    {
        runRows({
            {"beside the document, gone with it", "file a.xml=<a/>\\l | start a.xml | preview | leave",
             "browser=a.xml0 | /a.xml0=(no file) | left=1 | asign=2"},
            {"the first free number",
             "file a.xml=<a/>\\n | file a.xml0=old | file a.xml1=old | start a.xml | preview",
             "copy=a.xml2 | /a.xml2=<a/>\\n | /a.xml0=old"},
            {"leftovers are not ours to delete",
             "file a.xml=<a/> | file a.xml0=old | start a.xml | preview | leave",
             "/a.xml0=old | /a.xml1=(no file)"},
            {"a file made in the meantime is neither overwritten nor deleted",
             "file a.xml=<a/> | start a.xml | file a.xml0=mine | preview | leave",
             "/a.xml0=mine | /a.xml1=(no file)"},
            {"always ended by CR LF", "file a.xml=<a>\\l</a>\\l | start a.xml | preview",
             "/a.xml0=<a>\\l</a>\\n"},
            {"save as moves on",
             "file a.xml=<a/> | file b.xml0=x | start a.xml | preview | choose b.xml | saveas",
             "copy=b.xml1 | /a.xml0=(no file)"},
            {"opening the copy itself keeps it",
             "file a.xml=<a/> | start a.xml | preview | choose a.xml0 | open",
             "name=a.xml0 | /a.xml0=<a/>\\n"},
            {"a folder has that name", "file a.xml=<a/> | dir a.xml0 | start a.xml | preview",
             "browser=a.xml1 | /a.xml1=<a/>\\n"},
            {"a folder takes that name",
             "file a.xml=<a/> | start a.xml | preview | xml | remove a.xml0 | dir a.xml0 | preview | leave",
             "browser=a.xml1 | /a.xml1=(no file) | notes=0"},
            {"a folder that cannot be written to", "file d/a.xml=<a/> | start d/a.xml | remove d | preview",
             "tab=2 | browser= | shown=<a/> | notes=1"},
        });
    }

    // A backslash belongs to the name: of p\q.xml and p/q.xml only the one that was named is touched.
    void backslash()
    {
        const QString files = u"file p/q.xml=<other/> | file p/q.xml0=kept | file p\\q.xml=<a/> | "_s;
        const QString others = u" | /p/q.xml=<other/> | /p/q.xml0=kept"_s;
        const std::pair<const char *, const char *> rows[] = {
            {"start p\\q.xml | edit | save", "name=p\\q.xml | /p\\q.xml=<a x=\"1\"/>"},
            {"start | choose p\\q.xml | open | edit | save", "/p\\q.xml=<a x=\"1\"/>"},
            {"start | drop p\\q.xml | preview", "browser=p\\q.xml0 | /p\\q.xml0=<a/>\\n"},
            {"start p\\q.xml | preview | leave", "/p\\q.xml0=(no file)"},
            {"start | edit | choose p\\q.xml | answer Yes | saveas",
             "message=p\\q.xml already exits, would you like to overwrite it?"},
            {"start | remove p\\q.xml | choose p\\q.xml | saveas", "/p\\q.xml=" TEMPLATE "\\n"},
            {"remove p\\q.xml | start p\\q.xml | save", "/p\\q.xml=" TEMPLATE "\\n"},
            {"start p\\q.xml | remove p\\q.xml | edit | save", "/p\\q.xml=<a x=\"1\"/>"},
            {"start p\\q.xml | file p\\q.xml=<c/> | reload", "dom=<c/>"},
        };
        for (const auto &[steps, expected] : rows)
            runRows({{steps, qPrintable(files + QLatin1String(steps)),
                      qPrintable(QLatin1String(expected) + others)}});
    }

    // Where ".." follows a link, the system goes up from where that leads to.
    void linksBeforeGoingUp()
    {
        Desk desk;
        desk.run("file far/away/x= | file far/a.xml=<far/> | file a.xml=<near/> | link l=far/away | start "
                 "l/../a.xml "
                 "| edit | save");
        QCOMPARE(desk.seen(u"/far/a.xml"_s), u"<far x=\"1\"/>"_s);
        QCOMPARE(desk.seen(u"/a.xml"_s), u"<near/>"_s);
    }

    void relativeCommandLine()
    {
        Desk desk;
        desk.run("file a.xml=<a/>");
        const QString before = QDir::currentPath();
        QDir::setCurrent(desk.path({}));
        desk.session.life().prelodr(u"a.xml"_s);
        QDir::setCurrent(before);
        QVERIFY(QFileInfo(desk.session.state().CurrentFilePath).isAbsolute());
        QCOMPARE(desk.seen(u"dom"_s), u"<a/>"_s);
    }

    // Somebody else may have taken the folder's place.
    void withoutTemporaryFolder()
    {
        Desk desk;
        const QString taken = *files::privateTempFolder();
        QVERIFY(QDir().rmdir(taken) && QFile::link(desk.path({}), taken));
        desk.run("start | preview");
        QCOMPARE(desk.seen(u"new"_s), u"1"_s);
        QCOMPARE(desk.seen(u"browser"_s), u"zelphedit.xml0"_s);
        QCOMPARE(desk.workspace.notes.size(), 1);
        QVERIFY(QFileInfo::exists(desk.session.state().PreviewFilePath));
        QCOMPARE(desk.seen(u"/zelphedit.xml"_s), u"(no file)"_s);
    }

    // Not in the root of all files, and not beside the user's own.
    void temporaryFolderIsMissing()
    {
        Desk desk;
        qputenv("TMPDIR", desk.path(u"none"_s).toUtf8());
        desk.run("start | preview | leave");
        QCOMPARE(desk.seen(u"new"_s), u"1"_s);
        QVERIFY(desk.seen(u"browser"_s).startsWith(u"zelphedit.xml"_s));
        const QString folder = files::parentFolderOf(desk.session.state().temporaryFolder);
        QVERIFY(!QFileInfo(folder).isRoot() && QFileInfo(folder).isWritable());
        QVERIFY(!QFileInfo::exists(desk.path(u"none"_s)));
        QVERIFY(desk.workspace.notes.value(0).contains(desk.path(u"none"_s)));
    }

    // The working files have the same names in every window of the user.
    void windowsDoNotMeet()
    {
        Desk desk;
        Desk other;
        desk.run("start");
        other.run("start");
        QVERIFY(desk.session.state().temporaryFolder != other.session.state().temporaryFolder);
        for (Desk *window : {&desk, &other}) {
            window->run("edit | preview");
            QCOMPARE(window->seen(u"new"_s), u"1"_s);
            QCOMPARE(window->seen(u"browser"_s), u"zelphedit.xml0"_s);
            QVERIFY(QFileInfo::exists(window->session.state().previewCopyPath()));
        }
    }

    void languages()
    {
        using control::Language;
        const std::pair<QString, Language> rows[] = {
            {u"a.HTML=<html></html>"_s, Language::Html},
            {u"a.html=<?xml version=\"1.0\"?><html/>"_s, Language::Xml},
            {u"a.xsd=nothing yet"_s, Language::Xml},
            {u"a.svg=\\n <svg/>"_s, Language::Xml},
            {u"a.txt=plain"_s, Language::Plain},
        };
        for (const auto &[file, expected] : rows) {
            Desk desk;
            desk.run({u"start"_s, u"file "_s + file, u"drop "_s + file.section(u'=', 0, 0)});
            QCOMPARE(desk.editor.language, expected);
        }
    }
};

QTEST_GUILESS_MAIN(TestLife)
#include "tst_life.moc"
