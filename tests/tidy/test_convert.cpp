// The Convert and Tidy dialog with stand-ins for the window around it, and the panel of messages.
#include "platform/dialogs/scripted_dialogs.h"
#include "tidy/config_files.h"
#include "tidy/frmconvrtr.h"
#include "tidy/messages_panel.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

using namespace tidy;

namespace {

const QByteArray sheet = "<p xsl:version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
                         "<xsl:value-of select='/r'/></p>";

QString q(const char *text) { return QString::fromUtf8(text); }

struct Desk
{
    QTemporaryDir folder;
    dialogs::ScriptedDialogs dialogs;
    QByteArray text = "<r>x</r>";
    QList<QByteArray> runs;
    std::vector<Message> messages;
    ConvertServices services{folder.path(),
                             dialogs,
                             [this] { return text; },
                             [this] { return folder.filePath(q("current.xml")); },
                             [this](const QByteArray &markup) { runs << markup; },
                             [this](const std::vector<Message> &said) { messages = said; }};
    QWidget owner;
    frmconvrtr dialog{services, &owner};

    Desk()
    {
        QDir(folder.path()).mkdir(q("tdyex"));
        dialog.show();
    }

    template <typename T>
    T *find(const char *name) const
    {
        return dialog.findChild<T *>(q(name));
    }

    QString write(const char *name, const QByteArray &content) const
    {
        QFile file(folder.filePath(q(name)));
        file.open(QIODevice::WriteOnly);
        file.write(content);
        return file.fileName();
    }

    QByteArray perRunFile() const
    {
        QFile file(perRunOptionsFile(folder.path()));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void convert() const { find<QPushButton>("OKButton")->click(); }
    QString failure() const { return find<QLabel>("lblfailure")->text(); }
};

} // namespace

class ConvertTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void currentCode()
    {
        const char *inputs[] = {"yes", "no", "no"};
        const char *outputs[] = {"xml", "html", "xhtml"};
        for (int kind = 0; kind < 9; ++kind) {
            Desk desk;
            QCOMPARE(desk.find<QComboBox>("cmbinput")->currentText(), q("xml"));
            QCOMPARE(desk.find<QComboBox>("cmboutput")->currentText(), q("Well-formed xml"));
            desk.text = "<p>Zo\xc3\xab";
            desk.find<QComboBox>("cmbinput")->setCurrentIndex(kind / 3);
            desk.find<QComboBox>("cmboutput")->setCurrentIndex(kind % 3);
            desk.convert();
            QCOMPARE(desk.perRunFile(),
                     QByteArray("input-xml: ") + inputs[kind / 3] + "\r\noutput-" + outputs[kind % 3]
                         + ": yes\r\n");
            QCOMPARE(desk.runs, QList<QByteArray>({desk.text}));
            QVERIFY(!desk.dialog.isVisible());
        }
    }

    void enabledControls()
    {
        const struct
        {
            const char *clicked;
            const char *enabled;
            const char *label;
        } rows[] = {{"optjob0", "1100000", ""},
                    {"optjob1", "0011011", "Select file:"},
                    {"optxml1", "0011100", "Current Code."},
                    {"optjob0", "1100000", ""}};
        Desk desk;
        for (const auto &[clicked, enabled, label] : rows) {
            desk.find<QRadioButton>(clicked)->click();
            QString now;
            for (const char *name :
                 {"cmbinput", "cmboutput", "optxml0", "txtfile0", "cmdbrowse0", "txtfile1", "cmdbrowse1"})
                now += desk.find<QWidget>(name)->isEnabled() ? u'1' : u'0';
            QCOMPARE(now, q(enabled));
            QVERIFY(!*label || desk.find<QLabel>("lblxsl")->text() == q(label));
        }
    }

    void browse()
    {
        const char *rows[][4]
            = {{"optxml0", "cmdbrowse1", "txtfile1",
                "XSLT Stylesheets (*.xsl;*.xslt)|*.xsl;*.xslt|All files (*.*)|*.*"},
               {"optxml1", "cmdbrowse0", "txtfile0", "XML Documents (*.xml)|*.xml|All files (*.*)|*.*"}};
        for (const auto &[option, button, box, filter] : rows) {
            Desk desk;
            const QString path = desk.write("s", sheet);
            desk.find<QRadioButton>("optjob1")->click();
            desk.find<QRadioButton>(option)->click();
            for (const QString &answer : {desk.folder.filePath(q("none")), path, QString()})
                desk.dialogs.answerFile(answer); // until there is such a file; then dismissed
            desk.find<QPushButton>(button)->click();
            desk.find<QPushButton>(button)->click();
            QCOMPARE(desk.find<QLineEdit>(box)->text(), path);
            QCOMPARE(desk.dialogs.files().size(), 3);
            QCOMPARE(desk.dialogs.files().last().title, q("Open"));
            QCOMPARE(desk.dialogs.files().last().filter, q(filter));
        }
    }

