// Cases as rows: steps in, what is to be seen then out.
#pragma once

#include "desk.h"

#include <QTest>
#include <initializer_list>

namespace document_test {

struct Case
{
    const char *name;
    const char *steps;
    const char *expected; // "key=what is seen", or "/file=its content", parted as the steps are
};

inline void runRows(std::initializer_list<Case> cases)
{
    for (const Case &row : cases) {
        Desk desk;
        desk.run(row.steps);
        const QStringList expected = linesOf(row.expected);
        for (const QString &line : expected) {
            const QString key = line.section(u'=', 0, 0);
            const QString seen = key + u'=' + desk.seen(key);
            QVERIFY2(seen == line, qPrintable(QLatin1String(row.name) + QStringLiteral(": ") + seen));
        }
        QVERIFY2(desk.seen(QStringLiteral("unanswered")).isEmpty(), row.name);
        QVERIFY2(desk.dialogs.answers.isEmpty() && desk.dialogs.choices.isEmpty(), row.name);
        QVERIFY2(desk.workspace.busyDepth == 0, row.name);
    }
}

} // namespace document_test
