// The stand-in for the dialogs: what nobody answered, and what was expected and did not come, is told.
#include "platform/dialogs/scripted_dialogs.h"

#include <QtTest>

using namespace dialogs;
using namespace Qt::StringLiterals;

class TestScriptedDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatNobodyAnswered()
    {
        ScriptedDialogs dialogs;
        QCOMPARE(dialogs.message(Icon::Exclamation, Buttons::Ok, u"a"_s), Answer::Ok);
        QCOMPARE(dialogs.message(Icon::Question, Buttons::YesNoCancel, u"b"_s), Answer::Cancel);
        QCOMPARE(dialogs.openFile(u"Open"_s, {}), QString());
        dialogs.answer(Answer::Cancel); // which is not offered
        QCOMPARE(dialogs.message(Icon::Question, Buttons::YesNo, u"c"_s), Answer::No);
        QCOMPARE(dialogs.unanswered().join(u' '), u"a b Open c"_s);
        QCOMPARE(dialogs.left(), 1);
    }
};

QTEST_GUILESS_MAIN(TestScriptedDialogs)
#include "test_scripted_dialogs.moc"
