#include "case_runner.h"

#include "document/report.h"

using namespace document_test;
using namespace Qt::StringLiterals;

#define TEMPLATE "<?xml version=\"1.0\"?>\\n<Element/>"

class TestViewModes : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void switching()
    {
        runRows({
            {"to XML Mode", "file a.xml=<a/> | start a.xml | xml",
             "tab=1 | tag=1 | modes=101 | menus=1 | editor=<a/> | undo=0"},
            {"to XML Mode, the text there already", "start | xml", "editor=" TEMPLATE " | undo=0"},
            {"edits of the tree can be undone there", "file a.xml=<a/> | start a.xml | edit | xml | undo",
             "editor=<a/> | undo=0"},
            {"of a new document too", "start | edit | xml | undo", "editor=" TEMPLATE " | undo=0"},
            {"and later ones", "file a.xml=<a/> | start a.xml | xml | normal | edit | xml | undo",
             "editor=<a/> | undo=0"},
            {"back, nothing changed", "file a.xml=<a/> | start a.xml | xml | normal",
             "tab=0 | tag=0 | modes=011 | menus=0 | rebuilds=1 | messages=0 | dom=<a/>"},
            {"back, changed and changed back",
             "file a.xml=<a/> | start a.xml | xml | type <b/> | undo | normal", "rebuilds=1 | dom=<a/>"},
            {"back, changed", "file a.xml=<a/> | start a.xml | xml | type <b/> | normal",
             "tab=0 | rebuilds=2 | dom=<b/> | messages=0 | editor=<b/>"},
            {"back, changed and checked",
             "file a.xml=<a/> | start a.xml | xml | type <!DOCTYPE b [<!ENTITY e 'v'>]><b>&e;</b> | check | "
             "normal",
             "rebuilds=2 | dom=<!DOCTYPE b [<!ENTITY e 'v'>]><b>&e;</b> | messages=1"},
            {"back, faulty", "file a.xml=<a/> | start a.xml | xml | type <a>\\n</b> | normal",
             "tab=1 | tag=1 | modes=101 | menus=1 | errors=1 | line=1 | rebuilds=1 | messages=1 | "
             "editor=<a>\\n</b> | dom=<a/>"},
            {"back, faulty twice, then corrected",
             "start | xml | type <a | normal | normal | type <a/> | normal",
             "tab=0 | errors=0 | messages=2 | dom=<a/> | line=-1"},
            {"back, an edit of the tree made in XML Mode gives way to the text",
             "file a.xml=<a/> | start a.xml | xml | edit | normal", "dom=<a/> | rebuilds=2"},
            {"the DOM as edited needs no verdict", "file a.xml=<a/> | start a.xml | edit | xml | normal",
             "reads=1 | dom=<a x=\"1\"/> | rebuilds=1 | errors=0"},
            {"preview of Normal Mode", "file a.xml=<a/> | start a.xml | preview",
             "tab=2 | tag=0 | modes=110 | menus=2 | browser=a.xml0"},
            {"preview, saved as another file: the copy beside that one",
             "file a.xml=<a/> | start a.xml | edit | preview | choose b.xml | saveas",
             "tab=2 | browser=b.xml0 | /b.xml0=<a x=\"1\"/>\\n | /a.xml0=(no file)"},
            {"Normal, Preview, XML", "file a.xml=<a/> | start a.xml | edit | preview | xml",
             "tab=1 | tag=1 | editor=<a x=\"1\"/>"},
            {"XML, Preview, Normal, changed",
             "file a.xml=<a/> | start a.xml | xml | type <b/> | preview | normal",
             "/a.xml0=<b/>\\n | dom=<b/> | rebuilds=2"},
            {"XML, Preview, XML keeps the text",
             "file a.xml=<a/> | start a.xml | xml | type <b | preview | xml",
             "/a.xml0=<b\\n | editor=<b | messages=0 | tag=1"},
            {"XML, Preview, Normal, faulty",
             "file a.xml=<a/> | start a.xml | xml | type <b | preview | normal",
             "tab=1 | tag=1 | modes=101 | menus=1 | errors=1 | messages=1 | editor=<b | /a.xml0=<b\\n"},
        });
    }

    void checking()
    {
        runRows({
            {"twice on correct text", "start | xml | check | check",
             "messages=2 | message=No Errors found | rebuilds=1 | errors=0 | line=-1 | dom=" TEMPLATE},
            {"correct text leaves the DOM alone", "start | xml | type <b/> | check",
             "dom=" TEMPLATE " | rebuilds=1 | errors=0"},
            {"an error in the first line", "start | xml | type <b | check",
             "line=0 | errors=1 | dom=" TEMPLATE},
        });
    }

    void unchangedSwitchesNeverReadTheText()
    {
        Desk desk;
        desk.run("file a.xml=<a/> | start a.xml | xml");
        const int reads = desk.editor.reads;
        desk.run("normal | xml | leave | normal | xml | type <b/> | save | leave");
        QCOMPARE(desk.editor.reads, reads + 1); // the one save in XML Mode
    }

    void entitiesOfTheTextComeAlong()
    {
        Desk desk;
        desk.run("start | xml | type <!DOCTYPE b [<!ENTITY e 'value'>]><b>&e;</b> | check | normal");
        QCOMPARE(desk.session.state().Document.documentElement()->text(), u"value"_s);
    }

    void faultIsPointedOut()
    {
        const QByteArray text("<a>\r\n  <b></a>");
        const auto error = dom::checkWellFormed(text);
        QVERIFY(error);
        Desk desk;
        desk.run("start | xml");
        desk.editor.replaceText(text);
        desk.run("check");
        QCOMPARE(desk.dialogs.messages, QStringList{document::reportText(*error)});
        QCOMPARE(desk.dialogs.icons.last(), dialogs::Icon::Exclamation);
        QCOMPARE(desk.editor.highlightedLine(), 1);
        QCOMPARE(desk.editor.caretLine(), 1);
        QCOMPARE(desk.editor.caretColumn(), int(error->position) - 1); // before the sign of that number
        QVERIFY(desk.editor.hasFocus);
    }

    // Long enough for the user to be asked.
    void stoppedCheckLeavesAllAsItWas()
    {
        const QByteArray large = "<a>" + QByteArray("<b/>").repeated(10'000) + "</a>";
        Desk desk;
        desk.run("file old.xml=<old/> | start old.xml");
        QFile file(desk.path(u"large.xml"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(large);
        file.close();
        desk.workspace.isPatient = false;
        desk.run("choose large.xml | open");
        QCOMPARE(desk.seen(u"dom"_s), u"<old/>"_s);
        QVERIFY(desk.session.state().CurrentFilePath.endsWith(u"old.xml"_s));
        QCOMPARE(desk.workspace.notes.size(), 1);
        desk.workspace.isPatient = true;
        desk.run("xml");
        desk.editor.replaceText(large);
        desk.workspace.isPatient = false;
        desk.run("check | normal");
        QCOMPARE(desk.seen(u"tab"_s), u"1"_s);
        QCOMPARE(desk.editor.text(), large);
        QCOMPARE(desk.seen(u"dom"_s), u"<old/>"_s);
        QCOMPARE(desk.workspace.notes.size(), 3);
        QVERIFY(desk.dialogs.messages.isEmpty());
        desk.workspace.isPatient = true;
        desk.run("normal");
        QCOMPARE(desk.seen(u"tab"_s), u"0"_s);
        QCOMPARE(desk.session.state().Document.xml(), large);
    }

    // The report tells of the place in the file, the window shows the one in the document.
    void faultInAFileIsPointedOut()
    {
        Desk desk;
        desk.run(
            "file part.ent=<b>\\n\\n  <c></b> | "
            "file a.xml=<!DOCTYPE a [<!ENTITY e SYSTEM 'part.ent'>]>\\n<a>&e;</a> | choose a.xml | start | "
            "open");
        QCOMPARE(desk.dialogs.messages.size(), 1);
        const QString report = desk.dialogs.messages.last();
        QVERIFY2(report.contains(u"part.ent"_s) && report.contains(u"Line              :  3\r\n"_s)
                     && report.endsWith(u"Source Text :    <c></b>"_s),
                 qPrintable(report));
        QCOMPARE(desk.editor.highlightedLine(), 1);
        QCOMPARE(desk.editor.caretLine(), 1);
        QCOMPARE(desk.editor.caretColumn(), 3);
    }

    void report()
    {
        dom::ParseError error;
        error.reason = u"Bad name.\r\n"_s; // whose own line break stays
        error.line = 1234567;
        error.position = 3456;
        error.sourceText = u"<a><1>"_s;
        QCOMPARE(
            document::reportText(error),
            QStringLiteral("Error!\r\n\r\nPossible Reason:  Bad name.\r\n\r\nLine              :  1234567"
                           "\r\nLine Position :  3456\r\nSource Text :  <a><1>"));
    }
};

QTEST_GUILESS_MAIN(TestViewModes)
#include "tst_view_modes.moc"
