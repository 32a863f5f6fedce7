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
#include <QPlainTextEdit>
#include <QProgressBar>
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
    QString resultOf;
    QStringList allowed;
    std::vector<Message> messages;
    ConvertChoices choices;
    ConvertServices services{folder.path(),
                             dialogs,
                             [this] { return text; },
                             [this] { return folder.filePath(q("current.xml")); },
                             [this](const QByteArray &markup) { runs << markup; },
                             [this](const QByteArray &markup, const QString &document) {
                                 runs << markup;
                                 resultOf = document;
                             },
                             [this] { return allowed; },
                             [this](const QStringList &files) { allowed = files; },
                             [this](const std::vector<Message> &said) { messages = said; },
                             &choices};
    QWidget owner;
    frmconvrtr dialog{services, &owner};

    Desk()
    {
        QDir(folder.path()).mkdir(q("tdyex"));
        QFile::link(q(XE_TRANSFORMER), folder.filePath(q("tdyex/transformer.exe")));
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

    bool atWork() const { return find<QProgressBar>("prgwork")->isVisible(); }

    void convert() const
    {
        find<QPushButton>("OKButton")->click();
        QTRY_VERIFY_WITH_TIMEOUT(!atWork(), 60'000);
    }

    // The second job, on the text of a file.
    void transformBy(const QByteArray &styleSheet, bool xmlIsCurrent = true) const
    {
        find<QRadioButton>("optjob1")->click();
        find<QRadioButton>(xmlIsCurrent ? "optxml0" : "optxml1")->click();
        find<QLineEdit>(xmlIsCurrent ? "txtfile1" : "txtfile0")->setText(write("o\\ther", styleSheet));
    }

    QString failure() const { return find<QLabel>("lblfailure")->text(); }
};

} // namespace

class ConvertTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsAreKnown()
    {
        const QTemporaryDir folder;
        QFile named(folder.filePath(q("a b.xsl")));
        QVERIFY(named.open(QIODevice::WriteOnly));
        const std::tuple<const char *, InputKind, bool> rows[] = {
            {"", InputKind::Xml, false},
            {"<r>x</r>", InputKind::Xml, false},
            {"<!-- <html> --><r/>", InputKind::Xml, false},
            {"<r><html/></r>", InputKind::Xml, false},
            {"\n<!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.01//EN'><p>x", InputKind::Html, false},
            {"<!doctype html>\n<!-- x --><html><br>", InputKind::Html, false},
            {"<HTML lang=en><body>", InputKind::Html, false},
            {"<?xml version='1.0'?><html/>", InputKind::Xml, false},
            {"<?xml version='1.0'?><html xmlns='http://www.w3.org/1999/xhtml'/>", InputKind::Xhtml, false},
            {"<!DOCTYPE html PUBLIC '-//W3C//DTD XHTML 1.0 Strict//EN' 'x'><html>", InputKind::Xhtml, false},
            {"<?xml-stylesheet type='text/xsl' href='a%20b.xsl'?><r/>", InputKind::Xml, true},
            {"<?xml-stylesheet href='a.css' type='text/css'?><?xml-stylesheet\n href=\"a b.xsl\" "
             "type='application/xslt+xml'?><r/>",
             InputKind::Xml, true},
            {"<?xml-stylesheet type='text/css' href='a%20b.xsl'?><r/>", InputKind::Xml, false},
            {"<?xml-stylesheet type='text/xsl' href='none.xsl'?><r/>", InputKind::Xml, false},
            {"<?xml-stylesheet type='text/xsl' href='http://a.invalid/a%20b.xsl'?><r/>", InputKind::Xml,
             false},
            {"<r><?xml-stylesheet type='text/xsl' href='a%20b.xsl'?></r>", InputKind::Xml, false},
        };
        for (const auto &[text, kind, hasSheet] : rows) {
            QVERIFY2(kindOfText(text) == kind, text);
            QCOMPARE(namedStyleSheet(text, folder.filePath(q("d.xml"))),
                     hasSheet ? named.fileName() : QString());
        }
    }

    // The last choice comes again for a text of the same kind, and what the text is for others.
    void choicesAreKept()
    {
        Desk desk;
        desk.find<QComboBox>("cmboutput")->setCurrentIndex(2);
        desk.convert();
        const std::tuple<const char *, int, int> rows[]
            = {{"<a/>", 0, 2}, {"<html>", 1, 1}, {"<html xmlns='http://www.w3.org/1999/xhtml'>", 2, 2}};
        for (const auto &[text, input, output] : rows) {
            desk.text = text;
            const frmconvrtr again(desk.services, &desk.owner);
            QCOMPARE(again.findChild<QComboBox *>(q("cmbinput"))->currentIndex(), input);
            QCOMPARE(again.findChild<QComboBox *>(q("cmboutput"))->currentIndex(), output);
        }
    }

    void parameters()
    {
        const QByteArray taking
            = "<xsl:stylesheet version='1.0' "
              "xmlns:xsl='http://www.w3.org/1999/XSL/Transform' xmlns:n='u=v' exclude-result-prefixes='n'>"
              "<xsl:param name='a'/><xsl:param name='n:b' select='\"usual\"'/>"
              "<xsl:template match='/'><p><xsl:value-of select='$a'/>|"
              "<xsl:value-of select='$n:b'/></p></xsl:template></xsl:stylesheet>";
        const std::tuple<const char *, const char *, bool> rows[] = {
            {"", "<p>|usual</p>", true},
            {" a =1=2\n\n", "<p>1=2|usual</p>", true},
            {"a=//r\n{u=v}b=it's \"x\"", "<p>//r|it's \"x\"</p>", true},
            {"a", "is no parameter", false},
            {"=x", "is no parameter", false},
        };
        for (const auto &[typed, made, works] : rows) {
            Desk desk;
            desk.transformBy(taking);
            desk.find<QPlainTextEdit>("txtparameters")->setPlainText(q(typed));
            desk.convert();
            QCOMPARE(desk.runs.size(), works ? 1 : 0);
            const QString said = works ? QString::fromUtf8(desk.runs.first()) : desk.failure();
            QVERIFY2(said.contains(q(made)), qPrintable(said));
        }
    }

    void currentCode()
    {
        const char *inputs[] = {"yes", "no", "no"};
        const char *outputs[] = {"xml", "html", "xhtml"};
        for (int kind = 0; kind < 9; ++kind) {
            Desk desk;
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

    void transformation()
    {
        const QByteArray xml = "<r>x</r>";
        const QByteArray broken = "<r>\n</s>";
        const QByteArray telling
            = QByteArray(sheet).replace("<xsl:v", "\n<xsl:message>m</xsl:message><xsl:v");
        const std::tuple<const char *, bool, QByteArray, QByteArray, QByteArray, int> rows[] = {
            {"current xml", true, xml, sheet, "<p>x</p>", -1},
            {"current style sheet", false, sheet, xml, "<p>x</p>", -1},
            {"broken current text", true, broken, sheet, {}, 2},
            {"broken file", true, xml, broken, {}, 0},
            {"message of the current sheet", false, telling, xml, "<p>x</p>", 2},
            {"message of another sheet", true, xml, telling, "<p>x</p>", 0},
        };
        for (const auto &[name, xmlIsCurrent, text, file, run, line] : rows) {
            Desk desk;
            desk.text = text;
            QVERIFY(QDir(desk.folder.path()).mkdir(q("o")));
            desk.write("o/ther", "<not-this/>");
            desk.find<QComboBox>("cmboutput")->setCurrentIndex(2);
            desk.transformBy(file, xmlIsCurrent);
            desk.convert();
            QCOMPARE(desk.runs, run.isEmpty() ? QList<QByteArray>() : QList<QByteArray>({run}));
            QCOMPARE(desk.perRunFile(), QByteArray(run.isEmpty() ? "" : "output-html: yes\r\n"));
            QCOMPARE(desk.dialog.isVisible(), run.isEmpty());
            QCOMPARE(desk.failure().isEmpty(), !run.isEmpty());
            if (!run.isEmpty())
                QCOMPARE(desk.resultOf, desk.folder.filePath(q(xmlIsCurrent ? "current.xml" : "o\\ther")));
            QCOMPARE(desk.messages.empty() ? -1 : desk.messages.front().line, line);
            if (line == 0)
                QVERIFY(desk.messages.front().text.startsWith(q("o\\ther, line 2: ")));
        }
    }

    // Each needs a Yes; without one there is no result, and the dialog stays.
    void questions()
    {
        QTemporaryDir elsewhere;
        QFile secret(elsewhere.filePath(q("secret.xml")));
        QVERIFY(secret.open(QIODevice::WriteOnly) && secret.write("<s>y</s>") > 0);
        secret.close();
        const QByteArray reading
            = QByteArray(sheet).replace("/r", "document(\"" + secret.fileName().toUtf8() + "\")");
        const QByteArray newer = QByteArray(sheet).replace("1.0", "2.0");
        const std::tuple<QByteArray, QString, QByteArray> rows[]
            = {{reading, secret.fileName(), "<p>y</p>"}, {newer, q("o\\ther (version 2.0)"), "<p>x</p>"}};
        for (const auto &[styleSheet, named, result] : rows) {
            for (const auto answer : {dialogs::Answer::No, dialogs::Answer::Yes}) {
                Desk desk;
                desk.transformBy(styleSheet);
                desk.dialogs.answer(answer);
                desk.convert();
                const bool granted = answer == dialogs::Answer::Yes;
                QCOMPARE(desk.dialogs.messages().size(), 1);
                const QString asked = desk.dialogs.messages().first().text;
                QVERIFY2(asked.contains(named), qPrintable(asked));
                QVERIFY(desk.dialogs.messages().first().buttons == dialogs::Buttons::NoYes);
                QCOMPARE(desk.runs, granted ? QList<QByteArray>({result}) : QList<QByteArray>());
                QCOMPARE(desk.failure().contains(named), !granted);
                QCOMPARE(desk.allowed, granted && result == "<p>y</p>" ? QStringList{named} : QStringList());
            }
        }
        Desk knowing;
        knowing.allowed = {secret.fileName()};
        knowing.transformBy(reading);
        knowing.convert();
        QVERIFY(knowing.dialogs.messages().isEmpty());
        QCOMPARE(knowing.runs, QList<QByteArray>({"<p>y</p>"}));
    }

    void cancel()
    {
        Desk desk;
        desk.text = "<r>" + QByteArray(4'000'000, 'a') + "</r>"; // searched for hours
        desk.transformBy(
            QByteArray(sheet).replace("/r", "contains(/r, concat(substring(/r, 2000000), \"b\"))"));
        desk.find<QPushButton>("OKButton")->click();
        QVERIFY(desk.atWork());
        QVERIFY(!desk.find<QPushButton>("OKButton")->isEnabled());
        desk.find<QPushButton>("CancelButton")->click();
        QTRY_VERIFY_WITH_TIMEOUT(!desk.atWork(), 60'000);
        QVERIFY(desk.dialog.isVisible() && desk.runs.isEmpty());
        QVERIFY(desk.failure().contains(q("cancelled")));
        desk.find<QPushButton>("CancelButton")->click();
        QVERIFY(!desk.dialog.isVisible());
    }

    void proposedNames()
    {
        const std::tuple<const char *, QList<const char *>, const char *> rows[]
            = {{"a.xml", {}, "a.html"},
               {"a.b.xml", {"a.html"}, "a.b.html"},
               {"a.html", {"a.html"}, "a-result.html"},
               {"a.xml", {"a.html", "a-result.html"}, "a-result2.html"}};
        for (const auto &[document, there, proposed] : rows) {
            Desk desk;
            for (const char *name : there)
                desk.write(name, "x");
            QCOMPARE(proposedResult(desk.folder.filePath(q(document))), desk.folder.filePath(q(proposed)));
        }
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
        QVERIFY(QDir(desk.folder.filePath(q("tdyex"))).removeRecursively());
        desk.convert();
        QVERIFY(desk.dialog.isVisible() && !desk.failure().isEmpty() && desk.runs.isEmpty());
    }

    void panel()
    {
        MessagesPanel panel;
        panel.showMessages(
            {{3, 7, Severity::Warning, q("missing </p>")}, {0, 0, Severity::Information, q("done")}});
        panel.show();
        panel.setFocus();
        auto *list = panel.findChild<QTreeWidget *>();
        QVERIFY(panel.focusWidget() == list && list->currentItem() == list->topLevelItem(0));
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
