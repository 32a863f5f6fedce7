// What serves the editor, in the real window: choices and macros that outlive a run, the count, finding, and
// a file previewed through the document.
#include "window_fixture.h"

#include "platform/browser/web_browser.h"
#include "tests/platform/browser/pages.h"

#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>

using namespace app_test;
using control::EditorProperties;
using namespace Qt::StringLiterals;

namespace {

// Choices of each kind, others than at first; editor_settings has all of them.
EditorProperties otherChoices(EditorProperties chosen)
{
    chosen.colours[control::KeywordInk] = 0x010203;
    chosen.font.size = 13.75;
    chosen.leftMargin = false;
    chosen.numberingStart = 17;
    chosen.renameBoth = false;
    return chosen;
}

void acceptNextDialog()
{
    QTimer::singleShot(0, qApp, [] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        dialog->accept();
    });
}

QString pageOf(const QWidget *window)
{
    return browser_test::textOf(window->findChild<browser::WebBrowser *>()->page());
}

QByteArray sheet(const char *word)
{
    return QByteArray("<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
                      "<xsl:template match='/'><html><body>")
        + word + " <xsl:value-of select='.'/></body></html></xsl:template></xsl:stylesheet>";
}

} // namespace

class EditorServicesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choicesOutliveTheRun()
    {
        const Folders folders;
        {
            Window unasked(folders);
            unasked.choose("mnuxmlmode");
            unasked.choose("editcmxsub_11");
            unasked.main->close();
        }
        QVERIFY(!contentOf(folders.program(u"settings.ini"_s)).contains("cEdit"));
        EditorProperties chosen;
        {
            Window first(folders);
            chosen = otherChoices(first.editor()->properties());
            first.editor()->shortcuts().setShortcuts(195, {QKeySequence(u"Ctrl+K, D"_s)});
            first.editor()->changeProperties(chosen);
            // The menu shows the key.
            QCOMPARE(first.action("editcmxsub_6")->shortcut().toString(), u"Ctrl+K, D"_s);
        }
        Window second(folders);
        QVERIFY(second.editor()->properties() == chosen);
        QCOMPARE(second.editor()->shortcuts().shortcuts(195).value(0).toString(), u"Ctrl+K, D"_s);
        QCOMPARE(second.editor()->shortcuts().shortcuts(137).value(0).toString(), u"Ctrl+L"_s);
    }

    // The editor takes its keys first, so that the window's would do nothing.
    void menusHaveKeysOfTheirOwn()
    {
        Window window("");
        window.choose("mnuxmlmode");
        const control::ShortcutTable first;
        int looked = 0;
        for (const QMenu *menu : window.main->findChildren<QMenu *>()) {
            for (const QAction *action : menu->actions()) {
                // What the editor itself does is only shown there.
                if (!menu->menuAction()->isVisible() || action->shortcutContext() == Qt::WidgetShortcut)
                    continue;
                for (const QKeySequence &keys : action->shortcuts()) {
                    ++looked;
                    QVERIFY2(first.command(keys) == 0, qPrintable(action->objectName()));
                }
            }
        }
        QVERIFY(looked > 5);
    }

    void macrosOutliveTheRun()
    {
        const Folders folders;
        {
            Window first(folders);
            first.choose("mnuxmlmode");
            first.editor()->placeCaret(1, 0);
            first.choose("createmac");
            first.typeIntoEditor(u"<!--x-->"_s);
            QTest::keyClick(first.editor(), Qt::Key_Home);
            acceptNextDialog();
            first.choose("createmac");
            first.choose("savmac");
            QVERIFY(!contentOf(folders.program(u"macros/0.dem"_s)).isEmpty());
            first.dialogs.answer(dialogs::Answer::No);
            first.main->close();
        }
        Window second(folders);
        second.choose("mnuxmlmode");
        const QByteArray before = second.editor()->text();
        second.editor()->placeCaret(1, 0);
        second.editor()->setRepeatCount(3);
        second.choose("mac_1");
        QVERIFY2(second.editor()->text().contains("\n<!--x--><!--x--><!--x--><Element"),
                 second.editor()->text().constData());
        second.choose("editcmxsub_0");
        QCOMPARE(second.editor()->text(), before);
    }

    void aFileIsPreviewedThroughTheDocument()
    {
        Window window("my sheet.xsl", sheet("First"));
        const QString assigned = window.folders.document(u"data.xml"_s);
        window.choose("mnuxmlmode");
        window.choose("mnuAssignedfilePre");
        QVERIFY(window.action("mnuAssignedfilePre")->isChecked());
        auto *dialog = window.main->findChild<QDialog *>(u"frmprview"_s);
        // Keys chosen there are shown by the menus and kept.
        auto *editor = dialog->findChild<control::CodeEditor *>(u"CodeMax1"_s);
        editor->shortcuts().setShortcuts(195, {QKeySequence(u"Ctrl+K, D"_s)});
        editor->noticeShortcutChange();
        QCOMPARE(window.action("editcmxsub_6")->shortcut().toString(), u"Ctrl+K, D"_s);
        QVERIFY(contentOf(window.folders.program(u"settings.ini"_s)).contains("VirtKey2195"));
        const QString line = dialog->findChild<QLineEdit *>(u"Text3_1"_s)->text();
        QVERIFY2(line.contains(u"my%20sheet.xsl0"_s), qPrintable(line));
        write(assigned, line.toUtf8() + "<r>data</r>");
        window.dialogs.answerFile(assigned);
        QMetaObject::invokeMethod(dialog, "browse");
        auto *tabs = dialog->findChild<QTabWidget *>(u"SSTab1"_s);
        tabs->setCurrentIndex(2);
        QTRY_COMPARE_WITH_TIMEOUT(pageOf(dialog), u"First data"_s, browser_test::kPatience);
        window.editor()->replaceText(sheet("Second"));
        QMetaObject::invokeMethod(dialog, "refrs");
        QTRY_COMPARE_WITH_TIMEOUT(pageOf(dialog), u"Second data"_s, browser_test::kPatience);
        // Another document takes the dialog away.
        window.dialogs.answer(dialogs::Answer::No);
        window.choose("mnuNew");
        QVERIFY(!window.action("mnuAssignedfilePre")->isChecked());
        QTRY_VERIFY(!window.main->findChild<QDialog *>(u"frmprview"_s));
        QVERIFY(!QFile::exists(window.path + u'0'));
    }
};

APP_TEST_MAIN(EditorServicesTest)
#include "editor_services_test.moc"
