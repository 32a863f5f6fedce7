#include "editor/keys_edit.h"

#include "platform/control/shortcut_table.h"

#include <QKeyEvent>
#include <chrono>

namespace editor {

namespace {

constexpr std::chrono::milliseconds pauseForSecond(1500);

bool isModifier(int key)
{
    return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) || key == Qt::Key_AltGr
        || key == Qt::Key_Super_L || key == Qt::Key_Super_R || key == Qt::Key_Mode_switch
        || key == Qt::Key_unknown || key == 0;
}

// Control and Alt together are how some keyboards reach a third sign of a key.
bool typesCharacter(const QKeyEvent &event)
{
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    if (control != event.modifiers().testFlag(Qt::AltModifier)
        || event.modifiers().testFlag(Qt::MetaModifier))
        return false;
    return !event.text().isEmpty() && (event.text().front().isPrint() || event.text().front().isSurrogate());
}

bool isPlain(const QKeyEvent &event)
{
    return (event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier)) == Qt::NoModifier;
}

} // namespace

KeysEdit::KeysEdit(QWidget *parent) : QLineEdit(parent)
{
    setReadOnly(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

void KeysEdit::setKeys(const QKeySequence &keys)
{
    keys_ = keys;
    expect(Stroke::None);
}

// Nothing in the window gets a key before this field while it has the focus, menus' letters included.
bool KeysEdit::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (recording() || !leaves(*key)) {
            event->accept();
            return true;
        }
    }
    if (event->type() == QEvent::KeyPress && press(*static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

bool KeysEdit::leaves(const QKeyEvent &event) const
{
    const bool tab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
    const bool plain = isPlain(event) || (tab && event.modifiers() == Qt::ShiftModifier);
    return plain && (tab || event.key() == Qt::Key_Escape);
}

bool KeysEdit::asksToAssign(const QKeyEvent &event) const
{
    return isPlain(event) && (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter);
}

// False for keys that are not for this field. A second stroke need not come, so that what ends the field's
// turn ends the waiting too, but after Space any key is meant.
bool KeysEdit::press(QKeyEvent &event)
{
    if (isModifier(event.key()))
        return true;
    if (expected_ == Stroke::Second && !anyKey_ && (leaves(event) || asksToAssign(event)))
        expect(Stroke::None);
    if (!recording()) {
        if (leaves(event))
            return false;
        if (isPlain(event) && event.key() == Qt::Key_Space) {
            expect(Stroke::First);
            anyKey_ = true;
            return true;
        }
        if (asksToAssign(event)) {
            Q_EMIT assignRequested();
            return true;
        }
    }
    record(event);
    return true;
}

void KeysEdit::record(const QKeyEvent &event)
{
    const bool second = expected_ == Stroke::Second;
    const QKeySequence typed = control::typedKeys(second ? keys_ : QKeySequence(), event);
    const bool canBeKept = control::keysOf(control::shortcutOf(typed)).has_value();
    if (!canBeKept || (!second && typesCharacter(event))) {
        expect(Stroke::None);
        Q_EMIT refused();
        return;
    }
    keys_ = typed;
    expect(second ? Stroke::None : Stroke::Second);
    Q_EMIT recorded();
}

void KeysEdit::expect(Stroke stroke)
{
    expected_ = stroke;
    anyKey_ = anyKey_ && recording();
    pause_.stop();
    if (stroke == Stroke::Second)
        pause_.start(int(pauseForSecond.count()), this);
    showKeys();
}

void KeysEdit::showKeys()
{
    const QString shown = keys_.toString(QKeySequence::NativeText);
    if (!recording())
        setText(shown);
    else if (expected_ == Stroke::First)
        setText(tr("Press any key"));
    else
        setText(tr("%1, …").arg(shown));
}

void KeysEdit::focusOutEvent(QFocusEvent *event)
{
    expect(Stroke::None);
    QLineEdit::focusOutEvent(event);
}

void KeysEdit::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == pause_.timerId())
        expect(Stroke::None);
    else
        QLineEdit::timerEvent(event);
}

} // namespace editor
