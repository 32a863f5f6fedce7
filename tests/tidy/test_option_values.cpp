// The catalogue of options, and the configuration files: what is read from them, kept, and written to the
// byte.
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
    void init()
    {
        program_ = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(folder()).mkdir(QStringLiteral("tdyex")));
    }

    void places()
    {
        const struct
        {
            int index;
            const char *name;
            const char *builtIn;
        } rows[] = {{0, "add-xml-decl", "no"},
                    {18, "input-xml", "no"},
                    {23, "merge-divs", "yes"},
                    {39, "word-2000", "no"},
                    {40, "doctype", "auto"},
                    {46, "new-pre-tags", ""},
                    {48, "show-errors", "6"},
                    {50, "indent", "no"},
                    {62, "wrap", "68"},
                    {63, "output-bom", "auto"},
                    {66, "input-encoding", "latin1"},
                    {68, "newline", "CRLF"},
                    {74, "tidy-mark", "yes"},
                    {76, "gnu-emacs-file", ""},
                    {outputFileOption, "output-file", ""},
                    {sentinelOption, "zelph", "zelph"}};
        for (const auto &[index, name, builtIn] : rows) {
            const Option &option = optionCatalogue()[size_t(index)];
            QCOMPARE(option.nameText(), QString::fromLatin1(name));
            QCOMPARE(option.builtInText(), QString::fromLatin1(builtIn));
        }
    }

    void keys()
    {
        QCOMPARE(itemKey(50), QStringLiteral("50_"));
        for (int index = 0; index < listedOptions; ++index)
            QCOMPARE(lstkey(itemKey(index)), index);
        QCOMPARE(lstkey(QStringLiteral("x_")), -1);
    }

    void names()
    {
        for (int index = 0; index <= sentinelOption; ++index) {
            const Option &option = optionCatalogue()[size_t(index)];
            QCOMPARE(findOption(option.nameText().toUpper()), index);
            const QStringList values = offeredValues(option.kind);
            QVERIFY2(values.isEmpty() || values.contains(option.builtInText()), option.name);
        }
        for (const char *none : {"", "inden", "indent ", "indents"})
            QCOMPARE(findOption(QString::fromLatin1(none)), -1);
    }

    void tagLists()
    {
        const char *rows[][2] = {{"p,div ,  span", "p, div, span"},
                                 {"p,", "p"},
                                 {"p , ", "p"},
                                 {"p", "p"},
                                 {"", ""},
                                 {"   ", ""},
                                 {"a    b", "a, b"}};
        for (const auto &[typed, kept] : rows)
            QCOMPARE(normalisedTagList(QString::fromLatin1(typed)), QString::fromLatin1(kept));
    }

    void lines()
    {
        const struct
        {
            const char *line;
            int index;
            const char *value;
        } rows[] = {{"indent: auto", 50, "auto"},
                    {"INDENT: yes", 50, "yes"},
                    {"indent:yes", 50, "es"},
                    {"indent:", 50, "no"},
                    {"indent: ", 50, ""},
                    {"indent", 50, "no"},
                    {" indent: yes", 50, "no"},
                    {"add-xml-decl: yes", 0, "yes"},
                    {"doctype: -//A//B: C//EN", 40, "-//A//B: C//EN"},
                    {"alt-text: \xE7\xB5\xB5", 42, "\xE7\xB5\xB5"},
                    {"indent: yes\r\n\r\nindent: auto", 50, "auto"}};
        for (const auto &[line, index, value] : rows) {
            write(line + QByteArray("\r\n\r\n"));
            QCOMPARE(OptionValues::read(folder()).value(index), QString::fromUtf8(value));
        }
    }

    // Steps are "index=value", parted by blanks; what is saved afterwards follows the file it began with.
    void edits_data()
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
    void edits()
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

    void skipped()
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

QTEST_GUILESS_MAIN(TestOptionValues)
#include "test_option_values.moc"
