#include "editor/character_grid.h"
#include "editor/character_map.h"
#include "editor/large_character.h"

#include <QAccessible>
#include <QComboBox>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

using namespace editor;

namespace {

// The map, shown, with a note of what it inserted.
class Shown
{
public:
    Shown() : map(nullptr, [this](const QString &text) { inserted.append(text); })
    {
        map.show();
        grid = map.findChild<CharacterGrid *>(QStringLiteral("picCharacterMap"));
        chars = map.findChild<QLineEdit *>(QStringLiteral("txtChars"));
    }

    QWidget *part(const char *name) const { return map.findChild<QWidget *>(QString::fromLatin1(name)); }
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
        QTest::keyClick(shown.grid, 'A', Qt::ShiftModifier);
        QCOMPARE(shown.grid->current(), 34);
        QVERIFY(shown.part("picLarge")->isVisible());
        QTest::keyClick(shown.grid, 'a');
        QTest::keyClick(shown.grid, Qt::Key_Space);
        QCOMPARE(shown.chars->text(), QStringLiteral("Aa "));
        QCOMPARE(shown.grid->current(), 1);
        shown.chars->setSelection(0, 2);
        QTest::sendKeyEvent(QTest::Click, shown.grid, Qt::Key_unknown, QChar(0xe9), Qt::NoModifier);
        QCOMPARE(shown.chars->text(), QString(QChar(0xe9)) + u' ');
    }

    void whatTheMapLacksIsNotAdded()
    {
        Shown shown;
        QTest::keyClick(shown.grid, 'b');
        QTest::sendKeyEvent(QTest::Click, shown.grid, Qt::Key_unknown, QChar(0x416), Qt::NoModifier);
        QCOMPARE(shown.chars->text(), QStringLiteral("b"));
        QVERIFY(!shown.part("picLarge")->isVisible());
        for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Backspace})
            QTest::sendKeyEvent(QTest::Click, shown.grid, key, QChar(key == Qt::Key_Delete ? 127 : 8), {});
        QCOMPARE(shown.chars->text(), QStringLiteral("b"));
        QCOMPARE(shown.grid->current(), indexOfCharacter(u'b'));
    }

    void keysMove()
    {
        Shown shown;
        shown.grid->setCurrent(160);
        QTest::keyClick(shown.grid, Qt::Key_PageDown);
        QCOMPARE(shown.grid->current(), 224);
        shown.grid->setCurrent(161);
        QTest::keyClick(shown.grid, Qt::Key_PageDown);
        QCOMPARE(shown.grid->current(), 161);
        QTest::keyClick(shown.grid, Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(shown.grid->current(), 1);
        QTest::keyClick(shown.grid, Qt::Key_Right);
        QTest::keyClick(shown.grid, Qt::Key_Return);
        QCOMPARE(shown.chars->text(), QStringLiteral("!"));
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
        QCOMPARE(shown.chars->text(), QStringLiteral("A"));
    }

    void insertHandsOverTheWholeText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QStringList>("inserted");
        const QString text = QStringLiteral("%1 b").arg(QChar(0xe9));
        QTest::newRow("insert") << text << QByteArray("cmdInsert") << QStringList{text};
        QTest::newRow("insert nothing") << QString() << QByteArray("cmdInsert") << QStringList();
        QTest::newRow("cancel") << text << QByteArray("cmdcancel") << QStringList();
    }
    void insertHandsOverTheWholeText()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, button);
        Shown shown;
        shown.chars->setText(text);
        shown.press(button);
        QVERIFY(!shown.map.isVisible());
        QTEST(shown.inserted, "inserted");
    }

    void fontsAreTheSystems()
    {
        Shown shown;
        auto *fonts = shown.map.findChild<QComboBox *>(QStringLiteral("cboFont"));
        QCOMPARE(fonts->count(), QFontDatabase::families().size());
        QCOMPARE(fonts->currentText(), shown.grid->fontFamily());
        fonts->setCurrentIndex(fonts->count() - 1);
        QCOMPARE(shown.grid->fontFamily(), fonts->itemText(fonts->count() - 1));
    }

    void charactersHaveNames()
    {
        Shown shown;
        const QString name = QStringLiteral("Latin small letter e with acute, U+00E9");
        shown.grid->setCurrent(indexOfCharacter(QChar(0xe9)));
        QCOMPARE(shown.map.findChild<QLabel *>(QStringLiteral("lblName"))->text(), name);
        QAccessibleInterface *grid = QAccessible::queryAccessibleInterface(shown.grid);
        QCOMPARE(grid->childCount(), 224);
        QCOMPARE(grid->focusChild()->text(QAccessible::Name), name);
        QCOMPARE(grid->indexOfChild(grid->focusChild()), shown.grid->current() - 1);
        QVERIFY(grid->focusChild()->state().selected);
    }

    void enlargedViewStaysInside_data()
    {
        QTest::addColumn<QRect>("cell");
        QTest::addColumn<QPoint>("place");
        QTest::newRow("above") << QRect(100, 100, 20, 30) << QPoint(80, 8);
        QTest::newRow("below") << QRect(100, 50, 20, 30) << QPoint(80, 82);
        QTest::newRow("left edge") << QRect(0, 100, 20, 30) << QPoint(0, 8);
        QTest::newRow("right edge") << QRect(280, 100, 20, 30) << QPoint(236, 8);
    }
    void enlargedViewStaysInside()
    {
        QFETCH(QRect, cell);
        QTEST(largePlace(cell, QSize(60, 90), QRect(0, 0, 300, 200)).topLeft(), "place");
    }
};

QTEST_MAIN(TestCharacterMap)
#include "test_character_map.moc"
