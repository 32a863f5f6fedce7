#include "platform/control/code_editor.h"

#include "platform/control/editor_look.h"
#include "platform/control/left_edge.h"
#include "platform/control/text_difference.h"
#include "platform/control/text_window.h"
#include "platform/control/undo_step.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <algorithm>

namespace control {

CodeEditor::CodeEditor(QWidget *parent, std::shared_ptr<EditorLibrary> library)
    : QsciScintillaBase(parent), typingHelp_(*this), xmlStyling_(*this), player_(*this),
      library_(library ? std::move(library) : std::make_shared<EditorLibrary>()),
      accessible_(*this, [this] { watchText(true); })
{
    setAccessibleName(tr("Document text"));
    // Code runs from left to right whatever the desktop's language, or brackets stand on the wrong side.
    setLayoutDirection(Qt::LeftToRight);
    setFrameShape(QFrame::NoFrame);
    setUpLook();
    takeHabits({});
    watchText(true);
    connect(this, &QsciScintillaBase::SCN_MODIFIED, this,
            [this](int position, int kind, const char *, int length, int, int, int, int, int token) {
                noticeChange(position, kind, length);
                if ((kind & SC_MOD_CONTAINER) != 0)
                    noticeContainer(token, (kind & SC_PERFORMED_UNDO) != 0);
            });
    connect(this, &QsciScintillaBase::SCN_UPDATEUI, this, &CodeEditor::settleSoon);
    connect(this, &QsciScintillaBase::SCN_MARGINCLICK, this, [this](int position, int, int margin) {
        if (margin != bookmarkMargin)
            return;
        const long line = send(SCI_LINEFROMPOSITION, ulong(position));
        const bool marked = (send(SCI_MARKERGET, ulong(line)) & (1 << bookmarkMarker)) != 0;
        send(marked ? SCI_MARKERDELETE : SCI_MARKERADD, ulong(line), bookmarkMarker);
    });
    // A name taken from the list is a step of its own, and not the engine's doing.
    connect(this, qOverload<const char *, int, int, int>(&QsciScintillaBase::SCN_AUTOCSELECTION), this,
            [this](const char *word) { typingHelp_.takeWord(word); });
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &CodeEditor::commandStateChanged);
    fittedLines_ = lineCount();
}

long CodeEditor::send(unsigned message, unsigned long first, long second) const
{
    return SendScintilla(message, first, second);
}

// Changes are counted before they happen: being told of them afterwards makes the engine copy the text that
// changed and count all characters before it, for screen readers, at every key in a text of any size.
void CodeEditor::watchText(bool watched)
{
    int mask = watched ? SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE | SC_MOD_CONTAINER : 0;
    if (watched && QAccessible::isActive())
        mask |= SC_MOD_INSERTTEXT | SC_MOD_DELETETEXT;
    send(SCI_SETMODEVENTMASK, ulong(mask));
}

void CodeEditor::noticeChange(int position, int kind, int length)
{
    if ((kind & (SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE)) == 0)
        return;
    ++revision_;
    columns_.changing(*this, position);
    if ((kind & SC_PERFORMED_USER) == 0)
        inserted_.forget();
    else if ((kind & SC_MOD_BEFOREINSERT) != 0)
        inserted_.inserted(position, length);
    else
        inserted_.deleted(position, length);
    if ((kind & SC_MOD_BEFOREINSERT) != 0)
        xmlStyling_.inserted(position, length);
    else
        xmlStyling_.deleted(position, length);
    setHighlightedLine(-1);
    settleSoon();
}

// The engine keeps a number with a step: of a caret's place, or below zero of another document.
void CodeEditor::noticeContainer(int token, bool undone)
{
    if (token < 0)
        crossings_.emplace_back(-1 - token, undone);
    else
        stepCaret_ = {stepCaret_ ? stepCaret_->left : token, token};
}

// Before anything else is told, which may be about the document by then.
void CodeEditor::tellCrossings()
{
    for (const auto &[number, undone] : std::exchange(crossings_, {}))
        if (crossed_)
            crossed_(number, undone);
}

