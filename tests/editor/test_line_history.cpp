#include "editor/line_history.h"

#include <QtTest>

using namespace editor;

class TestLineHistory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Steps: "12.3" records line 12 column 3, "<" and ">" step, "!5" restarts at line 5. The outcome is the
    // line and column of the current entry, then "<" and ">" for the steps still possible.
    void walks_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("outcome");
        const auto row = [](const char *name, const char *steps, const char *outcome) {
            QTest::newRow(name) << QString::fromLatin1(steps) << QString::fromLatin1(outcome);
        };
        row("fresh", "", "0.0");
        row("two lines", "1.0 2.0", "2.0<");
        row("back", "1.0 2.0 <", "1.0<>");
        row("back and forth", "1.0 2.0 < < >", "1.0<>");
        row("back beyond the start", "1.0 < < <", "0.0>");
        row("forth beyond the end", "1.0 > >", "1.0<");
        row("typing in a line", "1.0 1.1 1.2 <", "0.0>");
        row("same line keeps the newest column", "1.0 1.5 2.0 <", "1.5<>");
        row("same place after a step keeps what is later", "1.0 2.0 < 1.0", "1.0<>");
        row("another line after a step drops what is later", "1.0 2.0 < 3.0", "3.0<");
        row("dropped for good", "1.0 2.0 < 3.0 < >", "3.0<");
        row("restart", "1.0 2.0 !5", "5.0");
        row("restart then move", "1.0 !5 6.0 <", "5.0>");
    }
    void walks()
    {
        QFETCH(QString, steps);
        LineHistory history;
        history.restart({});
        CaretPosition at;
        for (const QString &step : steps.split(u' ', Qt::SkipEmptyParts)) {
            if (step == u"<") {
                at = history.stepBack();
            } else if (step == u">") {
                at = history.stepForward();
            } else if (step.startsWith(u'!')) {
                at = {step.mid(1).toInt(), 0};
                history.restart(at);
            } else {
                at = {step.section(u'.', 0, 0).toInt(), step.section(u'.', 1).toInt()};
                history.record(at);
            }
        }
        const QString outcome = QStringLiteral("%1.%2").arg(at.line).arg(at.column)
            + (history.hasEarlier() ? QStringLiteral("<") : QString())
            + (history.hasLater() ? QStringLiteral(">") : QString());
        QTEST(outcome, "outcome");
    }

    void forgetsTheOldest()
    {
        LineHistory history;
        for (int line = 0; line < 3000; ++line)
            history.record({line, 0});
        QCOMPARE(history.size(), LineHistory::bound);
        CaretPosition at;
        while (history.hasEarlier())
            at = history.stepBack();
        QCOMPARE(at, (CaretPosition{2000, 0}));
    }
};

QTEST_APPLESS_MAIN(TestLineHistory)
#include "test_line_history.moc"
