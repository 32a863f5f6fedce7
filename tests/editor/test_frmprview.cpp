// The Assigned file Preview, with a real browser on a private folder of files.
#include "editor/frmprview.h"
#include "platform/browser/web_browser.h"
#include "platform/control/code_editor.h"
#include "platform/dialogs/scripted_dialogs.h"
#include "tests/platform/browser/pages.h"

#include <QClipboard>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>

using namespace browser_test;
using namespace editor;

namespace {

// The dialog over a document at a path.
class Opened
{
public:
    explicit Opened(const QString &documentPath, const QByteArray &documentText = kSheet)
        : copy(documentPath + u'0'), text(documentText)
    {
        QDir().mkpath(QFileInfo(documentPath).path());
        open();
    }

    void open()
    {
        static const auto previews = browser::warmUp();
        dialog
            = new frmprview({
                                .dialogs = dialogs,
                                .previews = previews,
                                .library = std::make_shared<control::EditorLibrary>(),
                                .PreviewFilePath = folder.filePath(QStringLiteral("prev.xml")),
                                .previewCopyPath = [this] { return copy; },
                                .currentText = [this] { return text; },
                                .writePreviewCopy = [this](const QByteArray &utf8) -> platform::Result<void> {
                                    if (refuses)
                                        return platform::Failure{QStringLiteral("refused")};
                                    write(copy, utf8);
                                    return {};
                                },
                                .dress = [](control::CodeEditor &) {},
                                .note = [this](const QString &note) { notes.append(note); },
                                .closed = [] {},
                            },
                            &owner);
        dialog->show();
    }

    template <typename Control>
    Control *find(const char *name) const
    {
        return dialog->findChild<Control *>(QLatin1String(name));
    }
    void press(const char *name) const { find<QPushButton>(name)->click(); }
    QString shown(const char *name) const { return find<QLineEdit>(name)->text(); }
    void assign(const QString &name, const QByteArray &bytes)
    {
        dialogs.answerFile(write(folder.filePath(name), bytes));
        press("Command1");
    }
    void turnTo(int tab) const { find<QTabWidget>("SSTab1")->setCurrentIndex(tab); }
    QString page() const { return textOf(find<browser::WebBrowser>("WebBrowser1")->page()); }
    QStringList previewFiles() const
    {
        return QDir(folder.path()).entryList({QStringLiteral("prev.xml*")}, QDir::Files | QDir::Hidden);
    }

    QTemporaryDir folder; // the temporary one
    dialogs::ScriptedDialogs dialogs;
    QString copy;
    QByteArray text;
    bool refuses = false;
    QStringList notes;
    QWidget owner;
    QPointer<frmprview> dialog;
};

} // namespace

