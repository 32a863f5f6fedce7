#include "editor/colour_button.h"
#include "editor/colour_classes.h"
#include "editor/key_assignment.h"
#include "editor/keys_edit.h"
#include "editor/properties_dialog.h"
#include "editor/sample_editor.h"
#include "platform/control/code_editor.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QtTest>
#include <set>

using namespace editor;
using control::EditorProperties;

namespace {

enum Page
{
    Colours,
    Fonts,
    Options,
    LanguageOfText,
    Keyboard,
    Pages
};

const QKeySequence ctrlD(Qt::CTRL | Qt::Key_D);

// The dialog over an editor, on a page.
class Opened
{
public:
    explicit Opened(Page page)
        : dialog(editor, nullptr), told(&editor, &control::CodeEditor::propertiesChanged)
    {
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        dialog.findChild<QTabWidget *>()->setCurrentIndex(page);
    }

    template <typename Control>
    Control *find(const char *name)
    {
        Control *found = dialog.findChild<QTabWidget *>()->currentWidget()->findChild<Control *>(
            QString::fromLatin1(name));
        return found != nullptr ? found : dialog.findChild<Control *>(QString::fromLatin1(name));
    }
    void press(const char *name) { QTest::keyClick(find<QAbstractButton>(name), Qt::Key_Space); }
    void chooseCommand(int command)
    {
        auto *list = find<QTreeWidget>("lstCommands");
        list->setCurrentItem(list->topLevelItem(command - 100));
    }
    const QList<QKeySequence> keysOf(int command) { return editor.shortcuts().shortcuts(command); }

    control::CodeEditor editor;
    PropertiesDialog dialog;
    QSignalSpy told;
};

void typeKeys(QWidget *into, const QKeySequence &keys)
{
    into->setFocus();
    for (int stroke = 0; stroke < keys.count(); ++stroke)
        QTest::keyClick(into, keys[uint(stroke)].key(), keys[uint(stroke)].keyboardModifiers());
}

QChar mnemonicOf(const QString &text)
{
    const QKeySequence keys = QKeySequence::mnemonic(text);
    return keys.isEmpty() ? QChar() : QChar(keys[0].key());
}

QString captionOf(const QWidget *widget)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->text();
    const auto *label = qobject_cast<const QLabel *>(widget);
    return label != nullptr && label->buddy() != nullptr ? label->text() : QString();
}

// What the user does on a page, and whether the editor has it.
struct Case
{
    const char *name;
    Page page;
    void (*act)(Opened &);
    bool (*done)(const control::CodeEditor &);
};

const Case cases[] = {
    {"colour", Colours,
     [](Opened &on) {
         on.find<QListWidget>("lstColours")->setCurrentRow(5);
         on.press("cmdInk");
         auto *chooser = on.dialog.findChild<QColorDialog *>();
         chooser->setCurrentColor(QColor(1, 2, 3));
         chooser->accept();
     },
     [](const control::CodeEditor &editor) {
         return editor.properties().colours[control::KeywordInk] == 0x030201;
     }},
    {"colour of the palette", Colours,
     [](Opened &on) {
         on.find<QListWidget>("lstColours")->setCurrentRow(17);
         QTest::keyClick(on.find<QCheckBox>("chkFollowsGround"), Qt::Key_Space);
     },
     [](const control::CodeEditor &editor) {
         return editor.properties().colours[control::HighlightGround] == control::noColour;
     }},
    {"size", Fonts, [](Opened &on) { QTest::keyClick(on.find<QDoubleSpinBox>("spnSize"), Qt::Key_Down); },
     [](const control::CodeEditor &editor) { return editor.properties().font.size == 11.0; }},
    {"strike-through", Fonts,
     [](Opened &on) { QTest::keyClick(on.find<QCheckBox>("chkStrikethrough"), Qt::Key_Space); },
     [](const control::CodeEditor &editor) { return editor.properties().font.strikethrough; }},
    {"style", Fonts,
     [](Opened &on) {
         auto *styles = on.find<QTableWidget>("tblStyles");
         styles->setCurrentCell(control::CommentStyle, 0);
         QTest::keyClick(styles, Qt::Key_Space);
     },
     [](const control::CodeEditor &editor) {
         return editor.properties().styles[control::CommentStyle] == (control::Bold | control::Italic);
     }},
    {"numbering", Options,
     [](Opened &on) {
         QTest::keyClick(on.find<QComboBox>("cboNumberingStyle"), Qt::Key_Down);
         QTest::keyClick(on.find<QSpinBox>("spnNumberingStart"), Qt::Key_Down);
     },
     [](const control::CodeEditor &editor) {
         return editor.properties().numberingStyle == 2 && editor.properties().numberingStart == 0;
     }},
    {"typing", Options,
     [](Opened &on) { QTest::keyClick(on.find<QCheckBox>("chkCloseOnBracket"), Qt::Key_Space); },
     [](const control::CodeEditor &editor) { return editor.properties().closeOnBracket; }},
    {"keys", Keyboard,
     [](Opened &on) {
         on.chooseCommand(131);
         typeKeys(on.find<KeysEdit>("txtKeys"),
                  QKeySequence(Qt::CTRL | Qt::Key_K, QKeyCombination(Qt::Key_S)));
         QTest::keyClick(on.find<KeysEdit>("txtKeys"), Qt::Key_Return);
     },
     [](const control::CodeEditor &editor) {
         return editor.library()->shortcuts.command(
                    QKeySequence(Qt::CTRL | Qt::Key_K, QKeyCombination(Qt::Key_S)))
             == 131;
     }},
};

} // namespace

