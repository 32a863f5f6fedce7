#include "text_steps.h"

#include "measure.h"

#include "platform/control/code_editor.h"

#include <QApplication>
#include <QTest>

#include <algorithm>
#include <vector>

namespace bench {

namespace {

using S = QsciScintillaBase;

constexpr int foldAllCommand = 157;
constexpr int unfoldAllCommand = 158;
constexpr int foldLevelCommand = 226;
constexpr int keystrokes = 200;
constexpr int bareKeystrokes = 5; // each of them takes long in long texts

void show(QsciScintillaBase &editor)
{
    QApplication::processEvents();
    editor.viewport()->repaint();
}

double jump(QsciScintillaBase &editor, double part)
{
    const long line = long(double(editor.SendScintilla(S::SCI_GETLINECOUNT) - 1) * part);
    return milliseconds([&] {
        editor.SendScintilla(S::SCI_GOTOLINE, ulong(line));
        editor.viewport()->repaint();
    });
}

// The time that 95 of 100 keystrokes stay within, with all that follows at once.
double keystroke(QsciScintillaBase &editor, int count)
{
    std::vector<double> times;
    const QString typed = QStringLiteral("<b c=\"d\">e</b> ");
    for (int i = 0; i < count; ++i)
        times.push_back(milliseconds([&] {
            QTest::keyClick(&editor, typed[i % typed.size()].toLatin1());
            show(editor);
        }));
    std::sort(times.begin(), times.end());
    return times[size_t(count) * 95 / 100];
}

void loadBare(QsciScintillaBase &editor, const QByteArray &text)
{
    editor.SendScintilla(S::SCI_SETCODEPAGE, int(S::SC_CP_UTF8));
    // Told of changes, it copies texts and counts characters for screen readers at every key.
    editor.SendScintilla(S::SCI_SETMODEVENTMASK, 0L);
    editor.SendScintilla(S::SCI_SETUNDOCOLLECTION, 0L);
    editor.SendScintilla(S::SCI_ADDTEXT, ulong(text.size()), text.constData());
    editor.SendScintilla(S::SCI_SETUNDOCOLLECTION, 1L);
    editor.SendScintilla(S::SCI_GOTOPOS, 0L);
    show(editor);
}

void open(QsciScintillaBase &editor)
{
    editor.resize(700, 500);
    editor.show();
    QTest::qWait(50);
}

void compare(const QString &what, double time, double bare)
{
    print(what, time, QStringLiteral("ms"), ratio(time, bare, "the bare component"));
}

void compareAt(control::CodeEditor &editor, QsciScintillaBase &bare, const char *where, double part)
{
    const QString place = QLatin1StringView(where);
    const double bareJump = jump(bare, part);
    compare(QStringLiteral("jump to the %1 until painted").arg(place), jump(editor, part), bareJump);
    const double bareKeys = keystroke(bare, bareKeystrokes);
    compare(QStringLiteral("keystroke at the %1, 95th percentile").arg(place), keystroke(editor, keystrokes),
            bareKeys);
}

void fold(control::CodeEditor &editor, const char *what, int command, const Yardsticks &yardsticks)
{
    const double time = milliseconds([&] {
        editor.execute(command);
        show(editor);
    });
    print(QLatin1StringView(what), time, QStringLiteral("ms"), ratio(time, yardsticks.sax, "the SAX pass"));
}

} // namespace

void measureText(const QByteArray &text, const Yardsticks &yardsticks)
{
    QsciScintillaBase bare;
    open(bare);
    const double bareLoad = milliseconds([&] { loadBare(bare, text); });
    control::CodeEditor editor;
    editor.setLanguage(control::Language::Xml);
    open(editor);
    compare(QStringLiteral("text into the editor until painted"), milliseconds([&] {
                editor.loadText(text);
                show(editor);
            }),
            bareLoad);
    compareAt(editor, bare, "end", 1);
    compareAt(editor, bare, "middle", 0.5);
    compareAt(editor, bare, "start", 0);
    fold(editor, "fold all", foldAllCommand, yardsticks);
    fold(editor, "unfold all", unfoldAllCommand, yardsticks);
    fold(editor, "fold all again", foldAllCommand, yardsticks);
    fold(editor, "unfold all again", unfoldAllCommand, yardsticks);
    editor.placeCaret(editor.lineCount() / 2, 6);
    fold(editor, "fold level, in the middle", foldLevelCommand, yardsticks);
}

} // namespace bench
