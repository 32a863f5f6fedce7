// The configuration files: what is read from them, kept, and written to the byte.
#include "tidy/config_files.h"
#include "tidy/option_catalogue.h"
#include "tidy/option_values.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace tidy;

class TestOptionValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void lines_data();
    void lines();
    void edits_data();
    void edits();
    void skipped();
    void loadDefault();
    void perRun_data();
    void perRun();

private:
    QString folder() const { return program_->path(); }
    QByteArray content(const char *name) const
    {
        QFile file(folder() + QStringLiteral("/tdyex/") + QString::fromLatin1(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }
    void write(const QByteArray &text) const
    {
        QFile file(folder() + QStringLiteral("/tdyex/default.tidy"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    std::unique_ptr<QTemporaryDir> program_;
};

void TestOptionValues::init()
{
    program_ = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(folder()).mkdir(QStringLiteral("tdyex")));
}

void TestOptionValues::lines_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("value");
    const auto row = [](const char *line, int index, const char *value) {
        QTest::newRow(QByteArray(line).simplified()) << QByteArray(line) << index << QString::fromUtf8(value);
    };
    row("indent: auto", 50, "auto");
    row("INDENT: yes", 50, "yes");
    row("indent:yes", 50, "es");
    row("indent:", 50, "no");
    row("indent: ", 50, "");
    row("indent", 50, "no");
    row(" indent: yes", 50, "no");
    row("add-xml-decl: yes", 0, "yes");
    row("doctype: -//A//B: C//EN", 40, "-//A//B: C//EN");
    row("alt-text: \xE7\xB5\xB5", 42, "\xE7\xB5\xB5");
    row("indent: yes\r\n\r\nindent: auto", 50, "auto");
}

void TestOptionValues::lines()
{
    QFETCH(QByteArray, line);
    QFETCH(int, index);
    write(line + "\r\n\r\n");
    QTEST(OptionValues::read(folder()).value(index), "value");
}

// Steps are "index=value", parted by blanks; what is saved afterwards follows the file it began with.
void TestOptionValues::edits_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char *name, const char *before, const char *steps, const char *after) {
        QTest::newRow(name) << QByteArray(before) << QString::fromLatin1(steps) << QByteArray(after);
    };
    row("nothing", "", "", "\r\n");
    row("set", "", "50=auto", "indent: auto\r\n\r\n");
    row("same value", "indent: auto\r\n", "50=auto", "indent: auto\r\n\r\n");
    row("back to the default", "indent: auto\r\nwrap: 1\r\n", "50=no", "wrap: 1\r\n\r\n");
    row("third value moves to the end", "indent: auto\r\nwrap: 1\r\n", "50=yes",
        "wrap: 1\r\nindent: yes\r\n\r\n");
    row("found in any case", "INDENT: AUTO\r\n", "50=yes", "indent: yes\r\n\r\n");
    row("unknown lines are kept", "output-file: x\r\nodd\r\n\r\nfoo: 1\r\n", "62=70",
        "output-file: x\r\nodd\r\nfoo: 1\r\nwrap: 70\r\n\r\n");
    row("no such index", "", "77=x -1=x 78=x", "\r\n");
}

void TestOptionValues::edits()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, steps);
    write(before);
    OptionValues options = OptionValues::read(folder());
    for (const QString &step : steps.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList parts = step.split(QLatin1Char('='));
        options.apply(parts.at(0).toInt(), parts.at(1));
    }
    QVERIFY(options.save(folder()));
    QTEST(content("default.tidy"), "after");
}

void TestOptionValues::skipped()
{
    const OptionValues missing = OptionValues::read(folder());
    QCOMPARE(missing.changedOptions(), QStringList());
    write("output-file: x\r\nzelph: x\r\nfoo: bar\r\nno colon\r\n");
    const OptionValues odd = OptionValues::read(folder());
    for (int index = 0; index < listedOptions; ++index) {
        QVERIFY(!odd.isChanged(index));
        QCOMPARE(odd.value(index), missing.value(index));
    }
    QVERIFY(!missing.save(folder() + QStringLiteral("/elsewhere")));
}

void TestOptionValues::loadDefault()
{
    write("wrap: 1\r\n");
    OptionValues options = OptionValues::read(folder());
    QVERIFY(options.loadDefault(folder()));
    QCOMPARE(content("default.tidy"),
             "indent: auto\r\nindent-spaces: 5\r\nforce-output: yes\r\ntidy-mark: no\r\n");
    for (int index = 0; index < listedOptions; ++index)
        QCOMPARE(options.isChanged(index), (QList<int>{50, 60, 70, 74}.contains(index)));
    QVERIFY(options.save(folder()));
    QCOMPARE(content("default.tidy"), "\r\n");
}

void TestOptionValues::perRun_data()
{
    QTest::addColumn<int>("input");
    QTest::addColumn<int>("output");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("html to xhtml") << int(InputKind::Html) << int(OutputKind::Xhtml)
                                   << QByteArray("input-xml: no\r\noutput-xhtml: yes\r\n");
    QTest::newRow("xml to xml") << int(InputKind::Xml) << int(OutputKind::Xml)
                                << QByteArray("input-xml: yes\r\noutput-xml: yes\r\n");
    QTest::newRow("xhtml to html") << int(InputKind::Xhtml) << int(OutputKind::Html)
                                   << QByteArray("input-xml: no\r\noutput-html: yes\r\n");
}

void TestOptionValues::perRun()
{
    QFETCH(int, input);
    QFETCH(int, output);
    QVERIFY(writeConversionOptions(folder(), InputKind(input), OutputKind(output)));
    QTEST(content("default2.tidy"), "text");
    QVERIFY(writeTransformationOptions(folder()));
    QCOMPARE(content("default2.tidy"), "output-html: yes\r\n");
}

QTEST_GUILESS_MAIN(TestOptionValues)
#include "test_option_values.moc"
