// The stand-in for the dialogs: answers in order, keeps the record, never waits.
#include "platform/dialogs/scripted_dialogs.h"

#include <QtTest>

using namespace dialogs;

class TestScriptedDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersInOrder();
    void tellsWhatNobodyAnswered();
    void anAnswerThatIsNotOfferedIsNone();
};

void TestScriptedDialogs::answersInOrder()
{
    ScriptedDialogs dialogs;
    dialogs.answer(Answer::Yes);
    dialogs.answerFile(QStringLiteral("/a.xml"));
    dialogs.answer(Answer::Cancel);
    QCOMPARE(dialogs.message(Icon::Question, Buttons::YesNo, QStringLiteral("one")), Answer::Yes);
    QCOMPARE(dialogs.message(Icon::Critical, Buttons::YesNoCancel, QStringLiteral("two")), Answer::Cancel);
    QCOMPARE(dialogs.saveFile(QStringLiteral("Save as"), QStringLiteral("f"), QStringLiteral("p")),
             QStringLiteral("/a.xml"));
    QVERIFY(dialogs.unanswered().isEmpty());
    QCOMPARE(dialogs.left(), 0);
    QCOMPARE(dialogs.messages().at(1).text, QStringLiteral("two"));
    QCOMPARE(dialogs.messages().at(1).icon, Icon::Critical);
    QCOMPARE(dialogs.files().at(0).proposed, QStringLiteral("p"));
}

void TestScriptedDialogs::tellsWhatNobodyAnswered()
{
    ScriptedDialogs dialogs;
    QCOMPARE(dialogs.message(Icon::Exclamation, Buttons::Ok, QStringLiteral("a")), Answer::Ok);
    QCOMPARE(dialogs.message(Icon::Question, Buttons::YesNo, QStringLiteral("b")), Answer::No);
    QCOMPARE(dialogs.message(Icon::Question, Buttons::YesNoCancel, QStringLiteral("c")), Answer::Cancel);
    QCOMPARE(dialogs.openFile(QStringLiteral("Open"), QString()), QString());
    QCOMPARE(dialogs.unanswered().join(u' '), QStringLiteral("a b c Open"));
}

void TestScriptedDialogs::anAnswerThatIsNotOfferedIsNone()
{
    ScriptedDialogs dialogs;
    dialogs.answer(Answer::Cancel);
    QCOMPARE(dialogs.message(Icon::Question, Buttons::YesNo, QStringLiteral("b")), Answer::No);
    QCOMPARE(dialogs.unanswered(), QStringList{QStringLiteral("b")});
    QCOMPARE(dialogs.left(), 1);
}

QTEST_GUILESS_MAIN(TestScriptedDialogs)
#include "test_scripted_dialogs.moc"
