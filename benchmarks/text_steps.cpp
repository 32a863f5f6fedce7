#include "text_steps.h"

#include "document_maker.h"
#include "measure.h"
#include "report.h"
#include "search_steps.h"

#include "platform/control/code_editor.h"

#include <QElapsedTimer>
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
constexpr int longestTyping = 2'000; // milliseconds; no key is begun after that
constexpr double frame = 16; // milliseconds; what takes longer is felt

void show(QsciScintillaBase &editor) { paint(editor.viewport()); }

double jump(QsciScintillaBase &editor, double part)
{
    const auto place = ulong(double(editor.SendScintilla(S::SCI_GETLENGTH)) * part);
    return milliseconds([&] {
        editor.SendScintilla(S::SCI_GOTOPOS, place);
        show(editor);
    });
}

// The time that 95 of 100 keystrokes stay within, with all that follows at once.
double keystroke(QsciScintillaBase &editor, int count)
{
    std::vector<double> times;
    QElapsedTimer since;
    since.start();
    const QString typed = QStringLiteral("<b c=\"d\">e</b> ");
    for (int i = 0; i < count && !since.hasExpired(longestTyping); ++i)
        times.push_back(milliseconds([&] {
            QTest::keyClick(&editor, typed[i % typed.size()].toLatin1());
            show(editor);
        }));
    std::sort(times.begin(), times.end());
    return times[times.size() * 95 / 100];
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

class Comparison
{
public:
    Comparison(control::CodeEditor &editor, QsciScintillaBase &bare, const Report &report)
        : editor_(editor), bare_(bare), report_(report)
    { }

    void load(const QByteArray &text)
    {
        const double bare = milliseconds([&] { loadBare(bare_, text); });
        const double time = milliseconds([&] {
            editor_.loadText(text);
            show(editor_);
        });
        compare(QStringLiteral("text into the editor until painted"), time, bare);
    }

    void at(const char *where, double part)
    {
        const QString place = QLatin1StringView(where);
        const double bareJump = jump(bare_, part);
        compare(QStringLiteral("jump to the %1 until painted").arg(place), jump(editor_, part), bareJump);
        const double bareKeys = keystroke(bare_, bareKeystrokes);
        compare(QStringLiteral("keystroke at the %1, 95th percentile").arg(place),
                keystroke(editor_, keystrokes), bareKeys, frame);
    }

    void fold(const char *what, int command, const Yardsticks &yardsticks)
    {
        const double time = milliseconds([&] {
            editor_.execute(command);
            show(editor_);
        });
        report_.row(QLatin1StringView(what), time, "ms", {{yardsticks.sax, "the SAX pass"}});
    }

private:
    void compare(const QString &what, double time, double bare, double most = 0)
    {
        report_.row(what, time, "ms", {{bare, "the bare component"}}, most);
    }

    control::CodeEditor &editor_;
    QsciScintillaBase &bare_;
    const Report &report_;
};

} // namespace

void measureText(const Shape &shape, int megabytes, const Yardsticks &yardsticks, const Report &report)
{
    const int size = shape.mostText == 0 ? megabytes : std::min(megabytes, shape.mostText);
    report.row(QStringLiteral("text in the editor"), size, "MB");
    QsciScintillaBase bare;
    open(bare);
    control::CodeEditor editor;
    editor.setLanguage(control::Language::Xml);
    open(editor);
    Comparison comparison(editor, bare, report);
    comparison.load(shape.make(qsizetype(size) * 1'000'000));
    measureSearch(editor, shape, report);
    comparison.at("end", 1);
    comparison.at("middle", 0.5);
    comparison.at("start", 0);
    if (shape.mostText != 0) // there are no lines to fold
        return;
    comparison.fold("fold all", foldAllCommand, yardsticks);
    comparison.fold("unfold all", unfoldAllCommand, yardsticks);
    comparison.fold("fold all again", foldAllCommand, yardsticks);
    comparison.fold("unfold all again", unfoldAllCommand, yardsticks);
    editor.placeCaret(editor.lineCount() / 2, 6);
    comparison.fold("fold level, in the middle", foldLevelCommand, yardsticks);
}

} // namespace bench
