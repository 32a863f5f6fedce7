// Searching and replacing over bytes, without an editor.
#include "platform/control/replacement_text.h"
#include "platform/control/text_search.h"

#include <QtTest>
#include <random>
#include <vector>

using namespace control;

namespace {

enum Flag
{
    Case = 1,
    Word = 2,
    Regex = 4
};

SearchPattern patternOf(const QString &text, int flags)
{
    return {text, (flags & Case) != 0, (flags & Word) != 0, (flags & Regex) != 0};
}

// All matches from front to back, as "start-end" with blanks between.
QString forwards(const TextSearch &search, const SearchArea &area)
{
    QStringList found;
    for (qsizetype from = area.start;;) {
        const SearchResult result = search.next(area, from);
        if (!result)
            break;
        found.append(QStringLiteral("%1-%2").arg(result.match.start).arg(result.match.end));
        from = TextSearch::behind(area.text, result.match);
    }
    return found.join(u' ');
}

QString backwards(const TextSearch &search, const SearchArea &area)
{
    QStringList found;
    for (qsizetype before = area.end;;) {
        const SearchResult result = search.previous(area, before);
        if (!result)
            break;
        found.prepend(QStringLiteral("%1-%2").arg(result.match.start).arg(result.match.end));
        before = result.match.start;
    }
    return found.join(u' ');
}

QByteArray replaced(const TextSearch &search, const ReplacementText &replacement, const QByteArray &text)
{
    const SearchArea area(text);
    QByteArray result;
    qsizetype copied = 0;
    for (qsizetype from = 0;;) {
        const SearchResult found = search.next(area, from);
        if (!found)
            return result + text.mid(copied);
        result += text.mid(copied, found.match.start - copied);
        replacement.appendTo(result, text, search);
        copied = found.match.end;
        from = TextSearch::behind(text, found.match);
    }
}

// Offsets as forwards() tells them, in the text whose every LF became CR LF.
QString withTwoByteLineEnds(const QString &found, QByteArrayView text)
{
    std::vector<qsizetype> moved;
    for (qsizetype at = 0, ends = 0; at <= text.size(); ++at) {
        moved.push_back(at + ends);
        ends += at < text.size() && text[at] == '\n' ? 1 : 0;
    }
    QStringList matches;
    for (const QString &match : found.split(u' ', Qt::SkipEmptyParts))
        matches.append(QStringLiteral("%1-%2")
                           .arg(moved[size_t(match.section(u'-', 0, 0).toLongLong())])
                           .arg(moved[size_t(match.section(u'-', 1).toLongLong())]));
    return matches.join(u' ');
}

QByteArray withCrLf(QByteArray text) { return text.replace('\n', "\r\n"); }

class Chance
{
public:
    explicit Chance(quint32 seed) : numbers_(seed) { }

    int below(int most) { return int(numbers_() % quint32(most)); }
    template <size_t count>
    QByteArray oneOf(const char *const (&all)[count])
    {
        return all[below(int(count))];
    }
    QByteArray text(int most)
    {
        static constexpr const char *pieces[]
            = {"a", "b", " ", "\t", "<", ">", "\n", "\n", "\n", "\n\n", " \n", "\r-", "\xC3\xA4", "a\n"};
        QByteArray text;
        for (int left = below(most); left > 0; --left)
            text += oneOf(pieces);
        return text;
    }
    QByteArray expression()
    {
        static constexpr const char *atoms[] = {
            "a",       "b",        " ",        ">",      "\\n",       "\\n",         "\\s",       "\\s",
            "\\R",     "$",        "^",        ".",      "(?s:.)",    "[^a]",        "[^\\r\\n]", "[\\r\\n]",
            "\\W",     "\\S",      "\\D",      "\\v",    "\\r?\\n",   "(\\r\\n)",    "\\r\\n",    "\\b",
            "(a|\\n)", "(?=\\s)",  "(?<=\\n)", "(?<!a)", "(?<=a\\n)", "(?!\\n)",     "\\N",       "\\x0a",
            "\\Z",     "(?>\\s+)", "\\r",      "(\\s)",  "\\X",       "[[:space:]]", "(?<=\\s)"};
        static constexpr const char *often[] = {"", "", "", "", "*", "+", "?", "*?", "+?", "{2}"};
        QByteArray expression;
        for (int left = 1 + below(4); left > 0; --left) {
            const QByteArray atom = oneOf(atoms);
            const bool assertion = atom == "^" || atom == "$" || atom.startsWith("(?<") || atom == "\\b"
                || atom == "\\Z" || atom.startsWith("(?=") || atom.startsWith("(?!");
            expression += assertion ? atom : atom + oneOf(often);
            if (left > 1 && below(6) == 0)
                expression += '|';
        }
        return expression;
    }

private:
    std::minstd_rand numbers_;
};

} // namespace

class TestTextSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void finds_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<int>("flags");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("found");
        const auto row = [](const char *name, const char *pattern, int flags, const QByteArray &text,
                            const char *found) {
            QTest::newRow(name) << QString::fromUtf8(pattern) << flags << text << QString::fromLatin1(found);
        };
        row("either case", "aB", 0, "ab AB aB", "0-2 3-5 6-8");
        row("case", "aB", Case, "ab AB aB", "6-8");
        row("case beyond ASCII", "\xC3\xA9", 0, "\xC3\x89\xC3\xA9", "0-2 2-4");
        row("at the very end", "ba", Case, "aba", "1-3");
        row("longer than the text", "abcd", Case, "abc", "");
        row("no overlap", "aa", Case, "aaaa", "0-2 2-4");
        row("signs are no expression", "<a.b*>", 0, "<aab> <A.B*>", "6-12");
        row("word", "a", Case | Word,
            "a ab _a a-a \xC3\xA9"
            "a a",
            "0-1 8-9 10-11 16-17");
        row("word, either case", "\xC3\x84", Word, "x\xC3\xA4 \xC3\xA4", "4-6");
        row("word between signs", "<p", Word, "<p> <pre x<p>", "0-2 10-12");
        row("expression as word", "a+", Regex | Word, "aa aab baa a", "0-2 11-12");
        row("quoted to the end, as word", "\\Qa+", Regex | Word, "a+ a+b", "0-2 3-5");
        row("expression", "<(\\w+)>.*?</\\1>", Regex, "<a>x</a><b></c></b>", "0-8 8-19");
        row("letters beyond ASCII", "\\w+", Regex, "\xC3\xA4\xC3\xB6 x", "0-4 5-6");
        row("dot is one character", "^.$", Regex, "\xE2\x82\xAC", "0-3");
        row("lines by LF", "^.*$", Regex, "a\nb\n", "0-1 2-3 4-4");
        row("lines by CR LF", "^.*$", Regex, "a\r\nb\r\n", "0-1 3-4 6-6");
        row("lines by CR", "^.*$", Regex, "a\rb\r", "0-1 2-3 4-4");
        row("line ends", "$", Regex, "a\r\nb\nc", "1-1 4-4 6-6");
        row("line starts", "^", Regex, "\r\n\r\n", "0-0 2-2 4-4");
        row("trailing blanks", "\\s+$", Regex, "a \r\n\r\nb\r\n", "1-4 7-9");
        row("a line end", "\\n", Regex, "a\r\nb\nc\rd", "1-3 4-5");
        row("both signs of a line end", "\\r\\n", Regex, "a\r\nb\nc\rd", "1-3 4-5");
        row("no half of a line end", "\\r(?!-)|[\\n]|\\x0d", Regex, "a\r\nb\rc", "1-3 4-5");
        row("behind a bracket", ">\\n", Regex, "<a>\r\n<b>\r\n", "2-5 7-10");
        row("signs quoted, in a class and repeated", "\\Q\\r\\n\\E|[\\r\\n]x|\\r\\n?y", Regex,
            "\\r\\n\r\nx\ry", "0-4 4-7 7-9");
        row("over line ends", "a\\R+b", Regex, "a\r\n\nb", "0-5");
        row("empty matches", "x*", Regex, "axb", "0-0 1-2 2-2 3-3");
        row("faulty bytes", "b", 0,
            "\xFF"
            "b\x80\xC3"
            "b\xED\xA0\x80"
            "b",
            "1-2 4-5 8-9");
        row("expression over faulty bytes", "a.?b", Regex,
            "a\xFF"
            "b ab a\xC3\xA9"
            "b",
            "4-6 7-11");
        row("no text", "a*", Regex, "", "0-0");
        row("zero bytes", "b", 0, QByteArray("a\0b", 3), "2-3");
    }
    void finds()
    {
        QFETCH(QString, pattern);
        QFETCH(int, flags);
        QFETCH(QByteArray, text);
        const TextSearch search(patternOf(pattern, flags));
        QVERIFY(!search.fault());
        QTEST(forwards(search, SearchArea(text)), "found");
    }

    // Whatever is searched for, a text with CR LF is the same text as with LF.
    void lineEndsAreOne_data()
    {
        QTest::addColumn<int>("cases");
        QTest::addColumn<int>("filler"); // bytes before what is searched for, so that no stretch ends with it
        QTest::newRow("short") << 4000 << 0;
        QTest::newRow("long") << 40 << 66000;
    }
    void lineEndsAreOne()
    {
        QFETCH(int, cases);
        QFETCH(int, filler);
        Chance chance(20240229);
        int found = 0;
        for (int i = 0; i < cases; ++i) {
            QByteArray text = chance.text(24);
            if (filler > 0)
                text = QByteArray("<ab>\n").repeated((filler - chance.below(1000)) / 5) + text
                    + QByteArray(chance.below(20000), 'b') + chance.text(24);
            const QByteArray expression = chance.expression();
            const QByteArray about = expression + " in " + text.right(80).toPercentEncoding();
            const TextSearch search(patternOf(QString::fromLatin1(expression), Regex));
            QVERIFY2(!search.fault(), about);
            const QByteArray other = withCrLf(text);
            const QString matches = forwards(search, SearchArea(text));
            found += int(matches.count(u'-'));
            QVERIFY2(forwards(search, SearchArea(other)) == withTwoByteLineEnds(matches, text), about);
            if (filler == 0)
                QVERIFY2(backwards(search, SearchArea(other))
                             == withTwoByteLineEnds(backwards(search, SearchArea(text)), text),
                         about);
            const QString put = QStringLiteral("[$0]\\n\\r\\n\\U$0");
            const ReplacementText lf(put, search, "\n");
            const ReplacementText crLf(put, search, "\r\n");
            QVERIFY2(replaced(search, crLf, other) == withCrLf(replaced(search, lf, text)), about);
        }
        QVERIFY(found > cases); // or nothing was tried
    }

    // Pieces of the text are searched one by one; no match may fall between them.
    void findsTheSameBackwards()
    {
        QByteArray text;
        for (int line = 0; line < 5000; ++line)
            text += QByteArray(line % 37, ' ') + (line % 11 == 0 ? "a match\r\n" : "\xC3\xA4 line\r\n");
        for (const auto &[pattern, flags] : {std::pair("match", int(Case)), std::pair("MATCH", int(Word)),
                                             std::pair("\\w*tch$", int(Regex))}) {
            const TextSearch search(patternOf(QString::fromLatin1(pattern), flags));
            const QString found = forwards(search, SearchArea(text));
            QCOMPARE(found.count(u' '), 454);
            QCOMPARE(backwards(search, SearchArea(text)), found);
        }
    }

    void keepsToItsArea()
    {
        const QByteArray text("ab ab ab");
        const SearchArea area(text, {1, 7});
        QCOMPARE(forwards(TextSearch(patternOf(QStringLiteral("ab"), Case)), area), QStringLiteral("3-5"));
        QCOMPARE(forwards(TextSearch(patternOf(QStringLiteral("a?b"), Regex)), area),
                 QStringLiteral("1-2 3-5"));
        // The area begins and ends within lines; what stands before it is seen.
        QCOMPARE(forwards(TextSearch(patternOf(QStringLiteral("^|$"), Regex)), area), QString());
        QCOMPARE(forwards(TextSearch(patternOf(QStringLiteral("(?<=a)b"), Regex)), area),
                 QStringLiteral("1-2 4-5"));
    }

    void tellsFaults()
    {
        struct Row
        {
            const char *expression;
            int flags, place;
        };
        const Row rows[]
            = {{"\xC3\xA4(b", Regex, 3}, {"a)b", Regex | Word, 1}, {"ab|*", Regex, 3}, {"\\C", Regex, 2}};
        for (const auto &[expression, flags, place] : rows) {
            const TextSearch search(patternOf(QString::fromUtf8(expression), flags));
            QVERIFY(search.fault());
            QVERIFY(!search.fault()->message.isEmpty());
            QCOMPARE(int(search.fault()->place), place);
            QVERIFY(!search.next(SearchArea("a)b"), 0));
        }
    }

    void runawaysEnd()
    {
        const QByteArray text = QByteArray(60, 'a') + '!';
        const TextSearch search(patternOf(QStringLiteral("^(a|a?)+$"), Regex));
        QCOMPARE(search.next(SearchArea(text), 0).outcome, SearchOutcome::GaveUp);
        QCOMPARE(search.previous(SearchArea(text), text.size()).outcome, SearchOutcome::GaveUp);

        // Translated to machine code this one would never end.
        const QByteArray faulty = "aa;+bnnnX\x91&lt;\x91\x8dn";
        const TextSearch endless(patternOf(u"aa(.+||||||||||||||||(?1)||||)\uFFFD`|"_qs, Regex));
        QCOMPARE(endless.next(SearchArea(faulty), 0).outcome, SearchOutcome::GaveUp);
    }

    void continuesWhereTimeEnded()
    {
        for (const int flags : {int(Case), int(Regex), int(Word)}) {
            const QByteArray text = QByteArray(flags == Case ? 40 << 20 : 1 << 20, '\n') + "xyz";
            const TextSearch search(patternOf(QStringLiteral("xyz"), flags));
            SearchResult result{SearchOutcome::OutOfTime, {}, 0};
            int rounds = 0;
            while (result.outcome == SearchOutcome::OutOfTime) {
                const qsizetype from = result.reached;
                result = search.next(SearchArea(text), from, QDeadlineTimer(0));
                QVERIFY(result || result.reached > from);
                ++rounds;
            }
            QVERIFY(result);
            QCOMPARE(result.match.start, text.size() - 3);
            QVERIFY(rounds > 1);
        }
    }

    void replaces()
    {
        struct Row
        {
            const char *pattern;
            int flags;
            const char *replacement;
            QByteArray result; // of "ab <é>"
        };
        const Row rows[] = {
            {"ab", Case, "$0\\n", "$0\\n <\xC3\xA9>"},
            {"ab", Case, "", " <\xC3\xA9>"},
            {"(a)(b)", Regex, "$2-${1}\\2", "b-ab <\xC3\xA9>"},
            {"(a)(?<n>b)", Regex, "${n}$10$$$&", "ba0$ab <\xC3\xA9>"},
            {"(x)?b", Regex, "[$1]", "a[] <\xC3\xA9>"},
            {"(\\w)>", Regex, "\\U$1x\\E$1\\>", "ab <\xC3\x89X\xC3\xA9>"},
            {"(\\w+) ", Regex, "\\u$1\\Lx\\UY\\E", "AbxY<\xC3\xA9>"},
            {" ", Regex, "\\n\\t\\\\\\x41\\x{20AC}", "ab\r\n\t\\A\xE2\x82\xAC<\xC3\xA9>"},
            {"^|$", Regex, "|", "|ab <\xC3\xA9>|"},
        };
        for (const auto &[pattern, flags, replacement, result] : rows) {
            const TextSearch search(patternOf(QString::fromUtf8(pattern), flags));
            const ReplacementText text(QString::fromUtf8(replacement), search, "\r\n");
            QVERIFY(!text.fault());
            QCOMPARE(replaced(search, text, "ab <\xC3\xA9>"), result);
        }
    }

    void tellsFaultyReplacements()
    {
        const TextSearch search(patternOf(QStringLiteral("(a)"), Regex));
        for (const char *faulty :
             {"x$2", "x${b}", "x$", "x$y", "x${1", "x\\", "x\\q", "x\\xZZ", "x\\x{110000}"}) {
            const ReplacementText text(QString::fromLatin1(faulty), search, "\n");
            QVERIFY2(text.fault(), faulty);
            QCOMPARE(text.fault()->place, 1);
        }
    }
};

QTEST_GUILESS_MAIN(TestTextSearch)
#include "test_text_search.moc"
