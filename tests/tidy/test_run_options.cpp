// What the configuration files come to, and that the installed Tidy understands all of it.
#include "tidy/launcher/run_options.h"
#include "tidy/option_catalogue.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace launcher;

namespace {

QByteArray tidySays(const QStringList &arguments, QProcess::ProcessChannel channel)
{
    QProcess tidy;
    tidy.setReadChannel(channel);
    tidy.start(QStringLiteral(XE_TIDY), arguments);
    tidy.waitForFinished(-1);
    return tidy.readAll();
}

// The names in a list of Tidy's: one at the start of each line.
QByteArrayList namesIn(const QByteArray &list)
{
    static const QRegularExpression name(QStringLiteral("^([a-z][-a-z0-9]+) +\\S"));
    QByteArrayList names;
    for (const QByteArray &line : list.split('\n')) {
        const QRegularExpressionMatch match = name.match(QString::fromLatin1(line));
        if (match.hasMatch())
            names << match.captured(1).toLatin1();
    }
    return names;
}

// Every value that the dialog offers, and one for each kind of free text.
QStringList valuesFor(const tidy::Option &option)
{
    switch (option.kind) {
    case tidy::OptionKind::Number:
        return {QStringLiteral("0"), QStringLiteral("32767")};
    case tidy::OptionKind::Text:
        return {QStringLiteral("a text")};
    case tidy::OptionKind::TagList:
        return {QStringLiteral("one, two"), QStringLiteral("one")};
    case tidy::OptionKind::FixedYesNo:
        return {QStringLiteral("yes"), QStringLiteral("no")};
    case tidy::OptionKind::Doctype:
        return tidy::offeredValues(option.kind) << QStringLiteral("-//ACME//DTD HTML 3//EN");
    default:
        return tidy::offeredValues(option.kind);
    }
}

} // namespace

class TestRunOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void configuration_data()
    {
        QTest::addColumn<QByteArray>("standing");
        QTest::addColumn<QByteArray>("perRun");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("given");
        const auto row = [](const char *name, const char *standing, const char *perRun, const char *given,
                            const char *input = "<a>\r\n") {
            QTest::newRow(name) << QByteArray(standing) << QByteArray(perRun) << QByteArray(input)
                                << QByteArray(given);
        };
        row("nothing said", "", "", "force-output: yes\n");
        row("no output wanted from errors", "force-output: no\r\n", "", "force-output: no\n");
        row("the later one wins", "wrap: 1\nWRAP: 2\ninput-xml: yes\n", "input-xml: no\n",
            "wrap: 2\ninput-xml: no\nforce-output: yes\n");
        row("one output", "output-xml: yes\noutput-xhtml: yes", "output-html: yes",
            "output-html: yes\nforce-output: yes\n");
        row("renamed", "hide-endtags: yes", "", "omit-optional-tags: yes\nforce-output: yes\n");
        row("what XML is never without",
            "hide-endtags: yes\nshow-body-only: yes\nfix-bad-comments: no\nnumeric-entities: no",
            "output-xml: yes",
            "fix-bad-comments: no\noutput-xml: yes\nnumeric-entities: yes\nforce-output: yes\n");
        row("names may stay in XHTML", "numeric-entities: no\nfix-bad-comments: no", "output-xhtml: yes",
            "numeric-entities: no\nfix-bad-comments: no\noutput-xhtml: yes\nforce-output: yes\n");
        row("kept parsable", "", "output-xhtml: yes",
            "output-xhtml: yes\nnumeric-entities: yes\nfix-bad-comments: yes\nforce-output: yes\n");
        row("no other files",
            "write-back: yes\noutput-file: /x\nerror-file: ../y\ngnu-emacs-file: z\nsplit: yes", "",
            "force-output: yes\n");
        QTest::newRow("no other files, behind a zero byte")
            << QByteArray("output-file\0a: /x\nwrite-back\0: yes\nwrap: 7\0output-file: /x", 58)
            << QByteArray() << QByteArray("<a>\r\n") << QByteArray("force-output: yes\n");
        row("identifier", "doctype: -//A//B//EN", "", "doctype: \"-//A//B//EN\"\nforce-output: yes\n");
        row("identifier in quotes", "doctype: \"-//A//B//EN\"", "",
            "doctype: \"-//A//B//EN\"\nforce-output: yes\n");
        row("comments, continued and odd lines",
            "# no\n// no\n\nno colon\n: no name\nalt-text:\nnew-inline-tags: a,\n  b\n", "",
            "new-inline-tags: a, b\nforce-output: yes\n");
        row("line ends follow the text", "", "", "force-output: yes\nnewline: LF\n", "<a>\n</a>\r\n");
        row("CR LF", "", "", "force-output: yes\nnewline: CRLF\n", "<a>\r\n</a>\r\n");
        row("CR", "", "", "force-output: yes\nnewline: CR\n", "<a>\r</a>\r\n");
        row("line ends were chosen", "newline: CR", "", "newline: CR\nforce-output: yes\n", "<a>\n</a>\r\n");
    }
    void configuration()
    {
        QFETCH(QByteArray, standing);
        QFETCH(QByteArray, perRun);
        QFETCH(QByteArray, input);
        QTEST(reconciledOptions({standing, perRun}, input).configuration, "given");
    }

    // Whatever the catalogue holds is known to the installed Tidy under its present name, or left out for a
    // reason that this Tidy bears out.
    void installedTidy()
    {
        const QByteArrayList settledHere{"write-back",    "output-file",    "error-file",
                                         "char-encoding", "input-encoding", "output-encoding"};
        for (const QString &list : {QStringLiteral("-help-config"), QStringLiteral("-show-config")}) {
            const QByteArrayList known = namesIn(tidySays({list}, QProcess::StandardOutput));
            QVERIFY(known.size() > 50);
            for (int index = 0; index < tidy::sentinelOption; ++index) {
                const QByteArray name = tidy::optionCatalogue()[size_t(index)].name;
                const std::optional<QByteArray> present = presentName(name);
                QVERIFY2(!present || known.contains(*present), name.constData());
                QVERIFY2(present || known.contains(name) == settledHere.contains(name), name.constData());
                QVERIFY2(present == name || !known.contains(name) || settledHere.contains(name),
                         name.constData());
            }
        }
    }

    void offeredValues()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("configuration"));
        for (int index = 0; index < tidy::listedOptions; ++index) {
            const tidy::Option &option = tidy::optionCatalogue()[size_t(index)];
            for (const QString &value : valuesFor(option)) {
                const QByteArray line = option.name + QByteArray(": ") + value.toUtf8();
                QFile file(path);
                QVERIFY(file.open(QIODevice::WriteOnly));
                file.write(reconciledOptions({line}, "").configuration);
                file.close();
                const QByteArray complaint
                    = tidySays({QStringLiteral("-config"), path, QStringLiteral("-show-config")},
                               QProcess::StandardError);
                QVERIFY2(complaint.isEmpty(), (line + '\n' + complaint).constData());
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestRunOptions)
#include "test_run_options.moc"
