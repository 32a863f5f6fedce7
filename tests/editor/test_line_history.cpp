#include "editor/line_history.h"

#include <QtTest>

using namespace editor;
using namespace Qt::StringLiterals;

class TestLineHistory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Steps: "12.3" records line 12 column 3, "<" and ">" step, "!5" restarts at line 5. The outcome is the
    // line and column of the current entry, then "<" and ">" for the steps still possible.
    void walks()
    {
        const std::pair<QString, QString> rows[] = {
            {u""_s, u"0.0"_s},
            {u"1.0 2.0"_s, u"2.0<"_s},
            {u"1.0 2.0 <"_s, u"1.0<>"_s},
            {u"1.0 2.0 < < >"_s, u"1.0<>"_s},
            {u"1.0 < < <"_s, u"0.0>"_s},
            {u"1.0 > >"_s, u"1.0<"_s},
            {u"1.0 1.1 1.2 <"_s, u"0.0>"_s}, // typing in a line
            {u"1.0 1.5 2.0 <"_s, u"1.5<>"_s}, // the newest column of a line
            {u"1.0 2.0 < 1.0"_s, u"1.0<>"_s}, // the same place keeps what is later
            {u"1.0 2.0 < 3.0"_s, u"3.0<"_s}, // another line drops it
            {u"1.0 2.0 < 3.0 < >"_s, u"3.0<"_s}, // for good
            {u"1.0 2.0 !5"_s, u"5.0"_s},
            {u"1.0 !5 6.0 <"_s, u"5.0>"_s},
        };
        for (const auto &[steps, outcome] : rows) {
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
            const QString reached = u"%1.%2%3%4"_s.arg(at.line).arg(at.column).arg(
                history.hasEarlier() ? u"<"_s : QString(), history.hasLater() ? u">"_s : QString());
            QVERIFY2(reached == outcome, qPrintable(steps + u" comes to "_s + reached));
        }
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