// Tells the outside what changed since it was told last. Told first, signalled then: a handler may change
// more.
void CodeEditor::settle()
{
    if (isQuiet())
        return;
    tellCrossings();
    const Told now = state();
    if (now == told_)
        return;
    const Told before = std::exchange(told_, now);
    const bool edited = now.revision != before.revision;
    const bool moved = now.caret != before.caret || now.anchor != before.anchor;
    if (edited && lineCount() != fittedLines_) {
        fittedLines_ = lineCount();
        lineNumbers_.fit(*this);
    }
    if (edited) {
        strikeText(*this);
        xmlStyling_.settle();
    }
    selectionBounds_.update(*this);
    tagMarks_.update(*this);
    if (edited)
        Q_EMIT textEdited();
    if (moved)
        Q_EMIT caretMoved();
    if (now.commands != before.commands)
        Q_EMIT commandStateChanged();
}

void CodeEditor::settleSoon()
{
    if (std::exchange(settlingSoon_, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            settlingSoon_ = false;
            settle();
        },
        Qt::QueuedConnection);
}

CodeEditor::Told CodeEditor::state() const
{
    const int commands = int(canUndo()) | int(canRedo()) << 1 | int(canCut()) << 2 | int(canCopy()) << 3;
    return {revision_, send(SCI_GETCURRENTPOS), send(SCI_GETANCHOR), commands};
}

QByteArray CodeEditor::text() const { return bytes({0, send(SCI_GETLENGTH)}); }

QByteArray CodeEditor::textInPlace() const
{
    const auto *start = static_cast<const char *>(SendScintillaPtrResult(SCI_GETCHARACTERPOINTER));
    return QByteArray::fromRawData(start, send(SCI_GETLENGTH));
}

QByteArray CodeEditor::bytes(const ByteRange &range) const
{
    if (range.length() <= 0)
        return {};
    QByteArray result(range.length(), Qt::Uninitialized);
    // The engine ends what it copies with a zero byte, for which a byte array has room behind its end.
    SendScintilla(SCI_GETTEXTRANGE, range.start, range.end, result.data());
    return result;
}

void CodeEditor::loadText(const QByteArray &utf8)
{
    watchText(false);
    send(SCI_CANCEL);
    send(SCI_SETUNDOCOLLECTION, 0);
    send(SCI_CLEARALL);
    send(SCI_MARKERDELETEALL, ulong(-1));
    highlighted_ = false;
    send(SCI_ALLOCATE, ulong(utf8.size()) + 1);
    SendScintilla(SCI_APPENDTEXT, uintptr_t(utf8.size()), utf8.constData());
    send(SCI_EMPTYUNDOBUFFER);
    send(SCI_SETUNDOCOLLECTION, 1);
    send(SCI_SETSAVEPOINT);
    send(SCI_SETSCROLLWIDTH, 1);
    send(SCI_SETXOFFSET, 0);
    ++revision_;
    columns_.forget();
    xmlStyling_.restart();
    // Before the engine measures the caret's line, which it had to do again after.
    xmlStyling_.styleSight();
    send(SCI_GOTOPOS, 0);
    watchText(true);
    inserted_.forget();
    typingHelp_.forget();
    firstStroke_ = {};
    habits_ = {};
    takeHabits(utf8);
    settle();
}

void CodeEditor::replaceText(const QByteArray &utf8)
{
    if (!replaceRange({0, send(SCI_GETLENGTH)}, utf8))
        return;
    if (habitsOf(utf8).hasLineEnd)
        takeHabits(utf8);
    inserted_.forget();
    showLeftEdge(*this);
    settle();
}

void CodeEditor::replaceDocument(const QByteArray &utf8, int number)
{
    send(SCI_BEGINUNDOACTION);
    send(SCI_ADDUNDOACTION, ulong(-1 - number), 0);
    replaceText(utf8);
    send(SCI_ENDUNDOACTION);
}

