#include "platform/control/xml_styling.h"

#include "platform/control/code_editor.h"
#include "platform/control/line_numbers.h"
#include "platform/control/long_runs.h"
#include "platform/control/text_window.h"

#include <QByteArray>
#include <QLocale>
#include <QScopedValueRollback>
#include <algorithm>

namespace control {

namespace {

using S = QsciScintillaBase;

// What is read while somebody waits, and while nobody does.
constexpr long waitingReach = 8 * 1024 * 1024;
constexpr long idleReach = 512 * 1024;
// Texts up to this are styled whole, so that scrolling in them finds all done.
constexpr long smallText = 32 * 1024;
// The engine measures the whole of a line at every key, piece by piece of one style, and remembers the widths
// of short pieces. Of longer lines than this it is made to remember many.
constexpr long longLine = 32 * 1024;
constexpr long bytesForWidth = 4; // of a line
constexpr long leastWidths = 256 * 1024;
constexpr long mostWidths = 4 * 1024 * 1024;
// A key in a line up to this takes no time that anybody sees.
constexpr long fluentLine = 1024 * 1024;

} // namespace

XmlStyling::XmlStyling(CodeEditor &editor) : QObject(&editor), editor_(editor)
{
    idle_.setInterval(0);
    connect(&idle_, &QTimer::timeout, this, &XmlStyling::readOn);
    // The engine is never told that anything is styled, so it asks before each painting.
    connect(&editor, &QsciScintillaBase::SCN_STYLENEEDED, this, &XmlStyling::styleSight);
}

bool XmlStyling::isOn() const { return editor_.language() != Language::Plain; }

bool XmlStyling::isHtml() const { return editor_.language() == Language::Html; }

void XmlStyling::restart()
{
    map_.clear(isHtml());
    change_.reset();
    ++round_;
    levelled_ = {};
    styled_.reset();
    base_ = firstBase;
    noted_ = false;
    if (isOn())
        idle_.start();
    else
        idle_.stop();
}

// Changes are told to the map together, when it is needed: there may be a hundred thousand of them before.
MarkupMap &XmlStyling::map()
{
    if (change_) {
        map_.deleted(change_->start, change_->removed);
        map_.inserted(change_->start, change_->added);
        change_.reset();
    }
    return map_;
}

// Makes the change reach over a stretch of the text as it is now.
void XmlStyling::takeIn(long start, long end)
{
    if (!change_)
        change_ = Change{start, 0, 0};
    const long before = std::max(0L, change_->start - start);
    const long behind = std::max(0L, end - (change_->start + change_->added));
    change_->start -= before;
    change_->removed += before + behind;
    change_->added += before + behind;
}

void XmlStyling::inserted(long at, long length)
{
    if (!isOn())
        return;
    takeIn(at, at);
    change_->added += length;
    idle_.start();
}

void XmlStyling::deleted(long at, long length)
{
    if (!isOn())
        return;
    takeIn(at, at + length);
    change_->added -= length;
    idle_.start();
}

MarkupSource XmlStyling::source() const
{
    return {[this](long start, long end) { return textWindow(editor_, start, end).bytes; },
            editor_.send(S::SCI_GETLENGTH)};
}

long XmlStyling::lineStart(long line) const
{
    return line >= editor_.lineCount() ? editor_.send(S::SCI_GETLENGTH)
                                       : editor_.send(S::SCI_POSITIONFROMLINE, ulong(line));
}

void XmlStyling::readOn()
{
    if (editor_.isQuiet())
        return;
    map().advance(source(), idleReach);
    if (!map().isComplete())
        return;
    idle_.stop();
    if (std::exchange(guessed_, false)) {
        ++round_;
        aboutToPaint();
        styleSight();
    }
}

void XmlStyling::knowTo(long position)
{
    const MarkupSource text = source();
    while (map().known(text) < position)
        map().advance(text, position - map().known(text));
}

// A bounded stretch is read on to the place; beyond that it is guessed what it is.
MarkupMap::Place XmlStyling::placeAt(long position)
{
    const MarkupSource text = source();
    if (map().known(text) < position && position - map().known(text) <= waitingReach)
        knowTo(position);
    if (map().known(text) >= position)
        return map().placeAt(text, position);
    guessed_ = true;
    return MarkupMap::guessAt(text, position, isHtml());
}

// The stretches of lines that are shown, and one more at each end, on which the signs in the margin depend.
std::vector<XmlStyling::Lines> XmlStyling::linesInSight() const
{
    const long lines = editor_.lineCount();
    if (editor_.send(S::SCI_GETLENGTH) <= smallText)
        return {{0, lines - 1}};
    const long first = std::max(0L, editor_.send(S::SCI_GETFIRSTVISIBLELINE) - 1);
    const long count = editor_.send(S::SCI_LINESONSCREEN) + 3;
    std::vector<Lines> found;
    for (long shown = first; shown <= first + count; ++shown) {
        const long line = editor_.send(S::SCI_DOCLINEFROMVISIBLE, ulong(shown));
        if (line >= lines)
            break;
        if (!found.empty() && line <= found.back().last + 1)
            found.back().last = line;
        else
            found.push_back({line, line});
    }
    return found;
}

// What a piece at the end is may be told by what follows it.
QByteArray XmlStyling::stylesOf(long start, long end)
{
    constexpr long reach = 64;
    const MarkupMap::Place from = placeAt(start);
    const MarkupSource text = source();
    const long to = std::min(text.length, end + reach);
    QByteArray styles(to - from.at, TextMarkup);
    MarkupStyler(text.read(from.at, to), from.state, styles.data()).runTo(to - from.at, to == text.length);
    return styles.mid(start - from.at, end - start);
}

void XmlStyling::aboutToPaint()
{
    styled_.reset();
    // Who colours the text otherwise is not asked before each painting.
    if (!isOn())
        styleSight();
}

void XmlStyling::styleSight()
{
    if (styling_ || styled_ == editor_.revision())
        return;
    styled_ = editor_.revision();
    const QScopedValueRollback now(styling_, true);
    if (!isOn()) {
        partLongLines();
        return;
    }
    guessed_ = false;
    for (const Lines &lines : linesInSight())
        styleLines(lines);
    editor_.send(S::SCI_STARTSTYLING, 0);
}

bool XmlStyling::caretLineIsLong() const
{
    const long line = editor_.caretLine();
    return lineStart(line + 1) - lineStart(line) > longLine;
}

// Long lines are taken apart from the others.
void XmlStyling::styleLines(const Lines &lines)
{
    const auto length = [this](long line) { return lineStart(line + 1) - lineStart(line); };
    long first = lines.first;
    for (long line = lines.first; line <= lines.last; ++line) {
        if (length(line) <= longLine)
            continue;
        if (first < line)
            styleStretch(lineStart(first), lineStart(line), {first, line - 1});
        styleLongLine(line);
        first = line + 1;
    }
    if (first <= lines.last)
        styleStretch(lineStart(first), lineStart(lines.last + 1), {first, lines.last});
}

void XmlStyling::styleStretch(long start, long end, const Lines &lines)
{
    const MarkupMap::Place from = placeAt(start);
    const MarkupSource text = source();
    QByteArray styles(end - from.at, Qt::Uninitialized);
    MarkupStyler styler(text.read(from.at, end), from.state, styles.data());
    std::vector<int> depths;
    for (long line = lines.first; line <= lines.last + 1; ++line) {
        const long to = std::min(end, lineStart(line));
        styler.runTo(to - from.at, to == text.length);
        depths.push_back(styler.state().depth);
    }
    const qsizetype skipped = start - from.at;
    if (end - start > longLine)
        partLongRuns(text.read(start, end), styles.data() + skipped);
    editor_.send(S::SCI_STARTSTYLING, ulong(start));
    editor_.SendScintilla(S::SCI_SETSTYLINGEX, uintptr_t(styles.size() - skipped),
                          styles.constData() + skipped);
    for (long line = lines.first; line <= lines.last; ++line)
        setLevel(line, depths[size_t(line - lines.first)], depths[size_t(line - lines.first) + 1]);
}

// Styled to its end, since pieces without a style are long and have to be measured each time; but only once,
// and not at each painting.
void XmlStyling::styleLongLine(long line)
{
    const LongLine now{editor_.revision(), round_, line};
    if (std::exchange(longLine_, now) == now)
        return;
    makeRoomForWidths(line, lineStart(line + 1) - lineStart(line));
    styleStretch(lineStart(line), lineStart(line + 1), {line, line});
}

void XmlStyling::makeRoomForWidths(long line, long length)
{
    const long widths = std::clamp(length / bytesForWidth, leastWidths, mostWidths);
    if (editor_.send(S::SCI_GETPOSITIONCACHE) < widths)
        editor_.send(S::SCI_SETPOSITIONCACHE, ulong(widths));
    if (length > fluentLine && !std::exchange(noted_, true))
        noteLongLine(line, length);
}

void XmlStyling::partLongLines()
{
    if (editor_.send(S::SCI_GETLENGTH) <= longLine)
        return;
    for (const Lines &lines : linesInSight()) {
        for (long line = lines.first; line <= lines.last; ++line) {
            const long start = lineStart(line);
            const long end = lineStart(line + 1);
            if (end - start <= longLine)
                continue;
            const LongLine now{editor_.revision(), round_, line};
            if (std::exchange(longLine_, now) == now && editor_.send(S::SCI_GETENDSTYLED) >= end)
                continue;
            makeRoomForWidths(line, end - start);
            partLexedLine(start, end);
        }
    }
}

// A lexer begins a line by the style that ends the one before, so that has to stay.
void XmlStyling::partLexedLine(long start, long end)
{
    constexpr long keptStyles = 2; // of a line end
    const long styled = std::min(start, editor_.send(S::SCI_GETENDSTYLED));
    const long from = lineStart(editor_.send(S::SCI_LINEFROMPOSITION, ulong(styled)));
    editor_.send(S::SCI_COLOURISE, ulong(from), end);
    QByteArray cells(2 * (end - start) + 2, Qt::Uninitialized);
    editor_.SendScintilla(S::SCI_GETSTYLEDTEXT, start, end, cells.data());
    QByteArray styles(end - start, Qt::Uninitialized);
    for (qsizetype i = 0; i < styles.size(); ++i)
        styles[i] = cells[2 * i + 1];
    partLongRuns(textWindow(editor_, start, end - keptStyles).bytes, styles.data());
    editor_.send(S::SCI_STARTSTYLING, ulong(start));
    editor_.SendScintilla(S::SCI_SETSTYLINGEX, uintptr_t(styles.size()), styles.constData());
}

// Told when what brought the line into sight is done.
void XmlStyling::noteLongLine(long line, long length)
{
    const QString sentence = CodeEditor::tr("Line %1 is %2 bytes long, which makes editing it slow.")
                                 .arg(lineNumber(editor_.properties(), int(line)))
                                 .arg(QLocale().toString(qlonglong(length)));
    QMetaObject::invokeMethod(
        &editor_, [this, sentence] { Q_EMIT editor_.noted(sentence); }, Qt::QueuedConnection);
}

void XmlStyling::setLevel(long line, int before, int after)
{
    const int number
        = std::clamp(int(S::SC_FOLDLEVELBASE) - base_ + before, 0, int(S::SC_FOLDLEVELNUMBERMASK) - 1);
    const long level = number | (after > before ? int(S::SC_FOLDLEVELHEADERFLAG) : 0);
    const long old = styling_ ? editor_.send(S::SCI_GETFOLDLEVEL, ulong(line)) : level;
    editor_.send(S::SCI_SETFOLDLEVEL, ulong(line), level);
    const int shift = number - int(old & S::SC_FOLDLEVELNUMBERMASK);
    if (shift != 0 && (level & S::SC_FOLDLEVELHEADERFLAG) != 0
        && editor_.send(S::SCI_GETFOLDEXPANDED, ulong(line)) == 0)
        shiftHidden(line, shift);
}

// What a folded line hides keeps its place below it.
void XmlStyling::shiftHidden(long line, int levels)
{
    for (++line; line < editor_.lineCount() && editor_.send(S::SCI_GETLINEVISIBLE, ulong(line)) == 0; ++line)
        editor_.send(S::SCI_SETFOLDLEVEL, ulong(line),
                     editor_.send(S::SCI_GETFOLDLEVEL, ulong(line)) + levels);
}

// Lines stay hidden only behind a folded line.
void XmlStyling::settle()
{
    if (!isOn() || editor_.send(S::SCI_GETALLLINESVISIBLE) != 0)
        return;
    aboutToPaint();
    styleSight();
    const auto visible = [this](long line) { return editor_.send(S::SCI_GETLINEVISIBLE, ulong(line)) != 0; };
    const long count = editor_.lineCount();
    for (const Lines &lines : linesInSight()) {
        for (long line = lines.first; line <= lines.last; ++line) {
            if (!visible(line))
                continue;
            const bool folded = editor_.send(S::SCI_GETFOLDEXPANDED, ulong(line)) == 0;
            const bool header
                = (editor_.send(S::SCI_GETFOLDLEVEL, ulong(line)) & S::SC_FOLDLEVELHEADERFLAG) != 0;
            if (folded && header)
                continue;
            if (folded)
                editor_.send(S::SCI_SETFOLDEXPANDED, ulong(line), 1);
            long last = line;
            while (last + 1 < count && !visible(last + 1))
                ++last;
            if (last > line)
                editor_.send(S::SCI_SHOWLINES, ulong(line) + 1, last);
        }
    }
}

} // namespace control
