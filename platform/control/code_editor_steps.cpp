// How the code editor takes a step: a numbered command or typed text, from a key, an input method, a menu or
// a macro, once or as often as asked for.
#include "platform/control/code_editor.h"

#include "platform/control/editor_commands.h"
#include "platform/control/undo_step.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <algorithm>

namespace control {

namespace {

// More than one key was needed for it, or a key that does more than type.
bool isSpelled(QByteArrayView text)
{
    const auto begins = [](char c) { return (quint8(c) & 0xC0U) != 0x80U; };
    return std::count_if(text.begin(), text.end(), begins) > 1 || text == QByteArrayView("\n")
        || text == QByteArrayView("\t");
}

} // namespace

bool CodeEditor::execute(int command) { return command != 0 && perform({command, {}}); }

bool CodeEditor::perform(const Step &step)
{
    if (steps_ == 0 && typingHelp_.takes(step))
        return true;
    Step whole = step;
    if (steps_ == 0 && step.times == 1 && !opensWindow(step.command))
        whole.times = takeRepeatCount();
    const quint64 before = revision_;
    ++steps_;
    const bool done = carryOut(whole);
    --steps_;
    if (steps_ != 0)
        return done;
    settle();
    if (done || revision_ != before)
        Q_EMIT stepped(whole);
    return done;
}

bool CodeEditor::carryOut(const Step &step)
{
    if (step.times > 1)
        return player_.repeat(step);
    if (step.command == 0 && isSpelled(step.text))
        return player_.spell(step.text);
    return carryOutOnce(step);
}

bool CodeEditor::carryOutOnce(const Step &step)
{
    typingHelp_.before(step);
    bool done = true;
    if (step.command == 0)
        type(step.text);
    else
        done = run(step.command);
    typingHelp_.after(step);
    return done;
}

bool CodeEditor::run(int command)
{
    const EditorCommand *row = findEditorCommand(command);
    if (row == nullptr)
        return false;
    if (row->isService())
        return callService(command);
    if (row->action != nullptr)
        return row->action(*this);
    send(row->message);
    return true;
}

// The engine types what a key event brings, so that replacing a selection and overtyping work by its rules.
void CodeEditor::type(const QByteArray &utf8)
{
    const QString text = QString::fromUtf8(utf8);
    if (!text.isEmpty() && text.front().isSurrogate()) {
        replaceSelection(utf8);
        return;
    }
    if (xmlStyling_.caretLineIsLong() && typesPlainly()) {
        typeInLongLine(utf8);
        return;
    }
    QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, text);
    QsciScintillaBase::keyPressEvent(&event);
}

bool CodeEditor::typesPlainly() const
{
    return selection().length() == 0 && send(SCI_GETSELECTIONS) == 1 && send(SCI_GETOVERTYPE) == 0
        && send(SCI_AUTOCACTIVE) == 0 && send(SCI_GETREADONLY) == 0
        && send(SCI_GETSELECTIONNCARETVIRTUALSPACE, ulong(send(SCI_GETMAINSELECTION))) == 0;
}

// The engine would measure the line with the new text not yet coloured, and once more when it is.
void CodeEditor::typeInLongLine(const QByteArray &utf8)
{
    const long caret = send(SCI_GETCURRENTPOS);
    SendScintilla(SCI_ADDTEXT, uintptr_t(utf8.size()), utf8.constData());
    xmlStyling_.styleSight();
    send(SCI_GOTOPOS, ulong(caret + utf8.size()));
    send(SCI_CHOOSECARETX);
}

// Text that was not composed in place is text typed, and has typing's help.
void CodeEditor::inputMethodEvent(QInputMethodEvent *event)
{
    const bool composed = std::exchange(composing_, !event->preeditString().isEmpty());
    QString committed = event->commitString();
    if (committed.isEmpty()) {
        QsciScintillaBase::inputMethodEvent(event);
        return;
    }
    const Step step{0, committed.remove(u'\r').toUtf8()};
    if (composed || composing_ || event->replacementLength() != 0)
        commitComposed(*event, step);
    else
        perform(step);
    event->accept();
}

// The engine puts the committed text in the place of what was composed; a count of repetitions adds the rest.
void CodeEditor::commitComposed(QInputMethodEvent &event, const Step &step)
{
    Step whole = step;
    whole.times = takeRepeatCount();
    UndoStep undo(*this);
    ++steps_;
    typingHelp_.before(step);
    QsciScintillaBase::inputMethodEvent(&event);
    typingHelp_.after(step);
    Step rest = step;
    rest.times = whole.times - 1;
    if (rest.times > 0)
        perform(rest);
    --steps_;
    undo.end();
    settle();
    Q_EMIT stepped(whole);
}

void CodeEditor::setRepeatCount(int count)
{
    count = std::clamp(count, 1, mostRepeats);
    if (std::exchange(repeatCount_, count) != count)
        Q_EMIT repeatCountChanged(count);
}

int CodeEditor::takeRepeatCount()
{
    const int count = repeatCount_;
    setRepeatCount(1);
    return count;
}

bool CodeEditor::clearsRepeatCount(const QKeyEvent &event) const
{
    return repeatCount_ > 1 && event.key() == Qt::Key_Escape;
}

void CodeEditor::beginQuiet()
{
    ++steps_;
    if (quiet_++ == 0)
        setUpdatesEnabled(false);
}

void CodeEditor::endQuiet()
{
    --steps_;
    if (--quiet_ > 0)
        return;
    setUpdatesEnabled(true);
    // Who only scrolled keeps what came into sight.
    if (revision_ != told_.revision || send(SCI_GETCURRENTPOS) != told_.caret)
        send(SCI_SCROLLCARET);
    settle();
}

void CodeEditor::setServiceHandler(int command, const std::function<bool()> &handler)
{
    services_.insert(command, handler);
}

bool CodeEditor::callService(int command)
{
    Q_EMIT serviceRequested(command);
    const std::function<bool()> handler = services_.value(command);
    return handler && handler();
}

} // namespace control
