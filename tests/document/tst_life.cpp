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
             "name=a b.xml | new=0 | tab=0 | dom=<a/> | messages=0 | /a b.xml=<a/>\\n | save=1"},
            {"faulty: its text stays, the document is new", "file bad.xml=<a>\\n | start bad.xml",
             "name=zelphedit.xml | new=1 | tab=1 | tag=1 | editor=<a> | errors=1 | line=0 | messages=1 | "
             "dom=" TEMPLATE},
            {"faulty, then closed", "file bad.xml=<a>\\n | start bad.xml | answer No | leave",
             "left=1 | message=Save changes to New Document? | /bad.xml=<a>\\n"},
            {"faulty, then saved as", "file bad.xml=<a>\\n | start bad.xml | choose c.xml | saveas",
             "proposed=bad.xml | /c.xml=<a>\\n | name=c.xml"},
            {"a folder", "file d/x= | start d", "name=zelphedit.xml | tab=0 | dom=" TEMPLATE " | messages=1"},
        });
    }

    void newAndOpen()
    {
        runRows({
            {"open", "start | file a.xml=<a/>\\n | choose a.xml | open",
             "name=a.xml | new=0 | dom=<a/> | editor=" TEMPLATE " | save=1 | tab=0 | messages=0 | asign=1"},
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
             "messages=1 | dom= | save=1 | undo=0 | /bad.xml=<a>\\n</b>\\n"},
            {"a faulty file left as it was", "start | file bad.htm=<p>\\n | choose bad.htm | open | leave",
             "left=1 | messages=1 | /bad.htm=<p>\\n"},
            {"a faulty file corrected",
             "start | file bad.xml=<a>\\n | choose bad.xml | open | type <a/> | save | normal | leave",
             "tab=0 | dom=<a/> | messages=1 | /bad.xml=<a/>\\n | left=1"},
            {"written by another while it is parsed",
             "file a.xml=<a/> | meanwhile a.xml=<abc/> | start a.xml", "dom=<a/> | overtaken=1"},
            {"and then saved over", "file a.xml=<a/> | meanwhile a.xml=<abc/> | start a.xml | edit | save",
             "overtaken=0 | /a.xml=<a x=\"1\"/>\\n"},
            {"drop what is not there keeps the document",
             "file a.xml=<a/> | start a.xml | edit | drop none.xml",
             "name=a.xml | dom=<a x=\"1\"/> | messages=1 | tab=0"},
            {"drop a folder keeps the document",
             "file a.xml=<a/> | start a.xml | xml | type <b/> | file d/x= | drop d",
             "name=a.xml | editor=<b/> | messages=1 | tab=1"},
            {"new after open", "file a.xml=<a/>\\n | start | drop a.xml | xml | new",
             "name=zelphedit.xml | new=1 | tab=0 | dom=" TEMPLATE " | editor=" TEMPLATE
             " | undo=0 | save=0 | messages=0"},
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
             "name=b.xml | new=0 | save=1 | left=1 | /b.xml=<?xml version=\"1.0\"?>\\n<Element x=\"1\"/>\\n"},
            {"save as asks before it overwrites",
             "start | file b.xml=old | choose b.xml | answer No | choose c.xml | saveas",
             "name=c.xml | /b.xml=old | message=b.xml already exits, would you like to overwrite it? | "
             "proposed=b.xml"},
            {"save as keeps the form", "file a.xml=<a>\\l</a>\\l | start a.xml | choose b.xml | saveas",
             "/b.xml=<a>\\l</a>\\l"},
            {"save as over the preview copy keeps what was saved",
             "file a.xml=<a/> | start a.xml | preview | choose a.xml0 | answer Yes | saveas",
             "name=a.xml0 | /a.xml0=<a/>\\n"},
            {"a failed save changes nothing", "file d/a.xml=<a/> | start d/a.xml | edit | remove d | save",
             "notes=1 | name=a.xml | save=1 | messages=0"},
            {"a failed save as keeps the path", "file a.xml=<a/> | start a.xml | choose none/b.xml | saveas",
             "notes=1 | name=a.xml | save=1"},
            {"a character that the encoding lacks is not lost",
             "file a.xml=<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a/>\\n | start a.xml | xml | type "
             "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><\u65e5/> | save",
             "notes=1 | /a.xml=<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a/>\\n"},
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
             "file d/a.xml=<a/> | start d/a.xml | edit | remove d | answer Yes | leave",
             "left=0 | notes=1 | dom=<a x=\"1\"/>"},
            {"yes on new, and the file cannot be written, stays",
             "start | edit | answer Yes | choose none/b.xml | leave", "left=0 | notes=1 | new=1"},
            {"another load of the same document does not pass for the saved one",
             "file a.xml=<a/> | start a.xml | xml | type <b/> | normal | answer No | leave",
             "message=Save changes to a.xml?"},
            {"a preview asks for the mode it came from",
             "start | xml | type <b | preview | answer Cancel | leave", "left=0 | messages=1"},
            {"the tree's edits do not count in XML Mode", "start | xml | edit | leave",
             "left=1 | messages=0"},
        });
    }

    void previewCopy()
    {
        runRows({
            {"beside the document, gone with it", "file a.xml=<a/>\\l | start a.xml | preview | leave",
             "browser=a.xml0 | /a.xml0=(no file) | left=1 | asign=1"},
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
            {"a folder that cannot be written to", "file d/a.xml=<a/> | start d/a.xml | remove d | preview",
             "tab=2 | browser= | shown=<a/> | notes=1"},
        });
    }

    void relativeCommandLine()
    {
        Desk desk;
        desk.run("file a.xml=<a/>");
        const QString before = QDir::currentPath();
        QDir::setCurrent(desk.path({}));
        desk.session.life().prelodr({u"a.xml"_s});
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
