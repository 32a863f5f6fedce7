// What serves the editor, in the real window: choices and macros that outlive a run, the count, finding, and
// a file previewed through the document.
#include "window_fixture.h"

#include "platform/browser/web_browser.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>
#include <QWebEnginePage>

using namespace app_test;
using control::EditorProperties;

namespace {

constexpr int patience = 15000; // ms; only ever waited out by a fault

// Every choice another than at first; what is set anew at each start as it will be.
EditorProperties otherChoices(const EditorProperties &from)
{
    EditorProperties chosen = from;
    for (int slot = 0; slot < control::colourSlots; ++slot)
        chosen.colours[size_t(slot)] = 0x010203 * (slot + 1);
    chosen.styles.fill(control::Bold | control::Italic);
    chosen.font.size = 13.75;
    chosen.font.underline = true;
    chosen.selectionBounds = false;
    chosen.leftMargin = false;
    chosen.numberingStyle = int(control::NumberingStyle::Hexadecimal);
    chosen.numberingStart = 17;
    chosen.closeOnBracket = true;
    chosen.renameBoth = false;
    return chosen;
}

EditorProperties afterAStart(EditorProperties chosen)
{
    chosen.styles[control::CommentStyle] = control::Italic;
    chosen.styles[control::TagNameStyle] = control::Bold;
    chosen.styles[control::KeywordStyle] = control::Bold;
    chosen.lineToolTips = true;
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

QString pageOf(QWidget *window)
{
    QString text;
    bool there = false;
    window->findChild<browser::WebBrowser *>()->page()->toPlainText([&](const QString &plain) {
        text = plain;
        there = true;
    });
    [&] { QTRY_VERIFY_WITH_TIMEOUT(there, patience); }();
    return text.simplified();
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
        EditorProperties chosen;
        {
            Window first(folders);
            QVERIFY(first.settings.text(QStringLiteral("cEdit/font/size")).isEmpty());
            chosen = otherChoices(first.editor()->properties());
            first.editor()->shortcuts().setShortcuts(
                195, {QKeySequence(QStringLiteral("Ctrl+K, D"), QKeySequence::PortableText)});
            first.editor()->changeProperties(chosen);
            // The menu shows the key.
            QCOMPARE(first.action("editcmxsub_6")->shortcut().toString(), QStringLiteral("Ctrl+K, D"));
        }
        Window second(folders);
        QVERIFY(second.editor()->properties() == afterAStart(chosen));
        QCOMPARE(second.editor()->shortcuts().shortcuts(195).value(0).toString(),
                 QStringLiteral("Ctrl+K, D"));
        QCOMPARE(second.editor()->shortcuts().shortcuts(137).value(0).toString(), QStringLiteral("Ctrl+L"));
    }

    void nothingIsKeptUnasked()
    {
        const Folders folders;
        {
            Window window(folders);
            window.choose("mnuxmlmode");
            window.choose("editcmxsub_11");
            window.main->close();
        }
        QVERIFY(!contentOf(folders.program(QStringLiteral("settings.ini"))).contains("cEdit"));
    }

    void macrosOutliveTheRun()
    {
        const Folders folders;
        {
            Window first(folders);
            first.choose("mnuxmlmode");
            first.editor()->placeCaret(1, 0);
            first.choose("createmac");
            first.typeIntoEditor(QStringLiteral("<!--x-->"));
            QTest::keyClick(first.editor(), Qt::Key_Home);
            acceptNextDialog();
            first.choose("createmac");
            first.choose("savmac");
            QVERIFY(!contentOf(folders.program(QStringLiteral("macros/0.dem"))).isEmpty());
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

    void everythingIsCounted()
    {
        const Folders folders;
        Window window(folders);
        window.choose("mnuxmlmode");
        window.editor()->loadText("a  b\n" + QByteArray(40000, 'x'));
        window.dialogs.answer(dialogs::Answer::Ok);
        window.choose("searchcmxsub_15");
        const dialogs::AskedMessage asked = window.dialogs.messages().constLast();
        QCOMPARE(asked.title, QStringLiteral("Count All"));
        QCOMPARE(asked.text, QStringLiteral("Words: 3\nCharacters:0\nLines: 2"));
        QVERIFY(asked.icon == dialogs::Icon::Information);
        QVERIFY2(QString(window.note())
                     .remove(QRegularExpression(QStringLiteral("\\D")))
                     .contains(QStringLiteral("40005")),
                 qPrintable(window.note()));
    }

    void findingFromTheMenu()
    {
        const Folders folders;
        Window window(folders);
        QVERIFY(QTest::qWaitForWindowActive(window.main.get()));
        window.choose("mnuxmlmode");
        window.editor()->loadText("<a>one two one</a>");
        window.choose("searchcmxsub_0");
        auto *bar = window.main->findChild<QWidget *>(QStringLiteral("FindBar"));
        QVERIFY(bar->isVisible());
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("one"));
        QCOMPARE(window.editor()->selection(), (control::ByteRange{3, 6}));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(!bar->isVisible() && window.editor()->hasFocus());
        window.choose("searchcmxsub_1");
        QCOMPARE(window.editor()->selection(), (control::ByteRange{11, 14}));
    }

    void aFileIsPreviewedThroughTheDocument()
    {
        const Folders folders;
        const QString document = folders.document(QStringLiteral("my sheet.xsl"));
        const QString assigned = folders.document(QStringLiteral("data.xml"));
        write(document, sheet("First"));
        Window window(folders, {document});
        window.choose("mnuxmlmode");
        window.choose("mnuAssignedfilePre");
        QVERIFY(window.action("mnuAssignedfilePre")->isChecked());
        auto *dialog = window.main->findChild<QDialog *>(QStringLiteral("frmprview"));
        const QString line = dialog->findChild<QLineEdit *>(QStringLiteral("Text3_1"))->text();
        QVERIFY2(line.contains(QStringLiteral("my%20sheet.xsl0")), qPrintable(line));
        write(assigned, line.toUtf8() + "<r>data</r>");
        window.dialogs.answerFile(assigned);
        QMetaObject::invokeMethod(dialog, "browse");
        auto *tabs = dialog->findChild<QTabWidget *>(QStringLiteral("SSTab1"));
        tabs->setCurrentIndex(2);
        QTRY_COMPARE_WITH_TIMEOUT(pageOf(dialog), QStringLiteral("First data"), patience);
        window.editor()->replaceText(sheet("Second"));
        QMetaObject::invokeMethod(dialog, "refrs");
        QTRY_COMPARE_WITH_TIMEOUT(pageOf(dialog), QStringLiteral("Second data"), patience);
        // Another document takes the dialog away.
        window.dialogs.answer(dialogs::Answer::No);
        window.choose("mnuNew");
        QVERIFY(!window.action("mnuAssignedfilePre")->isChecked());
        QTRY_VERIFY(!window.main->findChild<QDialog *>(QStringLiteral("frmprview")));
        QVERIFY(!QFile::exists(document + QLatin1Char('0')));
    }
};

int main(int argc, char *argv[])
{
    EditorServicesTest tests;
    return runWindowTests(argc, argv, tests);
}
#include "editor_services_test.moc"
