// The catalogue: what follows from an index, and what the options dialog finds by it.
#include "tidy/option_catalogue.h"

#include <QTest>

using namespace tidy;

class TestOptionCatalogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void places_data();
    void places();
    void kindsByIndex();
    void tabs();
    void descriptions();
    void searched_data();
    void searched();
    void keys();
    void names();
    void tagLists_data();
    void tagLists();
};

void TestOptionCatalogue::places_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("builtIn");
    const auto row = [](const char *name, int index, const char *builtIn) {
        QTest::newRow(name) << index << QString::fromLatin1(builtIn);
    };
    row("add-xml-decl", 0, "no");
    row("input-xml", 18, "no");
    row("merge-divs", 23, "yes");
    row("word-2000", 39, "no");
    row("doctype", 40, "auto");
    row("new-pre-tags", 46, "");
    row("show-errors", 48, "6");
    row("indent", 50, "no");
    row("wrap", 62, "68");
    row("output-bom", 63, "auto");
    row("input-encoding", 66, "latin1");
    row("newline", 68, "CRLF");
    row("tidy-mark", 74, "yes");
    row("gnu-emacs-file", 76, "");
    row("output-file", outputFileOption, "");
    row("zelph", sentinelOption, "zelph");
}

void TestOptionCatalogue::places()
{
    QFETCH(int, index);
    QFETCH(QString, builtIn);
    const Option &option = optionCatalogue()[size_t(index)];
    QCOMPARE(option.nameText(), QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(option.builtInText(), builtIn);
}

void TestOptionCatalogue::kindsByIndex()
{
    const std::vector<std::pair<OptionKind, QList<int>>> special = {
        {OptionKind::AutoYesNo, {50, 63}},
        {OptionKind::Doctype, {40}},
        {OptionKind::Encoding, {65, 66, 67}},
        {OptionKind::Repeat, {41}},
        {OptionKind::NewLine, {68}},
        {OptionKind::Number, {48, 60, 61, 62}},
        {OptionKind::Text, {42, 49, 69, 76}},
        {OptionKind::TagList, {43, 44, 45, 46}},
        {OptionKind::FixedYesNo, {18, 26, 27, 28, 70, 74}},
    };
    for (int index = 0; index < listedOptions; ++index) {
        OptionKind expected = OptionKind::YesNo;
        for (const auto &[kind, indexes] : special)
            expected = indexes.contains(index) ? kind : expected;
        const Option &option = optionCatalogue()[size_t(index)];
        QVERIFY2(option.kind == expected, option.name);
        const QStringList values = offeredValues(option.kind);
        QVERIFY2(values.isEmpty() || values.contains(option.builtInText()), option.name);
    }
    QCOMPARE(offeredValues(OptionKind::Encoding).size(), 14);
    QVERIFY(offeredValues(OptionKind::Doctype).endsWith(userDoctype()));
}

void TestOptionCatalogue::tabs()
{
    for (int index = 0; index < listedOptions; ++index)
        QVERIFY(optionCatalogue()[size_t(index)].tab == tabForIndex(index));
    for (const int nowhere : {-1, outputFileOption, sentinelOption})
        QVERIFY(tabForIndex(nowhere) == OptionTab::Miscellaneous);
    QVERIFY(optionCatalogue()[outputFileOption].tab == OptionTab::None);
}

void TestOptionCatalogue::descriptions()
{
    for (int index = 0; index <= sentinelOption; ++index) {
        const Option &option = optionCatalogue()[size_t(index)];
        const bool empty = QList<int>{23, 29, 38, 76}.contains(index);
        QVERIFY2(option.descriptionText().isEmpty() == empty, option.name);
        QVERIFY2(option.descriptionText() == option.descriptionText().trimmed() || index == outputFileOption,
                 option.name);
    }
    QVERIFY(optionCatalogue()[outputFileOption].descriptionText().endsWith(QLatin1StringView("markup. ")));
}

void TestOptionCatalogue::searched_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("two in order") << QStringLiteral("word 2000")
                                  << QStringList{QStringLiteral("bare"), QStringLiteral("word-2000")};
    QTest::newRow("of the last sentence")
        << QStringLiteral("formal public identifier (FPI).") << QStringList{QStringLiteral("doctype")};
}

void TestOptionCatalogue::searched()
{
    QFETCH(QString, text);
    QStringList found;
    for (const Option &option : optionCatalogue()) {
        if (option.descriptionText().contains(text, Qt::CaseInsensitive))
            found << option.nameText();
    }
    QTEST(found, "found");
}

void TestOptionCatalogue::keys()
{
    QCOMPARE(itemKey(50), QStringLiteral("50_"));
    for (int index = 0; index < listedOptions; ++index)
        QCOMPARE(lstkey(itemKey(index)), index);
    QCOMPARE(lstkey(QStringLiteral("x_")), -1);
}

void TestOptionCatalogue::names()
{
    for (int index = 0; index <= sentinelOption; ++index)
        QCOMPARE(findOption(optionCatalogue()[size_t(index)].nameText().toUpper()), index);
    for (const char *none : {"", "inden", "indent ", "indents"})
        QCOMPARE(findOption(QString::fromLatin1(none)), -1);
}

void TestOptionCatalogue::tagLists_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("kept");
    const auto row = [](const char *typed, const char *kept) {
        QTest::newRow(typed) << QString::fromLatin1(typed) << QString::fromLatin1(kept);
    };
    row("p,div ,  span", "p, div, span");
    row("p,", "p");
    row("p , ", "p");
    row("p", "p");
    row("", "");
    row("   ", "");
    row("a    b", "a, b");
}

void TestOptionCatalogue::tagLists()
{
    QFETCH(QString, typed);
    QTEST(normalisedTagList(typed), "kept");
}

QTEST_GUILESS_MAIN(TestOptionCatalogue)
#include "test_option_catalogue.moc"