    void transformation_data()
    {
        QTest::addColumn<bool>("xmlIsCurrent");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("run"); // empty where it fails
        QTest::addColumn<int>("line"); // of the first message, in the current text
        const QByteArray xml = "<r>x</r>";
        const QByteArray broken = "<r>\n</s>";
        const QByteArray telling
            = QByteArray(sheet).replace("<xsl:v", "\n<xsl:message>m</xsl:message><xsl:v");
        QTest::newRow("current xml") << true << xml << sheet << QByteArray("<p>x</p>") << -1;
        QTest::newRow("current style sheet") << false << sheet << xml << QByteArray("<p>x</p>") << -1;
        QTest::newRow("broken current text") << true << broken << sheet << QByteArray() << 2;
        QTest::newRow("broken file") << true << xml << broken << QByteArray() << 0;
        QTest::newRow("message of the current sheet")
            << false << telling << xml << QByteArray("<p>x</p>") << 2;
        QTest::newRow("message of another sheet") << true << xml << telling << QByteArray("<p>x</p>") << 0;
    }
    void transformation()
    {
        QFETCH(bool, xmlIsCurrent);
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, run);
        QFETCH(int, line);
        Desk desk;
        desk.text = text;
        desk.find<QComboBox>("cmboutput")->setCurrentIndex(2);
        desk.find<QRadioButton>("optjob1")->click();
        desk.find<QRadioButton>(xmlIsCurrent ? "optxml0" : "optxml1")->click();
        desk.find<QLineEdit>(xmlIsCurrent ? "txtfile1" : "txtfile0")->setText(desk.write("other", file));
        desk.convert();
        QCOMPARE(desk.runs, run.isEmpty() ? QList<QByteArray>() : QList<QByteArray>({run}));
        QCOMPARE(desk.perRunFile(), QByteArray(run.isEmpty() ? "" : "output-html: yes\r\n"));
        QCOMPARE(desk.dialog.isVisible(), run.isEmpty());
        QCOMPARE(desk.failure().isEmpty(), !run.isEmpty());
        QCOMPARE(desk.messages.empty() ? -1 : desk.messages.front().line, line);
        if (line == 0)
            QVERIFY(desk.messages.front().text.startsWith(q("other, line 2: ")));
    }

    void missingFile()
    {
        const char *rows[][3] = {{"optxml0", "txtfile1", "You need to select a valid XSL file!"},
                                 {"optxml1", "txtfile0", "You need to select a valid XML file!"}};
        for (const auto &[option, box, message] : rows) {
            Desk desk;
            desk.find<QRadioButton>("optjob1")->click();
            desk.find<QRadioButton>(option)->click();
            const QString path = desk.write("found", "<r/>");
            desk.dialogs.answer(dialogs::Answer::Ok);
            desk.dialogs.answerFile(path);
            desk.convert();
            QCOMPARE(desk.dialogs.messages().first().text, q(message));
            QCOMPARE(desk.find<QLineEdit>(box)->text(), path);
            QVERIFY(desk.dialog.isVisible() && desk.runs.isEmpty());
        }
    }

    void unwritableOptions()
    {
        Desk desk;
        QVERIFY(QDir(desk.folder.path()).rmdir(q("tdyex")));
        desk.convert();
        QVERIFY(desk.dialog.isVisible() && !desk.failure().isEmpty() && desk.runs.isEmpty());
    }

    void panel()
    {
        MessagesPanel panel;
        panel.showMessages(
            {{3, 7, Severity::Warning, q("missing </p>")}, {0, 0, Severity::Information, q("done")}});
        panel.show();
        auto *list = panel.findChild<QTreeWidget *>();
        QCOMPARE(panel.findChild<QLabel *>()->text(), q("0 errors, 1 warning"));
        QSignalSpy chosen(&panel, &MessagesPanel::placeChosen);
        for (int row : {1, 0})
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                              list->visualItemRect(list->topLevelItem(row)).center());
        QVERIFY(!chosen.isEmpty());
        QCOMPARE(chosen.first(), QVariantList({3, 7}));
        panel.showMessages({});
        QCOMPARE(list->topLevelItemCount(), 0);
    }
};

QTEST_MAIN(ConvertTest)
#include "test_convert.moc"
