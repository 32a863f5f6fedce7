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
using namespace Qt::StringLiterals;

class TestOptionValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        program_ = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(folder()).mkdir(u"tdyex"_s));
    }

    void names()
    {
        for (int index = 0; index < int(optionCatalogue().size()); ++index) {
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
        const std::tuple<const char *, int, const char *> rows[]
            = {{"indent: auto", 50, "auto"},
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
    void edits()
    {
        const std::tuple<const char *, QByteArray, const char *, QByteArray> rows[] = {
            {"nothing", "", "", "\r\n"},
            {"set", "", "50=auto", "indent: auto\r\n\r\n"},
            {"same value", "indent: auto\r\n", "50=auto", "indent: auto\r\n\r\n"},
            {"back to the default", "indent: auto\r\nwrap: 1\r\n", "50=no", "wrap: 1\r\n\r\n"},
            {"third value moves to the end", "indent: auto\r\nwrap: 1\r\n", "50=yes",
             "wrap: 1\r\nindent: yes\r\n\r\n"},
            {"found in any case", "INDENT: AUTO\r\n", "50=yes", "indent: yes\r\n\r\n"},
            {"unknown lines are kept", "output-file: x\r\nodd\r\n\r\nfoo: 1\r\n", "62=70",
             "output-file: x\r\nodd\r\nfoo: 1\r\nwrap: 70\r\n\r\n"},
            {"a listed default where another is in force", "", "41=keep-last 65=ascii",
             "repeated-attributes: keep-last\r\nchar-encoding: ascii\r\n\r\n"},
            {"back to what is in force", "newline: LF\r\n", "68=auto", "\r\n"},
            {"newer options", "drop-empty-elements: yes\r\n", "85=no 83=inline",
             "custom-tags: inline\r\n\r\n"},
            {"no such index", "", "77=x -1=x 78=x", "\r\n"},
        };
        for (const auto &[name, before, steps, after] : rows) {
            write(before);
            OptionValues options = OptionValues::read(folder());
            for (const QString &step : QString::fromLatin1(steps).split(u' ', Qt::SkipEmptyParts)) {
                const QStringList parts = step.split(u'=');
                options.apply(parts.at(0).toInt(), parts.at(1));
            }
            QVERIFY2(options.save(folder()), name);
            QCOMPARE(content("default.tidy"), after);
        }
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
        QVERIFY(!missing.save(folder() + u"/elsewhere"_s));
    }

private:
    QString folder() const { return program_->path(); }
    QByteArray content(const char *name) const
    {
        QFile file(folder() + u"/tdyex/"_s + QString::fromLatin1(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }
    void write(const QByteArray &text) const
    {
        QFile file(folder() + u"/tdyex/default.tidy"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    std::unique_ptr<QTemporaryDir> program_;
};

QTEST_GUILESS_MAIN(TestOptionValues)
#include "test_option_values.moc"
