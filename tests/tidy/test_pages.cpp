// Broken pages of the kinds that people have, through the launcher and the real Tidy: what comes out is
// accepted by our own parser, and nothing that was to be read is lost.
#include "platform/dom/verdict.h"
#include "platform/files/text_file.h"
#include "tests/tidy/exchange_folder.h"
#include "tidy/config_files.h"
#include "tidy/launcher/run_tidy.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

class TestPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pages_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<int>("output");
        const QFileInfoList pages = QDir(QStringLiteral(XE_PAGES))
                                        .entryInfoList({QStringLiteral("*.html")}, QDir::Files, QDir::Name);
        QVERIFY(pages.size() >= 30);
        for (const QFileInfo &page : pages) {
            const QByteArray name = page.baseName().toUtf8();
            QTest::newRow(name + " to XML") << page.filePath() << int(tidy::OutputKind::Xml);
            QTest::newRow(name + " to XHTML") << page.filePath() << int(tidy::OutputKind::Xhtml);
        }
    }
    // The words that must come through are marked by "keep".
    void pages()
    {
        QFETCH(QString, page);
        QFETCH(int, output);
        const auto text = files::readTextFile(page);
        QVERIFY(text);
        const QByteArray result = converted(text->utf8, tidy::InputKind::Html, tidy::OutputKind(output));
        const auto fault = dom::checkWellFormed(result);
        QVERIFY2(!fault, fault ? qPrintable(fault->reason + fault->sourceText) : "");
        static const QRegularExpression marked(QStringLiteral("keep\\w+"),
                                               QRegularExpression::UseUnicodePropertiesOption);
        const QString after = QString::fromUtf8(result);
        const QString before = QString::fromUtf8(text->utf8);
        for (const QRegularExpressionMatch &word : marked.globalMatch(before))
            QVERIFY2(after.contains(word.captured()), qPrintable(word.captured()));
    }

private:
    QByteArray converted(const QByteArray &utf8, tidy::InputKind input, tidy::OutputKind output) const
    {
        const bool ready = bool(tidy::writeConversionOptions(exchange_.path(), input, output));
        exchange_.write("i.txt", utf8 + "\r\n");
        return ready && launcher::runTidy(exchange_.path(), 60'000) ? exchange_.content("o.txt")
                                                                    : QByteArray();
    }

    ExchangeFolder exchange_;
};

QTEST_GUILESS_MAIN(TestPages)
#include "test_pages.moc"