bool CodeEditor::replaceRange(const ByteRange &range, const QByteArray &utf8)
{
    // The engine moves all that it is asked for together first, so it is asked for no more than this.
    const TextDifference same = differenceOf(textWindow(*this, range.start, range.end).bytes, utf8);
    const qsizetype inserted = utf8.size() - same.prefix - same.suffix;
    const long end = range.end - long(same.suffix);
    const long start = range.start + long(same.prefix);
    if (inserted == 0 && start == end)
        return false;
    send(SCI_SETTARGETRANGE, ulong(start), end);
    SendScintilla(SCI_REPLACETARGET, uintptr_t(inserted), utf8.constData() + same.prefix);
    return true;
}

void CodeEditor::replaceSelection(const QByteArray &utf8)
{
    const QByteArray fitting = withLineEnds(utf8, habits_.lineEnd);
    UndoStep step(*this);
    const long start = selection().start;
    if (send(SCI_SELECTIONISRECTANGLE) != 0) {
        send(SCI_CLEAR);
        send(SCI_SETEMPTYSELECTION, ulong(start));
    }
    send(SCI_TARGETFROMSELECTION);
    SendScintilla(SCI_REPLACETARGET, uintptr_t(fitting.size()), fitting.constData());
    send(SCI_SETEMPTYSELECTION, ulong(start + fitting.size()));
    step.end();
    send(SCI_SCROLLCARET);
    inserted_.set(start, fitting.size());
    settle();
}

void CodeEditor::takeHabits(QByteArrayView text)
{
    habits_ = habitsOf(text);
    const int modes[] = {SC_EOL_CRLF, SC_EOL_CR, SC_EOL_LF};
    send(SCI_SETEOLMODE, ulong(modes[int(habits_.lineEnd)]));
    send(SCI_SETUSETABS, habits_.tabs ? 1 : 0);
    send(SCI_SETINDENT, ulong(habits_.indent));
}

ByteRange CodeEditor::selection() const { return {send(SCI_GETSELECTIONSTART), send(SCI_GETSELECTIONEND)}; }

QByteArray CodeEditor::selectedText() const
{
    if (send(SCI_SELECTIONISRECTANGLE) == 0)
        return bytes(selection());
    // The engine ends what it copies with a zero byte, which it counts, and each line of a rectangle.
    const long length = send(SCI_GETSELTEXT) - 1;
    if (length <= 0)
        return {};
    QByteArray text(length, Qt::Uninitialized);
    SendScintilla(SCI_GETSELTEXT, uintptr_t(0), text.data());
    const QByteArrayView lineEnd = lineEndBytes(habits_.lineEnd);
    if (text.endsWith(lineEnd))
        text.chop(lineEnd.size());
    return text;
}

long CodeEditor::selectedCharacters() const
{
    long characters = 0;
    for (long each = send(SCI_GETSELECTIONS) - 1; each >= 0; --each)
        characters += send(SCI_COUNTCHARACTERS, ulong(send(SCI_GETSELECTIONNSTART, ulong(each))),
                           send(SCI_GETSELECTIONNEND, ulong(each)));
    return characters;
}

bool CodeEditor::canUndo() const { return send(SCI_CANUNDO) != 0; }

bool CodeEditor::canRedo() const { return send(SCI_CANREDO) != 0; }

bool CodeEditor::canCut() const { return canCopy() && send(SCI_GETREADONLY) == 0; }

bool CodeEditor::canCopy() const { return send(SCI_GETSELECTIONEMPTY) == 0; }

bool CodeEditor::canPaste() const
{
    const QMimeData *offered = QGuiApplication::clipboard()->mimeData();
    return offered != nullptr && send(SCI_GETREADONLY) == 0 && canInsertFromMimeData(offered);
}

void CodeEditor::undo() { travel(SCI_UNDO); }

void CodeEditor::redo() { travel(SCI_REDO); }

void CodeEditor::markStepCaret(long position) { send(SCI_ADDUNDOACTION, ulong(position), 0); }

