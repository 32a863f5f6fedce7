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
    void currentCode_data();
    void currentCode();
    void enabledControls();
    void browse();
    void transformation_data();
    void transformation();
    void missingFile_data();
    void missingFile();
    void unwritableOptions();
    void panel();
};

void ConvertTest::currentCode_data()
{
    QTest::addColumn<int>("input");
    QTest::addColumn<int>("output");
    QTest::addColumn<QByteArray>("file");
    const char *inputs[] = {"yes", "no", "no"};
    const char *outputs[] = {"xml", "html", "xhtml"};
    for (int input = 0; input < 3; ++input) {
        for (int output = 0; output < 3; ++output)
            QTest::addRow("%d to %s", input, outputs[output])
                << input << output
                << QByteArray("input-xml: ") + inputs[input] + "\r\noutput-" + outputs[output] + ": yes\r\n";
    }
}

void ConvertTest::currentCode()
{
    QFETCH(int, input);
    QFETCH(int, output);
    QFETCH(QByteArray, file);
    Desk desk;
    QCOMPARE(desk.find<QComboBox>("cmbinput")->currentText(), q("xml"));
    QCOMPARE(desk.find<QComboBox>("cmboutput")->currentText(), q("Well-formed xml"));
    desk.text = "<p>Zo\xc3\xab";
    desk.find<QComboBox>("cmbinput")->setCurrentIndex(input);
    desk.find<QComboBox>("cmboutput")->setCurrentIndex(output);
    desk.convert();
    QCOMPARE(desk.perRunFile(), file);
    QCOMPARE(desk.runs, QList<QByteArray>({desk.text}));
    QVERIFY(!desk.dialog.isVisible());
}

void ConvertTest::enabledControls()
{
    Desk desk;
    const auto enabled = [&desk] {
        QString out;
        for (const char *name :
             {"cmbinput", "cmboutput", "optxml0", "txtfile0", "cmdbrowse0", "txtfile1", "cmdbrowse1"})
            out += desk.find<QWidget>(name)->isEnabled() ? u'1' : u'0';
        return out;
    };
    auto *xsl = desk.find<QLabel>("lblxsl");
    QCOMPARE(enabled(), q("1100000"));
    desk.find<QRadioButton>("optjob1")->click();
    QCOMPARE(enabled(), q("0011011"));
    QCOMPARE(xsl->text(), q("Select file:"));
    QVERIFY(xsl->alignment().testFlag(Qt::AlignLeft));
    desk.find<QRadioButton>("optxml1")->click();
    QCOMPARE(enabled(), q("0011100"));
    QCOMPARE(xsl->text(), q("Current Code."));
    QVERIFY(xsl->alignment().testFlag(Qt::AlignHCenter));
    desk.find<QRadioButton>("optjob0")->click();
    QCOMPARE(enabled(), q("1100000"));
}

void ConvertTest::browse()
{
    Desk desk;
    const QString xsl = desk.write("s.xsl", sheet);
    desk.find<QRadioButton>("optjob1")->click();
    desk.dialogs.answerFile(desk.folder.filePath(q("none.xsl")));
    desk.dialogs.answerFile(xsl);
    desk.find<QPushButton>("cmdbrowse1")->click();
    QCOMPARE(desk.find<QLineEdit>("txtfile1")->text(), xsl);
    QCOMPARE(desk.dialogs.files().size(), 2);
    QCOMPARE(desk.dialogs.files().last().title, q("Open"));
    QCOMPARE(desk.dialogs.files().last().filter,
             q("XSLT Stylesheets (*.xsl;*.xslt)|*.xsl;*.xslt|All files (*.*)|*.*"));
    desk.dialogs.answerFile({});
    desk.find<QPushButton>("cmdbrowse1")->click();
    QCOMPARE(desk.find<QLineEdit>("txtfile1")->text(), xsl);
    desk.find<QRadioButton>("optxml1")->click();
    desk.dialogs.answerFile({});
    desk.find<QPushButton>("cmdbrowse0")->click();
    QCOMPARE(desk.dialogs.files().last().filter, q("XML Documents (*.xml)|*.xml|All files (*.*)|*.*"));
    QCOMPARE(desk.dialogs.unanswered(), QStringList());
}

void ConvertTest::transformation_data()
{
    QTest::addColumn<bool>("xmlIsCurrent");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("run"); // empty where it fails
    QTest::addColumn<int>("line"); // of the first message, in the current text
    const QByteArray xml = "<r>x</r>";
    const QByteArray broken = "<r>\n</s>";
    const QByteArray telling = QByteArray(sheet).replace("<xsl:v", "\n<xsl:message>m</xsl:message><xsl:v");
    QTest::newRow("current xml") << true << xml << sheet << QByteArray("<p>x</p>") << -1;
    QTest::newRow("current style sheet") << false << sheet << xml << QByteArray("<p>x</p>") << -1;
    QTest::newRow("broken current text") << true << broken << sheet << QByteArray() << 2;
    QTest::newRow("broken file") << true << xml << broken << QByteArray() << 0;
    QTest::newRow("message of the current sheet") << false << telling << xml << QByteArray("<p>x</p>") << 2;
    QTest::newRow("message of another sheet") << true << xml << telling << QByteArray("<p>x</p>") << 0;
}

void ConvertTest::transformation()
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

void ConvertTest::missingFile_data()
{
    QTest::addColumn<QByteArray>("option");
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QString>("message");
    QTest::newRow("xsl") << QByteArray("optxml0") << QByteArray("txtfile1")
                         << q("You need to select a valid XSL file!");
    QTest::newRow("xml") << QByteArray("optxml1") << QByteArray("txtfile0")
                         << q("You need to select a valid XML file!");
}

void ConvertTest::missingFile()
{
    QFETCH(QByteArray, option);
    QFETCH(QByteArray, box);
    QFETCH(QString, message);
    Desk desk;
    desk.find<QRadioButton>("optjob1")->click();
    desk.find<QRadioButton>(option)->click();
    const QString path = desk.write("found", "<r/>");
    desk.dialogs.answer(dialogs::Answer::Ok);
    desk.dialogs.answerFile(path);
    desk.convert();
    QCOMPARE(desk.dialogs.messages().first().text, message);
    QCOMPARE(desk.find<QLineEdit>(box)->text(), path);
    QVERIFY(desk.dialog.isVisible());
    QVERIFY(desk.runs.isEmpty());
}

void ConvertTest::unwritableOptions()
{
    Desk desk;
    QVERIFY(QDir(desk.folder.path()).rmdir(q("tdyex")));
    desk.convert();
    QVERIFY(desk.dialog.isVisible());
    QVERIFY(!desk.failure().isEmpty());
    QVERIFY(desk.runs.isEmpty());
}

void ConvertTest::panel()
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

QTEST_MAIN(ConvertTest)
#include "test_convert.moc"
