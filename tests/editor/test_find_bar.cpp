// The find bar under a real editor, by keyboard.
#include "editor/find_bar.h"
#include "editor/find_memory.h"
#include "editor/find_services.h"
#include "editor/go_to_line.h"
#include "editor/macro_words.h"
#include "platform/system/settings_store.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QtTest>

using namespace editor;

namespace {

using S = QsciScintillaBase;

class Desk
{
public:
    explicit Desk(const QByteArray &text)
        : edit(new control::CodeEditor(&window)), bar(new FindBar(*edit, memory, &window))
    {
        auto *column = new QVBoxLayout(&window);
        column->addWidget(edit, 1);
        column->addWidget(bar);
        bindFindServices(*edit, *bar);
        edit->loadText(text);
        window.resize(900, 500);
        window.show();
        QApplication::setActiveWindow(&window);
        edit->setFocus();
    }

    // Keys as a user strikes them, to whatever has the focus.
    static void type(const char *text)
    {
        QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text));
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    template <typename T>
    T *control(const char *name) const
    {
        return window.findChild<T *>(QString::fromLatin1(name));
    }
    QComboBox *find() const { return control<QComboBox>("cboFind"); }
    QComboBox *replacement() const { return control<QComboBox>("cboReplace"); }
    void replaceAll() const { control<QPushButton>("cmdReplaceAll")->click(); }
    void tick(const char *name) const { control<QCheckBox>(name)->click(); }
    QString label(const char *name) const { return control<QLabel>(name)->text(); }
    // The selection as "start-end".
    QString selected() const
    {
        const control::ByteRange range = edit->selection();
        return QStringLiteral("%1-%2").arg(range.start).arg(range.end);
    }
    void select(long start, long end) const { edit->send(S::SCI_SETSEL, ulong(start), end); }
    bool isMarked(long position, int indicator = matchIndicator) const
    {
        return edit->send(S::SCI_INDICATORVALUEAT, ulong(indicator), position) != 0;
    }

    FindMemory memory;
    QWidget window;
    control::CodeEditor *edit;
    FindBar *bar;
};

// For the dialog that is opened next.
void answerGotoLine(const char *text)
{
    QTimer::singleShot(0, qApp, [text] {
        QWidget *dialog = QApplication::activeModalWidget();
        auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("txtLine"));
        QTest::keyClicks(field, QString::fromLatin1(text));
        QTest::keyClick(field, Qt::Key_Return);
        if (dialog->isVisible())
            QTest::keyClick(field, Qt::Key_Escape);
    });
}

} // namespace

class TestFindBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Going round, a repeated macro would do its work on what it has done.
    void playedFindEndsAtTheEnd()
    {
        struct Row
        {
            int find;
            long caret;
            const char *after, *why;
        };
        const Row rows[] = {{176, 2, "a aX aX",
                             "Repeated 2 of 9 times: then \"Find Next\" found nothing "
                             "more up to the end of the text."},
                            {174, 3, "aX aX a",
                             "Repeated 2 of 9 times: then \"Find Previous\" found nothing "
                             "more up to the start of the text."}};
        for (const auto &[find, caret, after, why] : rows) {
            Desk desk("a a a");
            QString ended;
            desk.edit->player().watch(
                {}, [&ended](const control::PlayReport &report) { ended = endText(report); });
            desk.press(Qt::Key_F, Qt::ControlModifier);
            desk.type("a");
            desk.press(Qt::Key_Escape);
            control::Macro macro = {{find, {}}, {201, {}}, {0, "X"}};
            if (find == 174)
                macro += {{199, {}}, {199, {}}};
            desk.edit->setServiceHandler(214, [&desk, macro] { return desk.edit->player().play(macro); });
            desk.select(caret, caret);
            desk.edit->setRepeatCount(9);
            desk.edit->execute(214);
            QCOMPARE(desk.edit->text(), QByteArray(after));
            QCOMPARE(ended, QString::fromLatin1(why));
        }
    }

    // One match far to the right does not leave the view shifted for those behind it, nor for what comes
    // after them; one that cannot be seen from the left stays in sight.
    void viewComesBackToTheLeft()
    {
        using S = QsciScintillaBase;
        const QByteArray far(900, ' ');
        Desk desk(far + "aim\naim\n" + far + "aim\n");
        const auto shifted = [&desk] { return desk.edit->send(S::SCI_GETXOFFSET) > 0; };
        Desk::press(Qt::Key_F, Qt::ControlModifier);
        Desk::type("aim");
        QVERIFY(shifted());
        Desk::press(Qt::Key_Escape);
        for (const bool farAway : {false, true, true, false}) {
            desk.edit->execute(176);
            QCOMPARE(shifted(), farAway);
        }
        desk.edit->placeCaret(0, 900);
        QVERIFY(shifted());
        desk.edit->replaceText("<tidy/>\n<other/>\n");
        QVERIFY(!shifted());
        desk.edit->replaceText(far + "\n\n");
        desk.edit->placeCaret(0, 900);
        desk.edit->placeCaret(1, 0);
        QVERIFY(!shifted());
    }

    void searchesWhileTyping()
    {
        Desk desk("one two\ntwo one\n");
        desk.edit->placeCaret(0, 1);
        Desk::press(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(desk.bar->isVisible() && !desk.replacement()->isVisible());
        Desk::type("ONE");
        QCOMPARE(desk.selected(), QStringLiteral("12-15"));
        QTRY_COMPARE(desk.label("lblCount"), QStringLiteral("2 of 2"));
        QTRY_VERIFY(desk.isMarked(0) && !desk.isMarked(12) && !desk.isMarked(4));
        Desk::press(Qt::Key_Return);
        QCOMPARE(desk.selected(), QStringLiteral("0-3"));
        QCOMPARE(desk.label("lblNotice"), QStringLiteral("Continued at the start"));
        Desk::press(Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(desk.selected(), QStringLiteral("12-15"));
        QCOMPARE(desk.label("lblNotice"), QStringLiteral("Continued at the end"));
        Desk::type("x");
        QCOMPARE(desk.label("lblNotice"), QStringLiteral("Nothing found"));
        QTRY_COMPARE(desk.label("lblCount"), QStringLiteral("No match"));
        Desk::press(Qt::Key_Backspace);
        Desk::press(Qt::Key_F3);
        QCOMPARE(desk.selected(), QStringLiteral("0-3"));
        Desk::press(Qt::Key_Escape);
        QVERIFY(!desk.bar->isVisible() && desk.edit->hasFocus() && !desk.isMarked(0));
        QCOMPARE(desk.selected(), QStringLiteral("0-3"));
        QCOMPARE(desk.memory.texts().value(0), QStringLiteral("ONE"));
        Desk::press(Qt::Key_F, Qt::ControlModifier);
        desk.edit->setFocus();
        Desk::press(Qt::Key_Escape); // in the text
        QVERIFY(!desk.bar->isVisible() && desk.edit->hasFocus());
    }

    // Without a match the view goes back along with the caret; options leave the focus where it is.
    void comesBackFromAfar()
    {
        Desk desk(QByteArray("x\n").repeated(500) + "far");
        Desk::press(Qt::Key_F, Qt::ControlModifier);
        Desk::type("far");
        QVERIFY(desk.edit->send(S::SCI_GETFIRSTVISIBLELINE) > 0);
        Desk::type("!");
        QCOMPARE(desk.edit->send(S::SCI_GETFIRSTVISIBLELINE), 0);
        for (const Qt::Key letter : {Qt::Key_X, Qt::Key_M, Qt::Key_W, Qt::Key_L}) {
            Desk::press(letter, Qt::AltModifier);
            QVERIFY(desk.find()->hasFocus() || desk.find()->lineEdit()->hasFocus());
        }
        QTRY_VERIFY(desk.control<QCheckBox>("chkExpression")->isChecked());
    }

    void worksWithoutTheBar()
    {
        Desk desk("a b a");
        QVERIFY(!desk.edit->execute(176));
        QVERIFY(desk.bar->isVisible());
        Desk::type("a");
        Desk::press(Qt::Key_Escape);
        QVERIFY(desk.edit->execute(174));
        QCOMPARE(desk.selected(), QStringLiteral("4-5"));
        QVERIFY(desk.edit->execute(176));
        QCOMPARE(desk.selected(), QStringLiteral("0-1"));
        desk.edit->loadText("b");
        QSignalSpy noted(desk.bar, &FindBar::noted);
        QVERIFY(!desk.edit->execute(176));
        QCOMPARE(noted.value(0).value(0).toString(), QStringLiteral("Nothing found."));
        QVERIFY(!desk.bar->isVisible());
    }

    void opensWithTheSelection()
    {
        struct Row
        {
            long end;
            bool expression, inSelection;
            const char *text;
        };
        for (const Row &row : {Row{0, false, false, ""}, Row{3, false, false, "a.b"},
                               Row{3, true, false, "a\\.b"}, Row{5, false, true, ""}}) {
            Desk desk("a.b\nc");
            desk.control<QCheckBox>("chkExpression")->setChecked(row.expression);
            desk.select(0, row.end);
            desk.edit->execute(178);
            QCOMPARE(desk.find()->currentText(), QString::fromLatin1(row.text));
            QCOMPARE(desk.control<QCheckBox>("chkInSelection")->isChecked(), row.inSelection);
            QCOMPARE(desk.isMarked(1, scopeIndicator), row.inSelection);
        }
    }

    void keepsToTheSelection()
    {
        Desk desk("x x\nx x\nx");
        desk.select(2, 7);
        desk.edit->execute(169);
        Desk::type("x");
        QTRY_COMPARE(desk.label("lblCount"), QStringLiteral("1 of 3"));
        desk.replacement()->setFocus();
        Desk::type("long");
        Desk::press(Qt::Key_A, Qt::AltModifier);
        QTRY_COMPARE(desk.edit->text(), QByteArray("x long\nlong long\nx"));
        // The range has grown with what is in it.
        desk.find()->setFocus();
        desk.find()->setEditText(QStringLiteral("long"));
        QTRY_COMPARE(desk.label("lblCount"), QStringLiteral("1 of 3"));
        desk.edit->undo();
        desk.find()->setEditText(QStringLiteral("x"));
        QTRY_COMPARE(desk.label("lblCount"), QStringLiteral("1 of 3"));
        desk.edit->loadText("x\nx\nx\nx");
        QTRY_VERIFY(!desk.isMarked(0, scopeIndicator));
        QTRY_VERIFY(desk.label("lblCount").endsWith(QStringLiteral("4 matches")));
    }

    void replaces()
    {
        struct Row
        {
            QByteArray before;
            const char *find, *replacement;
            QByteArray one, all;
        };
        const Row rows[] = {
            {"a-a-a", "a", "aa", "aa-a-a", "aa-aa-aa"},
            {"a-a-a", "a", "", "-a-a", "--"},
            {"a1 b2", "(\\w)(\\d)", "$2$1", "1a b2", "1a 2b"},
            {"a\r\nb", "[ab]", "$0\\n", "a\r\n\r\nb", "a\r\n\r\nb\r\n"},
            {"a\nb\n", "^", "- ", "- a\nb\n", "- a\n- b\n- "},
            {"a", "b", "c", "a", "a"},
        };
        for (const auto &[before, find, replacement, one, every] : rows)
            for (const bool all : {false, true}) {
                Desk desk(before);
                desk.edit->send(S::SCI_MARKERADD, 0, 1);
                Desk::press(Qt::Key_H, Qt::ControlModifier);
                desk.tick("chkExpression");
                desk.find()->setEditText(QString::fromLatin1(find));
                desk.replacement()->setEditText(QString::fromLatin1(replacement));
                desk.replacement()->setFocus();
                if (all)
                    desk.replaceAll();
                else
                    Desk::press(Qt::Key_Return);
                QCOMPARE(desk.edit->text(), all ? every : one);
                QVERIFY(desk.edit->send(S::SCI_MARKERNEXT, 0, 2) >= 0);
                QCOMPARE(desk.edit->canUndo(), one != before);
                desk.edit->undo();
                QCOMPARE(desk.edit->text(), before);
                QVERIFY(!desk.edit->canUndo());
            }
    }

    void replacesVeryMany()
    {
        QLocale::setDefault(QLocale(QLocale::English));
        Desk desk(QByteArray("ab\n").repeated(250'000));
        desk.edit->placeCaret(1000, 1);
        desk.edit->send(S::SCI_MARKERADD, 1000, 1);
        desk.edit->execute(169);
        Desk::type("b");
        desk.replacement()->setEditText(QStringLiteral("cd"));
        desk.replaceAll();
        QTRY_VERIFY(desk.label("lblNotice").endsWith(QStringLiteral("250,000 matches replaced")));
        QCOMPARE(desk.edit->text(), QByteArray("acd\n").repeated(250'000));
        QCOMPARE(desk.edit->caretLine(), 1000);
        QCOMPARE(desk.edit->send(S::SCI_MARKERNEXT, 0, 2), 1000);
        const long first = desk.edit->send(S::SCI_GETFIRSTVISIBLELINE);
        for (const int command : {100, 101, 100}) {
            QVERIFY(desk.edit->execute(command));
            QCOMPARE(desk.edit->caretLine(), 1000);
            QCOMPARE(desk.edit->send(S::SCI_GETFIRSTVISIBLELINE), first);
        }
        QVERIFY(!desk.edit->canUndo());
        QCOMPARE(desk.edit->send(S::SCI_MARKERNEXT, 0, 2), 1000);
    }

    void cancelsReplacing()
    {
        const QByteArray text = QByteArray("ab\n").repeated(3'000'000);
        Desk desk(text);
        desk.edit->execute(169);
        desk.tick("chkExpression");
        desk.find()->setEditText(QStringLiteral("(a)(b)"));
        desk.replacement()->setEditText(QStringLiteral("\\U$2$1"));
        desk.replaceAll();
        QVERIFY(desk.control<QPushButton>("cmdCancel")->hasFocus());
        Desk::press(Qt::Key_Escape);
        QCOMPARE(desk.label("lblNotice"), QStringLiteral("Nothing was replaced"));
        QVERIFY(desk.bar->isVisible() && !desk.edit->canUndo());
        QVERIFY(desk.edit->text() == text);
    }

    void tellsFaults()
    {
        Desk desk("aaa");
        desk.edit->execute(169);
        desk.tick("chkExpression");
        desk.find()->setFocus();
        Desk::type("(a");
        QCOMPARE(desk.label("lblNotice"), QStringLiteral("Missing closing parenthesis (at character 3)"));
        Desk::press(Qt::Key_Return);
        QVERIFY(desk.label("lblNotice").startsWith(QStringLiteral("Missing closing")));
        Desk::type(")");
        QCOMPARE(desk.label("lblNotice"), QString());
        desk.replacement()->setEditText(QStringLiteral("$2"));
        desk.replaceAll();
        QCOMPARE(desk.label("lblNotice"), QStringLiteral("The expression has no group 2 (at character 1)"));
        QCOMPARE(desk.edit->text(), QByteArray("aaa"));
    }

    void memoryOutlivesTheRun()
    {
        QTemporaryDir folder;
        settings::SettingsStore store(folder.filePath(QStringLiteral("s.ini")));
        FindMemory first(&store);
        for (int text = 0; text < 25; ++text)
            first.rememberText(QStringLiteral("t %1").arg(text));
        first.rememberText(QStringLiteral("t 10"));
        first.rememberReplacement(QStringLiteral("r,\"\\n"));
        first.setLast({QStringLiteral("x"), true, false, true});
        const FindMemory second(&store);
        QCOMPARE(second.texts().size(), 20);
        QCOMPARE(second.texts(), first.texts());
        QCOMPARE(second.texts().mid(0, 2), QStringList({QStringLiteral("t 10"), QStringLiteral("t 24")}));
        QCOMPARE(second.replacements(), first.replacements());
        QCOMPARE(second.last(), (control::SearchPattern{QString(), true, false, true}));
    }

    void readsLines()
    {
        std::vector<std::pair<const char *, std::optional<LinePlace>>> rows
            = {{"1", {{0, 0}}},    {" 10 : 3 ", {{9, 2}}}, {"+2", {{6, 0}}},
               {"-2:4", {{2, 3}}}, {"-99", {{0, 0}}},      {"+99999999999", {{9, 0}}}};
        for (const char *none : {"", "0", "11", "99999999999", "x", "3x", "+", "1:", "-"})
            rows.emplace_back(none, std::nullopt);
        for (const auto &[asked, place] : rows)
            QVERIFY2(placeAskedFor(QString::fromLatin1(asked), 4, 10) == place, asked);
    }

    void goesToALine()
    {
        Desk desk("a\nbcd\ne");
        answerGotoLine("2:3");
        Desk::press(Qt::Key_G, Qt::ControlModifier);
        QCOMPARE(desk.edit->caretLine(), 1);
        QCOMPARE(desk.edit->caretColumn(), 2);
        answerGotoLine("4"); // refused, and left with Esc
        desk.edit->execute(168);
        QCOMPARE(desk.edit->caretLine(), 1);
    }
};

QTEST_MAIN(TestFindBar)
#include "test_find_bar.moc"
