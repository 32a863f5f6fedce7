#include "editor/character_moves.h"

#include <QtTest>

using namespace editor;

class TestCharacterMoves : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // A move of 0 is a beep; "^" before the key stands for Ctrl.
    void moves()
    {
        const std::tuple<const char *, GridMove, QList<std::pair<int, int>>> rows[] = {
            {"PageUp", GridMove::PageUp, {{64, 0}, {65, 1}}},
            {"^PageUp", GridMove::PageUp, {{224, 160}}},
            {"PageDown", GridMove::PageDown, {{160, 224}, {161, 0}}},
            {"^PageDown", GridMove::PageDown, {{1, 65}}},
            {"Up", GridMove::Up, {{32, 0}, {33, 1}}},
            {"^Up", GridMove::Up, {{224, 32}, {33, 1}, {32, 0}}},
            {"Down", GridMove::Down, {{192, 224}, {193, 0}}},
            {"^Down", GridMove::Down, {{1, 193}, {64, 224}, {193, 0}}},
            {"Home", GridMove::Home, {{40, 33}, {33, 0}, {64, 33}, {224, 193}}},
            {"^Home", GridMove::Home, {{224, 1}, {1, 0}}},
            {"End", GridMove::End, {{33, 64}, {64, 0}, {223, 224}}},
            {"^End", GridMove::End, {{64, 224}, {224, 0}}},
            {"Left", GridMove::Left, {{33, 32}, {1, 0}}},
            {"^Left", GridMove::Left, {{2, 1}, {1, 0}}},
            {"Right", GridMove::Right, {{32, 33}, {224, 0}}},
            {"^Right", GridMove::Right, {{223, 224}}},
        };
        for (const auto &[key, move, fromTo] : rows) {
            for (const auto &[from, to] : fromTo)
                QVERIFY2(moved(from, move, *key == '^').value_or(0) == to, key);
        }
    }

    void hasTheCharactersOfTheCodePage()
    {
        const std::tuple<int, uint, const char *> rows[] = {
            {0x20, 0x20, "Space, U+0020"},
            {0x41, 0x41, "Latin capital letter A, U+0041"},
            {0x80, 0x20ac, "Euro sign, U+20AC"},
            {0x81, 0x81, "Control character, U+0081"},
            {0x9f, 0x178, "Latin capital letter Y with diaeresis, U+0178"},
            {0xff, 0xff, "Latin small letter y with diaeresis, U+00FF"},
        };
        for (const auto &[code, unicode, name] : rows) {
            QCOMPARE(uint(character(code - 31).unicode()), unicode);
            QCOMPARE(characterName(code - 31), QLatin1String(name));
        }
    }
};

QTEST_APPLESS_MAIN(TestCharacterMoves)
#include "test_character_moves.moc"