class TestFrmprview : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsLinesToCopy()
    {
        const QTemporaryDir documents;
        const Opened opened(documents.filePath(QStringLiteral("My Files/a&\\b.xsl")));
        const QString location = documents.path() + QStringLiteral("/My%20Files/a&%5Cb.xsl0");
        QCOMPARE(opened.shown("Text1"), location);
        const QStringList lines{
            u"<!DOCTYPE Element_1 SYSTEM \"%1\">"_qs.arg(location),
            u"<?xml:stylesheet type=\"text/xsl\" href=\"%1\"?>"_qs.arg(location),
            u"<?xml:stylesheet type=\"text/css\" href=\"%1\"?>"_qs.arg(location),
            u"<?xml-stylesheet type=\"text/xsl\" href=\"%1\"?>"_qs.arg(location.toHtmlEscaped()),
            u"<?xml-stylesheet type=\"text/css\" href=\"%1\"?>"_qs.arg(location.toHtmlEscaped()),
        };
        for (int index = 0; index < lines.size(); ++index) {
            opened.press(qPrintable(u"cmdcopy_%1"_qs.arg(index)));
            QCOMPARE(QApplication::clipboard()->text(), lines[index]);
        }
    }

    void browsesUntilThereIsAFile()
    {
        const QTemporaryDir documents;
        Opened opened(documents.filePath(u"a.xsl"_qs));
        opened.dialogs.answerFile(QStringLiteral("/nowhere/b.xml"));
        opened.dialogs.answerFile(opened.folder.path());
        opened.assign(QStringLiteral("b.html"), "<p>caf\xE9</p>\r\n");
        QCOMPARE(opened.dialogs.files().size(), 3);
        QCOMPARE(opened.shown("Text2"), opened.folder.filePath(QStringLiteral("b.html")));
        QCOMPARE(opened.dialog->editor().text(), QByteArray("<p>caf\xC3\xA9</p>"));
        QCOMPARE(opened.dialog->editor().language(), control::Language::Html);

        opened.dialogs.answerFile({}); // dismissed
        opened.press("Command1");
        QCOMPARE(opened.shown("Text2"), opened.folder.filePath(QStringLiteral("b.html")));
    }

    void takesTheFirstFreeNumber()
    {
        const QTemporaryDir documents;
        Opened opened(documents.filePath(u"a.xsl"_qs));
        QCOMPARE(opened.previewFiles(), QStringList{u"prev.xml0"_qs});
        const QString first = opened.folder.filePath(u"prev.xml0"_qs);
        QCOMPARE(QFile::permissions(first) & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther), 0);
        const QPointer<frmprview> other = opened.dialog;
        opened.open();
        QCOMPARE(opened.previewFiles(), (QStringList{u"prev.xml0"_qs, u"prev.xml1"_qs}));
        other->close();
        opened.dialog->close();
        QCOMPARE(opened.previewFiles(), QStringList());

        // Nothing that stands there is touched, nor what a link leads to.
        QVERIFY(QFile::link(opened.folder.filePath(u"victim"_qs), first));
        opened.open();
        QVERIFY(QFile::exists(opened.folder.filePath(u"prev.xml1"_qs)));
        QVERIFY(!QFile::exists(opened.folder.filePath(u"victim"_qs)));
    }

    void worksByKeyboard()
    {
        const QTemporaryDir documents;
        Opened opened(documents.filePath(u"a.css"_qs), "i { display: none }");
        QVERIFY(QTest::qWaitForWindowActive(opened.dialog));
        opened.dialogs.answerFile(write(opened.folder.filePath(u"b.xml"_qs), "<r>x<i>y</i></r>"));
        QTest::keyClick(opened.dialog->focusWidget(), Qt::Key_Space); // on "Browse..." from the start
        QApplication::clipboard()->setText(opened.shown("Text3_2"));
        QTest::keyClick(opened.dialog->focusWidget(), Qt::Key_F, Qt::AltModifier);
        QVERIFY(opened.dialog->editor().hasFocus());
        QTest::keyClick(opened.dialog->focusWidget(), Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(opened.dialog->focusWidget(), Qt::Key_P, Qt::AltModifier);
        QTRY_COMPARE_WITH_TIMEOUT(opened.page(), u"x"_qs, kPatience);
        QTest::keyClick(opened.dialog->focusWidget(), Qt::Key_Escape);
        QTRY_VERIFY_WITH_TIMEOUT(opened.dialog.isNull(), kPatience);
    }

    void previewsThroughTheDocument()
    {
        for (const QString &folder : {u"My Files"_qs, u"R&D 100%25"_qs, u"a?b=c&d;e%41#"_qs,
                                      u"%\u00FC\u65E5%2525"_qs, u"back\\slash"_qs, u"it's <new>"_qs}) {
            const QTemporaryDir documents;
            write(documents.filePath(folder + u"/sub/part.xsl"_qs), kPart);
            Opened opened(documents.filePath(folder + u"/a.xsl"_qs));
            opened.assign(u"b.xml"_qs, "<?xml version='1.0'?>\n<r><i>one</i></r>");
            opened.press("cmdcopy_1");
            opened.turnTo(1);
            QTest::keyClick(&opened.dialog->editor(), Qt::Key_Down);
            QTest::keyClick(&opened.dialog->editor(), Qt::Key_V, Qt::ControlModifier);
            opened.turnTo(2);
            QTRY_COMPARE_WITH_TIMEOUT(opened.page(), u"Made [one]"_qs, kPatience);

            opened.text.replace("Made", "Anew");
            QTest::keyClick(opened.dialog, Qt::Key_F5);
            QTRY_COMPARE_WITH_TIMEOUT(opened.page(), u"Anew [one]"_qs, kPatience);
            QFile assigned(opened.folder.filePath(u"b.xml"_qs));
            QVERIFY(assigned.open(QIODevice::ReadOnly));
            QCOMPARE(assigned.readAll(), QByteArray("<?xml version='1.0'?>\n<r><i>one</i></r>"));
            QCOMPARE(opened.notes, QStringList());
        }
    }

    void previewsEveryKind()
    {
        const char hide[] = "i { display: none }";
        const std::tuple<QString, QByteArray, const char *, const char *, QString> rows[] = {
            {u"a.css"_qs, hide, "b.xml", "<?xml:stylesheet type=\"text/css\" href=\"%\"?><r>x<i>y</i></r>",
             u"x"_qs},
            {u"a.css"_qs, hide, "b.html", "<link rel=stylesheet href=\"%\"><p>x<i>y</i><p>z", u"x z"_qs},
            {u"a.dtd"_qs, "<!ELEMENT r ANY>", "b.xml",
             "<!DOCTYPE Element_1 SYSTEM \"%\"><r xmlns='http://www.w3.org/1999/xhtml'><p>x</p></r>",
             u"x"_qs},
            {u"R&D 50%/a.dtd"_qs,
             "<!ENTITY % n 'b CDATA \"\"'><!ENTITY e 'x'><!ATTLIST p style CDATA 'display:none' %n;>",
             "b.xml",
             "<?xml version='1.0'?><!DOCTYPE Element_1 SYSTEM \"%\">"
             "<html xmlns='http://www.w3.org/1999/xhtml'>&e;<p>y</p></html>",
             u"x"_qs},
            {u"a.xsl"_qs, kSheet, "wide.xml",
             "<?xml version=\"1.0\" encoding=\"UTF-16\"?><?xml:stylesheet type=\"text/xsl\" href=\"%\"?>"
             "<r><i>\u00E9</i></r>",
             u"Made \u00E9"_qs},
            {u"a.xsl"_qs, "<x/>", "sub/b.html",
             "<link rel=stylesheet href='here.css'><link rel=stylesheet href='../up.css'>x<i>y</i><b>z</b>",
             u"x"_qs},
        };
        for (const auto &[document, text, name, assigned, shown] : rows) {
            const QTemporaryDir documents;
            Opened opened(documents.filePath(document),
                          QByteArray(text).replace("<xsl:import href='sub/part.xsl'/>", ""));
            const QTemporaryDir files;
            write(files.filePath(u"sub/here.css"_qs), "i { display: none }");
            write(files.filePath(u"up.css"_qs), "b { display: none }");
            const QString markup = QString::fromUtf8(assigned).replace(u'%', opened.shown("Text1"));
            QStringEncoder encode(*name == 'w' ? QStringConverter::Utf16 : QStringConverter::Utf8,
                                  QStringConverter::Flag::WriteBom);
            opened.dialogs.answerFile(write(files.filePath(QLatin1String(name)), encode(markup)));
            opened.press("Command1");
            opened.turnTo(2);
            QTRY_COMPARE_WITH_TIMEOUT(opened.page(), shown, kPatience);
        }
    }

    // The document's folder takes no copy; the copy comes to have another number; there is a copy again.
    void findsTheDocumentWhateverBecomesOfItsCopy()
    {
        const QTemporaryDir documents;
        Opened opened(documents.filePath(u"a.xsl"_qs), QByteArray(kSheet));
        write(documents.filePath(u"sub/part.xsl"_qs), kPart);
        opened.dialog->editor().loadText("<r><i>one</i></r>");
        opened.dialog->editor().replaceSelection(opened.find<QLineEdit>("Text3_1")->text().toUtf8());
        opened.refuses = true;
        opened.turnTo(2);
        QTRY_COMPARE_WITH_TIMEOUT(opened.page(), u"Made [one]"_qs, kPatience);
        QCOMPARE(opened.notes.size(), 1);
        opened.refuses = false;
        write(opened.copy, "<somebody-else/>");
        opened.copy.replace(u"xsl0"_qs, u"xsl1"_qs);
        opened.text.replace("Made", "Again");
        opened.dialog->refrs();
        QTRY_COMPARE_WITH_TIMEOUT(opened.page(), u"Again [one]"_qs, kPatience);
    }

    void keepsThePageWhenTheTextCannotBeWritten()
    {
        const QTemporaryDir documents;
        Opened opened(documents.filePath(u"a.xsl"_qs), "");
        opened.assign(u"b.html"_qs, "one");
        opened.turnTo(2);
        QTRY_COMPARE_WITH_TIMEOUT(opened.page(), u"one"_qs, kPatience);
        const QString file = opened.folder.filePath(u"prev.xml0"_qs);
        QFile::remove(file);
        QVERIFY(QFile::link(opened.folder.filePath(u"victim"_qs), file));
        opened.dialog->editor().loadText("two");
        opened.dialog->refrs();
        QCOMPARE(opened.notes.size(), 1);
        QVERIFY(!QFile::exists(opened.folder.filePath(u"victim"_qs)));
        QCOMPARE(opened.page(), u"one"_qs);
    }
};

BROWSER_TEST_MAIN(TestFrmprview)
#include "test_frmprview.moc"
