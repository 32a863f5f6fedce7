#include "editor/colour_classes.h"
#include "editor/key_assignment.h"
#include "editor/keys_edit.h"
#include "editor/properties_dialog.h"
#include "platform/control/code_editor.h"

#include <QtTest>
#include <QtWidgets>
#include <set>

using namespace editor;
using control::EditorProperties;
using namespace Qt::StringLiterals;

namespace {

enum Page
{
    Colours,
    Fonts,
    Options,
    LanguageOfText,
    Keyboard
};

const QKeySequence ctrlD(Qt::CTRL | Qt::Key_D);
const QKeySequence ctrlKS(Qt::CTRL | Qt::Key_K, QKeyCombination(Qt::Key_S));

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
    void key(const char *name, Qt::Key key) { QTest::keyClick(find<QWidget>(name), key); }
    void press(const char *name) { key(name, Qt::Key_Space); }
    bool canApply() { return find<QPushButton>("cmdApply")->isEnabled(); }
    const EditorProperties &properties() const { return editor.properties(); }
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

// What the user does on a page, and whether the editor has it.
struct Case
{
    const char *name;
    Page page;
    void (*act)(Opened &);
    bool (*done)(Opened &);
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
     [](Opened &on) { return on.properties().colours[control::KeywordInk] == 0x030201; }},
    {"colour of the palette", Colours,
     [](Opened &on) {
         on.find<QListWidget>("lstColours")->setCurrentRow(17);
         on.press("chkFollowsGround");
     },
     [](Opened &on) { return on.properties().colours[control::HighlightGround] == control::noColour; }},
    {"size", Fonts, [](Opened &on) { on.key("spnSize", Qt::Key_Down); },
     [](Opened &on) { return on.properties().font.size == 11.0; }},
    {"strike-through", Fonts, [](Opened &on) { on.press("chkStrikethrough"); },
     [](Opened &on) { return on.properties().font.strikethrough; }},
    {"style", Fonts,
     [](Opened &on) {
         on.find<QTableWidget>("tblStyles")->setCurrentCell(control::CommentStyle, 0);
         on.press("tblStyles");
     },
     [](Opened &on) {
         return on.properties().styles[control::CommentStyle] == (control::Bold | control::Italic);
     }},
    {"numbering", Options,
     [](Opened &on) {
         on.key("cboNumberingStyle", Qt::Key_Down);
         on.key("spnNumberingStart", Qt::Key_Down);
     },
     [](Opened &on) { return on.properties().numberingStyle == 2 && on.properties().numberingStart == 0; }},
    {"typing", Options, [](Opened &on) { on.press("chkCloseOnBracket"); },
     [](Opened &on) { return on.properties().closeOnBracket; }},
    {"keys", Keyboard,
     [](Opened &on) {
         on.chooseCommand(131);
         typeKeys(on.find<KeysEdit>("txtKeys"), ctrlKS);
         on.key("txtKeys", Qt::Key_Return);
     },
     [](Opened &on) { return on.editor.library()->shortcuts.command(ctrlKS) == 131; }},
};

void recordOnly(Opened &on)
{
    on.chooseCommand(131);
    typeKeys(on.find<KeysEdit>("txtKeys"), ctrlKS);
}

} // namespace

class TestPropertiesDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Reaches the editor with Apply, not with Cancel, and is told once; the same again changes nothing.
    void choices()
    {
        for (const Case &row : cases) {
            Opened on(row.page);
            row.act(on);
            on.dialog.reject();
            QVERIFY2(!row.done(on), row.name);
            on.dialog.show();
            QVERIFY2(!on.canApply(), row.name);
            row.act(on);
            QVERIFY2(on.canApply() && !row.done(on), row.name);
            on.press("cmdApply");
            QVERIFY2(row.done(on) && !on.canApply(), row.name);
            on.dialog.accept();
            QCOMPARE(on.told.count(), 1);
            on.dialog.show();
            on.press("cmdDefaults");
            on.dialog.accept();
            QVERIFY2(!row.done(on), row.name);
            QCOMPARE(on.properties(), control::CodeEditor().properties());
            QCOMPARE(on.told.count(), 2);
        }
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
        QVERIFY(!on.canApply());
        on.press("chkRenameBoth");
        on.dialog.accept();
        odd.renameBoth = false;
        QCOMPARE(on.editor.properties(), odd);
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

    void everyColourHasAClass()
    {
        std::set<int> shown{-1};
        for (const ColourClass &row : colourClasses()) {
            shown.insert({row.ink, row.ground});
            QVERIFY2(QByteArray(sampleText).contains(row.piece), qPrintable(row.label()));
        }
        QCOMPARE(int(shown.size()), control::colourSlots + 1);
    }

    void conflicts()
    {
        const std::tuple<QKeySequence, QList<int>> rows[] = {
            {QKeySequence(Qt::CTRL | Qt::Key_K), {}}, // free
            {QKeySequence(Qt::CTRL | Qt::Key_Z), {}}, // its own
            {ctrlD, {114}},
            {QKeySequence(Qt::CTRL | Qt::Key_D, QKeyCombination(Qt::Key_X)), {114}}, // behind a used one
        };
        for (const auto &[keys, losers] : rows) {
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
    }

    // What is searched for is a name or keys; what is hidden is not changed.
    void findsClearsAndResets()
    {
        Opened on(Keyboard);
        auto *search = on.find<QLineEdit>("txtSearch");
        const auto chosen = [&] {
            const auto *item = on.find<QTreeWidget>("lstCommands")->currentItem();
            return item == nullptr || item->isHidden() ? QString() : item->text(1);
        };
        search->setText(ctrlD.toString());
        QVERIFY(chosen().startsWith(ctrlD.toString()));
        for (const char *name : {"cmdClear", "cmdReset"}) {
            const bool cleared = QByteArrayView(name) == "cmdClear";
            search->setText(on.find<QTreeWidget>("lstCommands")->topLevelItem(114 - 100)->text(0));
            on.press(name);
            QCOMPARE(chosen(), cleared ? QString() : ctrlD.toString());
            QCOMPARE(on.find<QPushButton>("cmdClear")->isEnabled(), !cleared);
            QCOMPARE(on.find<QPushButton>("cmdReset")->isEnabled(), cleared);
            on.press("cmdApply");
            QCOMPARE(on.keysOf(114).isEmpty(), cleared);
        }
        search->setText(u"no such command"_s);
        QVERIFY(!on.find<KeysEdit>("txtKeys")->isEnabled()
                && !on.find<QPushButton>("cmdAssign")->isEnabled());
        QVERIFY(!on.find<QPushButton>("cmdClear")->isEnabled()
                && !on.find<QPushButton>("cmdReset")->isEnabled());
    }

    // Return in a button is the button's, elsewhere it is OK.
    void returnPressesTheButton()
    {
        for (const auto &[name, accepts, asks] : {std::tuple("CancelButton", false, false),
                                                  {"cmdGround", false, true},
                                                  {"lstColours", true, false}}) {
            Opened on(Colours);
            QSignalSpy accepted(&on.dialog, &QDialog::accepted);
            on.find<QWidget>(name)->setFocus();
            on.key(name, Qt::Key_Return);
            QVERIFY2(accepted.count() == (accepts ? 1 : 0), name);
            QVERIFY2(on.dialog.isVisible() == asks, name);
            QCOMPARE(on.dialog.findChild<QColorDialog *>() != nullptr, asks);
        }
    }

    void staysOnTheScreen()
    {
        Opened on(Fonts);
        on.dialog.resize(on.dialog.minimumSizeHint());
        QVERIFY(on.dialog.height() < on.dialog.screen()->availableSize().height() / 2);
    }

    // Keys that were recorded and not assigned are assigned by what accepts the page, and by nothing else.
    void recordedKeysAreNotLost()
    {
        const std::tuple<const char *, void (*)(Opened &), bool> rows[] = {
            {"OK", [](Opened &on) { on.find<QPushButton>("OKButton")->click(); }, true},
            {"Apply", [](Opened &on) { on.find<QPushButton>("cmdApply")->click(); }, true},
            {"another page, then OK",
             [](Opened &on) {
                 on.find<QTabWidget>("tabPages")->setCurrentIndex(Fonts);
                 on.find<QTabWidget>("tabPages")->setCurrentIndex(Keyboard);
                 on.dialog.accept();
             },
             true},
            {"another command, then OK",
             [](Opened &on) {
                 on.chooseCommand(132);
                 on.dialog.accept();
             },
             false},
            {"Cancel, then OK",
             [](Opened &on) {
                 on.dialog.reject();
                 on.dialog.show();
                 on.dialog.accept();
             },
             false},
        };
        for (const auto &[name, act, kept] : rows) {
            Opened on(Keyboard);
            recordOnly(on);
            QVERIFY2(on.canApply(), name);
            act(on);
            QVERIFY2((on.editor.library()->shortcuts.command(ctrlKS) == 131) == kept, name);
            QCOMPARE(on.told.count(), kept ? 1 : 0);
        }
    }

    void fieldRecordsOrLetsGo()
    {
        Opened on(Keyboard);
        on.chooseCommand(131);
        auto *keys = on.find<KeysEdit>("txtKeys");
        // Return assigns even while a second stroke is waited for.
        typeKeys(keys, QKeySequence(Qt::CTRL | Qt::Key_F12));
        QTest::keyClick(keys, Qt::Key_Return);
        QVERIFY(on.canApply());
        QCOMPARE(keys->keys(), QKeySequence(Qt::CTRL | Qt::Key_F12));
        on.press("cmdReset");
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
};

QTEST_MAIN(TestPropertiesDialog)
#include "test_properties_dialog.moc"
