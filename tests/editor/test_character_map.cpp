#include "editor/character_grid.h"
#include "editor/character_map.h"

#include <QtTest>
#include <QtWidgets>

using namespace editor;
using namespace Qt::StringLiterals;

namespace {

// The map, shown, with a note of what it inserted.
class Shown
{
public:
    Shown() : map(nullptr, [this](const QString &text) { inserted.append(text); })
    {
        map.show();
        grid = map.findChild<CharacterGrid *>(u"picCharacterMap"_s);
        chars = map.findChild<QLineEdit *>(u"txtChars"_s);
    }

    QWidget *part(const char *name) const { return map.findChild<QWidget *>(QString::fromLatin1(name)); }
    void key(int key, Qt::KeyboardModifiers with = {}) const { QTest::keyClick(grid, Qt::Key(key), with); }
    void type(char16_t character, Qt::Key key = Qt::Key_unknown) const
    {
        QTest::sendKeyEvent(QTest::Click, grid, key, QChar(character), Qt::NoModifier);
    }
    void press(const char *name) const { QTest::mouseClick(part(name), Qt::LeftButton); }
    QPoint centre(int index) const { return grid->cellRect(index).center(); }

    QStringList inserted;
    frmCharacterMap map;
    CharacterGrid *grid;
    QLineEdit *chars;
};

} // namespace

class TestCharacterMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typingSelectsAndAdds()
    {
        Shown shown;
        QCOMPARE(shown.grid->current(), 1);
        QTest::keyClicks(shown.grid, u"A"_s);
        QCOMPARE(shown.grid->current(), 34);
        QVERIFY(shown.part("picLarge")->isVisible());
        QTest::keyClicks(shown.grid, u"a "_s);
        QCOMPARE(shown.chars->text(), u"Aa "_s);
        QCOMPARE(shown.grid->current(), 1);
        shown.chars->setSelection(0, 2);
        shown.type(0xe9);
        QCOMPARE(shown.chars->text(), u"\u00e9 "_s);
        // What was selected in the field is replaced from the grid.
        shown.chars->setFocus();
        shown.chars->setSelection(1, 1);
        QTest::mouseDClick(shown.grid, Qt::LeftButton, {}, shown.centre(34));
        QCOMPARE(shown.chars->text(), u"\u00e9A"_s);
        shown.chars->setText(u"\u00e9 "_s);
        shown.type(0xe9);
        shown.chars->backspace();
        // What the map lacks is not added.
        shown.type(0x416);
        QVERIFY(!shown.part("picLarge")->isVisible());
        shown.type(127, Qt::Key_Delete);
        shown.type(8, Qt::Key_Backspace);
        QCOMPARE(shown.chars->text(), u"\u00e9 "_s);
        QCOMPARE(shown.grid->current(), indexOfCharacter(QChar(0xe9)));
    }

    void keysMove()
    {
        Shown shown;
        shown.grid->setCurrent(161);
        shown.key(Qt::Key_PageDown); // a beep
        QCOMPARE(shown.grid->current(), 161);
        shown.key(Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(shown.grid->current(), 1);
        shown.key(Qt::Key_Right);
        shown.key(Qt::Key_Return);
        QCOMPARE(shown.chars->text(), u"!"_s);
        QVERIFY(shown.map.isVisible());
    }

    void mouseHoldsAndPicks()
    {
        Shown shown;
        QWidget *large = shown.part("picLarge");
        QTest::mousePress(shown.grid, Qt::LeftButton, {}, shown.centre(40));
        QCOMPARE(shown.grid->current(), 40);
        QVERIFY(large->isVisible() && shown.part("picShadow")->isVisible());
        QCOMPARE(shown.grid->cursor().shape(), Qt::BlankCursor);
        QTest::mouseMove(shown.grid, QPoint(shown.grid->width() + 50, -50));
        QTRY_COMPARE(shown.grid->current(), 32);
        QVERIFY(shown.map.rect().contains(large->geometry()));
        QTest::mouseRelease(shown.grid, Qt::LeftButton, {}, QPoint(shown.grid->width() + 50, -50));
        QVERIFY(!large->isVisible());
        QCOMPARE(shown.grid->cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(shown.chars->text(), QString());
        QTest::mouseDClick(shown.grid, Qt::LeftButton, {}, shown.centre(34));
        QCOMPARE(shown.chars->text(), u"A"_s);
    }

    void insertHandsOverTheWholeText()
    {
        const std::tuple<QString, const char *, int> rows[]
            = {{u"\u00e9 b"_s, "cmdInsert", 1}, {{}, "cmdInsert", 0}, {u"a"_s, "cmdcancel", 0}};
        for (const auto &[text, button, count] : rows) {
            Shown shown;
            shown.chars->setText(text);
            shown.press(button);
            QVERIFY(!shown.map.isVisible());
            QCOMPARE(shown.inserted, QStringList(count, text));
        }
    }

    void charactersHaveNames()
    {
        Shown shown;
        const QString name = u"Latin small letter e with acute, U+00E9"_s;
        shown.grid->setCurrent(indexOfCharacter(QChar(0xe9)));
        QCOMPARE(shown.map.findChild<QLabel *>(u"lblName"_s)->text(), name);
        QAccessibleInterface *grid = QAccessible::queryAccessibleInterface(shown.grid);
        QCOMPARE(grid->childCount(), 224);
        QCOMPARE(grid->focusChild()->text(QAccessible::Name), name);
        QCOMPARE(grid->indexOfChild(grid->focusChild()), shown.grid->current() - 1);
        QVERIFY(grid->focusChild()->state().selected);
    }
};

QTEST_MAIN(TestCharacterMap)
#include "test_character_map.moc"