// The engine goes to the place that it changed last.
void CodeEditor::travel(unsigned message)
{
    const auto caretRow = [this] { return send(SCI_VISIBLEFROMDOCLINE, ulong(caretLine())); };
    const long caret = send(SCI_GETCURRENTPOS);
    const long below = caretRow() - send(SCI_GETFIRSTVISIBLELINE);
    const long left = send(SCI_GETXOFFSET);
    stepCaret_.reset();
    send(message);
    if (const std::optional<StepCaret> step = std::exchange(stepCaret_, {}); step && step->left == caret) {
        send(SCI_SETEMPTYSELECTION, ulong(step->wanted));
        send(SCI_SETFIRSTVISIBLELINE, ulong(std::max(0L, caretRow() - below)));
        send(SCI_SETXOFFSET, ulong(left));
    } else if (step) {
        showPosition(step->wanted);
    }
    settle();
}

void CodeEditor::cut()
{
    if (!canCut())
        return;
    copy();
    send(SCI_CLEAR);
    settle();
}

// The engine's own copying ends at the first zero byte; a rectangle is better known to the engine.
void CodeEditor::copy()
{
    if (send(SCI_SELECTIONISRECTANGLE) != 0 || send(SCI_GETSELECTIONS) > 1)
        send(SCI_COPY);
    else if (canCopy())
        QGuiApplication::clipboard()->setMimeData(toMimeData(bytes(selection()), false));
}

QMimeData *CodeEditor::toMimeData(const QByteArray &text, bool rectangular) const
{
    QMimeData *offered = QsciScintillaBase::toMimeData(text, rectangular);
    if (!copyMark_.isEmpty())
        offered->setData(copyMark_, "1"); // some systems do not pass on what is empty
    return offered;
}

void CodeEditor::paste()
{
    if (!canPaste())
        return;
    send(SCI_PASTE);
    settle();
}

int CodeEditor::highlightedLine() const
{
    return highlighted_ ? int(send(SCI_MARKERNEXT, 0, 1 << highlightMarker)) : -1;
}

void CodeEditor::setHighlightedLine(int line)
{
    if (std::exchange(highlighted_, line >= 0))
        send(SCI_MARKERDELETEALL, highlightMarker);
    if (line >= 0)
        send(SCI_MARKERADD, ulong(std::min(line, lineCount() - 1)), highlightMarker);
}

void CodeEditor::placeCaret(int line, int column)
{
    const int last = lineCount() - 1;
    const long start = send(SCI_POSITIONFROMLINE, ulong(std::clamp(line, 0, last)));
    const long end = send(SCI_GETLINEENDPOSITION, ulong(std::clamp(line, 0, last)));
    // The engine answers 0 when the text ends before that many characters.
    const long found = column <= 0 ? start : send(SCI_POSITIONRELATIVE, ulong(start), column);
    showPosition(column > 0 && found == 0 ? end : std::min(found, end));
}

void CodeEditor::showPosition(long position)
{
    const long line = send(SCI_LINEFROMPOSITION, ulong(position));
    send(SCI_ENSUREVISIBLE, ulong(line));
    const long shown = send(SCI_VISIBLEFROMDOCLINE, ulong(line));
    const long first = send(SCI_GETFIRSTVISIBLELINE);
    const long count = send(SCI_LINESONSCREEN);
    if (shown < first || shown >= first + count)
        send(SCI_SETFIRSTVISIBLELINE, ulong(std::max(0L, shown - count / 2)));
    send(SCI_GOTOPOS, ulong(position));
    send(SCI_CHOOSECARETX);
    showLeftEdge(*this);
    settle();
}

int CodeEditor::caretLine() const { return int(send(SCI_LINEFROMPOSITION, ulong(send(SCI_GETCURRENTPOS)))); }

int CodeEditor::caretColumn() const { return int(columns_.columnOf(*this, send(SCI_GETCURRENTPOS))); }

int CodeEditor::lineCount() const { return int(send(SCI_GETLINECOUNT)); }

void CodeEditor::setLanguage(Language language)
{
    if (language == language_)
        return;
    language_ = language;
    setEditorLexer(*this, language);
    xmlStyling_.restart();
    dress();
    fitMargins(*this);
    tagMarks_.update(*this);
}

void CodeEditor::giveFocus() { setFocus(Qt::OtherFocusReason); }

} // namespace control
