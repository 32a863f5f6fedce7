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
        desk.select(2);
        desk.press("cmdremove");
        QCOMPARE(desk.list()->selected().name, q("b"));
        QCOMPARE(enabled(), q("11110"));
        desk.find<QPushButton>("cmdatup")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(enabled(), q("11101"));
        QVERIFY(desk.list()->hasFocus()); // not some button that the next key would press
        const QPoint row = desk.list()->visualItemRect(desk.list()->currentItem()).center();
        QTest::mouseClick(desk.list()->viewport(), Qt::LeftButton, Qt::ControlModifier, row);
        QVERIFY(desk.list()->currentItem()->isSelected());
        desk.press("cmdconvert");
        QCOMPARE(enabled(), q("00000"));
    }

    void dialog()
    {
        const char *same = "id=1 b=2";
        const QString taken = q("The Attribute Name \"id\" already exist!");
        const std::tuple<const char *, const char *, const char *, bool, QString, const char *> rows[] = {
            {"cmdadd", "id", "x", false, taken, same},
            {"cmdadd", "ID", "x", true, {}, "id=1 b=2 ID=x"},
            {"cmdadd", "1abc", "x", false, {}, same},
            {"cmdmodify", "a b", "x", false, {}, same},
            {"cmdadd", "n", "\x01", false, {}, same},
            {"cmdadd", "", "x", true, {}, same},
            {"cmdmodify", "", "x", true, {}, same},
            {"cmdmodify", "b", "x", true, {}, "b=x b=2"},
            {"cmdmodify", "id", "<&\"'", true, {}, "id=<&\"' b=2"},
        };
        for (const auto &[button, name, value, closes, message, wanted] : rows) {
            Desk desk("<r id='1' b='2'/>");
            if (!message.isEmpty())
                desk.dialogs.answer(dialogs::Answer::Ok);
            desk.attributeBy(button, name, value);
            QCOMPARE(desk.attribute()->isVisible(), !closes);
            QCOMPARE(desk.dialogs.messages().size(), message.isEmpty() ? 0 : 1);
            if (!message.isEmpty()) {
                QCOMPARE(desk.dialogs.messages().first().text, message);
                QVERIFY(desk.line("txtname")->hasFocus());
            }
            const QString reasons
                = desk.find<QLabel>("lblname")->text() + desk.find<QLabel>("lblvalue")->text();
            QCOMPARE(reasons.isEmpty(), closes || !message.isEmpty());
            QStringList shown;
            for (const dom::AttributeEdit &row : desk.list()->rows())
                shown.append(row.name + u'=' + row.value);
            QCOMPARE(shown.join(u' '), q(wanted));
        }
    }

    // By keyboard: Tab takes the field's selection away, and makes one that nobody meant.
    void symbolsReplaceWhatWasSelected()
    {
        const std::pair<QList<Qt::Key>, const char *> rows[] = {
            {{Qt::Key_Home, Qt::Key_Right, Qt::Key_Right}, "Zcd"},
            {{}, "abcdZ"},
        };
        for (const auto &[selecting, value] : rows) {
            Desk desk("<r a='abcd'/>");
            desk.press("cmdmodify");
            Desk::turnTo(desk.attribute());
            for (const Qt::Key key : selecting)
                QTest::keyClick(desk.line("txtvalue"), key,
                                key == Qt::Key_Right ? Qt::ShiftModifier : Qt::NoModifier);
            QTest::keyClick(desk.line("txtvalue"), Qt::Key_Tab);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
            QCOMPARE(desk.askedFor.first, 0);
            desk.form->insertSymbols(0, q("Z"));
            QCOMPARE(desk.line("txtvalue")->text(), q(value));
        }
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
    }
};

QTEST_MAIN(AttributeTest)
#include "attribute_test.moc"
