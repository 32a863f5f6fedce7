// The attribute list with its buttons, and the Attribute dialog.
#include "propfrm_desk.h"

#include <QLabel>

using namespace tree_test;

class AttributeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void buttons()
    {
        Desk desk("<r a='1' b='2' c='3'/>");
        const auto enabled = [&desk] {
            QString out;
            for (const char *name : {"cmdmodify", "cmdremove", "cmdconvert", "cmdatup", "cmdatdown"})
                out += desk.find<QPushButton>(name)->isEnabled() ? u'1' : u'0';
            return out;
        };
        desk.select(0);
        QCOMPARE(enabled(), q("11101"));
        desk.select(1);
        QCOMPARE(enabled(), q("11111"));
        desk.select(2);
        QCOMPARE(enabled(), q("11110"));
        desk.press("cmdremove");
        QCOMPARE(desk.list()->selected().name, q("b"));
        QCOMPARE(enabled(), q("11110"));
        desk.press("cmdconvert");
        QCOMPARE(enabled(), q("00000"));
        desk.attributeBy("cmdadd", "n", "1");
        QCOMPARE(enabled(), q("11100"));
    }

    void dialog_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("closes");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("rows");
        const auto row = [](const char *title, const char *button, const char *name, const char *value,
                            bool closes, const char *message, const char *rows) {
            QTest::newRow(title) << QByteArray(button) << QByteArray(name) << QByteArray(value) << closes
                                 << q(message) << q(rows);
        };
        const char *same = "id=1 b=2";
        row("duplicate", "cmdadd", "id", "x", false, "The Attribute Name \"id\" already exist!", same);
        row("other case", "cmdadd", "ID", "x", true, "", "id=1 b=2 ID=x");
        row("digit first", "cmdadd", "1abc", "x", false, "", same);
        row("blank", "cmdmodify", "a b", "x", false, "", same);
        row("control character", "cmdadd", "n", "\x01", false, "", same);
        row("empty name, add", "cmdadd", "", "x", true, "", same);
        row("empty name, change", "cmdmodify", "", "x", true, "", same);
        row("onto another", "cmdmodify", "b", "x", true, "", "b=x b=2");
        row("any text", "cmdmodify", "id", "<&\"'", true, "", "id=<&\"' b=2");
    }

    void dialog()
    {
        QFETCH(QByteArray, button);
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, value);
        QFETCH(bool, closes);
        QFETCH(QString, message);
        Desk desk("<r id='1' b='2'/>");
        if (!message.isEmpty())
            desk.dialogs.answer(dialogs::Answer::Ok);
        desk.attributeBy(button, name, value);
        QCOMPARE(desk.attribute()->isVisible(), !closes);
        QCOMPARE(desk.dialogs.messages().size(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty()) {
            QCOMPARE(desk.dialogs.messages().first().text, message);
            QCOMPARE(desk.dialogs.messages().first().icon, dialogs::Icon::Exclamation);
            QVERIFY(desk.line("txtname")->hasFocus());
        }
        const QString reasons = desk.find<QLabel>("lblname")->text() + desk.find<QLabel>("lblvalue")->text();
        QCOMPARE(reasons.isEmpty(), closes || !message.isEmpty());
        QStringList rows;
        for (const dom::AttributeEdit &row : desk.list()->rows())
            rows.append(row.name + u'=' + row.value);
        QTEST(rows.join(u' '), "rows");
    }

    void symbols()
    {
        Desk desk("<r a='1'/>");
        desk.press("cmdmodify");
        Desk::turnTo(desk.attribute());
        auto *button = desk.attribute()->findChild<QPushButton *>(q("cmdsynbols"));
        QVERIFY(button->isEnabled());
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(desk.askedFor.first, 0);
        QCOMPARE(Propfrm::around(desk.askedFor.second), desk.form.get());
        desk.form->insertSymbols(0, q("x")); // in place of the selected value
        QCOMPARE(desk.line("txtvalue")->text(), q("x"));
        desk.line("txtname")->setFocus();
        desk.line("txtname")->end(false);
        desk.form->insertSymbols(0, q("y"));
        QCOMPARE(desk.line("txtname")->text(), q("ay"));
        desk.attribute()->reject();
        desk.form->insertSymbols(0, q("z")); // not open
        QCOMPARE(desk.line("txtname")->text(), q("ay"));

        desk.services.showSymbols = {};
        const Propfrm without(desk.services, desk.document, desk.model, desk.node);
        for (const QPushButton *each : without.findChildren<QPushButton *>(q("cmdsynbols")))
            QVERIFY(!each->isEnabled());
    }
};

QTEST_MAIN(AttributeTest)
#include "attribute_test.moc"
