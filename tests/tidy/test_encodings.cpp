// Characters through the launcher and the real Tidy, whatever the encoding options say.
#include "tests/tidy/exchange_folder.h"
#include "tidy/launcher/run_tidy.h"
#include "tidy/option_catalogue.h"

#include <QHash>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int bound = 60'000;

const QString outside = u"é ñ Ж 日本語 עברית € — 😀 \u00A0."_s;

// References to characters, and the characters themselves; nothing in comments and scripts is one.
QString resolved(QString text)
{
    static const QHash<QString, QString> names{
        {u"nbsp"_s, u"\u00A0"_s}, {u"eacute"_s, u"é"_s}, {u"ntilde"_s, u"ñ"_s},
        {u"euro"_s, u"€"_s},      {u"mdash"_s, u"—"_s},  {u"alpha"_s, u"α"_s},
    };
    static const QRegularExpression reference(u"&(#?)(\\w+);"_s);
    QRegularExpressionMatch match;
    qsizetype at = 0;
    while ((at = text.indexOf(reference, at, &match)) >= 0) {
        const bool number = !match.captured(1).isEmpty();
        const char32_t code = match.captured(2).toUInt();
        const QString stands = number ? QString::fromUcs4(&code, 1) : names.value(match.captured(2));
        text.replace(at, match.capturedLength(), stands);
        at += qMax<qsizetype>(stands.size(), 1);
    }
    return text;
}

QString inside(const QString &text, const char *begin, const char *end)
{
    const qsizetype from = text.indexOf(QLatin1StringView(begin)) + qsizetype(qstrlen(begin));
    return text.mid(from, text.indexOf(QLatin1StringView(end), from) - from);
}

QStringList encodings()
{
    return tidy::offeredValues(tidy::OptionKind::Encoding) << u"iso2022"_s << u"no-such-encoding"_s;
}

} // namespace

class TestEncodings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void survive_data()
    {
        QTest::addColumn<QByteArray>("options");
        for (const char *output : {"output-html", "output-xhtml", "output-xml"}) {
            const QByteArray kind = QByteArray("input-xml: no\r\n") + output + ": yes\r\n";
            for (const QString &first : encodings()) {
                const QByteArray together = "char-encoding: " + first.toLatin1() + "\r\n";
                QTest::newRow(together.trimmed() + " to " + output) << kind + together;
                const bool all = qstrcmp(output, "output-html") == 0;
                for (const QString &second : all ? encodings() : QStringList(first)) {
                    const QByteArray pair = "input-encoding: " + first.toLatin1()
                        + "\r\noutput-encoding: " + second.toLatin1() + "\r\n";
                    QTest::newRow(pair.simplified() + " to " + output) << kind + pair;
                }
            }
        }
    }
    // In text and values as itself or as a reference; elsewhere, where a reference would mean something else,
    // as itself.
    void survive()
    {
        QFETCH(QByteArray, options);
        const QString page
            = QStringLiteral("<html><head><meta charset=\"iso-8859-1\"><title>t</title></head><body>"
                             "<!-- %1 --><p title=\"%1\">%1 &eacute;&alpha;&#26085;&#128512;</p>"
                             "<script>s = '%1'</script></body></html>");
        const QString out = run(options, page.arg(outside));
        QCOMPARE(resolved(inside(out, "<p title=\"", "\"")), outside);
        QCOMPARE(resolved(inside(out, "\">", "</p>").section(u"<p title"_s, -1).section(u'>', -1)),
                 outside + u" éα日😀"_s);
        QCOMPARE(inside(out, "<!-- ", " -->"), outside);
        const QString script = inside(out, "s = '", "'");
        QCOMPARE(options.contains("output-xml") ? resolved(script) : script, outside);
    }

    void written()
    {
        const std::tuple<QByteArray, const char *> rows[] = {
            {"output-html: yes", "é日"},
            {"output-encoding: ascii\noutput-html: yes", "&eacute;&#26085;"},
            {"output-encoding: ascii\noutput-html: yes\nnumeric-entities: yes", "&#233;&#26085;"},
            {"output-encoding: ascii\noutput-xml: yes", "&#233;&#26085;"},
            {"output-encoding: latin1\noutput-html: yes", "é&#26085;"},
            {"char-encoding: mac\noutput-xhtml: yes", "&#233;&#26085;"},
            {"char-encoding: shiftjis\noutput-html: yes", "é日"},
            {"output-bom: yes\noutput-html: yes", "é日"},
        };
        for (const auto &[options, text] : rows) {
            const QString out = run("input-xml: no\n" + options, u"<title>t</title><p>&eacute;日</p>"_s);
            QCOMPARE(inside(out, "<p>", "</p>"), QString::fromUtf8(text));
        }
    }

private:
    QString run(const QByteArray &options, const QString &text) const
    {
        exchange_.write("default.tidy", "wrap: 0\r\nindent: no\r\ntidy-mark: no\r\n");
        exchange_.write("default2.tidy", options);
        exchange_.write("i.txt", text.toUtf8() + "\r\n");
        launcher::runTidy(exchange_.path(), bound);
        return QString::fromUtf8(exchange_.content("o.txt"));
    }

    ExchangeFolder exchange_;
};

QTEST_GUILESS_MAIN(TestEncodings)
#include "test_encodings.moc"
