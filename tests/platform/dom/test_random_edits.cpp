// Thousands of edits at random places: after each the document parses, counts and neighbours agree, notices
// come in pairs that tell a mirror everything; undoing all restores the bytes and redoing all repeats them.
#include "tests/platform/dom/random_walk.h"

#include <QRandomGenerator>
#include <QTest>

using namespace dom;

class TestRandomEdits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void walks_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 12; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }

    void walks()
    {
        QFETCH(quint32, seed);
        QRandomGenerator random(seed);
        const auto choose = [&random](int below) { return random.bounded(below); };
        const QByteArray text = randomDocument(choose, 300);
        Document document;
        QVERIFY(!document.load(text));
        Mirror mirror(document.documentNode());
        document.setObserver(&mirror);
        Walker walker(document, choose, [&choose] { return randomWord(choose); });
        std::vector<ChangeSet> done;
        for (int step = 0; step < 300; ++step) {
            document.beginCommand();
            walker.step();
            done.push_back(document.endCommand());
            const QString fault = faultOf(document, mirror);
            QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("step %1: ").arg(step) + fault));
        }
        QVERIFY(standsAtItsPlace(document, *document.documentElement()));
        const QByteArray edited = document.xml();
        for (auto changes = done.rbegin(); changes != done.rend(); ++changes)
            document.revert(*changes);
        QCOMPARE(document.xml(), text);
        QCOMPARE(faultOf(document, mirror), QString());
        for (ChangeSet &changes : done)
            document.reapply(changes);
        QCOMPARE(document.xml(), edited);
        QCOMPARE(faultOf(document, mirror), QString());
    }
};

QTEST_APPLESS_MAIN(TestRandomEdits)
#include "test_random_edits.moc"