Q_DECLARE_METATYPE(const Case *)

class TestPropertiesDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choices_data()
    {
        QTest::addColumn<const Case *>("row");
        for (const Case &row : cases)
            QTest::newRow(row.name) << &row;
    }

    // Reaches the editor with Apply, not with Cancel, and is told once; the same again changes nothing.
    void choices()
    {
        QFETCH(const Case *, row);
        Opened on(row->page);
        row->act(on);
        QVERIFY(!row->done(on.editor));
        on.dialog.reject();
        QVERIFY(!row->done(on.editor));
        on.dialog.show();
        QVERIFY(!on.find<QPushButton>("cmdApply")->isEnabled());
        row->act(on);
        QVERIFY(on.find<QPushButton>("cmdApply")->isEnabled());
        on.press("cmdApply");
        QVERIFY(row->done(on.editor));
        QCOMPARE(on.told.count(), 1);
        QVERIFY(!on.find<QPushButton>("cmdApply")->isEnabled());
        on.dialog.accept();
        QCOMPARE(on.told.count(), 1);
        on.dialog.show();
        on.press("cmdDefaults");
        on.dialog.accept();
        QVERIFY(!row->done(on.editor));
        QCOMPARE(on.editor.properties(), control::CodeEditor().properties());
        QCOMPARE(on.told.count(), 2);
    }

    void manyChoicesAreToldOnce()
    {
        Opened on(Fonts);
        for (const Case &row : cases) {
            on.find<QTabWidget>("tabPages")->setCurrentIndex(row.page);
            row.act(on);
        }
        on.dialog.accept();
        for (const Case &row : cases)
            QVERIFY2(row.done(on.editor), row.name);
        QCOMPARE(on.told.count(), 1);
    }

    // What was kept and no control can show exactly stays, unless its own control is used.
    void keepsWhatItCannotShow()
    {
        Opened on(Options);
        EditorProperties odd = on.editor.properties();
        odd.font.size = 11.2345;
        odd.numberingStyle = 7;
        odd.numberingStart = std::numeric_limits<qint32>::min();
        odd.styles[control::TextStyle] = 12;
        odd.colours[control::TextInk] = -2147483640;
        on.editor.setProperties(odd);
        for (const Page page : {Colours, Fonts, Options}) {
            on.dialog.hide();
            on.dialog.show();
            on.find<QTabWidget>("tabPages")->setCurrentIndex(page);
        }
        QVERIFY(!on.find<QPushButton>("cmdApply")->isEnabled());
        on.press("chkRenameBoth");
        on.dialog.accept();
        odd.renameBoth = false;
        QCOMPARE(on.editor.properties(), odd);
    }

    void facesAreOfFixedPitch()
    {
        Opened on(Fonts);
        const auto *faces = on.find<QComboBox>("cboFace");
        QVERIFY(faces->count() > 0);
        for (int face = 0; face < faces->count(); ++face)
            QVERIFY2(QFontInfo(QFont(faces->itemText(face))).fixedPitch(), qPrintable(faces->itemText(face)));
    }

    void languageBelongsToTheText()
    {
        Opened on(LanguageOfText);
        QVERIFY(!on.find<QPushButton>("cmdDefaults")->isEnabled());
        on.press("optHtml");
        QCOMPARE(on.editor.language(), control::Language::Plain);
        on.press("cmdApply");
        QCOMPARE(on.editor.language(), control::Language::Html);
        QCOMPARE(on.told.count(), 0);
    }

    void sampleShowsEverySlot()
    {
        std::set<int> shown;
        const QList<QByteArray> lines = QByteArray(sampleText).split('\n');
        for (const ColourClass &row : colourClasses()) {
            shown.insert({row.ink, row.ground});
            QVERIFY2(lines.value(row.line).contains(row.piece), qPrintable(row.label()));
        }
        shown.erase(-1);
        QCOMPARE(int(shown.size()), control::colourSlots);
    }

    // Every class with a colour of its own is coloured by it in its piece of the sample.
    void sampleShowsTheDraft()
    {
        SampleEditor sample;
        EditorProperties properties;
        for (int slot = 0; slot < control::colourSlots; ++slot)
            properties.colours[size_t(slot)] = 0x102030 + slot;
        sample.setProperties(properties);
        for (const ColourClass &row : colourClasses()) {
            const QByteArray piece(row.piece);
            if (row.ink < 0 || piece.isEmpty())
                continue;
            const QByteArray line = QByteArray(sampleText).split('\n').at(row.line);
            const long at = sample.send(QsciScintillaBase::SCI_POSITIONFROMLINE, ulong(row.line))
                + line.indexOf(piece) + piece.size() / 2;
            sample.send(QsciScintillaBase::SCI_COLOURISE, 0, -1);
            const long style = sample.send(QsciScintillaBase::SCI_GETSTYLEAT, ulong(at)) & 0xFF;
            QVERIFY2(sample.send(QsciScintillaBase::SCI_STYLEGETFORE, ulong(style)) == 0x102030 + row.ink,
                     qPrintable(QStringLiteral("%1, style %2").arg(row.label()).arg(style)));
        }
    }

    void conflictIsToldAndTakesTheKey()
    {
        Opened on(Keyboard);
        on.chooseCommand(131);
        typeKeys(on.find<KeysEdit>("txtKeys"), ctrlD);
        QVERIFY(on.find<QLabel>("lblState")
                    ->text()
                    .startsWith(QStringLiteral("Ctrl+D is used by Duplicate Selection or Line.")));
        on.press("cmdAssign");
        on.dialog.accept();
        QCOMPARE(on.keysOf(131), QList<QKeySequence>{ctrlD});
        QCOMPARE(on.keysOf(114), QList<QKeySequence>());
    }

    void conflicts_data()
    {
        QTest::addColumn<QKeySequence>("keys");
        QTest::addColumn<QList<int>>("losers");
        QTest::newRow("free") << QKeySequence(Qt::CTRL | Qt::Key_K) << QList<int>();
        QTest::newRow("own") << QKeySequence(Qt::CTRL | Qt::Key_Z) << QList<int>();
        QTest::newRow("used") << ctrlD << QList<int>{114};
        QTest::newRow("behind a used one")
            << QKeySequence(Qt::CTRL | Qt::Key_D, QKeyCombination(Qt::Key_X)) << QList<int>{114};
    }
    void conflicts()
    {
        QFETCH(QKeySequence, keys);
        QFETCH(QList<int>, losers);
        control::ShortcutTable table;
        QList<int> found;
        for (const KeyConflict &conflict : keyConflicts(table, 100, keys))
            found.append(conflict.command);
        QCOMPARE(found, losers);
        assignKeys(table, 100, {keys});
        QVERIFY(keyConflicts(table, 100, keys).isEmpty());
        // One stroke alone takes the longer keys it begins.
        assignKeys(table, 101, {QKeySequence(keys[0])});
        QVERIFY(table.shortcuts(100).isEmpty());
    }

    void clearAndReset()
    {
        Opened on(Keyboard);
        on.chooseCommand(100);
        on.press("cmdClear");
        on.press("cmdApply");
        QCOMPARE(on.keysOf(100), QList<QKeySequence>());
        on.chooseCommand(100);
        on.press("cmdReset");
        on.press("cmdApply");
        QCOMPARE(on.keysOf(100), control::ShortcutTable().shortcuts(100));
        QCOMPARE(on.told.count(), 2);
    }

    void filter_data()
    {
        QTest::addColumn<QString>("search");
        QTest::addColumn<QString>("first");
        QTest::addColumn<int>("count");
        QTest::newRow("name") << QStringLiteral("sort l") << QStringLiteral("Sort Lines") << 2;
        QTest::newRow("key") << QStringLiteral("ctrl+d") << QStringLiteral("Delete to Next Word") << 3;
        QTest::newRow("none") << QStringLiteral("xyzzy") << QString() << 0;
    }
    void filter()
    {
        QFETCH(QString, search);
        QFETCH(QString, first);
        QFETCH(int, count);
        Opened on(Keyboard);
        QTest::keyClicks(on.find<QLineEdit>("txtSearch"), search);
        const auto *list = on.find<QTreeWidget>("lstCommands");
        int shown = 0;
        for (int row = 0; row < list->topLevelItemCount(); ++row)
            shown += list->topLevelItem(row)->isHidden() ? 0 : 1;
        QCOMPARE(shown, count);
        QCOMPARE(count == 0 ? QString() : list->currentItem()->text(0), first);
        QCOMPARE(on.find<KeysEdit>("txtKeys")->isEnabled(), count > 0);
    }

    void fieldRecordsOrLetsGo()
    {
        Opened on(Keyboard);
        on.chooseCommand(131);
        auto *keys = on.find<KeysEdit>("txtKeys");
        typeKeys(keys, QKeySequence(Qt::Key_A));
        QVERIFY(keys->keys().isEmpty());
        typeKeys(keys, QKeySequence(Qt::Key_Space));
        QTest::keyClick(keys, Qt::Key_Tab);
        QCOMPARE(keys->keys(), QKeySequence(Qt::Key_Tab));
        QVERIFY(keys->hasFocus());
        QTRY_VERIFY(!keys->recording());
        QTest::keyClick(keys, Qt::Key_Tab);
        QVERIFY(on.find<QPushButton>("cmdAssign")->hasFocus());
        keys->setFocus();
        QTest::keyClick(keys, Qt::Key_Escape);
        QVERIFY(!on.dialog.isVisible());
    }

    // Everything that takes the focus can be named and is reached by Tab; no letter leads to two controls.
    void controls_data()
    {
        QTest::addColumn<int>("page");
        const char *names[] = {"colours", "fonts", "options", "language", "keyboard"};
        for (int page = 0; page < Pages; ++page)
            QTest::newRow(names[page]) << page;
    }
    void controls()
    {
        QFETCH(int, page);
        Opened on{Page(page)};
        std::set<QWidget *> reached;
        on.find<QPushButton>("OKButton")->setFocus();
        for (int i = 0; i < 60; ++i) {
            reached.insert(QApplication::focusWidget());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QMap<QChar, int> mnemonics;
        const auto *tabs = on.find<QTabWidget>("tabPages");
        for (int tab = 0; tab < tabs->count(); ++tab)
            ++mnemonics[mnemonicOf(tabs->tabText(tab))];
        for (QWidget *widget : on.dialog.findChildren<QWidget *>()) {
            if (!widget->isVisible())
                continue;
            if (const QChar letter = mnemonicOf(captionOf(widget)); !letter.isNull())
                ++mnemonics[letter];
            if (reached.contains(widget) && qobject_cast<QTabBar *>(widget) == nullptr) {
                QVERIFY2(!widget->objectName().isEmpty(), widget->metaObject()->className());
                QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(widget);
                QVERIFY2(!spoken->text(QAccessible::Name).isEmpty(), qPrintable(widget->objectName()));
            }
        }
        for (auto letter = mnemonics.cbegin(); letter != mnemonics.cend(); ++letter)
            QVERIFY2(*letter == 1, qPrintable(QString(letter.key())));
        for (QWidget *widget : tabs->currentWidget()->findChildren<QWidget *>())
            if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus)
                && widget->focusProxy() == nullptr && !qobject_cast<QRadioButton *>(widget)
                && !widget->objectName().startsWith(QStringLiteral("qt_")))
                QVERIFY2(reached.contains(widget), qPrintable(widget->objectName()));
    }
};

QTEST_MAIN(TestPropertiesDialog)
#include "test_properties_dialog.moc"
