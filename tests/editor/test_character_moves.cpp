#include "editor/character_moves.h"

#include <QSet>
#include <QtTest>

using namespace editor;

class TestCharacterMoves : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // A move of 0 is a beep; "^" before the key stands for Ctrl.
    void moves_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        const auto row = [](const char *key, int from, int to) {
            QTest::addRow("%s from %d", key, from) << QString::fromLatin1(key) << from << to;
        };
        row("PageUp", 64, 0);
        row("PageUp", 65, 1);
        row("^PageUp", 224, 160);
        row("PageDown", 160, 224);
        row("PageDown", 161, 0);
        row("^PageDown", 1, 65);
        row("Up", 32, 0);
        row("Up", 33, 1);
        row("^Up", 224, 32);
        row("^Up", 33, 1);
        row("^Up", 32, 0);
        row("Down", 192, 224);
        row("Down", 193, 0);
        row("^Down", 1, 193);
        row("^Down", 64, 224);
        row("^Down", 193, 0);
        row("Home", 40, 33);
        row("Home", 33, 0);
        row("Home", 64, 33);
        row("Home", 224, 193);
        row("^Home", 224, 1);
        row("^Home", 1, 0);
        row("End", 33, 64);
        row("End", 64, 0);
        row("End", 223, 224);
        row("^End", 64, 224);
        row("^End", 224, 0);
        row("Left", 33, 32);
        row("Left", 1, 0);
        row("^Left", 2, 1);
        row("^Left", 1, 0);
        row("Right", 32, 33);
        row("Right", 224, 0);
        row("^Right", 223, 224);
    }
    void moves()
    {
        QFETCH(QString, key);
        QFETCH(int, from);
        const bool ctrl = key.startsWith(u'^');
        const QStringList names{QStringLiteral("PageUp"), QStringLiteral("PageDown"), QStringLiteral("Up"),
                                QStringLiteral("Down"),   QStringLiteral("Home"),     QStringLiteral("End"),
                                QStringLiteral("Left"),   QStringLiteral("Right")};
        const auto number = names.indexOf(ctrl ? key.mid(1) : key);
        QVERIFY(number >= 0);
        QTEST(moved(from, static_cast<GridMove>(number), ctrl).value_or(0), "to");
    }

    void hasTheCharactersOfTheCodePage_data()
    {
        QTest::addColumn<int>("code"); // 32 to 255
        QTest::addColumn<uint>("character");
        QTest::addColumn<QString>("name");
        const auto row = [](int code, uint character, const char *name) {
            QTest::addRow("%d", code) << code << character << QString::fromLatin1(name);
        };
        row(0x20, 0x20, "Space, U+0020");
        row(0x41, 0x41, "Latin capital letter A, U+0041");
        row(0x80, 0x20ac, "Euro sign, U+20AC");
        row(0x81, 0x81, "Control character, U+0081");
        row(0x9d, 0x9d, "Control character, U+009D");
        row(0x9f, 0x178, "Latin capital letter Y with diaeresis, U+0178");
        row(0xe9, 0xe9, "Latin small letter e with acute, U+00E9");
        row(0xff, 0xff, "Latin small letter y with diaeresis, U+00FF");
    }
    void hasTheCharactersOfTheCodePage()
    {
        QFETCH(int, code);
        QTEST(uint(character(code - 31).unicode()), "character");
        QTEST(characterName(code - 31), "name");
    }

    void findsEveryCharacter()
    {
        int controls = 0;
        for (int index = 1; index <= characterCount; ++index) {
            QCOMPARE(indexOfCharacter(character(index)), index);
            QCOMPARE(isControl(index), character(index).category() == QChar::Other_Control);
            controls += isControl(index) ? 1 : 0;
        }
        QCOMPARE(controls, 6);
        QCOMPARE(indexOfCharacter(QChar(0x416)), 0);
    }
};

QTEST_APPLESS_MAIN(TestCharacterMoves)
#include "test_character_moves.moc"
