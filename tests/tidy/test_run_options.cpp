// What the configuration files come to, and that the installed Tidy understands all of it.
#include "tidy/launcher/run_options.h"
#include "tidy/option_catalogue.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace launcher;
using namespace Qt::StringLiterals;

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
    static const QRegularExpression name(u"^([a-z][-a-z0-9]+) +\\S"_s);
    QByteArrayList names;
    for (const QByteArray &line : list.split('\n')) {
        const QRegularExpressionMatch match = name.match(QString::fromLatin1(line));
        if (match.hasMatch())
            names << match.captured(1).toLatin1();
    }
    return names;
}

// A text that the option takes; none where Tidy answers whatever it is, as it says what it mutes.
QString textFor(const tidy::Option &option)
{
    const std::pair<const char *, const char *> own[] = {{"css-prefix", "one"}, {"mute", ""}};
    for (const auto &[name, text] : own) {
        if (option.nameText() == QLatin1StringView(name))
            return QString::fromLatin1(text);
    }
    return u"one, two"_s;
}

} // namespace

class TestRunOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void configuration()
    {
        const QByteArray text = "<a>\r\n";
        const QByteArray page
            = "literal-attributes: yes\ndrop-empty-elements: no\nrepeated-attributes: keep-first\n";
        const std::tuple<QByteArray, QByteArray, QByteArray, QByteArray> rows[] = {
            {"", "", "force-output: yes\n", text},
            {"indent-spaces: 4", "", "indent-spaces: 4\nforce-output: yes\n", text},
            {"force-output: no\r\n", "", "force-output: no\n", text},
            {"wrap: 1\nWRAP: 2\ninput-xml: yes\n", "input-xml: no\n",
             "wrap: 2\ninput-xml: no\nforce-output: yes\n", text},
            {"", "input-xml: yes", "input-xml: yes\nforce-output: yes\nliteral-attributes: yes\n", text},
            {"literal-attributes: no", "input-xml: yes",
             "literal-attributes: no\ninput-xml: yes\nforce-output: yes\n", text},
            {"", "input-xml: yes\noutput-html: yes",
             "input-xml: yes\nforce-output: yes\noutput-xml: yes\nliteral-attributes: yes\n", text},
            {"output-xml: yes\noutput-xhtml: yes", "output-html: yes",
             "output-html: yes\nforce-output: yes\n", text},
            {"hide-endtags: yes", "", "omit-optional-tags: yes\nforce-output: yes\n", text},
            {"hide-endtags: yes\nshow-body-only: yes\nfix-bad-comments: no\nnumeric-entities: no",
             "output-xml: yes",
             "fix-bad-comments: no\noutput-xml: yes\nnumeric-entities: yes\nforce-output: yes\n", text},
            {"numeric-entities: no\nfix-bad-comments: no", "output-xhtml: yes",
             "numeric-entities: no\nfix-bad-comments: no\noutput-xhtml: yes\nforce-output: yes\n", text},
            {"", "output-xhtml: yes",
             "output-xhtml: yes\nnumeric-entities: yes\nfix-bad-comments: yes\nforce-output: yes\n", text},
            {"write-back: yes\noutput-file: /x\nerror-file: ../y\ngnu-emacs-file: z\nsplit: yes", "",
             "force-output: yes\n", text},
            {QByteArray("output-file\0a: /x\nwrite-back\0: yes\nwrap: 7\0output-file: /x", 58), "",
             "force-output: yes\n", text},
            {"doctype: -//A//B//EN", "", "doctype: \"-//A//B//EN\"\nforce-output: yes\n", text},
            {"doctype: \"-//A//B//EN\"", "", "doctype: \"-//A//B//EN\"\nforce-output: yes\n", text},
            {"# no\n// no\n\nno colon\n: no name\nalt-text:\nnew-inline-tags: a,\n  b\n", "",
             "new-inline-tags: a, b\nforce-output: yes\n", text},
            {"", "", "force-output: yes\nnewline: LF\n", "<a>\n</a>\r\n"},
            {"", "", "force-output: yes\nnewline: CRLF\n", "<a>\r\n</a>\r\n"},
            {"", "", "force-output: yes\nnewline: CR\n", "<a>\r</a>\r\n"},
            {"newline: CR", "", "newline: CR\nforce-output: yes\n", "<a>\n</a>\r\n"},
        };
        for (const auto &[standing, perRun, given, input] : rows) {
            const bool xml = perRun.contains("input-xml: yes");
            QByteArray whole = given + (xml ? "" : page);
            if (!standing.contains("indent-spaces"))
                whole.replace("force-output: yes\n", "force-output: yes\nindent-spaces: 2\n")
                    .replace("force-output: no\n", "force-output: no\nindent-spaces: 2\n");
            QCOMPARE(reconciledOptions({standing, perRun}, input).configuration, whole);
        }
        const QByteArray said = "drop-empty-elements: yes\nrepeated-attributes: keep-last\n"
                                "literal-attributes: no\nforce-output: no\nindent-spaces: 3\n";
        QCOMPARE(reconciledOptions({said}, "").configuration, said);
    }

    // Whatever the catalogue holds is known to the installed Tidy under its present name, or left out for a
    // reason that this Tidy bears out.
    void installedTidy()
    {
        const QByteArrayList settledHere{"write-back",    "output-file",    "error-file",
                                         "char-encoding", "input-encoding", "output-encoding"};
        for (const QString &list : {u"-help-config"_s, u"-show-config"_s}) {
            const QByteArrayList known = namesIn(tidySays({list}, QProcess::StandardOutput));
            QVERIFY(known.size() > 50);
            for (int index = 0; index < int(tidy::optionCatalogue().size()); ++index) {
                if (index == tidy::sentinelOption)
                    continue;
                const QByteArray name = tidy::optionCatalogue()[size_t(index)].name;
                const std::optional<QByteArray> present = presentName(name);
                QVERIFY2(!present || known.contains(*present), name.constData());
                QVERIFY2(present || known.contains(name) == settledHere.contains(name), name.constData());
                QVERIFY2(present == name || !known.contains(name) || settledHere.contains(name),
                         name.constData());
            }
        }
    }

    // What the dialog shows of an option that nobody set is what Tidy then works with.
    void defaultsAreInForce()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"configuration"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(reconciledOptions({"indent: yes"}, "").configuration);
        file.close();
        const QByteArrayList lines
            = tidySays({u"-config"_s, path, u"-show-config"_s}, QProcess::StandardOutput).split('\n');
        int compared = 0;
        for (const QByteArray &line : lines) {
            const QString option = QString::fromLatin1(line).section(u' ', 0, 0);
            const int index = tidy::findOption(option);
            if (!tidy::isListed(index) || option == u"indent")
                continue;
            const QString shown = tidy::defaultValue(index);
            const QString inForce = QString::fromLatin1(line.mid(39)).trimmed();
            // The text and the kind of output decide those two.
            if (shown == u"auto" && (option == u"newline" || option == u"numeric-entities"))
                continue;
            QVERIFY2(inForce == shown, line.constData());
            ++compared;
        }
        QVERIFY(compared > 80);
    }

    void offeredValues()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"configuration"_s);
        for (int index = 0; index < int(tidy::optionCatalogue().size()); ++index) {
            if (!tidy::isListed(index))
                continue;
            const tidy::Option &option = tidy::optionCatalogue()[size_t(index)];
            QStringList values = tidy::offeredValues(option.kind);
            values.append(option.builtInText());
            if (option.kind == tidy::OptionKind::Text || option.kind == tidy::OptionKind::TagList)
                values.append(textFor(option));
            for (const QString &value : std::as_const(values)) {
                if (value.isEmpty())
                    continue;
                const QByteArray line = option.name + QByteArray(": ") + value.toUtf8();
                QFile file(path);
                QVERIFY(file.open(QIODevice::WriteOnly));
                file.write(reconciledOptions({line}, "").configuration);
                file.close();
                const QByteArray complaint
                    = tidySays({u"-config"_s, path, u"-show-config"_s}, QProcess::StandardError);
                QVERIFY2(complaint.isEmpty(), (line + '\n' + complaint).constData());
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestRunOptions)
#include "test_run_options.moc"
