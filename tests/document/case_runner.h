// Cases as rows: steps in, what is to be seen then out.
#pragma once

#include "desk.h"

#include <QTest>
#include <initializer_list>

namespace document_test {

struct Case
{
    const char *name;
    std::initializer_list<const char *> steps;
    std::initializer_list<const char *> expected; // "key=what is seen", or "/file=its content"
};

inline void addRows(std::initializer_list<Case> cases)
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("expected");
    for (const Case &row : cases)
        QTest::newRow(row.name) << linesOf(row.steps) << linesOf(row.expected);
}

inline void runRow()
{
    QFETCH(QStringList, steps);
    QFETCH(QStringList, expected);
    Desk desk;
    desk.run(steps);
    QStringList seen;
    for (const QString &line : expected) {
        const QString key = line.section(QLatin1Char('='), 0, 0);
        seen.append(key + QLatin1Char('=') + desk.seen(key));
    }
    QCOMPARE(seen, expected);
    QCOMPARE(desk.seen(QStringLiteral("unanswered")), QString());
    QVERIFY(desk.dialogs.answers.isEmpty() && desk.dialogs.choices.isEmpty());
    QCOMPARE(desk.workspace.busyDepth, 0);
}

} // namespace document_test
